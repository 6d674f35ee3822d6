#include "RiffAviBuilder.h"

#include <QtEndian>

namespace {

QByteArray le32(uint32_t value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian<quint32>(value, bytes.data());
    return bytes;
}

// A small deterministic generator, so files are the same on every run.
uint32_t nextRandom(uint32_t& state)
{
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

} // namespace

RiffAviBuilder::RiffAviBuilder() = default;

RiffAviBuilder& RiffAviBuilder::beginList(const QByteArray& type)
{
    m_openLists.append(m_body.size());
    m_body += "LIST" + le32(0) + type.left(4);
    return *this;
}

RiffAviBuilder& RiffAviBuilder::endList()
{
    if (m_openLists.isEmpty())
        return *this;
    const qsizetype start = m_openLists.takeLast();
    const auto size = static_cast<uint32_t>(m_body.size() - start - 8);
    qToLittleEndian<quint32>(size, m_body.data() + start + 4);
    return *this;
}

RiffAviBuilder& RiffAviBuilder::chunk(const QByteArray& code, const QByteArray& data)
{
    m_body += code.left(4) + le32(static_cast<uint32_t>(data.size())) + data;
    if (data.size() % 2)
        m_body += '\0';
    return *this;
}

RiffAviBuilder& RiffAviBuilder::chunkHeader(const QByteArray& code, uint32_t declaredSize)
{
    m_body += code.left(4) + le32(declaredSize);
    return *this;
}

RiffAviBuilder& RiffAviBuilder::videoFrame(int size, uint32_t seed)
{
    QByteArray data(size, '\0');
    uint32_t state = seed;
    for (char& byte : data)
        byte = static_cast<char>(nextRandom(state));
    return chunk("00dc", data);
}

RiffAviBuilder& RiffAviBuilder::aviHeaders()
{
    beginList("hdrl");
    chunk("avih", QByteArray(56, '\x01'));
    beginList("strl");
    chunk("strh", QByteArray(55, '\x02')); // odd on purpose: a pad byte follows
    endList();
    endList();
    return beginList("movi");
}

RiffAviBuilder& RiffAviBuilder::gRecord(uint8_t b1, uint8_t b2, uint8_t b3, const QByteArray& code)
{
    QByteArray data("M");
    data += static_cast<char>(b1);
    data += static_cast<char>(b2);
    data += static_cast<char>(b3);
    return chunk(code, data);
}

RiffAviBuilder& RiffAviBuilder::kelGRecord(
    uint8_t b1, uint8_t b2, uint8_t b3, uint8_t f4, uint8_t f5, uint8_t f6)
{
    QByteArray data("M");
    for (const uint8_t byte : { b1, b2, b3, f4, f5, f6 })
        data += static_cast<char>(byte);
    return chunk("02tx", data);
}

RiffAviBuilder& RiffAviBuilder::secondEnd(const QByteArray& code)
{
    return chunk(code, "T");
}

RiffAviBuilder& RiffAviBuilder::sentence(const QByteArray& text, const QByteArray& code)
{
    return chunk(code, text + '\0');
}

QByteArray RiffAviBuilder::rmc(const QByteArray& status, const QByteArray& lat,
    const QByteArray& ns, const QByteArray& lng, const QByteArray& ew, const QByteArray& knots,
    const QByteArray& prefix)
{
    return prefix + ",120000.00," + status + ',' + lat + ',' + ns + ',' + lng + ',' + ew + ','
        + knots + ",0.0,010124,,,A";
}

QByteArray RiffAviBuilder::bytes() const
{
    RiffAviBuilder closed = *this;
    while (!closed.m_openLists.isEmpty())
        closed.endList();
    return "RIFF" + le32(static_cast<uint32_t>(closed.m_body.size() + 4)) + "AVI " + closed.m_body;
}
