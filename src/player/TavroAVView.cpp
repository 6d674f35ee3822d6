#include "player/TavroAVView.h"

#include "player/FrameGrabber.h"
#include "player/LoadingSpinner.h"
#include "player/MpvPlayer.h"
#include "player/NoVideoView.h"
#include "player/PlayerRules.h"
#include "player/TavroAVViewDelegate.h"
#include "player/VideoScene.h"

#include <QMouseEvent>
#include <QPalette>

namespace {

const QSize kNoVideoSnapshotSize(1920, 1080);

} // namespace

TavroAVView::TavroAVView(QWidget* parent)
    : QWidget(parent)
{
    // Black under the picture window, and wherever it is hidden.
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
    setAutoFillBackground(true);
    m_loadingSpinner = new LoadingSpinner(this);
    m_loadingSpinner->setObjectName(QStringLiteral("loadingSpinner"));
    connect(m_loadingSpinner, &LoadingSpinner::stepped, this, &TavroAVView::overlayChanged);
    m_loadingSpinner->hide();
    m_noVideoView = new NoVideoView(this);
    m_noVideoView->setObjectName(QStringLiteral("noVideoView"));
    m_noVideoView->hide();
    // A view on its own shows itself; an area holding several views gives
    // them one scene (useScene).
    m_ownScene = new VideoScene(this);
    m_ownScene->setLayers({ this });
    layoutOverlays();
}

TavroAVView::~TavroAVView()
{
    m_delegate = nullptr;
    if (m_player)
        close();
}

void TavroAVView::setFileName(const QString& path)
{
    if (m_player)
        close();
    m_fileName = path;
    setStatus(TavroAVViewStatus::Init);
    if (!path.isEmpty())
        prepareAsset();
}

void TavroAVView::reset()
{
    close();
}

void TavroAVView::close()
{
    if (m_player)
        m_player->pause();
    removeObservers();
    MpvPlayer::dispose(std::move(m_player));
    // A closed view shows only its black background again.
    m_loadingSpinner->stopAnimation();
    showOverlay(m_loadingSpinner, false);
    showOverlay(m_noVideoView, false);
    emit pictureChanged();
    setFileName(QString());
}

bool TavroAVView::hasMovie() const
{
    return m_status != TavroAVViewStatus::Error && m_status != TavroAVViewStatus::Init;
}

void TavroAVView::prepareAsset()
{
    if (m_status == TavroAVViewStatus::Loading)
        return;
    showOverlay(m_loadingSpinner, true);
    m_loadingSpinner->startAnimation();
    m_player = std::make_unique<MpvPlayer>(m_videoTrack);
    m_player->setTargetSize(devicePixelSize());
    rebuildObservers();
    setStatus(TavroAVViewStatus::Loading);
    if (m_fileName.isEmpty() || !m_player->isValid()) {
        stopLoadingAnimationAndHandleError(true);
        return;
    }
    m_player->load(m_fileName);
}

void TavroAVView::setStatus(TavroAVViewStatus status)
{
    m_status = status;
    // Reported from the event loop, after the call that changed it returns.
    QMetaObject::invokeMethod(
        this,
        [this, status] {
            if (m_delegate)
                m_delegate->tavroAVViewDidUpdateStatus(this, status);
        },
        Qt::QueuedConnection);
}

void TavroAVView::stopLoadingAnimationAndHandleError(bool failed)
{
    m_loadingSpinner->stopAnimation();
    showOverlay(m_loadingSpinner, false);
    if (failed)
        setStatus(TavroAVViewStatus::Error);
}

void TavroAVView::removeObservers()
{
    for (const QMetaObject::Connection& connection : std::as_const(m_observers))
        disconnect(connection);
    m_observers.clear();
}

void TavroAVView::rebuildObservers()
{
    removeObservers();
    if (!m_player)
        return;
    MpvPlayer* player = m_player.get();
    m_observers = {
        connect(player, &MpvPlayer::itemStatusChanged, this,
            [this](MpvPlayer::ItemStatus status) { onItemStatus(int(status)); }),
        connect(player, &MpvPlayer::tracksLoaded, this, &TavroAVView::onTracksLoaded),
        connect(player, &MpvPlayer::rateChanged, this, &TavroAVView::onRateChanged),
        connect(player, &MpvPlayer::timeChanged, this, &TavroAVView::onTimeChanged),
        connect(player, &MpvPlayer::playedToEnd, this, &TavroAVView::onPlayedToEnd),
        connect(player, &MpvPlayer::frameRendered, this, &TavroAVView::onFrameRendered),
    };
    // A picture that is already there counts as ready for display at once.
    if (player->hasFrame())
        stopLoadingAnimationAndHandleError(false);
}

void TavroAVView::onItemStatus(int itemStatus)
{
    switch (MpvPlayer::ItemStatus(itemStatus)) {
    case MpvPlayer::ItemStatus::Failed:
        stopLoadingAnimationAndHandleError(true);
        break;
    case MpvPlayer::ItemStatus::ReadyToPlay:
        // A file without video stays in Error although its sound is ready.
        if (m_status != TavroAVViewStatus::Error)
            setStatus(TavroAVViewStatus::Prepared);
        break;
    case MpvPlayer::ItemStatus::Unknown:
        setStatus(TavroAVViewStatus::Unknown);
        break;
    }
}

void TavroAVView::onTracksLoaded(bool hasVideo)
{
    if (hasVideo)
        return;
    stopLoadingAnimationAndHandleError(false);
    showOverlay(m_noVideoView, true);
    setStatus(TavroAVViewStatus::Error);
}

void TavroAVView::onRateChanged(float rate)
{
    m_rate = rate;
    if (m_delegate)
        m_delegate->tavroAVViewDidUpdateRate(this, rate);
}

void TavroAVView::onTimeChanged(double seconds)
{
    if (m_delegate)
        m_delegate->tavroAVViewDidUpdateTime(this, seconds);
}

void TavroAVView::onPlayedToEnd()
{
    if (m_delegate)
        m_delegate->tavroAVViewDidPlayToEndTime(this);
}

void TavroAVView::onFrameRendered()
{
    stopLoadingAnimationAndHandleError(false);
    emit pictureChanged();
}

void TavroAVView::seekToStartAtEnd()
{
    if (m_player && currentTime() == duration())
        m_player->seekExact(0.0);
}

void TavroAVView::play()
{
    if (!m_player)
        return;
    seekToStartAtEnd();
    m_player->play();
}

void TavroAVView::pause()
{
    if (m_player)
        m_player->pause();
}

void TavroAVView::playPauseToggle()
{
    if (!m_player)
        return;
    if (m_player->rate() == 1.0f) {
        pause();
        return;
    }
    play();
}

void TavroAVView::fastForward()
{
    if (m_player)
        m_player->setRate(PlayerRules::nextFastForwardRate(m_player->rate()));
}

void TavroAVView::rewind()
{
    if (m_player)
        m_player->setRate(PlayerRules::nextRewindRate(m_player->rate()));
}

void TavroAVView::stepForward()
{
    if (m_player)
        m_player->stepForward();
}

void TavroAVView::stepBackward()
{
    if (m_player)
        m_player->stepBackward();
}

void TavroAVView::setCurrentTime(double seconds)
{
    if (m_player)
        m_player->seekExact(PlayerRules::wholeSecondSeekTarget(seconds));
}

void TavroAVView::setCurrentTimeExactly(double seconds)
{
    if (m_player)
        m_player->seekExact(seconds);
}

double TavroAVView::currentTime() const
{
    if (!m_player)
        return 0.0;
    // mpv holds the last frame at the end; the position then is the end itself.
    if (m_player->eofReached() && m_player->isReady())
        return m_player->duration();
    return m_player->timePos();
}

double TavroAVView::duration() const
{
    return m_player && m_player->isReady() ? m_player->duration() : 0.0;
}

float TavroAVView::volume() const
{
    return m_player ? m_player->volume() : 0.0f;
}

void TavroAVView::setVolume(float volume)
{
    if (m_player)
        m_player->setVolume(volume);
}

void TavroAVView::setUpsideDown(bool upsideDown)
{
    m_upsideDown = upsideDown;
    emit pictureChanged();
}

void TavroAVView::setVideoTrack(int track)
{
    m_videoTrack = qMax(1, track);
    if (m_player)
        m_player->setVideoTrack(m_videoTrack);
}

QImage TavroAVView::snapshot()
{
    return snapshotJob()();
}

std::function<QImage()> TavroAVView::snapshotJob()
{
    if (!m_player || m_player->path().isEmpty())
        return [] { return QImage(); };
    if (m_player->tracksKnown() && !m_player->hasVideo() && m_player->videoSize().isEmpty()) {
        return [] {
            QImage black(kNoVideoSnapshotSize, QImage::Format_RGB32);
            black.fill(Qt::black);
            return black;
        };
    }
    const double at = PlayerRules::snapshotTime(duration());
    const QSize size
        = m_player->videoSize().isEmpty() ? kNoVideoSnapshotSize : m_player->videoSize();
    return [path = m_player->path(), at, track = m_player->videoTrack(), size] {
        QImage frame = FrameGrabber::grab(path, at, track);
        if (frame.isNull() || frame.size() == size)
            return frame;
        return frame.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
}

void TavroAVView::swapPlayerItemWith(PlayerView& otherView)
{
    auto* other = dynamic_cast<TavroAVView*>(&otherView);
    if (!other || other == this)
        return;
    removeObservers();
    other->removeObservers();
    std::swap(m_fileName, other->m_fileName);
    std::swap(m_player, other->m_player);
    std::swap(m_videoTrack, other->m_videoTrack);
    // Each picture is now rendered at the size of its new host.
    if (m_player)
        m_player->setTargetSize(devicePixelSize());
    if (other->m_player)
        other->m_player->setTargetSize(other->devicePixelSize());
    rebuildObservers();
    other->rebuildObservers();
    emit pictureChanged();
    emit other->pictureChanged();
}

qint64 TavroAVView::decoderDroppedFrames() const
{
    return m_player ? m_player->decoderDrops() : 0;
}

qint64 TavroAVView::outputDroppedFrames() const
{
    return m_player ? m_player->outputDrops() : 0;
}

QSize TavroAVView::devicePixelSize() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

void TavroAVView::layoutOverlays()
{
    m_noVideoView->setGeometry(rect());
    m_loadingSpinner->move(
        (width() - m_loadingSpinner->width()) / 2, (height() - m_loadingSpinner->height()) / 2);
}

void TavroAVView::showOverlay(QWidget* overlay, bool shown)
{
    overlay->setVisible(shown);
    if (shown)
        overlay->raise();
}

VideoPicture* TavroAVView::shownPicture() const
{
    if (!m_player || !m_player->hasFrame() || !m_loadingSpinner->isHidden()
        || !m_noVideoView->isHidden())
        return nullptr;
    return m_player.get();
}

qint64 TavroAVView::pictureSerial() const
{
    return m_player ? m_player->framesRendered() : 0;
}

void TavroAVView::useScene(VideoScene* scene)
{
    if (scene == m_ownScene)
        return;
    delete m_ownScene;
    m_ownScene = nullptr;
}

void TavroAVView::notePicturePresented()
{
    ++m_framesPresented;
    emit framePresented();
}

QImage TavroAVView::grabFramebuffer()
{
    QImage picture = m_player && m_player->hasFrame() ? m_player->image() : QImage();
    if (picture.isNull()) {
        picture = QImage(devicePixelSize().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
        picture.fill(Qt::black);
    }
    return m_upsideDown ? picture.mirrored(false, true) : picture;
}

void TavroAVView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutOverlays();
    if (m_player)
        m_player->setTargetSize(devicePixelSize());
}

void TavroAVView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton && m_delegate) {
        m_delegate->tavroAVViewDidRequestFullscreen(this);
        return;
    }
    QWidget::mouseReleaseEvent(event);
}
