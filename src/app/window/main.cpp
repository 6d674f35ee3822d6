// tavro-viewer: the desktop viewer for dash-camera memory cards.
#include "app/window/AppDelegate.h"
#include "app/window/QuitSignalHandler.h"
#include "app/window/SanitizerLeakCheck.h"
#include "app/window/ViewerCommandLine.h"
#include "app/window/ViewerImages.h"
#include "editors/web/WebEngineProcess.h"
#include "settings/format/FormatQuitGuard.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QtWebEngineQuick>

#include <clocale>
#include <cstdio>

int main(int argc, char** argv)
{
    // Chromium's flags (no WebRTC UDP, no WebTransport; no sandbox as root)
    // before anything starts QtWebEngine.
    WebEngineProcess::prepare();
    // The player views and the map page share OpenGL resources.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    // The map window's web view, before the application object.
    QtWebEngineQuick::initialize();
    QApplication application(argc, argv);
    // libmpv parses numbers with the C locale.
    std::setlocale(LC_NUMERIC, "C");
    QCoreApplication::setOrganizationName(QStringLiteral("tavro"));
    QCoreApplication::setApplicationName(QStringLiteral("TavroViewer"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tavro Viewer"));
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.tavro.Viewer"));
    QApplication::setWindowIcon(ViewerImages::applicationIcon());

    const ViewerCommandLine::Result commandLine = ViewerCommandLine::parse(application.arguments());
    if (commandLine.exit) {
        std::fputs(qPrintable(commandLine.message), commandLine.exitCode ? stderr : stdout);
        std::fflush(nullptr);
        SanitizerLeakCheck::checkNow();
        return commandLine.exitCode;
    }
    TavroStyle::apply(application);
    // Ctrl+C or a polite kill quits like closing the window does.
    QuitSignalHandler quitOnSignal;
    // No quit cuts a card format short: it waits until the card is mounted again.
    FormatQuitGuard holdQuitWhileFormatting;
    AppDelegate delegate(commandLine.options);
    delegate.applicationDidFinishLaunching();
    const int code = application.exec();
    SanitizerLeakCheck::checkNow();
    return code;
}
