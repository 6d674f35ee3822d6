#include "telemetry/TelemetryText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace TelemetryText {

namespace {

qsizetype skipLeadingSpace(QByteArrayView text)
{
    qsizetype pos = 0;
    while (pos < text.size()) {
        const int length = whitespaceLength(text, pos);
        if (length == 0)
            break;
        pos += length;
    }
    return pos;
}

uint8_t byteAt(QByteArrayView text, qsizetype pos)
{
    return pos < text.size() ? static_cast<uint8_t>(text[pos]) : 0;
}

// Length of a well-formed UTF-8 sequence at `pos`, or 0.
int sequenceLength(QByteArrayView bytes, qsizetype pos)
{
    const uint8_t lead = byteAt(bytes, pos);
    if (lead < 0x80)
        return 1;
    int length = 0;
    uint8_t low = 0x80, high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (pos + length > bytes.size())
        return 0;
    const uint8_t second = byteAt(bytes, pos + 1);
    if (second < low || second > high)
        return 0;
    for (int i = 2; i < length; ++i) {
        const uint8_t next = byteAt(bytes, pos + i);
        if (next < 0x80 || next > 0xBF)
            return 0;
    }
    return length;
}

} // namespace

int32_t intValue(QByteArrayView text)
{
    qsizetype pos = skipLeadingSpace(text);
    bool negative = false;
    if (pos < text.size() && (text[pos] == '-' || text[pos] == '+')) {
        negative = text[pos] == '-';
        ++pos;
    }
    int64_t value = 0;
    constexpr int64_t kLimit = int64_t(std::numeric_limits<int32_t>::max()) + 1;
    for (; pos < text.size() && text[pos] >= '0' && text[pos] <= '9'; ++pos) {
        if (value <= kLimit)
            value = value * 10 + (text[pos] - '0');
    }
    if (negative)
        value = -value;
    if (value > std::numeric_limits<int32_t>::max())
        return std::numeric_limits<int32_t>::max();
    if (value < std::numeric_limits<int32_t>::min())
        return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(value);
}

float floatValue(QByteArrayView text)
{
    qsizetype pos = skipLeadingSpace(text);
    bool negative = false;
    if (pos < text.size() && (text[pos] == '-' || text[pos] == '+')) {
        negative = text[pos] == '-';
        ++pos;
    }
    // from_chars takes no sign of its own here, so "--1" stays 0.
    if (pos >= text.size() || text[pos] == '-' || text[pos] == '+')
        return 0.0f;
    float value = 0.0f;
    const char* first = text.data() + pos;
    const char* last = text.data() + text.size();
    const std::errc error = std::from_chars(first, last, value, std::chars_format::general).ec;
    if (error == std::errc::result_out_of_range) {
        // Past float's range: go through double, which rounds to inf or 0 as strtof does.
        double wide = 0.0;
        const auto wideResult = std::from_chars(first, last, wide, std::chars_format::general);
        if (wideResult.ec == std::errc()) {
            value = static_cast<float>(wide);
        } else {
            const char* exponent
                = std::find_if(first, wideResult.ptr, [](char c) { return c == 'e' || c == 'E'; });
            const bool tiny = exponent + 1 < wideResult.ptr && exponent[1] == '-';
            value = tiny ? 0.0f : std::numeric_limits<float>::infinity();
        }
    } else if (error != std::errc()) {
        return 0.0f;
    }
    return negative ? -value : value;
}

bool isValidUtf8(QByteArrayView bytes)
{
    qsizetype pos = 0;
    const qsizetype size = bytes.size();
    const char* data = bytes.data();
    while (pos < size) {
        // Plain ASCII runs are the common case: take them eight bytes at a time.
        while (pos + 8 <= size) {
            uint64_t word;
            std::memcpy(&word, data + pos, sizeof word);
            if (word & 0x8080808080808080ULL)
                break;
            pos += 8;
        }
        if (pos >= size)
            break;
        const int length = sequenceLength(bytes, pos);
        if (length == 0)
            return false;
        pos += length;
    }
    return true;
}

int newlineLength(QByteArrayView text, qsizetype pos)
{
    const uint8_t byte = byteAt(text, pos);
    if (pos >= text.size())
        return 0;
    if (byte >= 0x0A && byte <= 0x0D)
        return 1;
    if (byte == 0xC2 && byteAt(text, pos + 1) == 0x85)
        return 2; // NEL
    if (byte == 0xE2 && byteAt(text, pos + 1) == 0x80
        && (byteAt(text, pos + 2) == 0xA8 || byteAt(text, pos + 2) == 0xA9))
        return 3; // LS, PS
    return 0;
}

int whitespaceLength(QByteArrayView text, qsizetype pos)
{
    if (pos >= text.size())
        return 0;
    const uint8_t byte = byteAt(text, pos);
    if (byte == ' ' || byte == '\t')
        return 1;
    if (const int length = newlineLength(text, pos))
        return length;
    if (byte == 0xC2 && byteAt(text, pos + 1) == 0xA0)
        return 2; // no-break space
    if (byte == 0xE1 && byteAt(text, pos + 1) == 0x9A && byteAt(text, pos + 2) == 0x80)
        return 3; // ogham space mark
    if (byte == 0xE3 && byteAt(text, pos + 1) == 0x80 && byteAt(text, pos + 2) == 0x80)
        return 3; // ideographic space
    if (byte == 0xE2) {
        const uint8_t second = byteAt(text, pos + 1);
        const uint8_t third = byteAt(text, pos + 2);
        if (second == 0x80 && (third <= 0x8A || third == 0xAF) && third >= 0x80)
            return 3; // en quad .. hair space, narrow no-break space
        if (second == 0x81 && third == 0x9F)
            return 3; // medium mathematical space
    }
    return 0;
}

QByteArrayView trimmed(QByteArrayView text)
{
    const qsizetype begin = skipLeadingSpace(text);
    qsizetype end = text.size();
    // Step back over trailing white space, one character at a time.
    while (end > begin) {
        qsizetype start = end - 1;
        while (start > begin && (static_cast<uint8_t>(text[start]) & 0xC0) == 0x80)
            --start;
        if (whitespaceLength(text, start) != end - start)
            break;
        end = start;
    }
    return text.sliced(begin, end - begin);
}

void FieldList::appendSplit(QByteArrayView text, char separator)
{
    qsizetype start = 0;
    while (true) {
        const qsizetype comma = text.indexOf(separator, start);
        const qsizetype end = comma < 0 ? text.size() : comma;
        if (m_count < kMaxFields)
            m_fields[m_count] = text.sliced(start, end - start);
        ++m_count;
        if (comma < 0)
            return;
        start = comma + 1;
    }
}

QByteArrayView FieldList::field(qsizetype index) const
{
    if (index < 0 || index >= m_count || index >= kMaxFields)
        return {};
    return m_fields[index];
}

bool FieldList::fieldIs(qsizetype index, const char* keyword) const
{
    return field(index) == QByteArrayView(keyword);
}

} // namespace TelemetryText
