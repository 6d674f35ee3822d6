#include "cut/VideoCut.h"

#include "cut/CutCommandLines.h"
#include "cut/TelemetryOverlay.h"
#include "library/ProcessRunner.h"
#include "library/Utils.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <cmath>
#include <cstdio>
#include <sys/stat.h>

namespace VideoCut {

namespace {

using CutPlan::Segment;
using Status = Result::Status;

Result failure(Status status, const QString& message)
{
    Result result;
    result.status = status;
    result.message = message;
    return result;
}

bool writeText(const QString& path, const QString& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.flush();
}

// What ffmpeg said, without its progress report.
QString complaint(const QByteArray& output)
{
    QStringList lines;
    for (const QByteArray& line : output.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (!trimmed.isEmpty() && !trimmed.contains('='))
            lines << QString::fromUtf8(trimmed);
    }
    return lines.mid(std::max<qsizetype>(0, lines.size() - 3)).join(QStringLiteral("; "));
}

// Hands ffmpeg's "-progress" lines, split across chunks as they may be, to
// the caller's function.
class ProgressReader {
public:
    ProgressReader(const Progress& progress, double total)
        : m_progress(progress)
        , m_total(total)
    {
    }

    void operator()(const QByteArray& chunk)
    {
        m_pending += chunk;
        qsizetype end = 0;
        while ((end = m_pending.indexOf('\n')) >= 0) {
            const QByteArray line = m_pending.left(end);
            m_pending.remove(0, end + 1);
            if (const auto done = CutCommandLines::progressSeconds(line); done && m_progress)
                m_progress(std::min(*done, m_total), m_total);
        }
    }

private:
    const Progress& m_progress;
    double m_total;
    QByteArray m_pending;
};

// Gives the finished file the permissions of any new file of the user's.
void usualPermissions(const QString& path)
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::chmod(QFile::encodeName(path).constData(), 0666 & ~mask);
}

} // namespace

QString ffprobePath()
{
    const QString ffmpeg = Utils::GetFFMPEGPath();
    if (!ffmpeg.isEmpty()) {
        const QFileInfo beside(QFileInfo(ffmpeg).dir(), QStringLiteral("ffprobe"));
        if (beside.isExecutable())
            return beside.absoluteFilePath();
    }
    return QStandardPaths::findExecutable(QStringLiteral("ffprobe"));
}

Result cut(const Trip& trip, const CutPlan::Request& request, const QString& output,
    ProcessRunner& runner, const Progress& progress)
{
    const QVector<Segment> segments = CutPlan::segments(trip, request);
    if (segments.isEmpty())
        return failure(Status::NothingRecorded, QStringLiteral("nothing was recorded there"));
    const QString ffmpeg = Utils::GetFFMPEGPath();
    const QString ffprobe = ffprobePath();
    if (ffmpeg.isEmpty() || ffprobe.isEmpty())
        return failure(Status::Failed, QStringLiteral("ffmpeg and ffprobe are needed"));

    const QFileInfo target(output);
    QTemporaryFile partial(target.absolutePath() + QStringLiteral("/.") + target.fileName()
        + QStringLiteral(".XXXXXX.part"));
    if (!target.absoluteDir().exists() || !partial.open())
        return failure(
            Status::CannotWrite, QStringLiteral("cannot write into %1").arg(target.absolutePath()));
    partial.close();
    QTemporaryDir scratch;
    if (!scratch.isValid())
        return failure(Status::CannotWrite, QStringLiteral("cannot make a temporary folder"));

    Result result;
    result.output = target.absoluteFilePath();
    result.reencoded = request.reencodes();
    const Segment& first = segments.first();
    double start = first.inpoint;
    QStringList arguments;
    if (!result.reencoded) {
        const auto probe
            = runner.execute(ffprobe, CutCommandLines::keyFrameProbe(first.main, first.inpoint));
        if (!probe.succeeded)
            return failure(Status::Failed, QStringLiteral("cannot read %1").arg(first.main.path));
        start = CutCommandLines::keyFrameAtOrBefore(probe.output, first.inpoint);
        const QString list = scratch.filePath(QStringLiteral("clips.ffconcat"));
        if (!writeText(list, CutCommandLines::concatList(segments, start)))
            return failure(Status::CannotWrite, QStringLiteral("cannot write a temporary file"));
        arguments = CutCommandLines::copyArguments(list, segments, partial.fileName());
    } else {
        const auto probe = runner.execute(ffprobe, CutCommandLines::frameSizeProbe(first.main));
        const QSize size = CutCommandLines::frameSize(probe.output);
        if (!probe.succeeded || size.isEmpty())
            return failure(Status::Failed, QStringLiteral("cannot read %1").arg(first.main.path));
        QString ass;
        if (request.overlay) {
            ass = scratch.filePath(QStringLiteral("telemetry.ass"));
            const QSize picture = CutCommandLines::outputSize(request, size);
            if (!writeText(
                    ass, TelemetryOverlay::assScript(trip, segments, picture, request.miles)))
                return failure(
                    Status::CannotWrite, QStringLiteral("cannot write a temporary file"));
        }
        arguments
            = CutCommandLines::reencodeArguments(segments, request, size, ass, partial.fileName());
    }
    result.duration = CutPlan::totalLength(segments) + first.inpoint - start;
    result.startUtc
        = trip.startUtc + int64_t(std::llround((trip.clips[first.clip].offset + start) * 1000.0));

    ProgressReader reader(progress, result.duration);
    const auto run = runner.executeStreaming(
        ffmpeg, arguments, [&reader](const QByteArray& chunk) { reader(chunk); });
    if (!run.succeeded || QFileInfo(partial.fileName()).size() <= 0)
        return failure(
            Status::Failed, QStringLiteral("ffmpeg failed: %1").arg(complaint(run.output)));
    if (progress)
        progress(result.duration, result.duration);
    usualPermissions(partial.fileName());
    if (std::rename(QFile::encodeName(partial.fileName()).constData(),
            QFile::encodeName(result.output).constData())
        != 0)
        return failure(Status::CannotWrite, QStringLiteral("cannot write %1").arg(result.output));
    partial.setAutoRemove(false);
    result.status = Status::Done;
    return result;
}

} // namespace VideoCut
