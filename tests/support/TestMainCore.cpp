#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // Each test binary gets its own settings and cache folders: ctest runs
    // binaries side by side, and fixtures clear their settings.
    QCoreApplication::setOrganizationName(QStringLiteral("tavro-tests"));
    QCoreApplication::setApplicationName(QFileInfo(QString::fromLocal8Bit(argv[0])).fileName());
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
