#include "app/window/AppDelegate.h"

#include "app/ViewerLanguage.h"
#include "app/session/MainWindowController.h"
#include "app/window/MainWindow.h"
#include "app/window/MessageBoxAlertSink.h"
#include "app/window/SplashWindowController.h"
#include "config/FolderVolumeSource.h"
#include "config/VolumeUtils.h"
#include "config/VolumeWatcher.h"
#include "library/Utils.h"

#include <QCoreApplication>
#include <QTimer>
#include <QUrl>

AppDelegate::AppDelegate(ViewerOptions options, QObject* parent)
    : QObject(parent)
    , m_options(std::move(options))
{
    connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::applicationWillTerminate);
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
    emit mainWindowShown();
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
