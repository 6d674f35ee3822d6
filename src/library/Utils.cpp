#include "library/Utils.h"

#include "library/LibraryLogging.h"
#include "library/QtProcessRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QRegularExpression>
#include <QStandardPaths>

#include <array>
#include <optional>

namespace {

constexpr qint64 kHandlerOffset = 112; // codec handler of an AVI's first stream header
constexpr qint64 kBrandsOffset = 16; // brands of an MP4's file-type box
constexpr qint64 kTypeTextLength = 16;
constexpr std::array<QLatin1StringView, 3> kTypeNames { QLatin1StringView("H264"),
    QLatin1StringView("AVC1"), QLatin1StringView("iso4hvc1") };

QMutex& ffmpegPathMutex()
{
    static QMutex mutex;
    return mutex;
}

QString& ffmpegPathOverride()
{
    static QString path;
    return path;
}

// Reads up to 16 bytes at the offset as ASCII text. No text (nullopt) when
// the file cannot be opened or a byte is not ASCII; fewer bytes near the end
// of the file give a shorter text.
std::optional<QString> readTypeText(QFile& file, qint64 offset)
{
    if (!file.isOpen())
        return std::nullopt;
    QByteArray bytes;
    if (offset < file.size() && file.seek(offset))
        bytes = file.read(kTypeTextLength);
    for (const char byte : bytes) {
        if (static_cast<unsigned char>(byte) > 0x7F)
            return std::nullopt;
    }
    return QString::fromLatin1(bytes);
}

// Index of the first type name the text starts with, ignoring case. With no
// text at all every comparison counts as equal, so the first name wins.
std::optional<int> matchTypeName(const std::optional<QString>& text)
{
    for (int i = 0; i < int(kTypeNames.size()); ++i) {
        const QLatin1StringView name = kTypeNames[size_t(i)];
        if (!text)
            return i;
        if (text->size() >= name.size()
            && QStringView(*text).left(name.size()).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return std::nullopt;
}

int countMatches(const QString& info, const QString& pattern)
{
    const QRegularExpression expression(pattern, QRegularExpression::CaseInsensitiveOption);
    if (!expression.isValid())
        return 0;
    int count = 0;
    for (auto it = expression.globalMatch(info); it.hasNext(); it.next())
        ++count;
    return count;
}

} // namespace

namespace Utils {

ProcessRunner& defaultProcessRunner()
{
    static QtProcessRunner runner;
    return runner;
}

namespace {
// The working folder is a subfolder of the cache so that other caches kept
// there (the map tiles) survive the clean-up at quit.
QString workingDirectoryLocation()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    return cache.isEmpty() ? QString() : cache + QStringLiteral("/work");
}
} // namespace

QString GetWorkingDirectoryPath()
{
    const QString path = workingDirectoryLocation();
    if (path.isEmpty() || !QDir().mkpath(path))
        return {};
    return path;
}

void RemoveWorkingDirectory()
{
    const QString path = workingDirectoryLocation();
    if (!path.isEmpty())
        RemoveDirectory(path);
}

QString GetFFMPEGPath()
{
    {
        QMutexLocker locker(&ffmpegPathMutex());
        if (!ffmpegPathOverride().isEmpty())
            return ffmpegPathOverride();
    }
    const QString fromEnvironment = qEnvironmentVariable("TAVRO_FFMPEG");
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    return QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}

void SetFFMPEGPath(const QString& path)
{
    QMutexLocker locker(&ffmpegPathMutex());
    ffmpegPathOverride() = path;
}

QString DoTaskWithLaunchPath(
    const QString& launchPath, const QStringList& arguments, ProcessRunner& runner)
{
    return QString::fromUtf8(runner.run(launchPath, arguments));
}

QString GetFFMPEGVideoInfo(const QString& path, ProcessRunner& runner)
{
    return DoTaskWithLaunchPath(GetFFMPEGPath(), { QStringLiteral("-i"), path }, runner);
}

int GetVideoStreamCountFromVideoInfo(const QString& info)
{
    return countMatches(info, QStringLiteral(R"((Stream #\d{1}:\d{1}(.*?): Video))"));
}

int GetAudioStreamCountFromVideoInfo(const QString& info)
{
    return countMatches(info, QStringLiteral(R"((Stream #\d{1}:\d{1}(.*?): Audio))"));
}

int GetVideoStreamCountFromVideoPath(const QString& path, ProcessRunner& runner)
{
    return GetVideoStreamCountFromVideoInfo(GetFFMPEGVideoInfo(path, runner));
}

int GetAudioStreamCountFromVideoPath(const QString& path, ProcessRunner& runner)
{
    return GetAudioStreamCountFromVideoInfo(GetFFMPEGVideoInfo(path, runner));
}

bool ConvertAviToMovWithArguments(const QStringList& arguments, ProcessRunner& runner)
{
    DoTaskWithLaunchPath(GetFFMPEGPath(), arguments, runner);
    return true;
}

bool ExtractMP4ToSrtWithArguments(const QStringList& arguments, ProcessRunner& runner)
{
    DoTaskWithLaunchPath(GetFFMPEGPath(), arguments, runner);
    return true;
}

int GetAviType(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qCDebug(lcLibrary) << "cannot open" << path << "to read its codec type";
    if (const auto type = matchTypeName(readTypeText(file, kHandlerOffset)))
        return *type;
    if (const auto type = matchTypeName(readTypeText(file, kBrandsOffset)))
        return *type;
    return kAviTypeOther;
}

void RemoveDirectory(const QString& path)
{
    // An empty path would name the current folder.
    if (path.isEmpty())
        return;
    // A link in place of the folder is removed itself, never what it leads to
    // (links further down are removed, not followed, by removeRecursively).
    if (QFileInfo(path).isSymLink()) {
        QFile::remove(path);
        return;
    }
    QDir(path).removeRecursively();
}

void EnableFileExcutableMode(const QString& path)
{
    QFile::setPermissions(path,
        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadUser | QFile::WriteUser
            | QFile::ExeUser | QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
            | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther);
}

bool CheckError(const QString& errorText)
{
    return errorText.isEmpty();
}

} // namespace Utils
