#include "library/ClipConverter.h"

#include "library/ClipNaming.h"
#include "library/FfmpegArguments.h"
#include "library/LibraryLogging.h"
#include "library/Utils.h"

#include <QDir>
#include <QFileInfo>

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
        Utils::ConvertAviToMovWithArguments(
            FfmpegArguments::dualStreamArguments(
                clip, QStringLiteral("0:0"), withAudio, type, outputs.front),
            *m_runner);
        Utils::ConvertAviToMovWithArguments(
            FfmpegArguments::dualStreamArguments(
                clip, QStringLiteral("0:1"), withAudio, type, outputs.rear),
            *m_runner);
    } else if (videoStreams == 1 && !QFileInfo::exists(outputs.front)) {
        Utils::ConvertAviToMovWithArguments(
            FfmpegArguments::singleStreamArguments(clip, Utils::GetAviType(clip), outputs.front),
            *m_runner);
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
    Utils::ConvertAviToMovWithArguments(
        FfmpegArguments::singleStreamArguments(input, aviType, output), *m_runner);
    Utils::ExtractMP4ToSrtWithArguments(
        FfmpegArguments::subtitleArguments(input, withSrtExtension(output)), *m_runner);
}
