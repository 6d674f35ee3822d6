// Feeds arbitrary bytes to the reader of a pending clock request
// (SETTING/time.dat); whatever it accepts must write back to the same time.
#include "config/TimeDatFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const std::optional<QDateTime> request = TimeDatFile::parse(bytes);
    if (!request)
        return 0;
    if (!request->isValid())
        std::abort();
    const std::optional<QDateTime> again = TimeDatFile::parse(TimeDatFile::format(*request));
    if (!again || *again != *request || again->offsetFromUtc() != request->offsetFromUtc())
        std::abort();
    return 0;
}
