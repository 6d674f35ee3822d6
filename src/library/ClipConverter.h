#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

class ProcessRunner;

// Makes a clip playable before it is shown: re-muxes it with ffmpeg (no
// re-encoding) into one QuickTime file per camera, front "<name>_f.mov" and
// rear "<name>_r.mov", and for .mp4 clips extracts the telemetry subtitle track
// next to each output as "<name>_f.srt" / "<name>_r.srt".
//
// Outputs are cached in "<working folder>/temp_video/<name>_<size in bytes>/";
// a clip whose outputs exist is not converted again, and a clip whose size
// changed gets a new folder. ffmpeg writes each output under a temporary name
// that is renamed into place only when it exits with status 0, so an output in
// the cache is always complete: an interrupted or failed run leaves nothing.
//
// checkAndConvertVideo() depends only on its argument, the file system and
// the runner, so it may run on a worker thread (one conversion at a time per
// clip).
class ClipConverter {
public:
    // `workingDirectory` empty: the viewer's working folder (Utils::GetWorkingDirectoryPath).
    explicit ClipConverter(ProcessRunner& runner, QString workingDirectory = {});
    ClipConverter();

    // The playable files, [front] or [front, rear]: the clip itself for a
    // container other than .avi or .mp4. An empty list when nothing playable
    // came out of ffmpeg; no value for an empty URL or when the cache folders
    // cannot be created.
    std::optional<QList<QUrl>> checkAndConvertVideo(const QUrl& clipUrl) const;

    // The clip's cache folder ("temp_video/<name>_<size>"); empty without a
    // working folder.
    QString cacheFolderPath(const QString& clipPath) const;

    // Ends a conversion running on another thread (ffmpeg is killed, its
    // output dropped) and refuses new ones until resetCancel().
    void cancel() const;
    void resetCancel() const;

private:
    struct Outputs {
        QString front;
        QString rear;
    };

    QString workingDirectory() const;
    void convertAvi(const QString& clip, const Outputs& outputs) const;
    void convertMp4(const QUrl& clipUrl, const Outputs& outputs) const;
    void convertOneCamera(const QString& input, int aviType, const QString& output) const;
    // Runs ffmpeg with `arguments`, whose last one is the output; true when
    // the output is in place.
    bool runIntoPlace(QStringList arguments) const;

    ProcessRunner* m_runner;
    QString m_workingDirectory;
};
