#include "app/session/VideoExportController.h"

#include "app/session/PlaybackSession.h"
#include "display/SpeedUnit.h"
#include "trips/CardTrips.h"

#include <QFileInfo>
#include <QThread>

namespace {

// A clip alone is cut to its end, whatever its length.
constexpr double kOpenEnd = 1e9;

// A position on the trip's timeline (pauses left out) in seconds from the
// trip's start.
double tripOffset(const Trip& trip, const TripTimeline& timeline, double position)
{
    const TripTimeline::Place place = timeline.locate(position);
    if (place.segment < 0)
        return 0;
    return trip.clips[timeline.segments()[place.segment].clip].offset + place.inClip;
}

QString pictureName(VideoExportController::Picture picture)
{
    using Picture = VideoExportController::Picture;
    switch (picture) {
    case Picture::Front:
        return QStringLiteral("front");
    case Picture::Rear:
        return QStringLiteral("rear");
    case Picture::SideBySide:
        return QStringLiteral("side");
    case Picture::PictureInPicture:
        break;
    }
    return QStringLiteral("pip");
}

} // namespace

VideoExportController::VideoExportController(QObject* parent)
    : QObject(parent)
{
}

VideoExportController::~VideoExportController()
{
    if (m_thread) {
        m_runner.cancel();
        m_thread->wait();
        delete m_thread;
    }
}

VideoExportController::Scope VideoExportController::scopeOf(const PlaybackSession& session)
{
    Scope scope;
    const std::optional<double> in = session.markIn();
    const std::optional<double> out = session.markOut();
    if (const Trip* trip = session.currentTrip()) {
        scope.trip = *trip;
        const int shown = std::max(0, session.currentTripClip());
        if (shown < trip->clips.size()) {
            const TripClip& clip = trip->clips[shown];
            scope.clipFrom = clip.offset;
            scope.clipTo = clip.offset + clip.duration;
        }
        if (in && out) {
            scope.markIn = tripOffset(*trip, *session.tripTimeline(), *in);
            scope.markOut = tripOffset(*trip, *session.tripTimeline(), *out);
        }
        return scope;
    }
    scope.clip = session.currentVideoUrl().toLocalFile();
    scope.clipTo = kOpenEnd;
    if (in && out) {
        scope.markIn = in;
        scope.markOut = out;
    }
    return scope;
}

QList<VideoExportController::Range> VideoExportController::ranges(const Scope& scope)
{
    QList<Range> offered;
    if (scope.isEmpty())
        return offered;
    offered << Range::CurrentClip;
    if (scope.trip)
        offered << Range::WholeTrip;
    if (scope.markIn && scope.markOut && *scope.markOut > *scope.markIn)
        offered << Range::Marked;
    return offered;
}

QString VideoExportController::proposedName(const Scope& scope, const Choice& choice)
{
    QString base = scope.clip;
    if (scope.trip && !scope.trip->clips.isEmpty())
        base = scope.trip->clips.constFirst().path;
    QString name = QFileInfo(base).completeBaseName();
    // "…_F" names the front camera's file; the export says what it shows.
    if (name.endsWith(QLatin1String("_F")) || name.endsWith(QLatin1String("_R")))
        name.chop(2);
    if (choice.range == Range::WholeTrip)
        name += QStringLiteral("_trip");
    return name + u'_' + pictureName(choice.picture) + QStringLiteral(".mp4");
}

QString VideoExportController::pathWithSuffix(const QString& path)
{
    if (QFileInfo(path).suffix().compare(QLatin1String("mp4"), Qt::CaseInsensitive) == 0)
        return path;
    return path + QStringLiteral(".mp4");
}

CutPlan::Request VideoExportController::request(
    const Scope& scope, const Choice& choice, bool miles)
{
    CutPlan::Request request;
    switch (choice.range) {
    case Range::CurrentClip:
        request.from = scope.clipFrom;
        request.to = scope.clipTo;
        break;
    case Range::WholeTrip:
        request.from = 0;
        request.to = scope.trip ? scope.trip->duration() : kOpenEnd;
        break;
    case Range::Marked:
        request.from = scope.markIn.value_or(0);
        request.to = scope.markOut.value_or(0);
        break;
    }
    request.camera
        = choice.picture == Picture::Rear ? CutPlan::Camera::Rear : CutPlan::Camera::Front;
    if (choice.picture == Picture::SideBySide)
        request.compose = CutPlan::Compose::SideBySide;
    else if (choice.picture == Picture::PictureInPicture)
        request.compose = CutPlan::Compose::PictureInPicture;
    request.overlay = choice.overlay;
    request.miles = miles;
    return request;
}

bool VideoExportController::start(const Scope& scope, const Choice& choice, const QString& path)
{
    if (m_thread || path.isEmpty() || !ranges(scope).contains(choice.range))
        return false;
    m_cancelled = false;
    m_runner.resetCancel();
    m_result = std::make_shared<VideoCut::Result>();
    const CutPlan::Request request
        = VideoExportController::request(scope, choice, SpeedUnit::storedSpeedUnit() != 0);
    // The worker reports progress through queued calls: this object lives on the window's thread.
    const VideoCut::Progress progress = [this](double done, double total) {
        QMetaObject::invokeMethod(
            this, [this, done, total] { emit progressChanged(done, total); }, Qt::QueuedConnection);
    };
    m_thread = QThread::create([this, scope, request, path, progress, result = m_result] {
        // A clip alone is a trip of one clip, read here, off the window's thread.
        const std::optional<Trip> trip = scope.trip ? scope.trip : CardTrips::clipTrip(scope.clip);
        if (!trip) {
            result->status = VideoCut::Result::Status::NothingRecorded;
            return;
        }
        *result = VideoCut::cut(*trip, request, path, m_runner, progress);
    });
    connect(m_thread, &QThread::finished, this, &VideoExportController::onThreadFinished);
    m_thread->start();
    return true;
}

void VideoExportController::cancel()
{
    if (!m_thread)
        return;
    m_cancelled = true;
    m_runner.cancel();
}

void VideoExportController::onThreadFinished()
{
    QThread* thread = m_thread;
    m_thread = nullptr;
    thread->deleteLater();
    emit finished({ *m_result, m_cancelled && !m_result->ok() });
}
