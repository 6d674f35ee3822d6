// Play, pause, stop, seeking, frame steps and the playback tick that keeps
// the time text, the read-outs, the speedometer and the map in step.
#include "app/session/PlaybackSessionTrip.h"

#include "app/session/SessionTexts.h"
#include "app/session/SessionView.h"
#include "player/PlayerView.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace {

constexpr const char* kPauseImage = "pause1";
constexpr const char* kPlayImage = "play_1";

// The read-outs refresh when more than this much media time has passed; the
// comparison is made against the single-precision 0.3 on purpose.
constexpr double kSensorInfoInterval = double(0.3f);
constexpr double kMapInterval = 1.0;
// One raw G unit shifted left by two bits, in g: raw * 4 / 512 = raw / 128.
constexpr double kShiftedGUnit = 0.001953125;

// Telemetry index of a media time: tenths of a second, truncated toward zero
// to 32 bits; a time that does not fit gives -1 (no sample).
int32_t sampleIndex(double seconds)
{
    const double tenths = seconds * 10.0;
    if (!std::isfinite(tenths) || tenths >= double(std::numeric_limits<int32_t>::max())
        || tenths <= double(std::numeric_limits<int32_t>::min()))
        return -1;
    return int32_t(tenths);
}

float gFromRaw(int raw)
{
    return float(int32_t(uint32_t(raw) << 2) * kShiftedGUnit);
}

} // namespace

void PlaybackSession::playVideo()
{
    if (!m_bigMovieView.hasMovie())
        return;
    m_isVideoPaused = false;
    m_stopped = false;
    m_view.setPlayPauseImage(QString::fromLatin1(kPauseImage));
    startVideoPlayTimer();
    startPlayAnimation();
    m_bigMovieView.play();
    m_smallMovieView.play();
}

void PlaybackSession::pauseVideo()
{
    if (m_isVideoPaused)
        return;
    m_isVideoPaused = true;
    m_view.setPlayPauseImage(QString::fromLatin1(kPlayImage));
    m_bigMovieView.pause();
    m_smallMovieView.pause();
    stopVideoPlayTimer();
    stopPlayAnimation();
}

void PlaybackSession::stopVideo()
{
    pauseVideo();
    m_isVideoPaused = true;
    m_stopped = true;
    m_positionPending = false;
    m_positionWait.stop();
    setCurrentVideoTime(0.0);
    stopVideoPlayTimer();
    m_view.setSeekValue(0.0);
    updatePlayTime(0.0, m_bigMovieView.duration());
    m_lastUpdatedSensorInfoTime = 0.0;
    m_lastUpdatedMapTime = 0.0;
    m_lastUpdatedLat = 0.0;
    m_lastUpdatedLng = 0.0;
    stopPlayAnimation();
    coverMap();
}

void PlaybackSession::setCurrentVideoTime(double seconds)
{
    m_bigMovieView.setCurrentTime(seconds);
    m_smallMovieView.setCurrentTime(seconds);
}

void PlaybackSession::playPauseButtonTouched()
{
    if (m_isVideoPaused)
        playVideo();
    else
        pauseVideo();
}

void PlaybackSession::stopButtonTouched()
{
    stopVideo();
}

void PlaybackSession::rewindButtonTouched()
{
    pauseVideo();
    m_bigMovieView.stepBackward();
    m_smallMovieView.stepBackward();
    awaitNewPosition();
}

void PlaybackSession::fastForwardButtonTouched()
{
    pauseVideo();
    m_bigMovieView.stepForward();
    m_smallMovieView.stepForward();
    awaitNewPosition();
}

void PlaybackSession::startVideoPlayTimer()
{
    stopVideoPlayTimer();
    m_videoPlayTimer.start();
}

void PlaybackSession::stopVideoPlayTimer()
{
    m_videoPlayTimer.stop();
}

void PlaybackSession::awaitNewPosition()
{
    // The views answer later: until the large one has the new position it
    // still reads the old one, which must not be shown nor taken as the time
    // of the last refresh (the read-outs would then wait for playback to pass
    // the old moment again).
    m_positionPending = true;
    m_stopped = false;
    m_positionWait.start();
}

void PlaybackSession::showNewPosition()
{
    m_positionPending = false;
    m_positionWait.stop();
    m_refreshAll = true;
    playVideoTimerCallback();
}

void PlaybackSession::playVideoTimerCallback()
{
    if (m_positionPending)
        return;
    const double duration = m_bigMovieView.duration();
    const double time = m_bigMovieView.currentTime();
    if (!m_seekSliderHeld)
        m_view.setSeekValue(time);
    updatePlayTime(time, duration);

    // A trip's telemetry is the clip's shown at that moment.
    double clipTime = time;
    if (m_trip) {
        const TripTimeline::Place place = m_trip->timeline.locate(time);
        showTripSegment(place.segment);
        clipTime = place.inClip;
        keepRearInStep(time);
    }
    const bool refreshAll = std::exchange(m_refreshAll, false);
    const int32_t index = sampleIndex(clipTime);
    if (uint32_t(m_clipData.clipDataCount()) <= uint32_t(index))
        return; // past the telemetry: the read-outs keep their values
    int x = 0, y = 0, z = 0, speed = 0;
    float lat = 0.0f, lng = 0.0f;
    m_clipData.getClipDataWithIndex(index, x, y, z, lat, lng, speed);

    if (refreshAll || time - m_lastUpdatedSensorInfoTime > kSensorInfoInterval) {
        m_lastUpdatedSensorInfoTime = time;
        updateSensorInfo(gFromRaw(x), gFromRaw(y), gFromRaw(z), lat, lng, speed);
        m_view.setSpeedometerSpeed(speed);
    }
    if (refreshAll || time - m_lastUpdatedMapTime > kMapInterval) {
        m_lastUpdatedMapTime = time;
        updateMapWithLat(lat, lng);
    }
}

void PlaybackSession::updatePlayTime(double time, double duration)
{
    m_view.setPlayTimeText(SessionTexts::playTimeText(time, duration));
}

void PlaybackSession::updateSensorInfo(
    float gx, float gy, float gz, float lat, float lng, int speed)
{
    Q_UNUSED(speed) // the speedometer shows it
    m_view.setSensorTexts(SessionTexts::gText(gx), SessionTexts::gText(gy), SessionTexts::gText(gz),
        SessionTexts::coordinateText(lat), SessionTexts::coordinateText(lng));
}

void PlaybackSession::updateMapWithLat(float lat, float lng)
{
    const bool noPosition = lat == 0.0f && lng == 0.0f;
    if (m_trip && !m_trip->route.isEmpty()) {
        // The trip's route stays; a moment without a fix leaves the position.
        if (noPosition)
            return;
    } else if (noPosition || m_clipData.gpsDataCount() == 0) {
        coverMap();
        return;
    }
    m_view.setMapCovered(false);
    if (double(lat) == m_lastUpdatedLat && double(lng) == m_lastUpdatedLng)
        return;
    m_view.moveMapToLat(lat, lng);
    m_lastUpdatedLat = lat;
    m_lastUpdatedLng = lng;
}

void PlaybackSession::coverMap()
{
    m_view.setMapCovered(true);
}

void PlaybackSession::seekTimeSliderTouchedDown()
{
    m_seekSliderHeld = true;
}

void PlaybackSession::seekTimeSliderDragged(double seconds)
{
    Q_UNUSED(seconds) // dragging does not seek; the release does
    m_seekSliderHeld = true;
}

void PlaybackSession::seekTimeSliderTouchedUp(double seconds)
{
    m_seekSliderHeld = false;
    if (m_trip) {
        // A trip's timeline is not cut into whole seconds.
        seekTrip(seconds);
        return;
    }
    m_lastUpdatedSensorInfoTime = 0.0;
    m_lastUpdatedMapTime = 0.0;
    // The views land on the whole second.
    m_bigMovieView.setCurrentTime(seconds);
    m_smallMovieView.setCurrentTime(seconds);
    awaitNewPosition();
}
