#include "PlayerClips.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

bool runFfmpeg(const QString& args, const QString& output, QString* error)
{
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"),
        QStringLiteral("-hide_banner -loglevel error -y ").append(args).split(u' ') << output);
    if (ffmpeg.waitForFinished(60000) && ffmpeg.exitStatus() == QProcess::NormalExit
        && ffmpeg.exitCode() == 0)
        return true;
    *error = QStringLiteral("ffmpeg failed: ") + QString::fromUtf8(ffmpeg.readAllStandardError());
    return false;
}

bool makeClips(PlayerClips& clips, const QString& dir)
{
    clips.redOverBlue = dir + QStringLiteral("/red_over_blue.mp4");
    clips.greenFractional = dir + QStringLiteral("/green.mp4");
    clips.audioOnly = dir + QStringLiteral("/sound.m4a");
    clips.dualStreamAvi = dir + QStringLiteral("/dual.avi");
    clips.garbage = dir + QStringLiteral("/garbage.mp4");
    clips.missing = dir + QStringLiteral("/missing.mp4");
    QFile garbage(clips.garbage);
    if (!garbage.open(QIODevice::WriteOnly) || garbage.write(QByteArray(4096, 'x')) != 4096)
        return false;
    garbage.close();
    const QString h264 = QStringLiteral(" -c:v libx264 -preset ultrafast -pix_fmt yuv420p -g 10");
    const std::pair<QString, QString> made[] = {
        { clips.redOverBlue,
            "-f lavfi -i color=c=red:s=320x120:r=10:d=15 -f lavfi -i "
            "color=c=blue:s=320x120:r=10:d=15 "
            "-f lavfi -i sine=frequency=440:duration=15 -filter_complex [0][1]vstack[v] "
            "-map [v] -map 2 -c:a aac -t 15"
                + h264 },
        { clips.greenFractional, "-f lavfi -i color=c=green:s=160x120:r=10:d=4.5" + h264 },
        { clips.audioOnly, "-f lavfi -i sine=frequency=330:duration=2 -c:a aac" },
        { clips.dualStreamAvi,
            "-f lavfi -i color=c=red:s=320x240:r=10:d=3 -f lavfi -i "
            "color=c=blue:s=160x120:r=10:d=3 "
            "-map 0 -map 1 -c:v mjpeg -q:v 5" },
    };
    for (const auto& [output, args] : made) {
        if (!runFfmpeg(args, output, &clips.error))
            return false;
    }
    return true;
}

} // namespace

const PlayerClips& PlayerClips::shared()
{
    static QTemporaryDir dir;
    static const PlayerClips clips = [] {
        PlayerClips made;
        if (QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty())
            made.error = QStringLiteral("ffmpeg is not installed");
        else if (!dir.isValid())
            made.error = QStringLiteral("no temporary folder");
        else
            made.ok = makeClips(made, dir.path());
        return made;
    }();
    return clips;
}
