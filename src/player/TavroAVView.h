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
class VideoPicture;
class VideoScene;

// The view that plays one video file on libmpv. It loads asynchronously and
// reports its progress to its delegate as statuses: Init, Loading, then
// Prepared (ready to play) or Error (no file, unreadable file, or no video
// stream; a file with sound only keeps playing its sound behind noVideoView).
// The picture is rendered at the view's device pixels and shown by a
// VideoScene: the view's own, or the scene of the area it lies in, which
// shows several views (and the widgets over them) in one native window.
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
    void setCurrentTimeExactly(double seconds) override;
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

    // What a scene shows of the view: the picture, or none while there is no
    // frame yet or the loading animation or a notice takes its place.
    VideoPicture* shownPicture() const;
    // Changes with every new frame the player renders.
    qint64 pictureSerial() const;
    // `scene` shows the view from now on; the view's own scene goes.
    void useScene(VideoScene* scene);
    // A scene showed a new picture of the view on the screen.
    void notePicturePresented();

    // Pictures that reached the screen, and mpv's own drop counters.
    qint64 framesPresented() const { return m_framesPresented; }
    qint64 decoderDroppedFrames() const;
    qint64 outputDroppedFrames() const;

signals:
    // A picture of the loaded media reached the screen.
    void framePresented();
    // What the view shows changed (a new frame, mirrored, another media).
    void pictureChanged();
    // The widgets over the picture changed (the loading animation turned).
    void overlayChanged();

protected:
    void resizeEvent(QResizeEvent* event) override;
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
    void showOverlay(QWidget* overlay, bool shown);

    bool m_enabled = true;
    bool m_upsideDown = false;
    TavroAVViewStatus m_status = TavroAVViewStatus::Init;
    TavroAVViewDelegate* m_delegate = nullptr;
    QString m_fileName;
    float m_rate = 0.0f;
    int m_videoTrack = 1;
    LoadingSpinner* m_loadingSpinner = nullptr;
    NoVideoView* m_noVideoView = nullptr;
    std::unique_ptr<MpvPlayer> m_player;
    QList<QMetaObject::Connection> m_observers;
    VideoScene* m_ownScene = nullptr; // a child, until another scene shows the view
    qint64 m_framesPresented = 0;
};
