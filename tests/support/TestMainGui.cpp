#include <QApplication>
#include <QStandardPaths>

#include <clocale>
#include <gtest/gtest.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    // QtWebEngine refuses to start its sandbox as root (CI runs as root).
    if (::geteuid() == 0)
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--no-sandbox");
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    // libmpv parses numbers with the C locale.
    std::setlocale(LC_NUMERIC, "C");
    QCoreApplication::setOrganizationName(QStringLiteral("tavro-tests"));
    QCoreApplication::setApplicationName(QStringLiteral("tavro-tests"));
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
