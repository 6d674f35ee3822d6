#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>

// Writes a RIFF "AVI " file byte by byte: nested LIST chunks, video chunks of
// any (odd) size with their pad byte, and the cameras' telemetry chunks
// ("02tx"/"03tx") carrying 'M' G records, 'T' second ends and RMC sentences.
class RiffAviBuilder {
public:
    RiffAviBuilder();

    // A LIST chunk; its size is filled in by the matching endList().
    RiffAviBuilder& beginList(const QByteArray& type);
    RiffAviBuilder& endList();
    // Any chunk: code, little-endian size, data, pad byte when the size is odd.
    RiffAviBuilder& chunk(const QByteArray& code, const QByteArray& data);
    // A chunk header whose size claims more than follows (for broken files).
    RiffAviBuilder& chunkHeader(const QByteArray& code, uint32_t declaredSize);
    // A video chunk of `size` pseudo-random bytes.
    RiffAviBuilder& videoFrame(int size, uint32_t seed = 1);
    // The usual header list (avih) and the opening of the "movi" list.
    RiffAviBuilder& aviHeaders();

    // General cameras: 'M' and three bytes (value = 128 - byte).
    RiffAviBuilder& gRecord(uint8_t b1, uint8_t b2, uint8_t b3, const QByteArray& code = "02tx");
    // Kel cameras: 'M', three bytes (value = 10 * byte - 1280) and three flag bytes.
    RiffAviBuilder& kelGRecord(
        uint8_t b1, uint8_t b2, uint8_t b3, uint8_t f4 = 1, uint8_t f5 = 1, uint8_t f6 = 1);
    RiffAviBuilder& secondEnd(const QByteArray& code = "03tx");
    // An NMEA sentence chunk (its text plus a zero byte, as the cameras write it).
    RiffAviBuilder& sentence(const QByteArray& text, const QByteArray& code = "03tx");

    // "$GPRMC,hhmmss.00,STATUS,LAT,NS,LNG,EW,KNOTS,0.0,010124,,,A"
    static QByteArray rmc(const QByteArray& status, const QByteArray& lat, const QByteArray& ns,
        const QByteArray& lng, const QByteArray& ew, const QByteArray& knots,
        const QByteArray& prefix = "$GPRMC");

    // The whole file; open lists are closed first.
    QByteArray bytes() const;

private:
    QByteArray m_body;
    QList<qsizetype> m_openLists;
};
