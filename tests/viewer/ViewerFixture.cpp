#include "ViewerFixture.h"

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
#include <QDir>
#include <QSettings>

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

bool ViewerFixture::bothPlaying(MainWindow& window)
{
    for (const TavroAVView* view :
        { window.videoArea()->bigMovieView(), window.videoArea()->smallMovieView() }) {
        if (view->status() != TavroAVViewStatus::Prepared || view->rate() <= 0.0f)
            return false;
    }
    return !window.session().isVideoPaused();
}
