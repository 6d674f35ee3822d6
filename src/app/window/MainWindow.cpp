#include "app/window/MainWindow.h"
#include "app/window/MainWindowMenus.h"

#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/session/SettingsRouter.h"
#include "app/session/TripLibrary.h"
#include "app/window/ClipListPanel.h"
#include "app/window/FullScreenControlWindow.h"
#include "app/window/HeaderBar.h"
#include "app/window/ImageButton.h"
#include "app/window/SeekSlider.h"
#include "app/window/TelemetryPanel.h"
#include "app/window/TransportBar.h"
#include "app/window/VideoArea.h"
#include "app/window/ViewerImages.h"
#include "app/window/ViewerSettingsPageOpener.h"
#include "app/window/ZoomableMovieArea.h"
#include "config/TolmSettingManager.h"
#include "display/SpeedMeterView.h"
#include "display/SpeedUnit.h"
#include "player/TavroAVView.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr int kClipListWidth = 320;
constexpr int kTelemetryHeight = 210;

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Tavro Viewer"));
    setWindowIcon(ViewerImages::applicationIcon());
    setMinimumSize(kMinimumWidth, kMinimumHeight);
    buildLayout();
    m_fullScreenControl = new FullScreenControlWindow;
    m_fullScreenControl->hide();
    m_videoArea->addTopLayer(m_fullScreenControl);
    m_controller = std::make_unique<MainWindowController>(
        *m_videoArea->bigMovieView(), *m_videoArea->smallMovieView(), *this);
    // Conversion and telemetry scans never hold up the window.
    m_controller->session().setPreparesInBackground(true);
    m_controller->speedUnit().setSpeedometer(m_telemetry->speedMeterView());
    m_settingsOpener
        = std::make_unique<ViewerSettingsPageOpener>(this, &m_controller->viewerLanguage());
    SettingsRouter::Hooks hooks;
    hooks.pauseVideo = [this] { session().pauseVideo(); };
    hooks.updateModelInfo = [this] { m_controller->updateModelInfo(); };
    m_settingsRouter = std::make_unique<SettingsRouter>(*m_settingsOpener, std::move(hooks));
    m_settingsRouter->setParentWindow(this);
    buildMenus();
    connectClipList();
    connectTransport();
    connectFullScreenControls();
    connectController();
    qApp->installEventFilter(this);
}

MainWindow::~MainWindow()
{
    qApp->removeEventFilter(this);
    m_settingsRouter.reset();
    // The session lets go of the player views before they are destroyed.
    m_controller.reset();
}

PlaybackSession& MainWindow::session() const
{
    return m_controller->session();
}

void MainWindow::buildLayout()
{
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(8, 0, 8, 8);
    layout->setSpacing(8);
    m_header = new HeaderBar(central);
    layout->addWidget(m_header);

    auto* middle = new QHBoxLayout;
    middle->setSpacing(8);
    auto* videoColumn = new QWidget(central);
    videoColumn->setObjectName(QStringLiteral("panel"));
    videoColumn->setAttribute(Qt::WA_StyledBackground);
    auto* videoLayout = new QVBoxLayout(videoColumn);
    videoLayout->setContentsMargins(0, 0, 0, 0);
    videoLayout->setSpacing(0);
    m_videoArea = new VideoArea(videoColumn);
    m_transport = new TransportBar(videoColumn);
    videoLayout->addWidget(m_videoArea, 1);
    videoLayout->addWidget(m_transport);
    m_clipList = new ClipListPanel(central);
    m_clipList->setFixedWidth(kClipListWidth);
    middle->addWidget(videoColumn, 1);
    middle->addWidget(m_clipList);
    layout->addLayout(middle, 1);

    m_telemetry = new TelemetryPanel(central);
    m_telemetry->setFixedHeight(kTelemetryHeight);
    layout->addWidget(m_telemetry);
    setCentralWidget(central);
}

void MainWindow::connectClipList()
{
    m_clipList->setLibrary(&m_controller->library());
    connect(m_clipList, &ClipListPanel::rowDoubleClicked, this,
        [this](int row) { m_controller->videoFileListDoubleClicked(row); });
    m_clipList->setTripLibrary(&m_controller->trips());
    connect(m_clipList, &ClipListPanel::tripDoubleClicked, this,
        [this](int index) { m_controller->playTrip(index); });
    connect(m_controller.get(), &MainWindowController::tripPlayed, this, [this](int index) {
        m_clipList->showTrips(true);
        m_clipList->selectTrip(index);
    });
    connect(m_clipList, &ClipListPanel::selectFolderButtonTouched, this,
        &MainWindow::selectFolderButtonTouched);
    connect(m_clipList, &ClipListPanel::removeFileButtonTouched, this,
        [this] { m_controller->removeFileButtonTouched(); });
    connect(m_clipList, &ClipListPanel::canRemoveOrSaveChanged, this, [this](bool enabled) {
        m_canRemoveOrSave = enabled;
        m_transport->saveFileButton->setEnabled(enabled);
        updateActionStates();
    });
}

void MainWindow::connectTransport()
{
    PlaybackSession& s = session();
    TransportBar* t = m_transport;
    connect(t->playPrevFileButton, &ImageButton::clicked, &s,
        &PlaybackSession::playPrevFileButtonTouched);
    connect(t->rewindButton, &ImageButton::clicked, &s, &PlaybackSession::rewindButtonTouched);
    connect(
        t->playPauseButton, &ImageButton::clicked, &s, &PlaybackSession::playPauseButtonTouched);
    connect(t->stopButton, &ImageButton::clicked, &s, &PlaybackSession::stopButtonTouched);
    connect(t->fastForwardButton, &ImageButton::clicked, &s,
        &PlaybackSession::fastForwardButtonTouched);
    connect(t->playNextFileButton, &ImageButton::clicked, &s,
        &PlaybackSession::playNextFileButtonTouched);
    connect(t->muteButton, &ImageButton::clicked, &s, &PlaybackSession::toggleMuteButtonTouched);
    connect(t->videoSwitchButton, &ImageButton::clicked, &s,
        &PlaybackSession::toggleVideoSwithButtonTouched);
    connect(t->videoRotateButton, &ImageButton::clicked, &s,
        &PlaybackSession::videoRotateButtonTouched);
    connect(t->videoScaleDownButton, &ImageButton::clicked, &s,
        &PlaybackSession::videoScaleDownButtonTouched);
    connect(t->resetVideoScaleButton, &ImageButton::clicked, &s,
        &PlaybackSession::resetVideoScaleButtonTouched);
    connect(t->videoScaleUpButton, &ImageButton::clicked, &s,
        &PlaybackSession::videoScaleUpButtonTouched);
    connect(t->fullscreenButton, &ImageButton::clicked, &s,
        [&s] { s.fullscreenButtonTouched(nullptr); });
    connect(t->snapshotButton, &ImageButton::clicked, this, &MainWindow::snapshotButtonTouched);
    connect(t->printButton, &ImageButton::clicked, this, &MainWindow::printButtonTouched);
    connect(t->saveFileButton, &ImageButton::clicked, this, &MainWindow::saveFileButtonTouched);

    // The seek slider counts milliseconds; the session thinks in seconds.
    SeekSlider* seek = t->seekTimeSldierView;
    connect(seek, &SeekSlider::sliderPressed, &s, &PlaybackSession::seekTimeSliderTouchedDown);
    connect(seek, &SeekSlider::sliderMoved, &s,
        [&s](int value) { s.seekTimeSliderDragged(value / 1000.0); });
    connect(seek, &SeekSlider::sliderReleased, &s,
        [&s, seek] { s.seekTimeSliderTouchedUp(seek->value() / 1000.0); });
    connect(t->volumeSliderView, &SeekSlider::valueChanged, &s,
        [&s](int value) { s.volumeSliderMoved(float(value) / 100.0f); });
    connect(m_videoArea->bigMovieArea(), &ZoomableMovieArea::dragged, &s,
        &PlaybackSession::bigMovieViewDragged);
}

void MainWindow::connectFullScreenControls()
{
    PlaybackSession& s = session();
    FullScreenControlWindow* f = m_fullScreenControl;
    connect(
        f->playPauseButton(), &ImageButton::clicked, &s, &PlaybackSession::playPauseButtonTouched);
    connect(f->rewindButton(), &ImageButton::clicked, &s, &PlaybackSession::rewindButtonTouched);
    connect(f->fastForwardButton(), &ImageButton::clicked, &s,
        &PlaybackSession::fastForwardButtonTouched);
    connect(f->exitButton(), &ImageButton::clicked, &s, &PlaybackSession::hideFullScreenMovie);
}

void MainWindow::connectController()
{
    connect(m_controller.get(), &MainWindowController::modelInfoChanged, this,
        &MainWindow::updateModelInfo);
    connect(m_controller.get(), &MainWindowController::applyLanguageSettingsRequested, this,
        &MainWindow::applyLanguageSettings);
    connect(m_header, &HeaderBar::settingsButtonTouched, this, &MainWindow::settingButtonTouched);
}

void MainWindow::showMainWindow()
{
    show();
    raise();
    activateWindow();
    m_telemetry->loadMap();
    m_controller->showMainWindow();
}

void MainWindow::applyLanguageSettings()
{
    m_header->applyLanguageSettings();
    m_clipList->applyLanguageSettings();
    m_transport->applyLanguageSettings();
    m_telemetry->applyLanguageSettings();
    m_fullScreenControl->applyLanguageSettings();
    applyMenuTexts();
}

void MainWindow::updateModelInfo(const QString& modelText, bool settingsButtonEnabled)
{
    QString firmware;
    if (settingsButtonEnabled) {
        const TolmSettingManager* manager = TolmSettingManager::SharedTolmSettingManager();
        firmware = manager->loadVersionSDPath(manager->settingDirPath()).trimmed();
    }
    m_header->setModelInfo(modelText, firmware);
    m_header->setSettingsButtonEnabled(settingsButtonEnabled);
}

// The top-level window a key press is for: a widget's window, or for a native
// window inside a widget (the map), the window it sits in.
static QWindow* keyWindowOf(QObject* watched)
{
    if (watched->isWidgetType()) {
        const QWidget* window = static_cast<QWidget*>(watched)->window();
        return window->windowHandle();
    }
    auto* window = qobject_cast<QWindow*>(watched);
    if (!window)
        return nullptr;
    while (window->parent())
        window = window->parent();
    return window;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    QWindow* window = keyWindowOf(watched);
    if (!window || window != windowHandle())
        return QMainWindow::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (session().keyDown(key->key(), key->modifiers()))
        return true;
    return QMainWindow::eventFilter(watched, event);
}
