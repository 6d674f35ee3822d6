// The modal settings window and the card and model choice pages: placement,
// title bar, results, keys and the Language menu.
#include "EditorTestSupport.h"

#include "config/TolmSettingManager.h"
#include "editors/window/ChoicePages.h"
#include "editors/window/SettingWindow.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"

#include <QComboBox>
#include <QPushButton>
#include <QSettings>

namespace {

class SettingWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
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

} // namespace

TEST_F(SettingWindowTest, CardPageResults)
{
    enum Answer { Cancel, Ok, Escape };
    const struct {
        QStringList cards;
        Answer answer;
        int result;
        int selected;
    } cases[] = {
        { { "CARD_A", "CARD_B" }, Ok, 1, 1 }, // the last card pre-selected
        { { "CARD_A", "CARD_B" }, Cancel, 0, 1 }, { { "CARD_A" }, Escape, 0, 0 },
        { {}, Ok, 0, -1 } // OK disabled: Escape is the way out
    };
    for (const auto& c : cases) {
        SettingWindow window(&m_main, &m_language);
        auto* page = new SelectFlashMemoryView(c.cards);
        bool okEnabled = true;
        EditorTestSupport::whenModal([&](QWidget* modal) {
            ASSERT_EQ(modal, &window);
            okEnabled = page->okButton()->isEnabled();
            if (c.answer == Escape || !okEnabled)
                QTest::keyClick(&window, Qt::Key_Escape);
            else
                (c.answer == Ok ? page->okButton() : page->cancelButton())->click();
        });
        EXPECT_EQ(window.showModalWindow(page, true), c.result);
        EXPECT_EQ(okEnabled, !c.cards.isEmpty());
        EXPECT_EQ(page->emptyLabel()->isVisibleTo(page), c.cards.isEmpty());
        EXPECT_EQ(page->selectedIndex(), c.selected);
    }
}

// The model page, centred over the main window; its Language menu re-texts it
// and Return takes the model chosen.
TEST_F(SettingWindowTest, ModelPageAndTheLanguageMenu)
{
    SettingWindow window(&m_main, &m_language);
    auto* page = new SelectDeviceView(TolmSettingManager::modelNameList());
    QRect placed;
    QString title;
    EditorTestSupport::whenModal([&](QWidget*) {
        placed = window.frameGeometry();
        window.languageActions()[1]->trigger(); // French
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        title = page->title()->text();
        page->models()->setCurrentIndex(4);
        QTest::keyClick(&window, Qt::Key_Return);
    });
    EXPECT_EQ(window.showModalWindow(page, true), 1);
    EXPECT_EQ(page->selectedModelType(), 4);
    // The window manager may add a frame.
    EXPECT_LE(std::abs(placed.center().x() - m_main.frameGeometry().center().x()), 12);
    EXPECT_LE(std::abs(placed.center().y() - m_main.frameGeometry().center().y()), 30);
    EXPECT_EQ(title,
        TavroLanguages::SharedTavroLanguages().localizedIn(
            "fr", QString::fromUtf8(LocalizationKeys::kChooseModelTitle)));
}
