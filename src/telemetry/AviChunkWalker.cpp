#include "telemetry/AviChunkWalker.h"

#include <QtEndian>

#include <cstdint>

namespace {

constexpr QByteArrayView kRiff("RIFF");
constexpr QByteArrayView kAviType("AVI ");
constexpr QByteArrayView kList("LIST");
constexpr QByteArrayView kTextChunk2("02tx");
constexpr QByteArrayView kTextChunk3("03tx");
constexpr uint64_t kHeaderSize = 8;
constexpr uint64_t kListTypeSize = 4;

} // namespace

bool AviChunkWalker::walk(QByteArrayView bytes, const TelemetryVisitor& visit)
{
    if (bytes.size() < 12 || bytes.first(4) != kRiff || bytes.sliced(8, 4) != kAviType)
        return false;
    const auto length = static_cast<uint64_t>(bytes.size());
    uint64_t pos = 12;
    while (pos + kHeaderSize <= length) {
        const QByteArrayView code = bytes.sliced(static_cast<qsizetype>(pos), 4);
        const uint64_t size = qFromLittleEndian<quint32>(bytes.data() + pos + 4);
        pos += kHeaderSize;
        if (code == kList) {
            pos += kListTypeSize; // children follow the list type
            continue;
        }
        if (code == kTextChunk2 || code == kTextChunk3) {
            const uint64_t available = pos < length ? length - pos : 0;
            const uint64_t taken = size < available ? size : available;
            const QByteArrayView data
                = bytes.sliced(static_cast<qsizetype>(pos), static_cast<qsizetype>(taken));
            if (!visit(data))
                return true;
        }
        pos += size + (size & 1);
    }
    return true;
}
