#include "ViewerTestSupport.h"

#include "i18n/ViewerLanguage.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace ViewerTestSupport {

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
    // From the screen: the pictures and the map are native windows of their
    // own, which a widget grab leaves out.
    QWidget* window = widget.window();
    QCoreApplication::processEvents();
    window->screen()->grabWindow(window->winId()).save(path);
    return path;
}

void answerSavePanel(const QString& path, QString* title)
{
    auto* poll = new QTimer;
    poll->setInterval(50);
    QObject::connect(poll, &QTimer::timeout, [poll, path, title] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        poll->stop();
        poll->deleteLater();
        QTimer::singleShot(200, dialog, [dialog, path, title] {
            if (title)
                *title = dialog->windowTitle();
            dialog->setDirectory(QFileInfo(path).absolutePath());
            if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
                name->setText(QFileInfo(path).fileName());
            QMetaObject::invokeMethod(dialog, "accept");
        });
    });
    poll->start();
}

} // namespace ViewerTestSupport
