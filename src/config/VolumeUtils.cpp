#include "config/VolumeUtils.h"

#include "config/StorageVolumeSource.h"

namespace Utils {
namespace {

std::shared_ptr<const VolumeSource>& currentSource()
{
    static std::shared_ptr<const VolumeSource> source = std::make_shared<StorageVolumeSource>();
    return source;
}

std::optional<VolumeInfo> volumeOfUrl(const QUrl& url)
{
    if (url.isEmpty() || !url.isLocalFile())
        return std::nullopt;
    return volumeSource().volumeForPath(url.toLocalFile());
}

} // namespace

bool isEXteranlMemoryWithURL(const QUrl& url)
{
    const std::optional<VolumeInfo> volume = volumeOfUrl(url);
    return volume && volume->isLocal && volume->isRemovable;
}

QString volumeNameWithURL(const QUrl& url)
{
    const std::optional<VolumeInfo> volume = volumeOfUrl(url);
    return volume ? volume->name : QString();
}

const VolumeSource& volumeSource()
{
    return *currentSource();
}

void setVolumeSource(std::shared_ptr<const VolumeSource> source)
{
    currentSource() = source ? std::move(source) : std::make_shared<StorageVolumeSource>();
}

} // namespace Utils
