#include "app/session/MainWindowController.h"

#include "app/session/PlaybackSession.h"
#include "app/session/SessionView.h"
#include "app/session/TripLibrary.h"
#include "config/AlertSink.h"
#include "config/ModelCatalogue.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "config/VolumeWatcher.h"
#include "display/SpeedUnit.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "library/ClipConverter.h"
#include "library/ClipLibrary.h"
#include "library/QtProcessRunner.h"
#include "library/TavroNotifier.h"
#include "player/PlayerView.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QThread>

MainWindowController::MainWindowController(
    PlayerView& bigMovieView, PlayerView& smallMovieView, SessionView& view, QObject* parent)
    : MainWindowController(bigMovieView, smallMovieView, view, Options {}, parent)
{
}

MainWindowController::MainWindowController(PlayerView& bigMovieView, PlayerView& smallMovieView,
    SessionView& view, Options options, QObject* parent)
    : QObject(parent)
    , m_bigMovieView(bigMovieView)
    , m_view(view)
{
    ProcessRunner* runner = options.processRunner;
    if (!runner) {
        m_ownedRunner = std::make_unique<QtProcessRunner>();
        runner = m_ownedRunner.get();
    }
    m_converter = std::make_unique<ClipConverter>(*runner, options.workingDirectory);
    AlertSink& alerts = options.alertSink ? *options.alertSink : AlertSink::shared();
    m_alerts = &alerts;
    m_library = new ClipLibrary(this);
    m_trips = new TripLibrary(this);
    // The trips are those of the folder listed.
    connect(m_library, &ClipLibrary::rowsReloaded, this,
        [this] { m_trips->setFolder(m_library->selectedVideoDirectoryUrl().toLocalFile()); });
    m_session = new PlaybackSession(
        bigMovieView, smallMovieView, view, *m_library, *m_converter, alerts, this);
    m_speedUnit = new SpeedUnit(this);
    m_viewerLanguage = new ViewerLanguage(this);

    TavroNotifier& notifier = TavroNotifier::shared();
    connect(
        &notifier, &TavroNotifier::volumeMounted, this, &MainWindowController::volumeMountHandler);
    connect(&notifier, &TavroNotifier::volumeUnmounted, this,
        &MainWindowController::volumeUnmountHandler);
    // Re-title after the notification has reached everyone, never inside it.
    connect(&notifier, &TavroNotifier::refreshLanguage, this,
        &MainWindowController::applyLanguageSettings, Qt::QueuedConnection);
}

MainWindowController::~MainWindowController()
{
    // The session goes first: it detaches itself from the player views (and
    // ends a conversion still running).
    delete m_session;
    m_session = nullptr;
    delete m_trips; // ends a read under way
    m_trips = nullptr;
    for (QThread* thread : std::as_const(m_savingThreads)) {
        thread->wait();
        delete thread;
    }
}

void MainWindowController::showMainWindow()
{
    m_session->setVideoMute(false);
    m_view.setSpeedometerSpeed(0);
    m_viewerLanguage->markCurrentLanguage();
    m_speedUnit->markCurrentSpeedUnit();
    applyLanguageSettings();
    m_library->setVideoFileFilter(0);
    m_session->enableVideoControls(false);
    m_session->updateMovieViewCoverScrren();
}

void MainWindowController::attachVolumeWatcher(VolumeWatcher& watcher)
{
    m_mounts.remember(Utils::volumeSource().volumes());
    connect(
        &watcher, &VolumeWatcher::volumeMounted, this, &MainWindowController::volumeMountHandler);
    connect(&watcher, &VolumeWatcher::volumeUnmounted, this,
        &MainWindowController::volumeUnmountHandler);
}

void MainWindowController::volumeMountHandler(const QString& rootPath)
{
    if (!m_mounts.isCardArrival(rootPath, Utils::volumeSource().volumes()))
        return;
    // A card arrived: its clips take the place of whatever was listed.
    m_folderChosenByHand = false;
    identifyCard(false);
}

void MainWindowController::volumeUnmountHandler(const QString& rootPath)
{
    const QString card = TolmSettingManager::SharedTolmSettingManager()->sdcard_url().toLocalFile();
    if (!m_mounts.isCardRemoval(rootPath, Utils::volumeSource().volumes(), card))
        return;
    // The card went: a folder chosen by hand stays listed (unless it went too).
    const QString shown = m_library->selectedVideoDirectoryUrl().toLocalFile();
    if (m_folderChosenByHand && !CardMountFilter::isSameOrInside(shown, rootPath)) {
        identifyCard(true);
        return;
    }
    m_folderChosenByHand = false;
    identifyCard(false);
}

void MainWindowController::updateModelInfo()
{
    m_folderChosenByHand = false;
    identifyCard(false);
}

void MainWindowController::identifyCard(bool keepList)
{
    TolmSettingManager* manager = TolmSettingManager::SharedTolmSettingManager();
    manager->loadVersionInfo();
    const qint64 type = manager->modelType();
    if (type < 0) {
        if (!keepList)
            m_library->clearVideoFileList();
        m_settingsButtonEnabled = false;
        m_modelName.clear();
    } else {
        const QStringList& names = TolmSettingManager::modelNameList();
        // A self-describing card names its model itself.
        if (type == ModelCatalogue::kSelfDescribingModelType)
            m_modelName = manager->modelName();
        else
            m_modelName = type < names.size() ? names[type] : QString();
        if (!keepList)
            m_library->refreshVideoFileListWithURL(manager->sdcard_url());
        m_settingsButtonEnabled = true;
    }
    emit modelInfoChanged(modelText(), m_settingsButtonEnabled);
}

QString MainWindowController::modelText() const
{
    if (!m_modelName.isEmpty())
        return m_modelName;
    return TavroLanguages::SharedTavroLanguages().localized(LocalizationKeys::kUnknown);
}

void MainWindowController::applyLanguageSettings()
{
    emit applyLanguageSettingsRequested();
    updateModelInfo();
}

void MainWindowController::selectFolderButtonTouched(const QUrl& folderUrl)
{
    if (folderUrl.isEmpty())
        return;
    m_folderChosenByHand = true;
    m_library->refreshVideoFileListWithURL(folderUrl);
}

void MainWindowController::videoFileListDoubleClicked(int row)
{
    if (row < 0 || row >= m_library->numberOfRows())
        return;
    if (row != m_library->selectedRow())
        m_library->setSelectedRow(row);
    playVideoWithIdx(row);
}

void MainWindowController::playVideoWithIdx(int row)
{
    m_session->playVideoWithIdx(row);
}

bool MainWindowController::removeFileButtonTouched()
{
    if (!m_library->removeFileButtonTouched())
        return false;
    m_trips->invalidate();
    return true;
}

void MainWindowController::playTrip(int index)
{
    const QString folder = m_trips->folder();
    m_trips->whenLoaded([this, index, folder] {
        if (m_trips->folder() != folder || index < 0 || index >= m_trips->trips().size())
            return;
        m_session->playTrip(m_trips->trips()[index]);
        emit tripPlayed(index);
    });
}
