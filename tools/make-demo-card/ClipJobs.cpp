#include "ClipJobs.h"

#include "ClipTelemetry.h"
#include "DemoTimeline.h"
#include "FfmpegCommands.h"
#include "RiffAviRewriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtEndian>

namespace {

using FfmpegCommands::Picture;

bool readFile(const QString& path, QByteArray& bytes, QString& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    bytes = file.readAll();
    return true;
}

bool writeFile(const QString& path, const QByteArray& bytes, QString& error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

bool moveInto(const QString& from, const QString& to, QString& error)
{
    QFile::remove(to);
    if (!QFile::rename(from, to)) {
        error = QStringLiteral("cannot move %1 to %2").arg(from, to);
        return false;
    }
    return true;
}

// The cameras' H.265 files announce "iso4" and "hvc1" in the file-type box;
// the viewer picks the codec tag for re-muxing from those brands.
void markHevcBrands(QByteArray& mp4)
{
    if (mp4.size() >= 32 && mp4.mid(4, 4) == "ftyp"
        && qFromBigEndian<quint32>(mp4.constData()) >= 24)
        mp4.replace(16, 8, "iso4hvc1");
}

// A top-level "free" box: ignored by players, read by the telemetry scan.
QByteArray freeBox(const QByteArray& payload)
{
    QByteArray box(4, '\0');
    qToBigEndian(quint32(payload.size() + 8), box.data());
    return box + QByteArray("free") + payload;
}

} // namespace

ClipJobs::ClipJobs(
    const DemoOptions& options, const DemoTimeline& timeline, QString workDir, QString cardRoot)
    : m_options(options)
    , m_timeline(timeline)
    , m_workDir(std::move(workDir))
    , m_cardRoot(std::move(cardRoot))
{
}

QString ClipJobs::finalPath(const DemoClip& clip, int file) const
{
    return m_cardRoot + QLatin1Char('/') + clip.folder + QLatin1Char('/') + clip.files[file];
}

QString ClipJobs::scratchPath(const DemoClip& clip, int file, const QString& suffix) const
{
    return m_workDir + QLatin1Char('/') + QFileInfo(clip.files[file]).completeBaseName() + suffix;
}

bool ClipJobs::add(const DemoClip& clip, FfmpegJobs& jobs, QString& error) const
{
    if (!QDir(m_cardRoot).mkpath(clip.folder)) {
        error = QStringLiteral("cannot create %1/%2").arg(m_cardRoot, clip.folder);
        return false;
    }
    switch (clip.format) {
    case ClipFormat::Mp4Pair:
        return addMp4Pair(clip, jobs, error);
    case ClipFormat::AviTwoStreams:
        addAvi(clip, jobs);
        return true;
    case ClipFormat::AviOneStream:
    case ClipFormat::QuickTime:
    case ClipFormat::Mp4Plain:
        addSingle(clip, jobs);
        return true;
    }
    return true;
}

namespace {

Picture pictureOf(
    const DemoOptions& options, const DemoTimeline& timeline, const DemoClip& clip, bool rear)
{
    const QDateTime local = timeline.localTimeAt(clip.start);
    Picture picture;
    picture.size = rear ? options.rearSize : options.frontSize;
    picture.fps = options.fps;
    picture.rear = rear;
    picture.label = clip.camera + (rear ? QStringLiteral(" REAR") : QStringLiteral(" FRONT"));
    picture.clockStart = local.toSecsSinceEpoch() + local.offsetFromUtc();
    picture.clockScale = int(clip.timeScale);
    return picture;
}

double pixelSeconds(const Picture& picture, int seconds)
{
    return double(picture.size.width()) * picture.size.height() * picture.fps * seconds;
}

ClipTelemetry telemetryOf(const DemoTimeline& timeline, const DemoClip& clip)
{
    return ClipTelemetry::record(
        timeline, clip.start, clip.seconds, clip.gRate, clip.fixFromSecond, clip.timeScale);
}

} // namespace

bool ClipJobs::addMp4Pair(const DemoClip& clip, FfmpegJobs& jobs, QString& error) const
{
    const QString script = scratchPath(clip, 0, QStringLiteral(".srt"));
    const QByteArray text
        = TelemetryScripts::subtitleScript(telemetryOf(m_timeline, clip), clip.subtitleStyle);
    if (!writeFile(script, text, error))
        return false;
    for (int file = 0; file < 2; ++file) {
        const Picture picture = pictureOf(m_options, m_timeline, clip, file == 1);
        const QString scratch = scratchPath(clip, file, QStringLiteral(".mp4"));
        const QString target = finalPath(clip, file);
        const bool hevc = clip.hevc;
        FfmpegJob job;
        job.label = clip.folder + QLatin1Char('/') + clip.files[file];
        job.arguments = FfmpegCommands::start()
            + FfmpegCommands::pictureInput(picture, clip.seconds)
            + QStringList { QStringLiteral("-i"), script, QStringLiteral("-map"),
                  QStringLiteral("0:v"), QStringLiteral("-map"), QStringLiteral("1:s"),
                  QStringLiteral("-vf"), FfmpegCommands::pictureFilter(picture) }
            + (hevc ? FfmpegCommands::hevc(picture.fps) : FfmpegCommands::h264(picture.fps))
            + QStringList { QStringLiteral("-c:s"), QStringLiteral("mov_text") }
            + FfmpegCommands::reproducible() + QStringList { scratch };
        // H.265 takes about five times the work of H.264.
        job.cost = pixelSeconds(picture, clip.seconds) * (hevc ? 5 : 1);
        job.finish = [scratch, target, hevc](QString& error) {
            if (!hevc)
                return moveInto(scratch, target, error);
            QByteArray bytes;
            if (!readFile(scratch, bytes, error))
                return false;
            markHevcBrands(bytes);
            QFile::remove(scratch);
            return writeFile(target, bytes, error);
        };
        jobs.add(job);
    }
    return true;
}

void ClipJobs::addAvi(const DemoClip& clip, FfmpegJobs& jobs) const
{
    const Picture front = pictureOf(m_options, m_timeline, clip, false);
    const Picture rear = pictureOf(m_options, m_timeline, clip, true);
    QStringList arguments = FfmpegCommands::start()
        + FfmpegCommands::pictureInput(front, clip.seconds)
        + FfmpegCommands::pictureInput(rear, clip.seconds);
    if (clip.audio)
        arguments += FfmpegCommands::soundInput(clip.seconds);
    // Stream 0 front, 1 rear, 2 sound: the order the viewer's conversion maps.
    arguments += QStringList { QStringLiteral("-map"), QStringLiteral("0:v"),
        QStringLiteral("-map"), QStringLiteral("1:v") };
    if (clip.audio)
        arguments += QStringList { QStringLiteral("-map"), QStringLiteral("2:a") };
    arguments += QStringList { QStringLiteral("-filter:v:0"), FfmpegCommands::pictureFilter(front),
        QStringLiteral("-filter:v:1"), FfmpegCommands::pictureFilter(rear) };
    arguments += FfmpegCommands::h264(front.fps);
    if (clip.audio)
        arguments += FfmpegCommands::pcmSound();
    const QString scratch = scratchPath(clip, 0, QStringLiteral(".avi"));
    arguments += FfmpegCommands::reproducible() + QStringList { scratch };

    const ClipTelemetry telemetry = telemetryOf(m_timeline, clip);
    const QVector<TelemetryScripts::TimedChunk> chunks = clip.chunkFamily == ChunkFamily::Kel
        ? TelemetryScripts::kelChunks(telemetry, clip.chunkTag)
        : TelemetryScripts::aviChunks(telemetry, clip.chunkTag, clip.gPrefixedRmc);
    const QString target = finalPath(clip, 0);
    jobs.add({ clip.folder + QLatin1Char('/') + clip.files[0], arguments,
        [scratch, target, chunks](QString& error) {
            QByteArray bytes;
            if (!readFile(scratch, bytes, error))
                return false;
            RiffAviRewriter rewriter;
            if (!rewriter.load(bytes)) {
                error = rewriter.errorString();
                return false;
            }
            QFile::remove(scratch);
            return writeFile(target, rewriter.rewrite(chunks), error);
        },
        pixelSeconds(front, clip.seconds) + pixelSeconds(rear, clip.seconds) });
}

void ClipJobs::addSingle(const DemoClip& clip, FfmpegJobs& jobs) const
{
    const Picture front = pictureOf(m_options, m_timeline, clip, false);
    QStringList arguments
        = FfmpegCommands::start() + FfmpegCommands::pictureInput(front, clip.seconds);
    if (clip.audio)
        arguments += FfmpegCommands::soundInput(clip.seconds)
            + QStringList { QStringLiteral("-map"), QStringLiteral("0:v"), QStringLiteral("-map"),
                  QStringLiteral("1:a") };
    arguments += QStringList { QStringLiteral("-vf"), FfmpegCommands::pictureFilter(front) };
    arguments += FfmpegCommands::h264(front.fps);
    if (clip.audio)
        arguments += FfmpegCommands::pcmSound();
    const QString suffix = QLatin1Char('.') + QFileInfo(clip.files[0]).suffix();
    const QString scratch = scratchPath(clip, 0, suffix);
    arguments += FfmpegCommands::reproducible() + QStringList { scratch };

    // What goes after the video: the text block, the tagged records, or nothing.
    const ClipTelemetry telemetry = telemetryOf(m_timeline, clip);
    QByteArray trailer;
    if (clip.format == ClipFormat::AviOneStream)
        trailer = TelemetryScripts::tailBlock(telemetry);
    else if (clip.format == ClipFormat::QuickTime)
        trailer = freeBox(TelemetryScripts::rawRecords(telemetry));
    const QString target = finalPath(clip, 0);
    jobs.add({ clip.folder + QLatin1Char('/') + clip.files[0], arguments,
        [scratch, target, trailer](QString& error) {
            if (trailer.isEmpty())
                return moveInto(scratch, target, error);
            QByteArray bytes;
            if (!readFile(scratch, bytes, error))
                return false;
            QFile::remove(scratch);
            return writeFile(target, bytes + trailer, error);
        },
        pixelSeconds(front, clip.seconds) });
}
