#include "SetupCfgBuilder.h"

#include <QtEndian>

#include <algorithm>

SetupCfgBuilder::SetupCfgBuilder(int size)
    : m_bytes(size, '\0')
{
}

SetupCfgBuilder SetupCfgBuilder::letterPattern(int size)
{
    SetupCfgBuilder builder(size);
    for (int i = 0; i < size; ++i)
        builder.m_bytes[i] = char('A' + (i * 7 + i / 26) % 26);
    return builder;
}

void SetupCfgBuilder::ensure(int end)
{
    if (m_bytes.size() < end)
        m_bytes.append(QByteArray(end - m_bytes.size(), '\0'));
}

SetupCfgBuilder& SetupCfgBuilder::int32(int offset, qint64 value)
{
    ensure(offset + 4);
    qToLittleEndian<quint32>(quint32(value), m_bytes.data() + offset);
    return *this;
}

SetupCfgBuilder& SetupCfgBuilder::uint16(int offset, quint16 value)
{
    ensure(offset + 2);
    qToLittleEndian<quint16>(value, m_bytes.data() + offset);
    return *this;
}

SetupCfgBuilder& SetupCfgBuilder::byte(int offset, quint8 value)
{
    ensure(offset + 1);
    m_bytes[offset] = char(value);
    return *this;
}

SetupCfgBuilder& SetupCfgBuilder::text(int offset, int width, const QByteArray& utf8)
{
    ensure(offset + width);
    std::fill(m_bytes.begin() + offset, m_bytes.begin() + offset + width, '\0');
    std::copy_n(
        utf8.constBegin(), std::min<qsizetype>(width, utf8.size()), m_bytes.begin() + offset);
    return *this;
}

SetupCfgBuilder& SetupCfgBuilder::resize(int size)
{
    m_bytes.resize(size, '\0');
    return *this;
}
