// Playing a trip: both cameras' clips on one timeline each, the telemetry of
// the clip shown, the whole route, the clip boundaries and event marks.
#include "app/session/PlaybackSessionTrip.h"

#include "app/session/SessionTexts.h"
#include "app/session/SessionView.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "library/ClipConverter.h"
#include "player/PlayerTimeline.h"
#include "player/PlayerView.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace {

// What a two-camera AVI's rear camera is played from: its second video
// stream converted into a file of its own (the player shows one stream of
// each file on a timeline). Runs on the preparation thread.
QString convertedRear(const ClipConverter& converter, const QString& clip)
{
    const std::optional<QList<QUrl>> files
        = converter.checkAndConvertVideo(QUrl::fromLocalFile(clip));
    return files && files->size() >= 2 ? files->at(1).toLocalFile() : QString();
}

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

QString markToolTip(const QString& what, const Trip& trip, double offset, double position)
{
    const int64_t utc = trip.startUtc + int64_t(std::llround(offset * 1000.0));
    return SessionTexts::tripMarkText(what, utc, position);
}

QVector<SeekMark> seekMarks(const Trip& trip, const TripTimeline& timeline)
{
    QVector<SeekMark> marks;
    for (const TripTimeline::Segment& segment : timeline.segments()) {
        const TripClip& clip = trip.clips[segment.clip];
        const QString what
            = localized(LocalizationKeys::kMarkClipStart) + u' ' + QFileInfo(clip.path).fileName();
        marks.append({ segment.start, SeekMark::Kind::ClipStart,
            markToolTip(what, trip, clip.offset, segment.start) });
    }
    for (const TripTimeline::Mark& mark : timeline.marks()) {
        const TripEvent& event = trip.events[mark.event];
        SeekMark seek { mark.position, SeekMark::Kind::Impact, {} };
        QString what;
        switch (event.kind) {
        case TripEvent::Kind::Impact:
            what = localized(LocalizationKeys::kMarkImpact)
                + QString::asprintf(" %.2f g", event.peakG.value_or(0.0));
            break;
        case TripEvent::Kind::EventClip:
            seek.kind = SeekMark::Kind::EventClip;
            what = localized(LocalizationKeys::kMarkEventClip);
            break;
        case TripEvent::Kind::ManualClip:
            seek.kind = SeekMark::Kind::ManualClip;
            what = localized(LocalizationKeys::kManualRecording);
            break;
        }
        seek.toolTip = markToolTip(what, trip, event.offset, mark.position);
        marks.append(seek);
    }
    return marks;
}

QString spanMarkToolTip(const char* key, double position)
{
    const int seconds = int(position);
    return localized(key) + QString::asprintf(" %02d:%02d", seconds / 60, seconds % 60);
}

} // namespace

void PlaybackSession::playTrip(const Trip& trip)
{
    stopVideo();
    leaveTrip();
    resetForNewMedia();
    m_trip = std::make_unique<TripPlayback>(trip);
    m_preparingUrl = trip.clips.isEmpty() ? QUrl() : QUrl::fromLocalFile(trip.clips[0].path);
    // What the worker needs, copied: the clips of the timeline's segments.
    QVector<TripClip> clips;
    for (const TripTimeline::Segment& segment : m_trip->timeline.segments())
        clips.append(trip.clips[segment.clip]);
    const ClipConverter* converter = &m_converter;
    startPreparation([converter, clips] {
        auto files = std::make_shared<TripFiles>();
        for (const TripClip& clip : clips) {
            QString rear = clip.rear;
            if (rear.isEmpty() && clip.telemetry->media.videoStreams >= 2)
                rear = convertedRear(*converter, clip.path);
            const ClipMediaInfo rearMedia
                = rear.isEmpty() ? ClipMediaInfo {} : ClipMediaInfo::read(rear);
            if (files->rearSize.isEmpty())
                files->rearSize = rearMedia.frameSize;
            files->fronts.append(clip.path);
            files->frontMedia.append(clip.telemetry->media);
            files->rears.append(rear);
            files->rearMedia.append(rearMedia);
        }
        return Prepared { std::nullopt, nullptr, files };
    });
}

void PlaybackSession::finishTripPreparation(const TripFiles& files)
{
    if (!m_trip || files.fronts.isEmpty()) {
        leaveTrip();
        m_currentVideoUrl = QUrl();
        showUnsupportedFileAlert();
        emit currentVideoChanged(m_currentVideoUrl);
        return;
    }
    m_currentVideoUrl = m_preparingUrl;
    enableVideoControls(true);
    QVector<PlayerTimeline::Segment> front;
    QVector<PlayerTimeline::Segment> rear;
    bool anyRear = false;
    const QVector<TripTimeline::Segment>& segments = m_trip->timeline.segments();
    for (qsizetype i = 0; i < segments.size(); ++i) {
        const ClipMediaInfo& frontMedia = files.frontMedia[i];
        const ClipMediaInfo& rearMedia = files.rearMedia[i];
        front.append({ files.fronts[i], segments[i].length, {}, frontMedia.videoStreams,
            frontMedia.audioStreams });
        rear.append({ files.rears[i], segments[i].length, files.rearSize,
            std::max(1, rearMedia.videoStreams), rearMedia.audioStreams });
        anyRear = anyRear || !files.rears[i].isEmpty();
    }
    m_bigVideoFilePath = PlayerTimeline::url(front);
    m_bigMovieView.setFileName(m_bigVideoFilePath);
    if (anyRear) {
        m_smallVideoFilePath = PlayerTimeline::url(rear);
        m_smallMovieView.setFileName(m_smallVideoFilePath);
        m_smallMovieView.setVolume(0.0f);
    }
    m_view.setSwapButtonEnabled(anyRear);
    m_isVideoSwitched = false;
    showTripSegment(0);
    showTripRoute();
    showSeekMarks();
    updateMovieViewCoverScrren();
    emit currentVideoChanged(m_currentVideoUrl);
}

void PlaybackSession::leaveTrip()
{
    if (!m_trip)
        return;
    m_trip.reset();
    showSeekMarks();
}

void PlaybackSession::showSeekMarks()
{
    QVector<SeekMark> marks;
    if (m_trip)
        marks = seekMarks(m_trip->trip, m_trip->timeline);
    if (m_markIn)
        marks.append({ *m_markIn, SeekMark::Kind::SpanIn,
            spanMarkToolTip(LocalizationKeys::kMarkIn, *m_markIn) });
    if (m_markOut)
        marks.append({ *m_markOut, SeekMark::Kind::SpanOut,
            spanMarkToolTip(LocalizationKeys::kMarkOut, *m_markOut) });
    m_view.setSeekMarks(marks);
}

double PlaybackSession::shownPosition() const
{
    return m_trip ? tripPosition() : m_bigMovieView.currentTime();
}

void PlaybackSession::markInKeyTouched()
{
    if (m_currentVideoUrl.isEmpty())
        return;
    m_markIn = shownPosition();
    if (m_markOut && *m_markOut <= *m_markIn)
        m_markOut.reset();
    showSeekMarks();
}

void PlaybackSession::markOutKeyTouched()
{
    if (m_currentVideoUrl.isEmpty())
        return;
    m_markOut = shownPosition();
    if (m_markIn && *m_markIn >= *m_markOut)
        m_markIn.reset();
    showSeekMarks();
}

const Trip* PlaybackSession::currentTrip() const
{
    return m_trip ? &m_trip->trip : nullptr;
}

const TripTimeline* PlaybackSession::tripTimeline() const
{
    return m_trip ? &m_trip->timeline : nullptr;
}

int PlaybackSession::currentTripClip() const
{
    if (!m_trip || m_trip->shownSegment < 0)
        return -1;
    return m_trip->timeline.segments()[m_trip->shownSegment].clip;
}

void PlaybackSession::showTripSegment(int segment)
{
    if (!m_trip || segment < 0 || segment == m_trip->shownSegment)
        return;
    m_trip->shownSegment = segment;
    const TripClip& clip = m_trip->trip.clips[m_trip->timeline.segments()[segment].clip];
    // The read-outs and the graph follow the clip shown; a new clip shows
    // its first values at once.
    clip.telemetry->fillRecord(m_clipData);
    m_view.setGraphClipData(m_clipData);
    m_refreshAll = true;
}

void PlaybackSession::showTripRoute()
{
    if (m_trip->route.isEmpty()) {
        m_view.setMapCovered(true);
        m_view.setGpsIndicatorVisible(false);
        return;
    }
    m_view.setGpsIndicatorVisible(true);
    m_view.addMapRoutePoints(m_trip->route);
}

void PlaybackSession::keepRearInStep(double position)
{
    // Two players run side by side; the rear one is put back on the front
    // one's position when they drift apart (at most every few seconds, as
    // its position is reported later than the front one's).
    if (!m_smallMovieView.hasMovie() || m_isVideoPaused
        || std::abs(position - m_trip->lastRearCorrection) < 5.0)
        return;
    if (std::abs(m_smallMovieView.currentTime() - position) <= kRearDriftSeconds)
        return;
    m_trip->lastRearCorrection = position;
    m_smallMovieView.setCurrentTimeExactly(position);
}

double PlaybackSession::tripPosition() const
{
    return m_positionPending ? m_trip->seekTarget : m_bigMovieView.currentTime();
}

void PlaybackSession::seekTrip(double position)
{
    m_trip->seekTarget = position;
    // Both cameras go there; the rear one answers in its own time.
    m_trip->lastRearCorrection = position;
    m_lastUpdatedSensorInfoTime = 0.0;
    m_lastUpdatedMapTime = 0.0;
    m_bigMovieView.setCurrentTimeExactly(position);
    m_smallMovieView.setCurrentTimeExactly(position);
    awaitNewPosition();
}

void PlaybackSession::nextEventKeyTouched()
{
    if (!m_trip)
        return;
    const int mark = m_trip->timeline.nextMark(tripPosition());
    if (mark >= 0)
        seekTrip(m_trip->timeline.marks()[mark].position);
}

void PlaybackSession::previousEventKeyTouched()
{
    if (!m_trip)
        return;
    const int mark = m_trip->timeline.previousMark(tripPosition());
    if (mark >= 0)
        seekTrip(m_trip->timeline.marks()[mark].position);
}

bool PlaybackSession::tripMovieDidEnd()
{
    if (!m_trip)
        return false;
    // A trip stops at its end, on its last picture.
    pauseVideo();
    return true;
}
