#include "telemetry/TolmRawParser.h"

#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryText.h"
#include "telemetry/TolmRecordReader.h"

#include <cstring>

qsizetype TolmRawParser::findTag(QByteArrayView bytes, qsizetype from)
{
    const char* data = bytes.data();
    const qsizetype size = bytes.size();
    qsizetype pos = from;
    while (pos + 4 <= size) {
        // "tx" is rarer in video data than "0": look for 't' and check around it.
        const void* hit = std::memchr(data + pos + 2, 't', static_cast<size_t>(size - pos - 2));
        if (!hit)
            return -1;
        const qsizetype t = static_cast<const char*>(hit) - data;
        if (t + 1 >= size)
            return -1;
        if (data[t + 1] == 'x' && data[t - 2] == '0' && (data[t - 1] == '2' || data[t - 1] == '3'))
            return t - 2;
        pos = t - 1;
    }
    return -1;
}

int TolmRawParser::parse(QByteArrayView bytes, TavroClipData& record) const
{
    TolmRecordReader reader(record, TolmRecordReader::Source::RawBytes);
    const qsizetype size = bytes.size();
    qsizetype tag = findTag(bytes, 0);
    while (tag >= 0 && !reader.isFull()) {
        qsizetype start = tag + 5;
        while (start < size && bytes[start] == '\0')
            ++start;
        if (start >= size)
            break;
        const qsizetype limit = std::min(size - start, kMaxTextLength);
        const qsizetype zero = bytes.sliced(start, limit).indexOf('\0');
        const QByteArrayView text = bytes.sliced(start, zero < 0 ? limit : zero);
        if (TelemetryText::isValidUtf8(text)) {
            TelemetryText::FieldList fields;
            fields.appendSplit(text);
            reader.handle(fields);
        }
        tag = findTag(bytes, start + 1);
    }
    return reader.finish();
}
