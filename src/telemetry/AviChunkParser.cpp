#include "telemetry/AviChunkParser.h"

#include "telemetry/AviChunkWalker.h"
#include "telemetry/RmcSentence.h"
#include "telemetry/SampleWriter.h"
#include "telemetry/SecondBuffer.h"
#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryText.h"

namespace {

uint8_t dataByte(QByteArrayView data, qsizetype index)
{
    // A short chunk reads as if zero-padded, like the camera's own buffer.
    return index < data.size() ? static_cast<uint8_t>(data[index]) : 0;
}

int16_t centred(uint8_t byte)
{
    return static_cast<int16_t>(128 - static_cast<int>(byte));
}

} // namespace

bool AviChunkParser::readRmcChunk(QByteArrayView data, GpsFix& fix)
{
    // The sentence is text up to the first zero byte.
    const qsizetype zero = data.indexOf('\0');
    const QByteArrayView text = zero < 0 ? data : data.first(zero);
    if (!TelemetryText::isValidUtf8(text))
        return false;
    TelemetryText::FieldList fields;
    fields.appendSplit(text);
    if (!fields.fieldIs(0, "$GPRMC") && !fields.fieldIs(0, "G$GPRMC"))
        return false;
    // A sentence cut short before the speed is taken as having no fix.
    constexpr qsizetype kRmcFields = 8;
    fix = fields.size() < kRmcFields ? GpsFix {} : RmcSentence::read(fields, 0);
    return true;
}

int AviChunkParser::parse(QByteArrayView bytes, TavroClipData& record) const
{
    SampleWriter writer(record);
    SecondBuffer second(SecondBuffer::kChunkCapacity);
    GpsFix current;
    const bool isAvi = AviChunkWalker::walk(bytes, [&](QByteArrayView data) {
        switch (dataByte(data, 0)) {
        case 'M':
            second.append({ centred(dataByte(data, 1)), centred(dataByte(data, 2)),
                centred(dataByte(data, 3)) });
            break;
        case 'T':
            if (!second.isEmpty())
                second.distribute(writer, GpsFix {});
            current = GpsFix {};
            break;
        case '$':
        case 'G':
            if (readRmcChunk(data, current) && !second.isEmpty())
                second.distribute(writer, current);
            break;
        default:
            break;
        }
        return !writer.isFull();
    });
    // A lone partial second is not shown: it needs a completed one before it.
    if (isAvi && !second.isEmpty() && writer.count() > 0)
        second.distribute(writer, current);
    return writer.finish();
}
