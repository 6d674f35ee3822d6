#include "library/ClipConverter.h"

#include "library/ClipNaming.h"
#include "library/FfmpegArguments.h"
#include "library/LibraryLogging.h"
#include "library/ProcessRunner.h"
#include "library/Utils.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

constexpr QLatin1StringView kTempVideo("temp_video");

QString withSrtExtension(const QString& path)
{
    const QFileInfo info(path);
    return info.path() + u'/' + info.completeBaseName() + QLatin1String(".srt");
}

} // namespace

ClipConverter::ClipConverter(ProcessRunner& runner, QString workingDirectory)
    : m_runner(&runner)
    , m_workingDirectory(std::move(workingDirectory))
{
}

ClipConverter::ClipConverter()
    : ClipConverter(Utils::defaultProcessRunner())
{
}

void ClipConverter::cancel() const
{
    m_runner->cancel();
}

void ClipConverter::resetCancel() const
{
    m_runner->resetCancel();
}

QString ClipConverter::workingDirectory() const
{
    return m_workingDirectory.isEmpty() ? Utils::GetWorkingDirectoryPath() : m_workingDirectory;
}

QString ClipConverter::cacheFolderPath(const QString& clipPath) const
{
    const QString working = workingDirectory();
    if (working.isEmpty())
        return {};
    const QFileInfo clip(clipPath);
    return working + u'/' + kTempVideo + u'/'
        + QStringLiteral("%1_%2").arg(clip.completeBaseName(), QString::number(clip.size()));
}

std::optional<QList<QUrl>> ClipConverter::checkAndConvertVideo(const QUrl& clipUrl) const
{
    if (clipUrl.isEmpty())
        return std::nullopt;
    const QString extension = ClipNaming::lowerExtension(clipUrl);
    if (extension != QLatin1String("avi") && extension != QLatin1String("mp4"))
        return QList<QUrl> { clipUrl }; // played as it is
    const QString clip = clipUrl.toLocalFile();
    if (!QFileInfo(clip).isFile())
        return QList<QUrl> {}; // nothing to convert
    const QString folder = cacheFolderPath(clip);
    if (folder.isEmpty() || !QDir().mkpath(QFileInfo(folder).path()) || !QDir().mkpath(folder)) {
        qCDebug(lcLibrary) << "cannot create the cache folder" << folder;
        return std::nullopt;
    }
    const QString name = QFileInfo(clip).completeBaseName();
    const Outputs outputs { folder + u'/' + name + QLatin1String("_f.mov"),
        folder + u'/' + name + QLatin1String("_r.mov") };
    // Both outputs present: the clip was converted before, whatever it holds.
    if (!QFileInfo::exists(outputs.front) || !QFileInfo::exists(outputs.rear)) {
        if (extension == QLatin1String("mp4"))
            convertMp4(clipUrl, outputs);
        else
            convertAvi(clip, outputs);
    }
    QList<QUrl> files;
    for (const QString& output : { outputs.front, outputs.rear }) {
        if (QFileInfo::exists(output))
            files.append(QUrl::fromLocalFile(output));
    }
    return files;
}

void ClipConverter::convertAvi(const QString& clip, const Outputs& outputs) const
{
    const int videoStreams = Utils::GetVideoStreamCountFromVideoPath(clip, *m_runner);
    if (videoStreams >= 2) {
        // Front and rear camera are two video streams of one file.
        const int type = Utils::GetAviType(clip);
        const bool withAudio = Utils::GetAudioStreamCountFromVideoPath(clip, *m_runner) >= 1;
        runIntoPlace(FfmpegArguments::dualStreamArguments(
            clip, QStringLiteral("0:0"), withAudio, type, outputs.front));
        runIntoPlace(FfmpegArguments::dualStreamArguments(
            clip, QStringLiteral("0:1"), withAudio, type, outputs.rear));
    } else if (videoStreams == 1 && !QFileInfo::exists(outputs.front)) {
        runIntoPlace(
            FfmpegArguments::singleStreamArguments(clip, Utils::GetAviType(clip), outputs.front));
    }
}

void ClipConverter::convertMp4(const QUrl& clipUrl, const Outputs& outputs) const
{
    const QString clip = clipUrl.toLocalFile();
    const int type = Utils::GetAviType(clip);
    if (!QFileInfo::exists(outputs.front))
        convertOneCamera(clip, type, outputs.front);
    if (QFileInfo::exists(outputs.rear))
        return;
    // The other camera's clip differs by "F." / "R." (or "F_BC." / "R_BC.");
    // it is re-muxed with this clip's codec type.
    const QString partner = ClipNaming::conversionPartnerString(clipUrl);
    if (partner.isEmpty())
        return;
    const QString partnerPath = QUrl(partner).toLocalFile();
    if (QFileInfo(partnerPath).isFile())
        convertOneCamera(partnerPath, type, outputs.rear);
}

void ClipConverter::convertOneCamera(const QString& input, int aviType, const QString& output) const
{
    // The subtitles first: a movie in the cache always has its telemetry beside it.
    runIntoPlace(FfmpegArguments::subtitleArguments(input, withSrtExtension(output)));
    runIntoPlace(FfmpegArguments::singleStreamArguments(input, aviType, output));
}

bool ClipConverter::runIntoPlace(QStringList arguments) const
{
    // ffmpeg writes under a hidden name of the same kind (ffmpeg picks the
    // format by the extension); only a run that ends with status 0 puts it in
    // place, so an output in the cache is always a complete one.
    const QString output = arguments.last();
    const QFileInfo info(output);
    const QString partial = info.path() + QStringLiteral("/.") + info.completeBaseName()
        + QStringLiteral(".partial.") + info.suffix();
    arguments.last() = partial;
    QFile::remove(partial);
    const ProcessRunner::Result result = m_runner->execute(Utils::GetFFMPEGPath(), arguments);
    if (result.succeeded && QFileInfo(partial).isFile()
        && ::rename(QFile::encodeName(partial).constData(), QFile::encodeName(output).constData())
            == 0)
        return true;
    qCDebug(lcLibrary) << "ffmpeg did not finish" << output;
    QFile::remove(partial);
    return false;
}
