#pragma once

#include <QByteArray>
#include <QString>

// Writes a setup.cfg record byte by byte at the offsets the camera uses, so
// tests state the file layout themselves instead of borrowing the code's.
class SetupCfgBuilder {
public:
    // A zero-filled record of `size` bytes (432 = the 60-field record).
    explicit SetupCfgBuilder(int size = 432);

    // A record of `size` bytes whose every byte is a letter 'A'..'Z' chosen by
    // its offset: integer fields get odd values, text fields fill completely.
    static SetupCfgBuilder letterPattern(int size);

    SetupCfgBuilder& int32(int offset, qint64 value);
    SetupCfgBuilder& uint16(int offset, quint16 value);
    SetupCfgBuilder& byte(int offset, quint8 value);
    // Text zero-padded to `width` (cut at the width).
    SetupCfgBuilder& text(int offset, int width, const QByteArray& utf8);

    // The fields identification looks at.
    SetupCfgBuilder& sizeWord(qint64 value) { return int32(0, value); }
    SetupCfgBuilder& structVersion(qint64 value) { return int32(4, value); }
    SetupCfgBuilder& productName(const QByteArray& name) { return text(8, 16, name); }
    SetupCfgBuilder& version(const QByteArray& version) { return text(40, 10, version); }
    SetupCfgBuilder& localId(qint64 id) { return int32(460, id); }

    SetupCfgBuilder& resize(int size);
    QByteArray bytes() const { return m_bytes; }

private:
    void ensure(int end);
    QByteArray m_bytes;
};
