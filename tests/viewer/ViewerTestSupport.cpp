#include "ViewerTestSupport.h"

#include "DriveClip.h"
#include "app/ViewerLanguage.h"

#include <QCoreApplication>
#include <QDir>
#include <QTest>
#include <QWidget>

namespace ViewerTestSupport {

void useOwnSettings(const char* binaryName)
{
    QCoreApplication::setApplicationName(QLatin1String(binaryName));
}

void useLanguage(const QString& code)
{
    ViewerLanguage language;
    language.languageChange(code);
    // Windows re-title themselves after the notification, from the event loop.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

QString saveScreenshot(QWidget& widget, const QString& name)
{
    const QString dir = qEnvironmentVariable("TAVRO_SCREENSHOT_DIR");
    if (dir.isEmpty())
        return {};
    QDir().mkpath(dir);
    const QString path = QDir(dir).filePath(name + QStringLiteral(".png"));
    widget.window()->grab().save(path);
    return path;
}

bool makeTelemetryClip(const QString& path, int seconds, int width, int height, int tag)
{
    return DriveClip::make(path, seconds, width, height, 15, tag);
}

} // namespace ViewerTestSupport
