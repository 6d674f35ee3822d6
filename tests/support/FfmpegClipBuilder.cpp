#include "FfmpegClipBuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace FfmpegClipBuilder {
namespace {

QString& log()
{
    static QString text;
    return text;
}

bool runTool(const QString& program, const QStringList& arguments, QByteArray* output = nullptr)
{
    // The output (last argument) may go into a folder that does not exist yet.
    if (program == QLatin1String("ffmpeg"))
        QDir().mkpath(QFileInfo(arguments.last()).absolutePath());
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    const bool finished = process.waitForFinished(60000);
    if (!finished) {
        process.kill();
        process.waitForFinished();
    }
    if (output)
        *output = process.readAllStandardOutput();
    log() = QString::fromUtf8(process.readAllStandardError());
    return finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QStringList lavfiVideo(int width, int height)
{
    return { QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
        QStringLiteral("testsrc=size=%1x%2:rate=10:duration=1").arg(width).arg(height) };
}

} // namespace

bool makeDualStreamAvi(const QString& path, bool withAudio)
{
    QStringList arguments { QStringLiteral("-hide_banner"), QStringLiteral("-v"),
        QStringLiteral("error") };
    arguments << lavfiVideo(64, 48) << lavfiVideo(32, 24);
    if (withAudio) {
        arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
                  << QStringLiteral("sine=duration=1:sample_rate=8000");
    }
    arguments << QStringLiteral("-map") << QStringLiteral("0") << QStringLiteral("-map")
              << QStringLiteral("1");
    if (withAudio)
        arguments << QStringLiteral("-map") << QStringLiteral("2") << QStringLiteral("-c:a")
                  << QStringLiteral("pcm_s16le");
    arguments << QStringLiteral("-c:v") << QStringLiteral("libx264") << QStringLiteral("-preset")
              << QStringLiteral("ultrafast") << QStringLiteral("-y") << path;
    return runTool(QStringLiteral("ffmpeg"), arguments);
}

bool makeSubtitledMp4(const QString& path, const QString& srtText, int width)
{
    QTemporaryDir scratch;
    const QString srtPath = scratch.filePath(QStringLiteral("records.srt"));
    QFile srt(srtPath);
    if (!scratch.isValid() || !srt.open(QIODevice::WriteOnly))
        return false;
    srt.write(srtText.toUtf8());
    srt.close();
    QStringList arguments { QStringLiteral("-hide_banner"), QStringLiteral("-v"),
        QStringLiteral("error") };
    arguments << lavfiVideo(width, 48) << QStringLiteral("-i") << srtPath << QStringLiteral("-c:v")
              << QStringLiteral("libx264") << QStringLiteral("-preset")
              << QStringLiteral("ultrafast") << QStringLiteral("-c:s") << QStringLiteral("mov_text")
              << QStringLiteral("-y") << path;
    return runTool(QStringLiteral("ffmpeg"), arguments);
}

QStringList streams(const QString& path)
{
    QByteArray output;
    if (!runTool(QStringLiteral("ffprobe"),
            { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
                QStringLiteral("stream=codec_type,width,height"), QStringLiteral("-of"),
                QStringLiteral("csv=p=0"), path },
            &output))
        return {};
    QStringList result;
    for (const QByteArray& line : output.split('\n')) {
        const QList<QByteArray> fields = line.trimmed().split(',');
        if (fields.first() == "video" && fields.size() >= 3)
            result << QStringLiteral("video %1x%2")
                          .arg(QString::fromUtf8(fields[1]), QString::fromUtf8(fields[2]));
        else if (!fields.first().isEmpty())
            result << QString::fromUtf8(fields.first());
    }
    return result;
}

QString lastLog()
{
    return log();
}

} // namespace FfmpegClipBuilder
