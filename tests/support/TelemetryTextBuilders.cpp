#include "TelemetryTextBuilders.h"

#include <QString>
#include <QtEndian>

namespace {

uint32_t nextRandom(uint32_t& state)
{
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

QByteArray stamp(int ms)
{
    return QString::asprintf(
        "%02d:%02d:%02d,%03d", ms / 3600000, ms / 60000 % 60, ms / 1000 % 60, ms % 1000)
        .toLatin1();
}

} // namespace

TailBlockBuilder::TailBlockBuilder(int videoBytes, uint32_t seed)
    : m_video(videoLikeBytes(videoBytes, seed))
{
}

QByteArray TailBlockBuilder::videoLikeBytes(int size, uint32_t seed)
{
    // Random bytes, with a stray continuation byte every 64 so that no run
    // of them decodes as UTF-8 by chance.
    QByteArray bytes(size, '\0');
    uint32_t state = seed;
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(
            i % 64 == 0 ? 0x80 | (nextRandom(state) & 0x3F) : nextRandom(state));
    return bytes;
}

TailBlockBuilder& TailBlockBuilder::line(const QByteArray& text)
{
    m_lines.append(text);
    return *this;
}

TailBlockBuilder& TailBlockBuilder::sample(
    int n, const QByteArray& lat, const QByteArray& lng, int speed, int gx, int gy, int gz)
{
    return line(QByteArray::number(n) + ',' + lat + ',' + lng + ',' + QByteArray::number(speed)
        + ',' + QByteArray::number(gx) + ',' + QByteArray::number(gy) + ','
        + QByteArray::number(gz));
}

TailBlockBuilder& TailBlockBuilder::lineEnd(const QByteArray& separator)
{
    m_lineEnd = separator;
    return *this;
}

QByteArray TailBlockBuilder::bytes() const
{
    QByteArray out = m_video + "ETKLP1";
    for (const QByteArray& text : m_lines)
        out += text + m_lineEnd;
    return out;
}

SubtitleBuilder& SubtitleBuilder::block(const QByteArray& payload)
{
    const int start = m_count * 100;
    ++m_count;
    m_text += QByteArray::number(m_count) + '\n' + stamp(start) + " --> " + stamp(start + 60) + '\n'
        + payload + "\n\n";
    return *this;
}

SubtitleBuilder& SubtitleBuilder::gsensorBlocks(int count, int firstX)
{
    for (int i = 0; i < count; ++i)
        block("gsensor," + QByteArray::number(firstX + i) + ",-20,128");
    return *this;
}

QByteArray SubtitleBuilder::rmc(const QByteArray& status, const QByteArray& lat,
    const QByteArray& ns, const QByteArray& lng, const QByteArray& ew, const QByteArray& knots,
    const QByteArray& keyword)
{
    return keyword + ",120000.00," + status + ',' + lat + ',' + ns + ',' + lng + ',' + ew + ','
        + knots + ",0.0,010124,,,A";
}

RawTextBuilder::RawTextBuilder(uint32_t seed)
    : m_state(seed)
{
}

RawTextBuilder& RawTextBuilder::filler(int size)
{
    for (int i = 0; i < size; ++i) {
        char byte = static_cast<char>(nextRandom(m_state));
        if (byte == 't')
            byte = 's'; // no "0?tx" tag can form by chance
        m_bytes += byte;
    }
    return *this;
}

RawTextBuilder& RawTextBuilder::record(const QByteArray& text, const QByteArray& tag)
{
    QByteArray size(4, '\0');
    qToLittleEndian<quint32>(static_cast<quint32>(text.size() + 1), size.data());
    m_bytes += tag + size + text + '\0';
    return *this;
}

RawTextBuilder& RawTextBuilder::append(const QByteArray& raw)
{
    m_bytes += raw;
    return *this;
}
