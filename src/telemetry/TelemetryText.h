#pragma once

#include <QByteArrayView>

#include <array>
#include <cstdint>

// Number and text helpers for the camera's ASCII records, working on UTF-8
// bytes without allocating.
namespace TelemetryText {

// The integer at the start of the text: leading white space, an optional
// sign, then digits; 0 when there are none; saturates at the int32 limits.
int32_t intValue(QByteArrayView text);
// The decimal number at the start of the text (after leading white space);
// 0 when there is none. "nan" and "inf" are read as such.
float floatValue(QByteArrayView text);

// True when the bytes are well-formed UTF-8 (no overlong forms, surrogates
// or code points past U+10FFFF).
bool isValidUtf8(QByteArrayView bytes);

// Length in bytes of the line break (LF, VT, FF, CR, NEL, LS, PS) starting at
// `pos`, or 0. Each of them is a line break of its own: CR LF counts as two.
int newlineLength(QByteArrayView text, qsizetype pos);
// Length of the white space or line break character at `pos`, or 0.
int whitespaceLength(QByteArrayView text, qsizetype pos);
// Text without leading and trailing white space.
QByteArrayView trimmed(QByteArrayView text);

// The comma-separated fields of one record. Keeps the first kMaxFields
// fields and counts them all; a field past the kept ones reads as empty.
class FieldList {
public:
    static constexpr int kMaxFields = 16;

    void appendSplit(QByteArrayView text, char separator = ',');
    qsizetype size() const { return m_count; }
    QByteArrayView field(qsizetype index) const;
    int32_t intField(qsizetype index) const { return intValue(field(index)); }
    float floatField(qsizetype index) const { return floatValue(field(index)); }
    bool fieldIs(qsizetype index, const char* keyword) const;

private:
    std::array<QByteArrayView, kMaxFields> m_fields {};
    qsizetype m_count = 0;
};

} // namespace TelemetryText
