#include "telemetry/KelChunkParser.h"

#include "telemetry/AviChunkParser.h"
#include "telemetry/AviChunkWalker.h"
#include "telemetry/SampleWriter.h"
#include "telemetry/SecondBuffer.h"
#include "telemetry/TavroClipData.h"

namespace {

uint8_t dataByte(QByteArrayView data, qsizetype index)
{
    return index < data.size() ? static_cast<uint8_t>(data[index]) : 0;
}

int16_t scaled(uint8_t byte)
{
    return static_cast<int16_t>(10 * static_cast<int>(byte) - 1280);
}

bool isKelGRecord(QByteArrayView data)
{
    return dataByte(data, 4) == 1 && dataByte(data, 5) == 1 && dataByte(data, 6) == 1;
}

} // namespace

int KelChunkParser::parse(QByteArrayView bytes, TavroClipData& record) const
{
    SampleWriter writer(record);
    SecondBuffer second(SecondBuffer::kChunkCapacity);
    GpsFix current;
    const bool isAvi = AviChunkWalker::walk(bytes, [&](QByteArrayView data) {
        const uint8_t kind = dataByte(data, 0);
        if (kind == 'M' && isKelGRecord(data)) {
            second.append({ scaled(dataByte(data, 1)), scaled(dataByte(data, 2)),
                scaled(dataByte(data, 3)) });
        } else if ((kind == '$' || kind == 'G') && AviChunkParser::readRmcChunk(data, current)) {
            if (!second.isEmpty())
                second.distribute(writer, current);
        }
        return !writer.isFull();
    });
    if (isAvi && !second.isEmpty() && writer.count() > 0)
        second.distribute(writer, current);
    return writer.finish();
}
