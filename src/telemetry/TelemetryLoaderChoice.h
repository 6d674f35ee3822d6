#pragma once

#include <QString>

// Which loader a clip's telemetry comes through, by its file name, as the
// player picks it: MP4 clips through the subtitle file extracted from them,
// Kel-family AVI clips through the Kel loader, everything else the general one.
namespace TelemetryLoaderChoice {

enum class Loader {
    General,
    Kel,
    Mp4Subtitle, // extract the subtitle track to "srt", then the general loader
};

Loader forClip(const QString& path);

} // namespace TelemetryLoaderChoice
