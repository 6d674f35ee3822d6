// The main window in each viewer language: every control titled, nothing
// clipped, the language and the speed unit switched live; printing a still.
#include "ViewerTestSupport.h"

#include "TavroVersion.h"
#include "TestFiles.h"
#include "app/session/MainWindowController.h"
#include "app/window/ClipListPanel.h"
#include "app/window/HeaderBar.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "app/window/TransportBar.h"
#include "config/FolderVolumeSource.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "display/SpeedMeterView.h"
#include "display/SpeedUnit.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPrinter>
#include <QRegularExpression>
#include <QSettings>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QString localizedIn(const QString& code, const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localizedIn(code, QString::fromUtf8(key));
}

int brightestPixel(const QImage& image)
{
    int brightest = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            brightest = qMax(brightest, qGray(image.pixel(x, y)));
    return brightest;
}

class ViewerWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ViewerTestSupport::useOwnSettings("tavro-viewer-window-test");
        QSettings().clear();
        ViewerLanguage::initializeLanguageSetting();
        TavroStyle::apply(*qApp);
        // No card: the window starts empty.
        Utils::setVolumeSource(std::make_shared<FolderVolumeSource>());
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
    }
    void TearDown() override
    {
        QSettings().clear();
        Utils::setVolumeSource(nullptr);
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
    }

    // Every button and slider of the window carries a tooltip in `code`; no
    // caption is wider than its button; the menus read as the language says.
    static void expectTitledIn(MainWindow& window, const QString& code)
    {
        SCOPED_TRACE(code.toStdString());
        const QList<ImageButton*> buttons = window.findChildren<ImageButton*>();
        ASSERT_GE(buttons.size(), 24);
        for (ImageButton* button : buttons) {
            SCOPED_TRACE(button->objectName().toStdString());
            EXPECT_FALSE(button->toolTip().isEmpty());
            if (!button->text().isEmpty() && button->isVisible()) {
                EXPECT_LE(
                    button->fontMetrics().horizontalAdvance(button->text()), button->width() - 4);
            }
        }
        for (QSlider* slider : window.findChildren<QSlider*>())
            EXPECT_FALSE(slider->toolTip().isEmpty()) << slider->objectName().toStdString();

        EXPECT_EQ(window.clipListPanel()->filterButtons().at(0)->text(),
            localizedIn(code, LocalizationKeys::kFilterAll));
        const char* menuKeys[] = { LocalizationKeys::kMenuFile, LocalizationKeys::kMenuView,
            LocalizationKeys::kMenuLanguage, LocalizationKeys::kMenuSpeedUnit,
            LocalizationKeys::kMenuHelp };
        const QList<QAction*> menus = window.menuBar()->actions();
        ASSERT_EQ(menus.size(), 5);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(menus[i]->text(), localizedIn(code, menuKeys[i]));
            for (QAction* item : menus[i]->menu()->actions())
                EXPECT_TRUE(item->isSeparator() || !item->text().isEmpty());
        }
        EXPECT_EQ(window.transportBar()->snapshotButton->toolTip(),
            localizedIn(code, LocalizationKeys::kSaveStill));
        EXPECT_EQ(window.headerBar()->modelTextField()->text(),
            localizedIn(code, LocalizationKeys::kUnknown));
    }
};

TEST_F(ViewerWindowTest, StartsWithoutAClipAndIsTitledInEachLanguageSwitchedLive)
{
    MainWindow window;
    window.showMainWindow();
    QCoreApplication::processEvents();
    EXPECT_GE(window.width(), MainWindow::kMinimumWidth);
    EXPECT_GE(window.height(), MainWindow::kMinimumHeight);
    EXPECT_EQ(window.headerBar()->mainVersionLabel()->text(), "Ver " + Tavro::versionString());
    // No card and no clip: nothing to play, nothing to configure, no route to export.
    EXPECT_FALSE(window.headerBar()->settingsButton()->isEnabled());
    EXPECT_FALSE(window.transportBar()->playPauseButton->isEnabled());
    EXPECT_FALSE(window.transportBar()->saveFileButton->isEnabled());
    QMenu* exportMenu = nullptr; // the File menu's submenu
    for (QAction* action : window.menuBar()->actions().at(0)->menu()->actions())
        exportMenu = action->menu() ? action->menu() : exportMenu;
    ASSERT_NE(exportMenu, nullptr);
    EXPECT_FALSE(exportMenu->menuAction()->isEnabled());
    EXPECT_EQ(window.transportBar()->playTimeTextField->text(), QStringLiteral("00:00/00:00"));
    // Disabled buttons are drawn faded: no pixel of the play button is bright.
    EXPECT_LT(brightestPixel(window.transportBar()->playPauseButton->grab().toImage()), 150);

    // The language menu's items, as the user picks them: the window is
    // re-titled at once and the item marked.
    const QList<QAction*> languageItems = window.menuBar()->actions().at(2)->menu()->actions();
    const QStringList codes { "en", "fr", "ja", "pt" };
    ASSERT_EQ(languageItems.size(), 4);
    for (const int i : { 0, 3, 1, 2 }) {
        languageItems[i]->trigger();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        EXPECT_EQ(ViewerLanguage::currentLanguage(), codes[i]);
        for (int j = 0; j < 4; ++j)
            EXPECT_EQ(languageItems[j]->isChecked(), i == j);
        expectTitledIn(window, codes[i]);
        EXPECT_EQ(exportMenu->title(), localizedIn(codes[i], LocalizationKeys::kMenuExportRoute));
        ViewerTestSupport::saveScreenshot(window, "window-empty-" + codes[i]);
    }
    // A folder with a clip: the route can be exported.
    QTemporaryDir card;
    TestFiles::write(card.filePath("cont_rec/20240315_081502_F.mp4"), "x");
    window.controller().selectFolderButtonTouched(QUrl::fromLocalFile(card.path()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return exportMenu->menuAction()->isEnabled(); }, 5000));

    // The speed unit menu: 100 km/h are 62 mph, redrawn at once.
    const QList<QAction*> units = window.menuBar()->actions().at(3)->menu()->actions();
    ASSERT_EQ(units.size(), 2);
    EXPECT_TRUE(units[0]->isChecked());
    window.setSpeedometerSpeed(100);
    SpeedMeterView* meter = window.findChild<SpeedMeterView*>(QStringLiteral("speedMeterView"));
    ASSERT_NE(meter, nullptr);
    EXPECT_EQ(meter->number100() + meter->number10() + meter->number1(), QStringLiteral("100"));
    units[1]->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(SpeedUnit::storedSpeedUnit(), SpeedUnit::kMph);
    EXPECT_TRUE(units[1]->isChecked());
    EXPECT_EQ(meter->number10() + meter->number1(), QStringLiteral("62"));
    EXPECT_TRUE(meter->isSpeedUnitImageVisible());
}

TEST(ViewerPrintTest, StillIsPrintedLandscapeOnOnePage)
{
    QTemporaryDir dir;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(dir.filePath(QStringLiteral("still.pdf")));
    printer.setPageSize(QPageSize(QPageSize::A4));
    QImage still(320, 180, QImage::Format_RGB32);
    still.fill(Qt::darkCyan);
    MainWindow::printImage(printer, still);
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
    const QByteArray bytes = TestFiles::read(dir.filePath(QStringLiteral("still.pdf")));
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_EQ(bytes.count("/Type /Page") - bytes.count("/Type /Pages"), 1);
    EXPECT_TRUE(bytes.contains("/Subtype /Image"));
    const QRegularExpressionMatch box
        = QRegularExpression(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]"))
              .match(QString::fromLatin1(bytes));
    ASSERT_TRUE(box.hasMatch());
    EXPECT_GT(box.captured(1).toDouble(), box.captured(2).toDouble());
}

} // namespace
