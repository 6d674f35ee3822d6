#include "app/session/PlaybackSession.h"

#include "app/LocalizationKeys.h"
#include "app/session/SessionView.h"
#include "config/AlertSink.h"
#include "library/ClipConverter.h"
#include "library/ClipLibrary.h"
#include "library/ClipNaming.h"
#include "player/PlayerView.h"

#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace {

// The subtitle file extracted beside a converted front file: same path, "srt"
// in place of the extension.
QString subtitlePathFor(const QString& path)
{
    const QFileInfo info(path);
    const QString base = info.completeBaseName();
    return info.dir().filePath(base + QStringLiteral(".srt"));
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
    m_volumeSlider.setChangeHandler([this](float volume) { volumeChanged(volume); });
    m_bigMovieView.setDelegate(this);
    m_smallMovieView.setDelegate(this);
}

PlaybackSession::~PlaybackSession()
{
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

    m_view.setBusy(true);
    const std::optional<QList<QUrl>> files = m_converter.checkAndConvertVideo(url);
    m_view.setBusy(false);
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

    loadTelemetry(url);
    showTelemetryDisplays();
    updateMovieViewCoverScrren();
    emit currentVideoChanged(m_currentVideoUrl);
}

void PlaybackSession::loadTelemetry(const QUrl& url)
{
    if (ClipNaming::lowerExtension(url) == QLatin1String("mp4"))
        m_clipData.loadVideoFileCilpDataFromFilePath(subtitlePathFor(m_bigVideoFilePath));
    else if (ClipNaming::isKelFamilyClip(url))
        m_clipData.loadVideoFileCilpDataFromFilePath_Kel(url.toLocalFile());
    else
        m_clipData.loadVideoFileCilpDataFromFilePath(url.toLocalFile());
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

void PlaybackSession::tavroAVViewDidUpdateTime(PlayerView*, double) { }

void PlaybackSession::tavroAVViewDidPlayToEndTime(PlayerView* view)
{
    if (view == &m_bigMovieView)
        movieDidEnd();
}

void PlaybackSession::tavroAVViewDidRequestFullscreen(PlayerView* view)
{
    fullscreenButtonTouched(view);
}
