// The modal settings window and the card and model choice pages: placement,
// title bar, results, keys, the Language menu, and the pages in each language.
#include "EditorTestSupport.h"
#include "ViewerTestSupport.h"

#include "config/TolmSettingManager.h"
#include "editors/window/ChoicePages.h"
#include "editors/window/SettingWindow.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"

#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSettings>

namespace {

class SettingWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ViewerTestSupport::useOwnSettings("tavro-editors-setting-window-test");
        QSettings().clear();
        ViewerLanguage::initializeLanguageSetting();
        m_main.resize(1280, 800);
        m_main.move(40, 30);
        m_main.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_main));
    }
    void TearDown() override { QSettings().clear(); }

    QWidget m_main;
    ViewerLanguage m_language;
};

QString localizedIn(const QString& code, const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localizedIn(code, QString::fromUtf8(key));
}

} // namespace

TEST_F(SettingWindowTest, CentresOverTheParent)
{
    EXPECT_EQ(SettingWindow::centredOver(QRect(100, 50, 1280, 800), QSize(480, 300)),
        QRect(500, 300, 480, 300));
    // A page larger than the window sticks out evenly on both sides.
    EXPECT_EQ(SettingWindow::centredOver(QRect(0, 0, 400, 300), QSize(600, 500)),
        QRect(-100, -100, 600, 500));
}

TEST_F(SettingWindowTest, CardPageResultsAndRules)
{
    struct Case {
        QStringList cards;
        int clickOk; // 1 OK, 0 Cancel, 2 Escape
        int result;
        int selected;
    };
    const Case cases[] = {
        { { "CARD_A", "CARD_B" }, 1, 1, 1 }, // the last card pre-selected
        { { "CARD_A", "CARD_B" }, 0, 0, 1 }, { { "CARD_A" }, 2, 0, 0 },
        { {}, 1, -1, -1 }, // OK disabled: the test has to cancel
    };
    for (const Case& c : cases) {
        SettingWindow window(&m_main, &m_language);
        auto* page = new SelectFlashMemoryView(c.cards);
        bool okEnabled = true;
        bool titleBar = false;
        EditorTestSupport::whenModal([&](QWidget* modal) {
            ASSERT_EQ(modal, &window);
            titleBar = !(window.windowFlags() & Qt::FramelessWindowHint);
            okEnabled = page->okButton()->isEnabled();
            if (c.clickOk == 2 || !okEnabled)
                QTest::keyClick(&window, Qt::Key_Escape);
            else if (c.clickOk == 1)
                page->okButton()->click();
            else
                page->cancelButton()->click();
        });
        const int result = window.showModalWindow(page, true);
        EXPECT_TRUE(titleBar);
        EXPECT_EQ(okEnabled, !c.cards.isEmpty());
        EXPECT_EQ(page->emptyLabel()->isVisibleTo(page), c.cards.isEmpty());
        EXPECT_EQ(result, c.result == -1 ? 0 : c.result);
        EXPECT_EQ(page->selectedIndex(), c.selected);
        EXPECT_FALSE(window.isVisible());
    }
}

TEST_F(SettingWindowTest, ModelPageOffersEveryModelFirstSelected)
{
    SettingWindow window(&m_main, &m_language);
    auto* page = new SelectDeviceView(TolmSettingManager::modelNameList());
    QRect placed;
    EditorTestSupport::whenModal([&](QWidget*) {
        placed = window.frameGeometry();
        EXPECT_EQ(page->models()->count(), 29);
        EXPECT_EQ(page->models()->currentIndex(), 0);
        page->models()->setCurrentIndex(4);
        QTest::keyClick(&window, Qt::Key_Return);
    });
    EXPECT_EQ(window.showModalWindow(page, true), 1);
    EXPECT_EQ(page->selectedModelType(), 4);
    // Centred over the main window (the window manager may add a frame).
    EXPECT_LE(std::abs(placed.center().x() - m_main.frameGeometry().center().x()), 12);
    EXPECT_LE(std::abs(placed.center().y() - m_main.frameGeometry().center().y()), 30);
}

TEST_F(SettingWindowTest, LanguageMenuSwitchesThroughTheMainWindow)
{
    SettingWindow window(&m_main, &m_language);
    auto* page = new SelectDeviceView({ "Ruva" });
    QStringList entries;
    QString titleAfter;
    QString menuAfter;
    EditorTestSupport::whenModal([&](QWidget*) {
        for (QAction* action : window.languageActions())
            entries << action->text();
        window.languageActions()[1]->trigger(); // French
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        titleAfter = page->title()->text();
        menuAfter = window.languageMenu()->title();
        page->cancelButton()->click();
    });
    EXPECT_EQ(window.showModalWindow(page, true), 0);
    const QStringList expected { ViewerLanguage::menuTitle(ViewerLanguage::Item::English),
        ViewerLanguage::menuTitle(ViewerLanguage::Item::French),
        ViewerLanguage::menuTitle(ViewerLanguage::Item::Japanese),
        ViewerLanguage::menuTitle(ViewerLanguage::Item::Portuguese) };
    EXPECT_EQ(entries, expected);
    EXPECT_EQ(ViewerLanguage::currentLanguage(), QStringLiteral("fr"));
    EXPECT_EQ(m_language.markedItem(), ViewerLanguage::Item::French);
    EXPECT_TRUE(window.languageActions()[1]->isChecked());
    EXPECT_EQ(titleAfter, localizedIn("fr", LocalizationKeys::kChooseModelTitle));
    EXPECT_EQ(menuAfter, localizedIn("fr", LocalizationKeys::kMenuLanguage));
}

TEST_F(SettingWindowTest, ChoicePagesInEveryLanguage)
{
    for (const QString code : { "en", "fr", "ja", "pt" }) {
        ViewerTestSupport::useLanguage(code);
        SelectFlashMemoryView cards({ "CAM_SD", "NO NAME" });
        SelectFlashMemoryView none({});
        SelectDeviceView models(TolmSettingManager::modelNameList());
        const struct {
            SettingPage* page;
            const char* name;
        } pages[]
            = { { &cards, "card-page" }, { &none, "card-page-empty" }, { &models, "model-page" } };
        for (const auto& p : pages) {
            p.page->show();
            ASSERT_TRUE(QTest::qWaitForWindowExposed(p.page));
            EditorTestSupport::expectNothingClipped(*p.page, code.toStdString() + " " + p.name);
            ViewerTestSupport::saveScreenshot(*p.page, QStringLiteral("%1-%2").arg(p.name, code));
        }
        EXPECT_EQ(none.emptyLabel()->text(), localizedIn(code, LocalizationKeys::kNoCardConnected));
        EXPECT_EQ(models.title()->text(), localizedIn(code, LocalizationKeys::kChooseModelTitle));
        // The model page's title is two lines in every language.
        EXPECT_TRUE(models.title()->text().contains(u'\n')) << code.toStdString();
        EXPECT_EQ(cards.cancelButton()->text(), localizedIn(code, LocalizationKeys::kCancel));
    }
}
