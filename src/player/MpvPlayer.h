#pragma once

#include "player/VideoPicture.h"

#include <QList>
#include <QObject>
#include <QSize>
#include <QString>
#include <QTimer>

#include <atomic>
#include <memory>
#include <optional>
#include <span>

struct mpv_event;
struct mpv_event_property;
struct mpv_handle;
struct mpv_node;
class MpvRenderTarget;

// One mpv core playing one file, its picture rendered into a texture. Every request is sent
// asynchronously; what the view reads (time, duration, rate, volume) are the
// values mpv last reported, so nothing here ever waits for the core on the GUI
// thread. mpv's callbacks only queue work for the GUI thread.
class MpvPlayer : public QObject, public VideoPicture {
    Q_OBJECT
public:
    // How far the file has come, in the terms a view reports.
    enum class ItemStatus { Unknown, ReadyToPlay, Failed };
    Q_ENUM(ItemStatus)

    explicit MpvPlayer(int videoTrack, QObject* parent = nullptr);
    ~MpvPlayer() override;

    // Lets go of a player without waiting for mpv: it is silenced and its
    // picture released at once; the core is told to quit and the object
    // deletes itself when mpv reports the shutdown (or, at the latest, with
    // the application object).
    static void dispose(std::unique_ptr<MpvPlayer> player);

    bool isValid() const;
    void load(const QString& path);
    QString path() const { return m_path; }

    void play();
    void pause();
    // 0 pauses, above 0 plays at that speed, below 0 plays backwards.
    void setRate(float rate);
    float rate() const { return m_rate; }

    void seekExact(double seconds);
    void stepForward();
    void stepBackward();

    bool isReady() const { return m_ready; }
    double timePos() const { return m_timePos; }
    double duration() const { return m_duration; }
    bool eofReached() const { return m_eof; }

    float volume() const { return m_volume; }
    void setVolume(float volume);

    int videoTrack() const { return m_videoTrack; }
    void setVideoTrack(int track);
    bool tracksKnown() const { return m_tracksKnown; }
    bool hasVideo() const { return m_hasVideo; }
    QSize videoSize() const { return m_videoSize; }

    // Rendering: the picture the host view shows, sized by the host.
    void setTargetSize(const QSize& devicePixels);
    unsigned int texture() override;
    QImage image() override;
    bool hasFrame() const { return m_framesRendered > 0; }
    qint64 framesRendered() const { return m_framesRendered; }

    // Frames mpv dropped in the decoder and in the output since loading.
    qint64 decoderDrops() const { return m_decoderDrops; }
    qint64 outputDrops() const { return m_outputDrops; }

signals:
    void itemStatusChanged(MpvPlayer::ItemStatus status);
    // After the file opened: whether a video stream is shown.
    void tracksLoaded(bool hasVideo);
    void rateChanged(float rate);
    void timeChanged(double seconds);
    void playedToEnd();
    void frameRendered();

private:
    struct PropertyHandler;
    static std::span<const PropertyHandler> properties();

    void quit();
    static void onWakeup(void* self);
    static void onRenderUpdate(void* self);
    void drainEvents();
    void renderFrame();
    void handleEvent(const mpv_event& event);
    void handleEndFile(const mpv_event& event);
    void handleTrackList(const mpv_node& list);
    void checkReady();
    void dispatchProperty(quint64 index, const mpv_event_property& property);

    void onTimePos(const mpv_event_property& property);
    void onDuration(const mpv_event_property& property);
    void onPause(const mpv_event_property& property);
    void onSpeed(const mpv_event_property& property);
    void onVolume(const mpv_event_property& property);
    void onEofReached(const mpv_event_property& property);
    void onFrameDrops(const mpv_event_property& property);
    void onOutputDrops(const mpv_event_property& property);

    void command(std::initializer_list<const char*> args);
    void setFlag(const char* name, bool value);
    void setDouble(const char* name, double value);
    void updateRate();
    void reverseTick();

    mpv_handle* m_mpv = nullptr;
    std::unique_ptr<MpvRenderTarget> m_target;
    std::atomic_bool m_drainQueued { false };
    std::atomic_bool m_renderQueued { false };
    // Depth of calls that hand mpv's news to listeners (who may dispose of us).
    int m_dispatching = 0;
    bool m_disposed = false;
    bool m_retiring = false;
    bool m_quitting = false;

    QString m_path;
    int m_videoTrack = 1;
    bool m_fileLoaded = false;
    bool m_restarted = false;
    bool m_tracksKnown = false;
    bool m_ready = false;
    bool m_failed = false;
    bool m_hasVideo = false;
    QSize m_videoSize;

    double m_timePos = 0.0;
    double m_duration = 0.0;
    bool m_eof = false;
    bool m_paused = true;
    double m_speed = 1.0;
    float m_reverseRate = 0.0f;
    float m_rate = 0.0f;
    float m_volume = 1.0f;
    long long m_lastTimeSlot = -1;
    bool m_reportNextTime = false;
    // A seek (or a step back, or a load) sent to mpv whose playback restart has
    // not come yet. mpv merges seeks queued behind each other into one restart
    // and spends a frame step asked during a seek on the seek's own frame, so
    // such moves go one at a time: what is asked meanwhile waits here and goes
    // at the restart, a newer seek replacing whatever waited.
    bool m_seekPending = false;
    enum class Move { Seek, StepForward, StepBackward };
    struct HeldMove {
        Move move;
        double seconds;
    };
    QList<HeldMove> m_heldMoves;
    // A frame step sent and not yet landed (a step back at its restart, a step
    // forward at the next position, or after kStepLandingMs at the latest).
    // Steps wait behind it too, and a held arrow key's repeats fold: while a
    // step is under way, at most one more step of its direction waits, so the
    // picture stops at most one frame after the key is let go.
    std::optional<Move> m_stepUnderWay;
    static constexpr int kStepLandingMs = 500;
    QTimer m_stepLandingTimer;
    bool isMoveUnderWay() const { return m_seekPending || m_stepUnderWay.has_value(); }
    void hold(Move move, double seconds = 0.0);
    void keepOneWaiting(Move step);
    void playbackRestarted();
    void forwardStepLanded();
    void sendHeldMoves();
    void sendSeek(double seconds);
    void sendStepForward();
    void sendStepBackward();
    // After a seek or a step the position is reported once it is the new one:
    // a seek (and a step back, which mpv seeks) when playback restarts there,
    // a step forward at the next position mpv reports.
    enum class PositionWait { None, Restart, Change };
    PositionWait m_positionWait = PositionWait::None;
    bool m_changeAfterLanding = false;
    void awaitPosition(PositionWait wait);
    void reportLandedPosition(double seconds);
    // Backwards play: one short exact seek back per tick.
    static constexpr int kReverseStepMs = 100;
    QTimer m_reverseTimer;

    qint64 m_framesRendered = 0;
    qint64 m_decoderDrops = 0;
    qint64 m_outputDrops = 0;
};
