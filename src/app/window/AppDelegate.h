#pragma once

#include "app/window/ViewerCommandLine.h"

#include <QObject>
#include <QPointer>

#include <memory>

class MainWindow;
class QSessionManager;
class MessageBoxAlertSink;
#include "app/window/SplashWindowController.h"
class VolumeWatcher;

// The composition root of the viewer: restores the viewer language first,
// declares the cards given on the command line, shows the splash for two
// seconds, then builds and shows the main window and watches mounts. When the
// application quits it removes the working folder (the conversion cache).
class AppDelegate : public QObject {
    Q_OBJECT
public:
    explicit AppDelegate(ViewerOptions options, QObject* parent = nullptr);
    ~AppDelegate() override;

    // Language set-up, the volume list, the alert sink, then the splash (or,
    // without it, the main window at once).
    void applicationDidFinishLaunching();
    // Removes the working folder with everything in it.
    void applicationWillTerminate();
    // The desktop session is about to end (logout, shutdown).
    void sessionWillEnd(QSessionManager& manager);

    MainWindow* window() const { return m_window.get(); }
    SplashWindowController* splashWindow() const { return m_splash; }

signals:
    // The main window is on screen and set up.
    void mainWindowShown();

private:
    void showMainWindow();

    ViewerOptions m_options;
    std::shared_ptr<MessageBoxAlertSink> m_alertSink;
    std::unique_ptr<MainWindow> m_window;
    QPointer<SplashWindowController> m_splash;
    VolumeWatcher* m_volumeWatcher = nullptr;
};
