// Feeds arbitrary bytes to the settings-record decoder as setup.cfg (with a
// field count taken from the first byte) and as default.cfg, and re-encodes.
#include "config/SetupRecordCodec.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const int count = int(data[0]) - 8; // -8 .. 247 covers every count and beyond
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
    SetupValues values;
    const int decoded = SetupRecordCodec::decode(bytes, count, values);
    if (decoded < 0 || decoded > SetupRecordLayout::kFieldCount)
        std::abort();
    const QByteArray record = SetupRecordCodec::encode(values, count);
    if (record.size() != SetupRecordLayout::recordSize(count < 0 ? 0 : count))
        std::abort();
    SetupValues defaults;
    SetupRecordCodec::decodeDefaultCfg(bytes, defaults);
    SetupRecordCodec::encode(defaults, SetupRecordLayout::kFieldCount);
    return 0;
}
