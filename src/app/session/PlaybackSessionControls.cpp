// Previous/next clip and the end of a clip, the camera swap, flip, volume,
// zoom, full screen, the keyboard and the blinking indicators.
#include "app/session/PlaybackSessionTrip.h"

#include "app/session/ClipNavigation.h"
#include "app/session/SessionView.h"
#include "library/ClipLibrary.h"
#include "player/PlayerView.h"

#include <algorithm>

namespace {

constexpr float kVolumeStep = 0.1f;
// The zoom step is the single-precision 0.2.
constexpr double kVideoScaleStep = double(0.2f);

} // namespace

void PlaybackSession::playPrevFileButtonTouched()
{
    if (m_trip) {
        // Within a trip: to the start of this clip, or of the one before.
        const int segment = m_trip->timeline.previousSegment(tripPosition());
        if (segment >= 0)
            seekTrip(m_trip->timeline.segments()[segment].start);
        return;
    }
    const int target
        = ClipNavigation::previousRow(m_library.filteredVideoFileList(), m_library.selectedRow());
    if (target >= 0)
        selectAndPlay(target);
}

void PlaybackSession::playNextFileButtonTouched()
{
    if (m_trip) {
        const int segment = m_trip->timeline.nextSegment(tripPosition());
        if (segment >= 0)
            seekTrip(m_trip->timeline.segments()[segment].start);
        return;
    }
    const int target
        = ClipNavigation::nextRow(m_library.filteredVideoFileList(), m_library.selectedRow());
    if (target >= 0)
        selectAndPlay(target);
}

void PlaybackSession::selectAndPlay(int row)
{
    m_library.setSelectedRow(row); // the window selects the row alone and scrolls to it
    playVideoWithIdx(row);
}

void PlaybackSession::movieDidEnd()
{
    if (tripMovieDidEnd())
        return;
    stopVideoPlayTimer();
    playNextFileButtonTouched();
    coverMap();
}

void PlaybackSession::toggleVideoSwithButtonTouched()
{
    if (!m_bigMovieView.hasMovie() || !m_smallMovieView.hasMovie())
        return; // a single camera has nothing to swap with
    pauseVideo();
    m_isVideoSwitched = !m_isVideoSwitched;
    // The media move between the views; volumes stay with the views.
    m_bigMovieView.swapPlayerItemWith(m_smallMovieView);
    playVideo();
}

void PlaybackSession::videoRotateButtonTouched()
{
    m_doVideoFlip = !m_doVideoFlip;
    m_bigMovieView.setUpsideDown(m_doVideoFlip);
    m_smallMovieView.setUpsideDown(m_doVideoFlip);
}

// --- volume

void PlaybackSession::volumeSliderMoved(float volume)
{
    m_volumeSlider.setVolume(volume);
}

void PlaybackSession::volumeChanged(float volume)
{
    m_bigMovieView.setVolume(volume);
}

void PlaybackSession::volumeUp()
{
    m_volumeSlider.setVolumeQuietly(m_volumeSlider.volume() + kVolumeStep);
    m_view.setVolumeSliderValue(m_volumeSlider.volume());
    m_bigMovieView.setVolume(m_volumeSlider.volume());
}

void PlaybackSession::volumeDown()
{
    m_volumeSlider.setVolumeQuietly(m_volumeSlider.volume() - kVolumeStep);
    m_view.setVolumeSliderValue(m_volumeSlider.volume());
    m_bigMovieView.setVolume(m_volumeSlider.volume());
}

void PlaybackSession::toggleMuteButtonTouched()
{
    m_volumeSlider.setMuted(!m_volumeSlider.isMuted());
    m_view.setVolumeSliderValue(m_volumeSlider.volume());
    setVideoMute(m_volumeSlider.isMuted());
}

void PlaybackSession::setVideoMute(bool muted)
{
    m_view.setMuteImage(QString::fromLatin1(muted ? "volume2" : "volume1"));
    m_view.setVolumeSliderEnabled(!muted);
}

// --- zoom

void PlaybackSession::videoScaleUpButtonTouched()
{
    changeVideoScale(std::min(m_videoScale + kVideoScaleStep, kMaxVideoScale));
}

void PlaybackSession::videoScaleDownButtonTouched()
{
    double scale = m_videoScale - kVideoScaleStep;
    if (scale < kMinVideoScale) {
        scale = kMinVideoScale;
        m_touchedBigMovieScroll = false;
    }
    changeVideoScale(scale);
}

void PlaybackSession::resetVideoScaleButtonTouched()
{
    m_touchedBigMovieScroll = false;
    changeVideoScale(kMinVideoScale);
}

void PlaybackSession::changeVideoScale(double scale)
{
    m_videoScale = scale;
    m_view.changeVideoScale(scale);
}

void PlaybackSession::bigMovieViewDragged()
{
    if (m_enableBigMovieViewScroll && m_videoScale > kMinVideoScale)
        m_touchedBigMovieScroll = true;
}

// --- full screen

void PlaybackSession::fullscreenButtonTouched(PlayerView* sender)
{
    if (m_isFullScreenMode)
        hideFullScreenMovie();
    else
        showFullScreenMovie(sender);
}

void PlaybackSession::showFullScreenMovie(PlayerView* sender)
{
    if (m_isFullScreenMode)
        return;
    m_isFullScreenMode = true;
    m_view.showFullScreenMovie(sender == &m_smallMovieView);
}

void PlaybackSession::hideFullScreenMovie()
{
    if (!m_isFullScreenMode)
        return;
    m_isFullScreenMode = false;
    m_view.hideFullScreenMovie();
}

// --- keyboard

bool PlaybackSession::keyDown(int key, Qt::KeyboardModifiers modifiers)
{
    const bool control = modifiers.testFlag(Qt::ControlModifier);
    switch (key) {
    case Qt::Key_Space:
        playPauseButtonTouched();
        return true;
    case Qt::Key_Left:
        rewindButtonTouched();
        return true;
    case Qt::Key_Right:
        fastForwardButtonTouched();
        return true;
    case Qt::Key_Down:
        volumeDown();
        return true;
    case Qt::Key_Up:
        volumeUp();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        fullscreenButtonTouched(nullptr);
        return true;
    case Qt::Key_Escape:
        hideFullScreenMovie();
        return true;
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
        // The event marks of a trip; elsewhere the keys are the list's.
        if (!m_trip)
            return false;
        key == Qt::Key_PageDown ? nextEventKeyTouched() : previousEventKeyTouched();
        return true;
    case Qt::Key_I:
    case Qt::Key_O:
        // The in and out marks of the span to export.
        if (control || m_currentVideoUrl.isEmpty())
            return false;
        key == Qt::Key_I ? markInKeyTouched() : markOutKeyTouched();
        return true;
    case Qt::Key_Q:
    case Qt::Key_W:
        if (!control)
            return false;
        appExitButtonTouched();
        return true;
    case Qt::Key_M:
        if (!control)
            return false;
        appMinimizeButtonTouched();
        return true;
    default:
        return false;
    }
}

void PlaybackSession::appExitButtonTouched()
{
    m_view.quitApplication();
}

void PlaybackSession::appMinimizeButtonTouched()
{
    m_view.minimizeWindow();
}

// --- blinking indicators

void PlaybackSession::startPlayAnimation()
{
    stopPlayAnimation();
    m_playAnimationTimer.start();
}

void PlaybackSession::stopPlayAnimation()
{
    m_playAnimationTimer.stop();
}

void PlaybackSession::playAnimationTimerCallback()
{
    const int frame = int(m_playAnimationIdx & 1u) + 1;
    ++m_playAnimationIdx;
    m_view.setIndicatorImages(
        QString::asprintf("shock_gage%d", frame), QString::asprintf("earth%d", frame));
}
