#include "app/window/SanitizerLeakCheck.h"
#include "editors/web/WebEngineProcess.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QtWebEngineQuick>

#include <clocale>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Chromium's flags as the viewer sets them (and no sandbox as root: CI
    // runs as root).
    WebEngineProcess::prepare();
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QtWebEngineQuick::initialize();
    QApplication app(argc, argv);
    // libmpv parses numbers with the C locale.
    std::setlocale(LC_NUMERIC, "C");
    // Each test binary gets its own settings and cache folders: ctest runs
    // binaries side by side, and fixtures clear their settings.
    QCoreApplication::setOrganizationName(QStringLiteral("tavro-tests"));
    QCoreApplication::setApplicationName(QFileInfo(QString::fromLocal8Bit(argv[0])).fileName());
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    SanitizerLeakCheck::checkNow();
    return result;
}
