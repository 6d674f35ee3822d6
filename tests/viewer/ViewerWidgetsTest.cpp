// The window's own widgets: the clip list over a real clip library, the
// zoomable movie area, the artwork behind every button, and alerts shown as
// message boxes.
#include "CardTreeBuilder.h"
#include "ViewerTestSupport.h"

#include "app/window/ClipListPanel.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "app/window/MessageBoxAlertSink.h"
#include "app/window/ViewerImages.h"
#include "app/window/ZoomableMovieArea.h"
#include "config/FolderVolumeSource.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "i18n/ViewerLanguage.h"
#include "library/ClipLibrary.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

class ViewerWidgetsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ViewerTestSupport::useOwnSettings("tavro-viewer-window-test");
        QSettings().clear();
        ViewerLanguage::initializeLanguageSetting();
        TavroStyle::apply(*qApp);
    }
    void TearDown() override { QSettings().clear(); }
};

TEST_F(ViewerWidgetsTest, ClipListShowsTheLibraryFiltersAndKeepsSelectionInStep)
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

TEST_F(ViewerWidgetsTest, ZoomedMovieStaysOverItsAreaWhileDragged)
{
    ZoomableMovieArea area;
    auto* view = new QWidget;
    area.setMovieView(view);
    area.resize(400, 300);
    area.show();
    EXPECT_EQ(view->geometry(), area.rect());

    int drags = 0;
    QObject::connect(&area, &ZoomableMovieArea::dragged, [&] { ++drags; });
    const std::pair<double, QPoint> steps[] = { { 2.0, { 500, 400 } }, { 2.0, { -900, -900 } },
        { 5.0, { 120, -60 } }, { 9.0, { 0, 0 } }, { 0.5, { 50, 50 } } };
    for (const auto& [scale, drag] : steps) {
        area.setScale(scale);
        const QPoint centre = area.rect().center();
        QTest::mousePress(&area, Qt::LeftButton, {}, centre);
        QTest::mouseMove(&area, centre + drag);
        QTest::mouseRelease(&area, Qt::LeftButton, {}, centre + drag);
        const double expected = std::clamp(scale, 1.0, 5.0);
        EXPECT_EQ(view->size(), QSize(qRound(400 * expected), qRound(300 * expected)));
        // However far it is dragged, the picture covers the whole area.
        EXPECT_TRUE(view->geometry().contains(area.rect())) << drag.x() << "," << drag.y();
    }
    EXPECT_GE(drags, 3);
    // Back at 1.0 the picture fills the area again.
    EXPECT_EQ(view->geometry(), area.rect());
}

TEST_F(ViewerWidgetsTest, EveryButtonImageHasItsHoverAndPressedDrawings)
{
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    Utils::setVolumeSource(std::make_shared<FolderVolumeSource>());
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
    Utils::setVolumeSource(nullptr);
}

TEST_F(ViewerWidgetsTest, AlertsAnswerWithTheCodeOfTheButtonChosen)
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

} // namespace
