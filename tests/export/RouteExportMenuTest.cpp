// File ▸ Export route in the main window: enabled once the list has clips,
// titled in every viewer language.
#include "ViewerTestSupport.h"

#include "TestFiles.h"

#include "app/session/MainWindowController.h"
#include "app/window/MainWindow.h"
#include "config/FolderVolumeSource.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class RouteExportMenu : public ::testing::Test {
protected:
    void SetUp() override
    {
        ViewerTestSupport::useOwnSettings("tavro-route-export-menu-test");
        QSettings().clear();
        ViewerLanguage::initializeLanguageSetting();
        TavroStyle::apply(*qApp);
        Utils::setVolumeSource(std::make_shared<FolderVolumeSource>());
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
    }
    void TearDown() override
    {
        QSettings().clear();
        Utils::setVolumeSource(nullptr);
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
    }
};

QMenu* exportMenu(MainWindow& window)
{
    QMenu* file = window.menuBar()->actions().at(0)->menu();
    for (QAction* action : file->actions()) {
        if (action->menu())
            return action->menu();
    }
    return nullptr;
}

} // namespace

TEST_F(RouteExportMenu, EnabledWithClipsAndTitledInEveryLanguage)
{
    MainWindow window;
    window.showMainWindow();
    QMenu* menu = exportMenu(window);
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->menuAction()->isEnabled()); // no clips yet
    ASSERT_EQ(menu->actions().size(), 2);

    QTemporaryDir card;
    TestFiles::write(card.filePath("cont_rec/20240315_081502_F.mp4"), "x");
    window.controller().selectFolderButtonTouched(QUrl::fromLocalFile(card.path()));
    QTRY_VERIFY(menu->menuAction()->isEnabled());

    using namespace LocalizationKeys;
    for (const QString code : { "en", "fr", "ja", "pt" }) {
        SCOPED_TRACE(code.toStdString());
        ViewerTestSupport::useLanguage(code);
        const auto& languages = TavroLanguages::SharedTavroLanguages();
        EXPECT_EQ(menu->title(), languages.localizedIn(code, kMenuExportRoute));
        EXPECT_EQ(menu->actions().at(0)->text(), languages.localizedIn(code, kExportRouteSelected));
        EXPECT_EQ(menu->actions().at(1)->text(), languages.localizedIn(code, kExportRouteAll));
        EXPECT_NE(menu->title(), QString::fromUtf8(kMenuExportRoute)); // translated, not the key
        if (!qEnvironmentVariableIsEmpty("TAVRO_SCREENSHOT_DIR")) {
            QMenu* file = window.menuBar()->actions().at(0)->menu();
            file->popup(window.mapToGlobal(QPoint(0, window.menuBar()->height())));
            menu->popup(file->mapToGlobal(QPoint(file->width(), 0)));
            QTest::qWait(300);
            ViewerTestSupport::saveScreenshot(*menu, "export-menu-" + code);
            menu->hide();
            file->hide();
        }
    }
}
