#include "telemetry/AviTailParser.h"

#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryText.h"

#include <cmath>
#include <cstring>
#include <optional>

using TelemetryText::FieldList;

namespace {
constexpr char kMarker[] = "ETKLP1";
constexpr qsizetype kMarkerLength = 6;
constexpr int kFieldsPerLine = 7;
} // namespace

qsizetype AviTailParser::textStart(QByteArrayView bytes)
{
    // The camera computes the window start in unsigned arithmetic: for a file
    // shorter than the window it wraps past the end and no search happens.
    const auto length = static_cast<uint64_t>(bytes.size());
    const uint64_t start = length - static_cast<uint64_t>(kWindow);
    const uint64_t end = length - static_cast<uint64_t>(kMarkerLength);
    if (start < end) {
        for (uint64_t pos = start; pos < end; ++pos) {
            if (std::memcmp(bytes.data() + pos, kMarker, kMarkerLength) == 0)
                return static_cast<qsizetype>(pos) + kMarkerLength;
        }
    }
    return kMarkerLength;
}

std::optional<bool> AviTailParser::storeLine(QByteArrayView line, int index, TavroClipData& record)
{
    FieldList fields;
    fields.appendSplit(line);
    if (fields.size() != kFieldsPerLine)
        return std::nullopt;
    const float latitude = fields.floatField(1);
    const float longitude = fields.floatField(2);
    record.storeGps(index, latitude, longitude);
    record.storeSpeed(index, fields.intField(3));
    record.storeUtc(index, kNoUtcMsecs); // the tail block carries no clock
    record.storeG(index, static_cast<int16_t>(fields.intField(4)),
        static_cast<int16_t>(fields.intField(5)), static_cast<int16_t>(fields.intField(6)));
    // NaN compares unequal to 0, so it counts as a position.
    return latitude != 0.0f || longitude != 0.0f;
}

int AviTailParser::parse(QByteArrayView bytes, TavroClipData& record) const
{
    record.setGpsDataCount(0);
    if (bytes.size() < kMarkerLength)
        return 0;
    const QByteArrayView text = bytes.sliced(textStart(bytes));
    if (!TelemetryText::isValidUtf8(text))
        return 0;
    int count = 0;
    int withFix = 0;
    qsizetype lineStart = 0;
    while (lineStart <= text.size() && count < TavroClipData::kCapacity) {
        qsizetype lineEnd = lineStart;
        int breakLength = 0;
        while (lineEnd < text.size()
            && (breakLength = TelemetryText::newlineLength(text, lineEnd)) == 0)
            ++lineEnd;
        const QByteArrayView line = text.sliced(lineStart, lineEnd - lineStart);
        if (const std::optional<bool> hasPosition = storeLine(line, count, record)) {
            if (*hasPosition)
                ++withFix;
            ++count;
            record.setGpsDataCount(withFix);
        }
        if (lineEnd >= text.size())
            break;
        lineStart = lineEnd + breakLength;
    }
    return count;
}
