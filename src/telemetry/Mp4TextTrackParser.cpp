#include "telemetry/Mp4TextTrackParser.h"

#include "telemetry/Mp4TextTrack.h"
#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryText.h"
#include "telemetry/TolmRecordReader.h"

int Mp4TextTrackParser::parse(QByteArrayView bytes, TavroClipData& record) const
{
    TolmRecordReader reader(record, TolmRecordReader::Source::Subtitle);
    bool valid = true;
    QByteArray text;
    const bool found = Mp4TextTrack::forEachSample(bytes, [&](QByteArrayView sample) {
        // A subtitle file with text that is not UTF-8 is refused whole.
        if (!TelemetryText::isValidUtf8(sample)) {
            valid = false;
            return false;
        }
        // As the SubRip text has it: no carriage returns, lines joined by blanks.
        text = sample.toByteArray();
        text.replace('\r', QByteArrayView());
        text.replace('\n', ' ');
        if (!TelemetryText::trimmed(text).isEmpty())
            reader.handle(TolmRecordReader::subtitleFields(text));
        return !reader.isFull();
    });
    if (!found || !valid) {
        record.setGpsDataCount(0);
        return 0;
    }
    return reader.finish();
}
