#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>

// Text-carried telemetry, written byte by byte.

// A clip with the "ETKLP1" text block after its video data:
// video bytes, the marker, then the lines joined by `lineEnd`. The marker is
// only looked for in the last 33006 bytes of a file at least that long, so
// the default video part makes the file long enough.
class TailBlockBuilder {
public:
    explicit TailBlockBuilder(int videoBytes = 40000, uint32_t seed = 7);
    TailBlockBuilder& line(const QByteArray& text);
    // "n,lat,lng,speed,gx,gy,gz"
    TailBlockBuilder& sample(
        int n, const QByteArray& lat, const QByteArray& lng, int speed, int gx, int gy, int gz);
    TailBlockBuilder& lineEnd(const QByteArray& separator);
    QByteArray bytes() const;

    // Bytes that are never valid UTF-8 (continuation bytes without a lead).
    static QByteArray videoLikeBytes(int size, uint32_t seed);

private:
    QByteArray m_video;
    QList<QByteArray> m_lines;
    QByteArray m_lineEnd = "\r\n";
};

// A SubRip file as ffmpeg writes it from a clip's subtitle track: counter,
// "hh:mm:ss,mmm --> hh:mm:ss,mmm", payload, empty line.
class SubtitleBuilder {
public:
    SubtitleBuilder& block(const QByteArray& payload);
    // Ten "gsensor,x,y,z" blocks would be a second; this adds `count` of them.
    SubtitleBuilder& gsensorBlocks(int count, int firstX = 0);
    // "GPRMC,time,STATUS,LAT,N,LNG,E,KNOTS,..." (no "$", as the camera writes it)
    static QByteArray rmc(const QByteArray& status, const QByteArray& lat, const QByteArray& ns,
        const QByteArray& lng, const QByteArray& ew, const QByteArray& knots,
        const QByteArray& keyword = "GPRMC");
    QByteArray bytes() const { return m_text; }

private:
    QByteArray m_text;
    int m_count = 0;
};

// Other clip files of the Tolm family: text records after "02tx"/"03tx" tags
// (tag, little-endian size, text, zero byte) among filler bytes that hold
// no tag of their own.
class RawTextBuilder {
public:
    explicit RawTextBuilder(uint32_t seed = 3);
    RawTextBuilder& filler(int size);
    RawTextBuilder& record(const QByteArray& text, const QByteArray& tag = "02tx");
    RawTextBuilder& append(const QByteArray& raw);
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
    uint32_t m_state;
};
