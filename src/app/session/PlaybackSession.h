#pragma once

#include "app/session/TripTimeline.h"
#include "app/session/VolumeSliderModel.h"
#include "player/TavroAVViewDelegate.h"
#include "telemetry/TavroClipData.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class AlertSink;
class QThread;
class ClipConverter;
class ClipLibrary;
class PlayerView;
class SessionView;

// Plays the clip chosen in the clip list: the front camera in the large player
// view, the rear camera in the small one, with the clip's telemetry in step.
// A fast tick (every 1/33 s) drives the time text and seek slider, the G and
// position read-outs and the speedometer (at most every 0.3 s of media time)
// and the map (at most every second of media time). It also carries the
// transport buttons, the keyboard, previous/next clip over the list, the
// camera swap, flip, zoom, mute and volume, full screen, and the automatic
// advance to the next clip at the end of one.
//
// Holds no widgets: it drives two PlayerViews and a SessionView (not owned;
// they must outlive the session) and is the player views' delegate.
class PlaybackSession : public QObject, public TavroAVViewDelegate {
    Q_OBJECT
public:
    // Playback tick period: 1/33 s.
    static constexpr double kTickSeconds = 1.0 / 33.0;
    // Blink period of the shock and earth indicators.
    static constexpr int kPlayAnimationMs = 1000;
    static constexpr double kMinVideoScale = 1.0;
    static constexpr double kMaxVideoScale = 5.0;
    // How long a seek or frame step may go unanswered by the large view
    // before the displays follow whatever position it reads.
    static constexpr int kPositionWaitMs = 1000;
    // A preparation that lasts longer shows the view busy (with a cancel).
    static constexpr int kBusyDelayMs = 300;

    PlaybackSession(PlayerView& bigMovieView, PlayerView& smallMovieView, SessionView& view,
        ClipLibrary& library, ClipConverter& converter, AlertSink& alerts,
        QObject* parent = nullptr);
    ~PlaybackSession() override;

    // --- loading
    // Loads the clip into both views; playback starts by itself once they are
    // prepared. The seek time is accepted and ignored: clips play from the start.
    // Conversion and the telemetry scan run on a worker thread when the
    // session prepares in the background (the window's does); a preparation
    // that takes longer than kBusyDelayMs shows the view busy, with a way to
    // cancel it. A newer clip supersedes one still being prepared.
    void prepareVideoToPlay(const QUrl& url, double seekTime);
    // Off (the default), a clip is prepared inside prepareVideoToPlay.
    void setPreparesInBackground(bool background) { m_prepareInBackground = background; }
    bool isPreparing() const { return m_preparing; }
    // Drops the clip being prepared: ffmpeg is ended, nothing plays, no alert.
    void cancelPreparation();
    // Stops the current clip and loads the row's clip.
    void playVideoWithIdx(int index);
    void resetVideoInformation();
    void showUnsupportedFileAlert();

    // --- trips
    // Plays a drive as one: each camera's clips back to back on one timeline
    // (the rear camera black where a clip has none, so that both stay in
    // step), the seek slider spanning the trip with its clip boundaries and
    // event marks, the read-outs, graph and speedometer following the clip
    // shown, and the trip's whole route on the map. A two-camera AVI clip's
    // rear camera is converted first (in the background, as a clip's is).
    // Playback starts by itself and stops at the trip's end.
    void playTrip(const Trip& trip);
    bool isPlayingTrip() const { return m_trip != nullptr; }
    const Trip* currentTrip() const;
    const TripTimeline* tripTimeline() const;
    // The trip's clip shown now; -1 without a trip.
    int currentTripClip() const;
    // Page Down / Page Up: to the next / previous event mark of the trip.
    void nextEventKeyTouched();
    void previousEventKeyTouched();
    // How far the rear camera may run apart from the front before it is put back.
    static constexpr double kRearDriftSeconds = 0.5;

    // --- the span to export: I and O put its in and out mark at the
    // position shown (an out mark before the in mark, or the reverse, drops
    // the other one); a new clip or trip clears both. Seconds on the seek
    // slider's timeline.
    void markInKeyTouched();
    void markOutKeyTouched();
    std::optional<double> markIn() const { return m_markIn; }
    std::optional<double> markOut() const { return m_markOut; }

    // --- transport
    void playVideo();
    void pauseVideo();
    void stopVideo();
    void setCurrentVideoTime(double seconds);
    void playPauseButtonTouched();
    void stopButtonTouched();
    void rewindButtonTouched();
    void fastForwardButtonTouched();
    void playPrevFileButtonTouched();
    void playNextFileButtonTouched();
    void toggleVideoSwithButtonTouched();
    void videoRotateButtonTouched();
    void onMovieReady();
    void movieDidEnd();

    // --- the tick and the displays it drives
    void startVideoPlayTimer();
    void stopVideoPlayTimer();
    void playVideoTimerCallback();
    void updatePlayTime(double time, double duration);
    void updateSensorInfo(float gx, float gy, float gz, float lat, float lng, int speed);
    void updateMapWithLat(float lat, float lng);
    void enableVideoControls(bool enabled);
    void updateMovieViewCoverScrren();
    void startPlayAnimation();
    void stopPlayAnimation();
    void playAnimationTimerCallback();

    // --- seek slider (seconds); only the release seeks
    void seekTimeSliderTouchedDown();
    void seekTimeSliderDragged(double seconds);
    void seekTimeSliderTouchedUp(double seconds);

    // --- volume
    // The user moved the volume slider.
    void volumeSliderMoved(float volume);
    void volumeChanged(float volume);
    void volumeUp();
    void volumeDown();
    void toggleMuteButtonTouched();
    void setVideoMute(bool muted);
    const VolumeSliderModel& volumeSlider() const { return m_volumeSlider; }

    // --- zoom of the large view
    void videoScaleUpButtonTouched();
    void videoScaleDownButtonTouched();
    void resetVideoScaleButtonTouched();
    // Sets the zoom and has the window apply it.
    void changeVideoScale(double scale);
    // The user dragged the zoomed large view.
    void bigMovieViewDragged();

    // --- full screen
    // From a button or key: leaves full screen when in it, else enters it
    // with the small view when it is the sender and the large view otherwise.
    void fullscreenButtonTouched(PlayerView* sender = nullptr);
    void showFullScreenMovie(PlayerView* sender);
    void hideFullScreenMovie();

    // --- keyboard: Qt key code and modifiers; true when the key was used
    bool keyDown(int key, Qt::KeyboardModifiers modifiers);
    void appExitButtonTouched();
    void appMinimizeButtonTouched();

    // --- TavroAVViewDelegate
    void tavroAVViewDidUpdateStatus(PlayerView* view, TavroAVViewStatus status) override;
    void tavroAVViewDidUpdateRate(PlayerView* view, float rate) override;
    void tavroAVViewDidUpdateTime(PlayerView* view, double seconds) override;
    void tavroAVViewDidPlayToEndTime(PlayerView* view) override;
    void tavroAVViewDidRequestFullscreen(PlayerView* view) override;

    // --- state
    QUrl currentVideoUrl() const { return m_currentVideoUrl; }
    QString bigVideoFilePath() const { return m_bigVideoFilePath; }
    QString smallVideoFilePath() const { return m_smallVideoFilePath; }
    bool isVideoPaused() const { return m_isVideoPaused; }
    bool isVideoSwitched() const { return m_isVideoSwitched; }
    bool doVideoFlip() const { return m_doVideoFlip; }
    double videoScale() const { return m_videoScale; }
    bool enableBigMovieViewScroll() const { return m_enableBigMovieViewScroll; }
    bool touchedBigMovieScroll() const { return m_touchedBigMovieScroll; }
    bool isFullScreenMode() const { return m_isFullScreenMode; }
    bool isVideoPlayTimerActive() const { return m_videoPlayTimer.isActive(); }
    bool isPlayAnimationActive() const { return m_playAnimationTimer.isActive(); }
    quint32 playAnimationIdx() const { return m_playAnimationIdx; }
    const TavroClipData& clipData() const { return m_clipData; }
    double lastUpdatedSensorInfoTime() const { return m_lastUpdatedSensorInfoTime; }
    double lastUpdatedMapTime() const { return m_lastUpdatedMapTime; }
    // A seek or frame step was asked for and the large view has not yet
    // reported where it landed: the tick leaves the displays alone meanwhile.
    bool isPositionPending() const { return m_positionPending; }
    PlayerView& bigMovieView() const { return m_bigMovieView; }
    PlayerView& smallMovieView() const { return m_smallMovieView; }

signals:
    // A clip was loaded (currentVideoUrl set) or refused (currentVideoUrl empty).
    void currentVideoChanged(const QUrl& url);

private:
    struct Prepared;
    struct TripFiles;
    struct TripPlayback;
    void resetForNewMedia();
    // Runs `job` (conversion, telemetry) inside the call, or on a worker
    // thread when the session prepares in the background.
    void startPreparation(std::function<Prepared()> job);
    void runPreparationJob();
    void finishPreparation(quint64 serial, const Prepared& prepared);
    void preparationThreadDone();
    void finishTripPreparation(const TripFiles& files);
    void leaveTrip();
    void showTripSegment(int segment);
    void showTripRoute();
    void keepRearInStep(double position);
    void seekTrip(double position);
    double tripPosition() const;
    bool tripMovieDidEnd();
    void showTelemetryDisplays();
    // The trip's marks and the span's on the seek slider.
    void showSeekMarks();
    double shownPosition() const;
    void bigViewPrepared();
    void selectAndPlay(int row);
    void coverMap();
    // After a seek or a frame step: the displays wait for the large view to
    // report the new position, then all follow it at once.
    void awaitNewPosition();
    void showNewPosition();

    PlayerView& m_bigMovieView;
    PlayerView& m_smallMovieView;
    SessionView& m_view;
    ClipLibrary& m_library;
    ClipConverter& m_converter;
    AlertSink& m_alerts;

    QUrl m_currentVideoUrl;
    QString m_bigVideoFilePath;
    QString m_smallVideoFilePath;
    bool m_isVideoPaused = true;
    bool m_isVideoSwitched = false;
    bool m_doVideoFlip = false;
    double m_videoScale = 1.0;
    bool m_enableBigMovieViewScroll = true;
    bool m_touchedBigMovieScroll = false;
    bool m_isFullScreenMode = false;
    bool m_seekSliderHeld = false;
    bool m_positionPending = false;
    // Stopped (paused at 0 with the map covered) until played or moved.
    bool m_stopped = false;
    // The next tick refreshes the read-outs and the map whatever the time.
    bool m_refreshAll = false;
    QTimer m_positionWait;
    bool m_prepareInBackground = false;
    bool m_preparing = false;
    quint64 m_preparationSerial = 0;
    QUrl m_preparingUrl;
    QThread* m_preparationThread = nullptr;
    std::function<Prepared()> m_preparationJob;
    bool m_preparationQueued = false;
    std::unique_ptr<TripPlayback> m_trip;
    std::optional<double> m_markIn;
    std::optional<double> m_markOut;
    QTimer m_busyDelay;
    QTimer m_videoPlayTimer;
    QTimer m_playAnimationTimer;
    quint32 m_playAnimationIdx = 0;
    TavroClipData m_clipData;
    double m_lastUpdatedSensorInfoTime = 0.0;
    double m_lastUpdatedMapTime = 0.0;
    double m_lastUpdatedLat = 0.0;
    double m_lastUpdatedLng = 0.0;
    VolumeSliderModel m_volumeSlider;
};
