#include "config/SetupRecordCodec.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace SetupRecordCodec {
namespace {

using SetupRecordLayout::kFieldCount;
using SetupRecordLayout::kFields;

// Copies the field's bytes into a zeroed buffer, so a field cut off by the
// end of the data reads its missing bytes as zero.
QByteArray fieldBytes(const QByteArray& bytes, qsizetype offset, int width)
{
    QByteArray field(width, '\0');
    const qsizetype available = std::min<qsizetype>(width, bytes.size() - offset);
    if (available > 0)
        std::memcpy(field.data(), bytes.constData() + offset, size_t(available));
    return field;
}

QString decodeText(const QByteArray& field)
{
    const qsizetype end = field.indexOf('\0');
    return QString::fromUtf8(end < 0 ? field : field.left(end));
}

void decodeField(const QByteArray& field, int index, SetupValues& values)
{
    const auto* data = reinterpret_cast<const uchar*>(field.constData());
    qint32& value = values.ints[size_t(index)];
    switch (kFields[size_t(index)].kind) {
    case SetupFieldKind::Int8:
        value = qint32((quint32(value) & 0xFFFFFF00u) | data[0]);
        break;
    case SetupFieldKind::UInt16:
        value = qint32(qFromLittleEndian<quint16>(data));
        break;
    case SetupFieldKind::Int32:
        value = qFromLittleEndian<qint32>(data);
        break;
    case SetupFieldKind::Text:
        values.texts[size_t(index)] = decodeText(field);
        break;
    }
}

int decodeBounded(const QByteArray& bytes, int fieldCount, SetupValues& values)
{
    const int limit = std::min(fieldCount, kFieldCount);
    qsizetype offset = 0;
    int index = 0;
    while (index < limit && offset < bytes.size()) {
        const int width = kFields[size_t(index)].width;
        decodeField(fieldBytes(bytes, offset, width), index, values);
        offset += width;
        ++index;
    }
    return index;
}

} // namespace

int decode(const QByteArray& bytes, int fieldCount, SetupValues& values)
{
    return decodeBounded(bytes, fieldCount, values);
}

int decodeDefaultCfg(const QByteArray& bytes, SetupValues& values)
{
    // The factory file is read for as long as it has bytes; the table is the
    // only other bound.
    return decodeBounded(bytes, kFieldCount, values);
}

QByteArray encode(const SetupValues& values, int fieldCount)
{
    const int count = std::clamp(fieldCount, 0, kFieldCount);
    QByteArray buffer(SetupRecordLayout::recordSize(count), '\0');
    auto* data = reinterpret_cast<uchar*>(buffer.data());
    int offset = 0;
    for (int index = 0; index < count; ++index) {
        const SetupFieldInfo& field = kFields[size_t(index)];
        const qint32 value = values.ints[size_t(index)];
        switch (field.kind) {
        case SetupFieldKind::Int8:
            data[offset] = uchar(quint32(value) & 0xFFu);
            break;
        case SetupFieldKind::UInt16:
            qToLittleEndian<quint16>(quint16(quint32(value) & 0xFFFFu), data + offset);
            break;
        case SetupFieldKind::Int32:
            qToLittleEndian<qint32>(value, data + offset);
            break;
        case SetupFieldKind::Text: {
            // The camera's writer copies the whole text, spilling into the
            // following fields, which then overwrite the spill as they are
            // written in turn. Keep that order; only the buffer bounds it.
            std::memset(data + offset, 0, size_t(field.width));
            const QByteArray utf8 = values.texts[size_t(index)].toUtf8();
            const qsizetype room = buffer.size() - offset;
            std::memcpy(data + offset, utf8.constData(), size_t(std::min(room, utf8.size())));
            break;
        }
        }
        offset += field.width;
    }
    return buffer;
}

} // namespace SetupRecordCodec
