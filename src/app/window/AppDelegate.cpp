#include "app/window/AppDelegate.h"

#include "app/session/MainWindowController.h"
#include "app/window/MainWindow.h"
#include "app/window/MessageBoxAlertSink.h"
#include "app/window/SplashWindowController.h"
#include "config/FolderVolumeSource.h"
#include "config/VolumeUtils.h"
#include "config/VolumeWatcher.h"
#include "i18n/ViewerLanguage.h"
#include "library/ClipLibrary.h"
#include "library/Utils.h"
#include "settings/format/CardFormatActivity.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSessionManager>
#include <QTimer>
#include <QUrl>

namespace {

// The list row showing the clip file, -1 when the list does not hold it.
int rowOfClip(const ClipLibrary& library, const QString& clip)
{
    const QFileInfo wanted(clip);
    const QList<ClipLibrary::Row> rows = library.rows();
    for (int row = 0; row < rows.size(); ++row) {
        if (QFileInfo(rows[row].path) == wanted)
            return row;
    }
    return -1;
}

} // namespace

AppDelegate::AppDelegate(ViewerOptions options, QObject* parent)
    : QObject(parent)
    , m_options(std::move(options))
{
    connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::applicationWillTerminate);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &AppDelegate::sessionWillEnd);
}

AppDelegate::~AppDelegate()
{
    delete m_splash;
    m_window.reset();
    AlertSink::setShared(nullptr);
}

void AppDelegate::applicationDidFinishLaunching()
{
    // Before any window loads, so that the first texts are in the right language.
    ViewerLanguage::initializeLanguageSetting();
    if (!m_options.cardFolders.isEmpty()) {
        auto cards = std::make_shared<FolderVolumeSource>();
        for (const QString& folder : m_options.cardFolders)
            cards->addFolder(folder);
        Utils::setVolumeSource(cards);
    }
    m_alertSink = std::make_shared<MessageBoxAlertSink>();
    AlertSink::setShared(m_alertSink);

    if (!m_options.showSplash) {
        showMainWindow();
        return;
    }
    m_splash = new SplashWindowController;
    m_splash->showCentred();
    QTimer::singleShot(SplashWindowController::kSplashMs, this, &AppDelegate::showMainWindow);
}

void AppDelegate::showMainWindow()
{
    m_window = std::make_unique<MainWindow>();
    m_alertSink->setParentWidget(m_window.get());
    m_window->showMainWindow();
    // The splash goes once the main window is in front.
    if (m_splash) {
        m_splash->close();
        m_splash->deleteLater();
    }
    m_volumeWatcher = new VolumeWatcher(this);
    m_window->controller().attachVolumeWatcher(*m_volumeWatcher);
    if (!m_options.folder.isEmpty())
        m_window->controller().selectFolderButtonTouched(QUrl::fromLocalFile(m_options.folder));
    if (m_options.playRow >= 0)
        m_window->controller().videoFileListDoubleClicked(m_options.playRow);
    // Its trips are read first (off the window's thread), then it plays.
    if (m_options.tripNumber >= 0)
        m_window->controller().playTrip(m_options.tripNumber);
    // A clip given to open: its folder is the list, the clip selected and playing.
    if (!m_options.clip.isEmpty())
        m_window->controller().videoFileListDoubleClicked(
            rowOfClip(m_window->controller().library(), m_options.clip));
    emit mainWindowShown();
    // After the window's queued start-up work, as if the button were pressed.
    if (m_options.openSettings)
        QTimer::singleShot(0, m_window.get(), &MainWindow::settingButtonTouched);
}

void AppDelegate::sessionWillEnd(QSessionManager& manager)
{
    // Logging out while a card is being formatted would end the viewer under
    // a card with no file system or no mount. Where the session lets us ask,
    // the logout is called off; the format's sheet shows why, and the next
    // logout goes through once it has ended. Otherwise the quit that follows
    // waits for the format (FormatQuitGuard).
    if (CardFormatActivity::shared().isRunning() && manager.allowsInteraction())
        manager.cancel();
}

void AppDelegate::applicationWillTerminate()
{
    // A conversion still running ends first (ffmpeg is killed, its partial
    // output removed) with the window; then the conversion cache goes, as
    // it lives only as long as the viewer.
    if (m_alertSink)
        m_alertSink->setParentWidget(nullptr);
    m_window.reset();
    Utils::RemoveWorkingDirectory();
}
