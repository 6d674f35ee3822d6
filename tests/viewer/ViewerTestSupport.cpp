#include "ViewerTestSupport.h"

#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "app/session/PlaybackSession.h"
#include "app/window/MainWindow.h"
#include "app/window/VideoArea.h"
#include "config/FolderVolumeSource.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "i18n/ViewerLanguage.h"
#include "player/TavroAVView.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QWidget>

void ViewerFixture::SetUp()
{
    QSettings().clear();
    ViewerLanguage::initializeLanguageSetting();
    TavroStyle::apply(*qApp);
    Utils::setVolumeSource(std::make_shared<FolderVolumeSource>());
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
}

void ViewerFixture::TearDown()
{
    Utils::setVolumeSource(nullptr);
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    QSettings().clear();
}

void ViewerFixture::mountCard(const QString& root)
{
    QDir(root).mkpath(QStringLiteral("SETTING"));
    TestFiles::write(root + QStringLiteral("/SETTING/setup.cfg"),
        SetupCfgBuilder(432).sizeWord(432).productName("Tolm").version("1.02.17").bytes());
    auto cards = std::make_shared<FolderVolumeSource>();
    cards->addFolder(root, QStringLiteral("CARD"));
    Utils::setVolumeSource(cards);
}

namespace ViewerTestSupport {

void useOwnSettings(const char*) { }

bool bothPlaying(MainWindow& window)
{
    for (const TavroAVView* view :
        { window.videoArea()->bigMovieView(), window.videoArea()->smallMovieView() }) {
        if (view->status() != TavroAVViewStatus::Prepared || view->rate() <= 0.0f)
            return false;
    }
    return !window.session().isVideoPaused();
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
