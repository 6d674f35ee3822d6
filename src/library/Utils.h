#pragma once

#include <QString>
#include <QStringList>

class ProcessRunner;

// Static helpers of the clip pipeline: the working folder, running child
// processes, reading ffmpeg's report of a file and the codec type of a clip.
// Other parts of the program add their own helpers to this namespace.
namespace Utils {

// Codec type of a clip as GetAviType returns it.
enum AviType : int {
    kAviTypeH264 = 0,
    kAviTypeAVC1 = 1,
    kAviTypeHvc1 = 2,
    kAviTypeOther = 3,
};

// The runner every helper below uses unless it is given another one.
ProcessRunner& defaultProcessRunner();

// The viewer's working folder (converted clips and their subtitle files),
// the folder "work" in the user's cache folder; created with its parents when
// missing.
// Returns an empty string when it cannot be created.
QString GetWorkingDirectoryPath();
// Deletes the working folder with everything in it; the viewer calls this
// when it quits.
void RemoveWorkingDirectory();

// The ffmpeg program: SetFFMPEGPath's value if set, else $TAVRO_FFMPEG if set,
// else "ffmpeg" found on PATH. Empty when none is found; every run then yields
// nothing, the same as a program that fails.
QString GetFFMPEGPath();
// Overrides the program GetFFMPEGPath returns; an empty path clears the override.
void SetFFMPEGPath(const QString& path);

// Runs the program with the arguments and returns what it wrote to standard
// output and standard error, decoded as UTF-8.
QString DoTaskWithLaunchPath(const QString& launchPath, const QStringList& arguments,
    ProcessRunner& runner = defaultProcessRunner());

// ffmpeg's report on a file: it is run with "-i" path and no output, so it
// lists the streams and exits complaining that no output was given.
QString GetFFMPEGVideoInfo(const QString& path, ProcessRunner& runner = defaultProcessRunner());
int GetVideoStreamCountFromVideoInfo(const QString& info);
int GetAudioStreamCountFromVideoInfo(const QString& info);
int GetVideoStreamCountFromVideoPath(
    const QString& path, ProcessRunner& runner = defaultProcessRunner());
int GetAudioStreamCountFromVideoPath(
    const QString& path, ProcessRunner& runner = defaultProcessRunner());

// Run ffmpeg with the list and wait for it. Always true: success shows only in
// the output file existing afterwards.
bool ConvertAviToMovWithArguments(
    const QStringList& arguments, ProcessRunner& runner = defaultProcessRunner());
bool ExtractMP4ToSrtWithArguments(
    const QStringList& arguments, ProcessRunner& runner = defaultProcessRunner());

// 0 "H264", 1 "AVC1", 2 "iso4hvc1", 3 none of them (see AviType).
int GetAviType(const QString& path);

void RemoveDirectory(const QString& path);
// Makes the file readable, writable and executable by everyone (0777).
void EnableFileExcutableMode(const QString& path);
// True when there is no error (an empty error text).
bool CheckError(const QString& errorText);

} // namespace Utils
