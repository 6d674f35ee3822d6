// web-settings-window: opens the web settings window on a card folder by
// itself, for trying a camera's settings page by hand and for screenshots.
//   web-settings-window CARD [--screenshot FILE.png]
// The viewer opens the same window from its settings button and with
// `tavro-viewer --card CARD --settings`.
#include "config/TolmSettingManager.h"
#include "editors/web/WebEngineProcess.h"
#include "editors/web/WebSettingWindowController.h"
#include "i18n/ViewerLanguage.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <cstdio>

int main(int argc, char** argv)
{
    // Chromium's flags for the card's page, as the viewer sets them.
    WebEngineProcess::prepare();
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tavro"));
    QCoreApplication::setApplicationName(QStringLiteral("TavroViewer"));
    // The viewer's own language (Language menu of the viewer).
    ViewerLanguage::initializeLanguageSetting();

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Opens the camera's own settings page of a card folder."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("CARD"), QStringLiteral("The card's root folder."));
    parser.addOption({ QStringLiteral("screenshot"),
        QStringLiteral("Save a picture of the window once the page has settled, then quit."),
        QStringLiteral("FILE") });
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        std::fprintf(stderr, "usage: web-settings-window CARD [--screenshot FILE.png]\n");
        return 2;
    }

    TolmSettingManager manager;
    manager.setSettingDirPath(QDir(parser.positionalArguments().first()).absolutePath());
    manager.loadLanguages();
    QPointer<QWidget> window = WebSettingWindowController::showWebSettingWindow(
        nullptr, manager.settingDirPath(), manager.languages());
    if (!window)
        return 1;
    QObject::connect(window, &QObject::destroyed, &application, &QApplication::quit);
    bool saved = false;
    if (parser.isSet(QStringLiteral("screenshot"))) {
        const QString file = parser.value(QStringLiteral("screenshot"));
        QTimer::singleShot(4000, &application, [window, file, &saved] {
            saved = window && window->grab().save(file);
            if (window)
                window->close();
        });
    }
    const int status = application.exec();
    return parser.isSet(QStringLiteral("screenshot")) && !saved ? 1 : status;
}
