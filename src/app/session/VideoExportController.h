#pragma once

#include "cut/CutPlan.h"
#include "cut/VideoCut.h"
#include "library/QtProcessRunner.h"
#include "trips/Trip.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class PlaybackSession;
class QThread;

// File ▸ Export video: one MP4 of the clip shown, of the trip playing or of
// the span between the in and out marks, through the same cut as `tavro cut`
// (a clip alone is cut as a trip of one clip). The cut runs on a worker
// thread; Cancel ends ffmpeg and leaves no file. Holds no widgets: the
// window asks for the choices and the file, shows progress and the outcome.
class VideoExportController : public QObject {
    Q_OBJECT
public:
    enum class Range { CurrentClip, WholeTrip, Marked };
    enum class Picture { Front, Rear, SideBySide, PictureInPicture };

    // What the session shows when the export is asked for.
    struct Scope {
        std::optional<Trip> trip; // the trip playing
        QString clip; // the clip playing alone, when no trip plays
        // The clip shown, in seconds from the trip's start (a clip alone:
        // the end is open).
        double clipFrom = 0;
        double clipTo = 0;
        // The in and out marks in the same seconds, when both are set.
        std::optional<double> markIn;
        std::optional<double> markOut;

        bool isEmpty() const { return !trip && clip.isEmpty(); }
    };
    struct Choice {
        Range range = Range::CurrentClip;
        Picture picture = Picture::Front;
        bool overlay = false;
    };
    struct Outcome {
        VideoCut::Result result;
        bool cancelled = false;
    };

    explicit VideoExportController(QObject* parent = nullptr);
    ~VideoExportController() override; // cancels and waits for a running export

    static Scope scopeOf(const PlaybackSession& session);
    // The ranges the scope offers, in the order of Range.
    static QList<Range> ranges(const Scope& scope);
    // A file name for the export: the clip's (or the trip's first clip's)
    // name with what it shows.
    static QString proposedName(const Scope& scope, const Choice& choice);
    // The path with ".mp4" added when it has another suffix or none.
    static QString pathWithSuffix(const QString& path);
    // What the cut is asked for; `miles` puts the overlay's speed in mph.
    static CutPlan::Request request(const Scope& scope, const Choice& choice, bool miles);

    // Starts the export into `path`; false (nothing started) while one runs
    // or when the scope does not offer the range.
    bool start(const Scope& scope, const Choice& choice, const QString& path);
    void cancel();
    bool isRunning() const { return m_thread != nullptr; }

signals:
    // Seconds of video written so far out of the total.
    void progressChanged(double done, double total);
    void finished(const VideoExportController::Outcome& outcome);

private:
    void onThreadFinished();

    QThread* m_thread = nullptr;
    QtProcessRunner m_runner;
    bool m_cancelled = false;
    std::shared_ptr<VideoCut::Result> m_result;
};
