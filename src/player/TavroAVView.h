#pragma once

#include "player/PlayerView.h"

#include <QImage>
#include <QList>
#include <QMetaObject>
#include <QWidget>

#include <memory>

class LoadingSpinner;
class MpvPlayer;
class NoVideoView;
class VideoSurfaceWindow;

// The view that plays one video file on libmpv. It loads asynchronously and
// reports its progress to its delegate as statuses: Init, Loading, then
// Prepared (ready to play) or Error (no file, unreadable file, or no video
// stream; a file with sound only keeps playing its sound behind noVideoView).
// The picture is drawn at device pixels on a black background, in a native
// window of its own inside the view (see VideoSurfaceWindow).
class TavroAVView : public QWidget, public PlayerView {
    Q_OBJECT
public:
    explicit TavroAVView(QWidget* parent = nullptr);
    ~TavroAVView() override;

    TavroAVViewDelegate* delegate() const override { return m_delegate; }
    void setDelegate(TavroAVViewDelegate* delegate) override { m_delegate = delegate; }
    bool isEnabled() const override { return m_enabled; }
    void setEnabled(bool enabled) override { m_enabled = enabled; }

    QString fileName() const override { return m_fileName; }
    void setFileName(const QString& path) override;
    void reset() override;
    void close() override;

    TavroAVViewStatus status() const override { return m_status; }
    bool hasMovie() const override;

    void play() override;
    void pause() override;
    void playPauseToggle() override;
    void fastForward() override;
    void rewind() override;
    void stepForward() override;
    void stepBackward() override;
    float rate() const override { return m_rate; }

    void setCurrentTime(double seconds) override;
    double currentTime() const override;
    double duration() const override;

    float volume() const override;
    void setVolume(float volume) override;

    bool upsideDown() const override { return m_upsideDown; }
    void setUpsideDown(bool upsideDown) override;

    int videoTrack() const override { return m_videoTrack; }
    void setVideoTrack(int track) override;

    // The frame at the whole seconds of the duration counted in microseconds
    // (in practice the first frame), at the size of the file's first video
    // stream; black at 1920x1080 for a file without video; null with nothing
    // loaded or when the frame cannot be decoded.
    QImage snapshot() override;
    std::function<QImage()> snapshotJob() override;
    void swapPlayerItemWith(PlayerView& other) override;

    // The picture the view shows, at its device-pixel size (black when
    // nothing is loaded).
    QImage grabFramebuffer();

    // A widget of the window lies over the view (a cover image): the picture
    // steps aside so that it shows (see showOverlay()).
    void setPictureCovered(bool covered);

    // Frames drawn into the window, and mpv's own drop counters.
    qint64 framesPresented() const { return m_framesPresented; }
    qint64 decoderDroppedFrames() const;
    qint64 outputDroppedFrames() const;

signals:
    // A picture of the loaded media was drawn into the view.
    void framePresented();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void prepareAsset();
    void setStatus(TavroAVViewStatus status);
    void stopLoadingAnimationAndHandleError(bool failed);
    void removeObservers();
    void rebuildObservers();
    void onItemStatus(int itemStatus);
    void onTracksLoaded(bool hasVideo);
    void onRateChanged(float rate);
    void onTimeChanged(double seconds);
    void onPlayedToEnd();
    void onFrameRendered();
    void seekToStartAtEnd();
    QSize devicePixelSize() const;
    void layoutOverlays();
    QRect visiblePart() const;
    void showOverlay(QWidget* overlay, bool shown);
    void updateSurfaceVisibility();
    void presentPicture();

    bool m_enabled = true;
    bool m_upsideDown = false;
    bool m_pictureCovered = false;
    TavroAVViewStatus m_status = TavroAVViewStatus::Init;
    TavroAVViewDelegate* m_delegate = nullptr;
    QString m_fileName;
    float m_rate = 0.0f;
    int m_videoTrack = 1;
    LoadingSpinner* m_loadingSpinner = nullptr;
    NoVideoView* m_noVideoView = nullptr;
    std::unique_ptr<MpvPlayer> m_player;
    QList<QMetaObject::Connection> m_observers;
    VideoSurfaceWindow* m_surface = nullptr; // owned by m_surfaceContainer
    QWidget* m_surfaceContainer = nullptr;
    qint64 m_framesPresented = 0;
};
