#include "cli/TelemetrySubtitleExtract.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace TelemetrySubtitleExtract {

namespace {
constexpr int kTimeoutMs = 10 * 60 * 1000;
}

bool ffmpegAvailable()
{
    return !QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty();
}

Result extract(const QString& clipPath, const QString& srtPath)
{
    Result result;
    const QString ffmpeg = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (ffmpeg.isEmpty()) {
        result.message = QStringLiteral("ffmpeg not found");
        return result;
    }
    result.ffmpegFound = true;
    // "file:" keeps a name with a colon from being taken for a protocol.
    const QStringList args { QStringLiteral("-nostdin"), QStringLiteral("-loglevel"),
        QStringLiteral("error"), QStringLiteral("-y"), QStringLiteral("-i"),
        QStringLiteral("file:") + QFileInfo(clipPath).absoluteFilePath(), QStringLiteral("-vn"),
        QStringLiteral("-an"), QStringLiteral("-c:s"), QStringLiteral("text"),
        QStringLiteral("file:") + srtPath };
    QProcess process;
    process.start(ffmpeg, args);
    if (!process.waitForFinished(kTimeoutMs)) {
        process.kill();
        process.waitForFinished();
        result.message = QStringLiteral("ffmpeg did not finish");
        return result;
    }
    result.written = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
        && QFileInfo::exists(srtPath);
    if (!result.written)
        result.message = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
    return result;
}

} // namespace TelemetrySubtitleExtract
