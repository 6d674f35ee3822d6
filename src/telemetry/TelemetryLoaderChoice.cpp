#include "telemetry/TelemetryLoaderChoice.h"

#include <QFileInfo>

#include <array>

namespace TelemetryLoaderChoice {

Loader forClip(const QString& path)
{
    const QFileInfo info(path);
    if (info.suffix().toLower() == QLatin1String("mp4"))
        return Loader::Mp4Subtitle;
    // Kel-family cameras name their clips Rec_..., Event_..., Park_..., Manual_... .avi
    static constexpr std::array kKelPrefixes { "Rec_", "Event_", "Park_", "Manual_" };
    const QString name = info.fileName();
    if (name.endsWith(QLatin1String(".avi"))) {
        for (const char* prefix : kKelPrefixes) {
            if (name.startsWith(QLatin1String(prefix)))
                return Loader::Kel;
        }
    }
    return Loader::General;
}

} // namespace TelemetryLoaderChoice
