#include "player/TavroAVViewStatus.h"

#include <array>

namespace {

constexpr std::array<const char*, 8> kStatusNames = {
    "TavroAVViewStatusInit",
    "TavroAVViewStatusLoading",
    "TavroAVViewStatusPrepared",
    "TavroAVViewStatusPlaying",
    "TavroAVViewStatusPaused",
    "TavroAVViewStatusEnded",
    "TavroAVViewStatusUnknown",
    "TavroAVViewStatusError",
};

} // namespace

QString TavroAVViewStatusName(int status)
{
    if (status < 0 || status >= int(kStatusNames.size()))
        return QString::fromLatin1(kStatusNames[int(TavroAVViewStatus::Unknown)]);
    return QString::fromLatin1(kStatusNames[std::size_t(status)]);
}

QString TavroAVViewStatusName(TavroAVViewStatus status)
{
    return TavroAVViewStatusName(int(status));
}
