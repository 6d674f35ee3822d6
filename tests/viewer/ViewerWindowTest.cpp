// The main window in each viewer language: every control titled, nothing
// clipped, the language and the speed unit switched live; its own widgets (the
// clip list over a real library, the artwork behind every button, alerts as
// message boxes; the zoomable area is the on-screen tests'); printing a still.
#include "CardTreeBuilder.h"
#include "ViewerFixture.h"

#include "TavroVersion.h"
#include "TestFiles.h"
#include "app/session/MainWindowController.h"
#include "app/window/ClipListPanel.h"
#include "app/window/HeaderBar.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "app/window/MessageBoxAlertSink.h"
#include "app/window/TransportBar.h"
#include "app/window/ViewerImages.h"
#include "display/SpeedMeterView.h"
#include "display/SpeedUnit.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "library/ClipLibrary.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

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

// No card: the window starts empty.
class ViewerWindowTest : public ViewerFixture {
protected:
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
        const QList<QAction*> menus = window.menuBar()->actions();
        ASSERT_EQ(menus.size(), 5);
        EXPECT_EQ(menus[1]->text(), localizedIn(code, LocalizationKeys::kMenuView));
        for (QAction* menu : menus) {
            const QList<QAction*> items = menu->menu()->actions() << menu;
            for (QAction* item : items)
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

TEST_F(ViewerWindowTest, ClipListShowsTheLibraryFiltersAndKeepsSelectionInStep)
{
    QTemporaryDir dir;
    CardTreeBuilder(dir.path())
        .addAll({ "cont_rec/b_F.mp4", "cont_rec/b_R.mp4", "evt_rec/a_F.mp4", "parking_rec/c.avi",
            "Saved_Videos/z.mp4", "cont_rec/notes.txt" });
    ClipLibrary library;
    ClipListPanel panel;
    panel.setLibrary(&library);
    panel.resize(320, 600);
    panel.show();
    library.refreshVideoFileListWithURL(QUrl::fromLocalFile(dir.path()));
    QListWidget* table = panel.fileListTableView();
    const auto names = [table] {
        QStringList list;
        for (int i = 0; i < table->count(); ++i)
            list << table->item(i)->text();
        return list.join(' ');
    };
    EXPECT_EQ(names(), "z.mp4 a_F.mp4 b_F.mp4 b_R.mp4 c.avi");
    EXPECT_EQ(panel.selectedDirTextField()->text(), dir.path());
    // The exported clip in magenta, the others in the text colour.
    EXPECT_EQ(table->item(0)->foreground().color(), TavroStyle::kSavedVideo);
    EXPECT_EQ(table->item(1)->foreground().color(), TavroStyle::kText);
    // Row 0 is selected after a refresh; a click selects in the library, and back.
    EXPECT_EQ(table->currentRow(), 0);
    QTest::mouseClick(
        table->viewport(), Qt::LeftButton, {}, table->visualItemRect(table->item(2)).center());
    EXPECT_EQ(library.selectedRow(), 2);
    library.setSelectedRow(3);
    EXPECT_EQ(table->currentRow(), 3);
    // A filter button lists its clips and alone shows the pressed image.
    const QList<ImageButton*>& filters = panel.filterButtons();
    QTest::mouseClick(filters[3], Qt::LeftButton);
    EXPECT_EQ(names(), "a_F.mp4 c.avi");
    for (int i = 0; i < filters.size(); ++i) {
        EXPECT_EQ(filters[i]->imageName(),
            i == 3 ? ClipLibrary::kPressedFilterImage : ClipLibrary::kNormalFilterImage);
        EXPECT_EQ(filters[i]->isHoverImageEnabled(), i != 3);
    }
    EXPECT_TRUE(panel.removeFileButton()->isEnabled());
    QTest::mouseClick(filters[4], Qt::LeftButton); // manual: no clips, nothing to delete
    EXPECT_EQ(table->count(), 0);
    EXPECT_FALSE(panel.removeFileButton()->isEnabled());
}

TEST_F(ViewerWindowTest, EveryButtonImageHasItsHoverAndPressedDrawings)
{
    MainWindow window;
    const QList<ImageButton*> buttons = window.findChildren<ImageButton*>();
    ASSERT_FALSE(buttons.isEmpty());
    // With the images buttons change to (play/pause, mute, the pressed filter).
    QStringList names { "pause1", "play_1", "volume1", "volume2", "sorting_btn_60_1",
        "sorting_btn_60_2" };
    for (ImageButton* button : buttons)
        names.append(button->imageName());
    for (const QString& name : names) {
        for (const char* state : { "", "_hover", "_click" })
            EXPECT_FALSE(ViewerImages::path(name + state).isEmpty()) << name.toStdString() << state;
    }
    for (const char* image : { "mapview_cover.png", "movie_cover", "splash", "gps", "shock_gage1",
             "shock_gage2", "earth1", "earth2", "io.github.tavro.Viewer" })
        EXPECT_FALSE(ViewerImages::pixmap(QLatin1String(image), QSize(64, 32)).isNull()) << image;
    EXPECT_TRUE(ViewerImages::path(QStringLiteral("no_such_image")).isEmpty());
    EXPECT_FALSE(ViewerImages::applicationIcon().isNull());
}

TEST_F(ViewerWindowTest, AlertsAnswerWithTheCodeOfTheButtonChosen)
{
    MessageBoxAlertSink sink;
    AlertRequest request;
    request.titleKey = QString::fromUtf8("메모리카드 오류");
    request.messageKey = QString::fromUtf8("지원하지 않는 형식으로 인코딩된 동영상입니다.");
    request.buttonKeys = { QString::fromUtf8("아니오"), QString::fromUtf8("예") };
    for (const int choice : { 0, 1 }) {
        QStringList shown;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            shown << box->text() << box->informativeText();
            QAbstractButton* chosen = nullptr;
            for (QAbstractButton* button : box->buttons()) {
                shown << button->text();
                chosen = button->text() == (choice == 0 ? "No" : "Yes") ? button : chosen;
            }
            ASSERT_NE(chosen, nullptr);
            chosen->click();
        });
        EXPECT_EQ(sink.showAlert(request), AlertSink::kFirstButtonReturn + choice);
        // Shown in the viewer's language (English here), never as keys.
        ASSERT_EQ(shown.size(), 4);
        EXPECT_EQ(shown[0], "Memory Card Error");
        EXPECT_FALSE(shown[1].isEmpty() || shown[1].contains(QString::fromUtf8("지원")));
        EXPECT_TRUE(shown.contains("Yes") && shown.contains("No"));
    }
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
