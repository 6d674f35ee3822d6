#include "app/session/PlaybackSessionTrip.h"

#include "app/session/SessionView.h"
#include "config/AlertSink.h"
#include "i18n/LocalizationKeys.h"
#include "library/ClipConverter.h"
#include "library/ClipLibrary.h"
#include "library/ClipNaming.h"
#include "player/PlayerView.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <cmath>
#include <memory>

namespace {

// The subtitle file extracted beside a converted front file: same path, "srt"
// in place of the extension.
QString subtitlePathFor(const QString& path)
{
    const QFileInfo info(path);
    const QString base = info.completeBaseName();
    return info.dir().filePath(base + QStringLiteral(".srt"));
}

// The telemetry of a clip comes from the file opened for playback: the
// subtitles extracted beside an MP4's converted front file, the clip itself
// otherwise (through the Kel loader for that family's clips).
void loadTelemetry(TavroClipData& record, const QUrl& url, const QString& bigVideoFilePath)
{
    if (ClipNaming::lowerExtension(url) == QLatin1String("mp4"))
        record.loadVideoFileCilpDataFromFilePath(subtitlePathFor(bigVideoFilePath));
    else if (ClipNaming::isKelFamilyClip(url))
        record.loadVideoFileCilpDataFromFilePath_Kel(url.toLocalFile());
    else
        record.loadVideoFileCilpDataFromFilePath(url.toLocalFile());
}

} // namespace

PlaybackSession::PlaybackSession(PlayerView& bigMovieView, PlayerView& smallMovieView,
    SessionView& view, ClipLibrary& library, ClipConverter& converter, AlertSink& alerts,
    QObject* parent)
    : QObject(parent)
    , m_bigMovieView(bigMovieView)
    , m_smallMovieView(smallMovieView)
    , m_view(view)
    , m_library(library)
    , m_converter(converter)
    , m_alerts(alerts)
{
    m_videoPlayTimer.setTimerType(Qt::PreciseTimer);
    m_videoPlayTimer.setInterval(int(std::lround(kTickSeconds * 1000.0)));
    connect(&m_videoPlayTimer, &QTimer::timeout, this, &PlaybackSession::playVideoTimerCallback);
    m_playAnimationTimer.setInterval(kPlayAnimationMs);
    connect(&m_playAnimationTimer, &QTimer::timeout, this,
        &PlaybackSession::playAnimationTimerCallback);
    m_busyDelay.setSingleShot(true);
    m_busyDelay.setInterval(kBusyDelayMs);
    connect(&m_busyDelay, &QTimer::timeout, this, [this] { m_view.setBusy(true); });
    m_positionWait.setSingleShot(true);
    m_positionWait.setInterval(kPositionWaitMs);
    connect(&m_positionWait, &QTimer::timeout, this, &PlaybackSession::showNewPosition);
    m_volumeSlider.setChangeHandler([this](float volume) { volumeChanged(volume); });
    m_bigMovieView.setDelegate(this);
    m_smallMovieView.setDelegate(this);
}

PlaybackSession::~PlaybackSession()
{
    // A conversion still running is ended (ffmpeg killed, nothing left in
    // the cache) before the converter it uses can go.
    if (m_preparationThread) {
        m_converter.cancel();
        m_preparationThread->wait();
        delete m_preparationThread;
        m_converter.resetCancel();
    }
    if (m_bigMovieView.delegate() == this)
        m_bigMovieView.setDelegate(nullptr);
    if (m_smallMovieView.delegate() == this)
        m_smallMovieView.setDelegate(nullptr);
}

void PlaybackSession::playVideoWithIdx(int index)
{
    if (index < 0 || index >= m_library.numberOfRows())
        return;
    stopVideo();
    prepareVideoToPlay(m_library.row(index).url, 0.0);
}

void PlaybackSession::prepareVideoToPlay(const QUrl& url, double seekTime)
{
    Q_UNUSED(seekTime) // clips always play from their start
    leaveTrip();
    resetForNewMedia();
    m_preparingUrl = url;
    auto record = std::make_shared<TavroClipData>(m_clipData);
    const ClipConverter* converter = &m_converter;
    startPreparation([converter, url, record] {
        Prepared prepared { converter->checkAndConvertVideo(url), record, nullptr };
        if (prepared.files && !prepared.files->isEmpty())
            loadTelemetry(*record, url, prepared.files->at(0).toLocalFile());
        return prepared;
    });
}

void PlaybackSession::resetForNewMedia()
{
    resetVideoInformation();
    if (!m_isFullScreenMode) {
        m_enableBigMovieViewScroll = true;
        m_touchedBigMovieScroll = false;
        m_view.enterScrollMode(false);
        changeVideoScale(1.0);
    }
    m_bigMovieView.reset();
    m_smallMovieView.reset();
    m_bigVideoFilePath.clear();
    m_smallVideoFilePath.clear();
    m_lastUpdatedLat = 0.0;
    m_lastUpdatedLng = 0.0;
    if (m_markIn || m_markOut) {
        m_markIn.reset();
        m_markOut.reset();
        showSeekMarks();
    }
}

void PlaybackSession::startPreparation(std::function<Prepared()> job)
{
    m_preparing = true;
    const quint64 serial = ++m_preparationSerial;
    if (!m_prepareInBackground) {
        m_view.setBusy(true);
        finishPreparation(serial, job());
        return;
    }
    m_busyDelay.start();
    m_preparationJob = std::move(job);
    if (m_preparationThread) {
        // The work before is still running (a conversion): end that, then start.
        m_converter.cancel();
        m_preparationQueued = true;
        return;
    }
    runPreparationJob();
}

void PlaybackSession::runPreparationJob()
{
    m_preparationQueued = false;
    const quint64 serial = m_preparationSerial;
    m_preparationThread = QThread::create([this, job = std::move(m_preparationJob), serial] {
        const Prepared prepared = job();
        // The session waits for this thread before it goes, so it is there.
        QMetaObject::invokeMethod(
            this, [this, serial, prepared] { finishPreparation(serial, prepared); },
            Qt::QueuedConnection);
    });
    m_preparationJob = {};
    connect(m_preparationThread, &QThread::finished, this, &PlaybackSession::preparationThreadDone);
    m_preparationThread->start();
}

void PlaybackSession::preparationThreadDone()
{
    delete m_preparationThread;
    m_preparationThread = nullptr;
    m_converter.resetCancel();
    if (m_preparationQueued)
        runPreparationJob();
}

void PlaybackSession::cancelPreparation()
{
    if (!m_preparing)
        return;
    ++m_preparationSerial; // whatever the worker brings back is dropped
    m_preparing = false;
    m_preparationQueued = false;
    m_busyDelay.stop();
    m_view.setBusy(false);
    if (m_preparationThread)
        m_converter.cancel();
    m_currentVideoUrl = QUrl();
    emit currentVideoChanged(m_currentVideoUrl);
}

void PlaybackSession::finishPreparation(quint64 serial, const Prepared& prepared)
{
    if (serial != m_preparationSerial)
        return; // superseded or cancelled
    m_preparing = false;
    m_busyDelay.stop();
    m_view.setBusy(false);
    if (prepared.trip) {
        finishTripPreparation(*prepared.trip);
        return;
    }
    const QUrl url = m_preparingUrl;
    const std::optional<QList<QUrl>>& files = prepared.files;
    if (!files || files->isEmpty()) {
        m_currentVideoUrl = QUrl();
        showUnsupportedFileAlert();
        emit currentVideoChanged(m_currentVideoUrl);
        return;
    }
    m_currentVideoUrl = url;
    enableVideoControls(true);

    m_bigVideoFilePath = files->at(0).toLocalFile();
    m_bigMovieView.setFileName(m_bigVideoFilePath);
    if (files->size() >= 2) {
        m_smallVideoFilePath = files->at(1).toLocalFile();
        m_smallMovieView.setFileName(m_smallVideoFilePath);
        m_smallMovieView.setVolume(0.0f);
        m_view.setSwapButtonEnabled(true);
    } else {
        m_view.setSwapButtonEnabled(false);
    }
    // Other containers keep the swap flag as it was (the camera writes both
    // streams into one .avi, and the swap then concerns the same file).
    if (ClipNaming::lowerExtension(url) == QLatin1String("mp4"))
        m_isVideoSwitched = false;

    m_clipData = *prepared.record;
    showTelemetryDisplays();
    updateMovieViewCoverScrren();
    emit currentVideoChanged(m_currentVideoUrl);
}

void PlaybackSession::showTelemetryDisplays()
{
    m_view.setGraphClipData(m_clipData);
    if (m_clipData.gpsDataCount() != 0) {
        m_view.setGpsIndicatorVisible(true);
        m_view.addMapRoute(m_clipData);
    } else {
        m_view.setMapCovered(true);
        m_view.setGpsIndicatorVisible(false);
    }
}

void PlaybackSession::resetVideoInformation()
{
    m_view.setSpeedometerSpeed(0);
    updateSensorInfo(0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0);
    updatePlayTime(0.0, 0.0);
}

void PlaybackSession::showUnsupportedFileAlert()
{
    AlertRequest request;
    request.titleKey = QString::fromUtf8(LocalizationKeys::kMemoryCardError);
    request.messageKey = QString::fromUtf8(LocalizationKeys::kUnsupportedVideo);
    request.style = 0;
    m_alerts.showAlert(request);
}

void PlaybackSession::updateMovieViewCoverScrren()
{
    m_view.setMovieCoversVisible(!m_bigMovieView.hasMovie(), !m_smallMovieView.hasMovie());
}

void PlaybackSession::enableVideoControls(bool enabled)
{
    m_view.setVideoControlsEnabled(enabled);
}

// --- player callbacks

void PlaybackSession::tavroAVViewDidUpdateStatus(PlayerView* view, TavroAVViewStatus status)
{
    if (status != TavroAVViewStatus::Prepared)
        return;
    if (view == &m_bigMovieView) {
        bigViewPrepared();
    } else if (view == &m_smallMovieView) {
        // Only the large view is ever heard.
        m_smallMovieView.setVolume(0.0f);
        if (m_bigMovieView.status() == TavroAVViewStatus::Prepared)
            onMovieReady();
    }
}

void PlaybackSession::bigViewPrepared()
{
    m_view.setSeekMaximum(m_bigMovieView.duration());
    m_bigMovieView.setVolume(m_volumeSlider.volume());
    if (m_volumeSlider.isMuted())
        m_view.setVolumeSliderEnabled(false);
    if (!m_smallMovieView.hasMovie() || m_smallMovieView.status() == TavroAVViewStatus::Prepared)
        onMovieReady();
}

void PlaybackSession::onMovieReady()
{
    playVideo();
    startPlayAnimation();
}

void PlaybackSession::tavroAVViewDidUpdateRate(PlayerView*, float) { }

void PlaybackSession::tavroAVViewDidUpdateTime(PlayerView* view, double seconds)
{
    Q_UNUSED(seconds) // the tick reads the view's position itself
    // While paused the position only moves by a seek or a step; while playing
    // the tick follows it, except right after a seek, which waits for this.
    if (view == &m_bigMovieView && (m_positionPending || (m_isVideoPaused && !m_stopped)))
        showNewPosition();
}

void PlaybackSession::tavroAVViewDidPlayToEndTime(PlayerView* view)
{
    if (view == &m_bigMovieView)
        movieDidEnd();
}

void PlaybackSession::tavroAVViewDidRequestFullscreen(PlayerView* view)
{
    fullscreenButtonTouched(view);
}
