#include "PlayerClips.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

bool runFfmpeg(const QStringList& args, QString* error)
{
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"),
        QStringList { QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"),
            QStringLiteral("error"), QStringLiteral("-y") }
            + args);
    if (!ffmpeg.waitForFinished(60000) || ffmpeg.exitStatus() != QProcess::NormalExit
        || ffmpeg.exitCode() != 0) {
        *error
            = QStringLiteral("ffmpeg failed: ") + QString::fromUtf8(ffmpeg.readAllStandardError());
        return false;
    }
    return true;
}

QStringList split(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
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

    const QString h264 = QStringLiteral("-c:v libx264 -preset ultrafast -pix_fmt yuv420p -g 10");
    return runFfmpeg(
               split("-f lavfi -i color=c=red:s=320x120:r=10:d=15 -f lavfi -i "
                     "color=c=blue:s=320x120:r=10:d=15 "
                     "-f lavfi -i sine=frequency=440:duration=15 -filter_complex [0][1]vstack[v] "
                     "-map [v] -map 2")
                   + split(h264.toLatin1()) + split("-c:a aac -t 15")
                   + QStringList { clips.redOverBlue },
               &clips.error)
        && runFfmpeg(split("-f lavfi -i color=c=green:s=160x120:r=10:d=4.5")
                + split(h264.toLatin1()) + QStringList { clips.greenFractional },
            &clips.error)
        && runFfmpeg(split("-f lavfi -i sine=frequency=330:duration=2 -c:a aac")
                + QStringList { clips.audioOnly },
            &clips.error)
        && runFfmpeg(split("-f lavfi -i color=c=red:s=320x240:r=10:d=3 -f lavfi -i "
                           "color=c=blue:s=160x120:r=10:d=3 "
                           "-map 0 -map 1 -c:v mjpeg -q:v 5")
                + QStringList { clips.dualStreamAvi },
            &clips.error);
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
