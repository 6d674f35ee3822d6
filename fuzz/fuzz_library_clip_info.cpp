// Feeds arbitrary bytes to what the clip conversion reads from outside: the
// codec type at the head of a clip file, and ffmpeg's stream report (the same
// bytes read as its text), plus the partner rule on the bytes read as a path;
// and to what a trip reads of a clip's container (its length, streams and
// picture size from the MP4 or AVI headers).
#include "library/ClipMediaInfo.h"
#include "library/ClipNaming.h"
#include "library/Utils.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QString path
        = QDir::tempPath() + QStringLiteral("/fuzz_library_clip_info_%1.bin").arg(getpid());
    // Leaves no file behind when the run ends.
    static const struct Cleanup {
        ~Cleanup() { QFile::remove(path); }
    } cleanup;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
            || file.write(bytes) != bytes.size())
            std::abort();
    }
    const int type = Utils::GetAviType(path);
    if (type < 0 || type > 3)
        std::abort();

    const QString report = QString::fromUtf8(bytes);
    const int video = Utils::GetVideoStreamCountFromVideoInfo(report);
    const int audio = Utils::GetAudioStreamCountFromVideoInfo(report);
    // Each stream counted takes at least "Stream #0:0: Video" of the text; the
    // same words may count once as video and once as audio.
    if (video < 0 || audio < 0 || video * 18 > report.size() || audio * 18 > report.size())
        std::abort();

    // Every stream counted has a header of eight bytes at least.
    const ClipMediaInfo media = ClipMediaInfo::fromBytes(bytes);
    if (!std::isfinite(media.seconds) || media.seconds < 0 || media.videoStreams < 0
        || media.audioStreams < 0
        || qsizetype(media.videoStreams + media.audioStreams) * 8 > bytes.size()
        || media.frameSize.width() < 0 || media.frameSize.height() < 0)
        std::abort();

    const QUrl url = QUrl::fromLocalFile(QStringLiteral("/card/") + report);
    const QString partner = ClipNaming::partnerString(url);
    if (!partner.isEmpty() && partner.size() != ClipNaming::absoluteUrlString(url).size())
        std::abort();
    ClipNaming::conversionPartnerString(url);
    return 0;
}
