// The settings button of the main window end to end: a Kel card opens the Kel
// editor and OK writes exactly the changed line to blackbox.cfg; cameras whose
// web settings page open the web settings window; a folder that is no memory
// card asks for the card; --settings opens the settings at start.
#include "CardBuilder.h"
#include "EditorTestSupport.h"
#include "RecordingAlertSink.h"
#include "SetupCfgBuilder.h"
#include "ViewerTestSupport.h"

#include "app/window/AppDelegate.h"
#include "app/window/HeaderBar.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "app/window/ViewerCommandLine.h"
#include "config/FolderVolumeSource.h"
#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "editors/format/CardSheetDialog.h"
#include "editors/page/SettingControlRow.h"
#include "editors/page/SettingsPageWidget.h"
#include "editors/web/WebSettingWindow.h"
#include "editors/web/WebSettingWindowController.h"
#include "editors/window/ChoicePages.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "settings/SettingsPages.h"
#include "settings/kel/KelSettingViewController.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>

namespace {

class SettingsButtonTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ViewerTestSupport::useOwnSettings("tavro-editors-settings-button-test");
        QSettings().clear();
        ViewerLanguage::initializeLanguageSetting();
        TavroStyle::apply(*qApp);
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
    }
    void TearDown() override
    {
        m_window.reset();
        Utils::setVolumeSource(nullptr);
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
        QSettings().clear();
    }

    // The demo's Kel camera: the factory file with its model, firmware,
    // parking mode on and a 12.0 V cut-off.
    static QStringList demoKelLines()
    {
        KelSettingManager kel;
        kel.loadDefaultData_Wenna();
        kel.setValueForKey(QStringLiteral("model="), QStringLiteral("Wenna"));
        kel.setValueForKey(QStringLiteral("version="), QStringLiteral("1.00.08"));
        kel.setValueForKey(QStringLiteral("park_mode="), QStringLiteral("1"));
        kel.setValueForKey(QStringLiteral("power_off_vlt="), QStringLiteral("12000"));
        return kel.linedSettings();
    }

    // The main window on screen with `cards` as the memory cards.
    MainWindow& openWindow(const QStringList& cards)
    {
        auto volumes = std::make_shared<FolderVolumeSource>();
        for (const QString& card : cards)
            volumes->addFolder(card);
        Utils::setVolumeSource(volumes);
        m_window = std::make_unique<MainWindow>();
        m_window->showMainWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        QCoreApplication::processEvents();
        return *m_window;
    }

    void pressSettingsButton()
    {
        ImageButton* button = m_window->headerBar()->settingsButton();
        ASSERT_TRUE(button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
    }

    ScopedAlertRecorder m_alerts;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace

TEST_F(SettingsButtonTest, KelCardOpensTheKelEditorAndOkWritesTheLine)
{
    CardBuilder card;
    const QStringList before = demoKelLines();
    card.blackboxCfg(crlfLines(before));
    openWindow({ card.root() });

    bool shown = false;
    QString pageName;
    bool frameless = false;
    EditorTestSupport::whenModal([&](QWidget* modal) {
        ASSERT_NE(modal, nullptr);
        auto* page = modal->findChild<SettingsPageWidget*>();
        ASSERT_NE(page, nullptr);
        shown = true;
        pageName = page->objectName();
        frameless = modal->windowFlags() & Qt::FramelessWindowHint;
        ViewerTestSupport::saveScreenshot(*modal, QStringLiteral("settings-button-kel"));
        // Daylight saving on: one line.
        page->row(KelSettingViewController::kDst)->radios()[0]->click();
        page->okButton()->click();
    });
    pressSettingsButton();
    EXPECT_TRUE(shown);
    EXPECT_EQ(pageName, QStringLiteral("KelSettingViewController"));
    EXPECT_TRUE(frameless);
    QStringList expected = before;
    expected[before.indexOf(QStringLiteral("summer_time=0"))] = QStringLiteral("summer_time=1");
    EXPECT_EQ(
        KelSettingManager::linesFromText(card.read(QStringLiteral("blackbox.cfg"))), expected);
    EXPECT_EQ(m_alerts.sink().requests().size(), 0);
    EXPECT_TRUE(m_window->headerBar()->settingsButton()->isEnabled());
}

TEST_F(SettingsButtonTest, CancelLeavesTheCardAlone)
{
    CardBuilder card;
    card.blackboxCfg(crlfLines(demoKelLines()));
    const QByteArray onCard = card.read(QStringLiteral("blackbox.cfg"));
    openWindow({ card.root() });
    EditorTestSupport::whenModal([&](QWidget* modal) {
        ASSERT_NE(modal, nullptr);
        auto* page = modal->findChild<SettingsPageWidget*>();
        ASSERT_NE(page, nullptr);
        page->row(KelSettingViewController::kMemoryPartition)->radios()[2]->click();
        QTest::keyClick(modal, Qt::Key_Escape);
    });
    pressSettingsButton();
    EXPECT_EQ(card.read(QStringLiteral("blackbox.cfg")), onCard);
}

// Cameras with their own settings page on the card open the web settings
// window (one at a time); binary-record cameras open the native page. No
// alert on the way.
TEST_F(SettingsButtonTest, WebAndNativeCamerasOpenTheirEditors)
{
    const struct {
        QByteArray setupCfg;
        qint64 modelType;
        bool web;
    } cases[] = {
        { SetupCfgBuilder(700).productName("zenti").bytes(), 16, true },
        { SetupCfgBuilder(900).sizeWord(900).structVersion(0x10030).productName("Nova").bytes(), 26,
            true },
        { SetupCfgBuilder(432).productName("tolm").bytes(), 1, false },
    };
    for (const auto& c : cases) {
        const qsizetype alertsBefore = m_alerts.sink().requests().size();
        CardBuilder card;
        card.setupCfg(c.setupCfg);
        const QByteArray onCard = card.read(QStringLiteral("setup.cfg"));
        openWindow({ card.root() });
        if (c.web) {
            pressSettingsButton();
            auto* controller = WebSettingWindowController::instance();
            ASSERT_NE(controller, nullptr) << c.modelType;
            auto* webWindow = qobject_cast<WebSettingWindow*>(
                WebSettingWindowController::showWebSettingWindow(nullptr, card.root(), {}));
            EXPECT_EQ(webWindow, nullptr) << "a second web settings window opened";
            const auto windows = QApplication::topLevelWidgets();
            WebSettingWindow* shown = nullptr;
            for (QWidget* w : windows) {
                if (auto* candidate = qobject_cast<WebSettingWindow*>(w);
                    candidate && candidate->isVisible())
                    shown = candidate;
            }
            ASSERT_NE(shown, nullptr);
            shown->cancelButton()->click();
            QTRY_VERIFY(WebSettingWindowController::instance() == nullptr);
        } else {
            QString pageFamily;
            QString refusal;
            EditorTestSupport::whenModal([&](QWidget* modal) {
                ASSERT_NE(modal, nullptr);
                auto* page = modal->findChild<SettingsPageWidget*>();
                ASSERT_NE(page, nullptr);
                pageFamily = page->model().family();
                ASSERT_NE(page->findChild<QPushButton*>(QStringLiteral("initializeTouchButton")),
                    nullptr);
                // The card folder lies on the machine's fixed disk: the format
                // is refused before anything runs.
                auto* format
                    = page->findChild<QPushButton*>(QStringLiteral("memoryCardFormatButton"));
                ASSERT_NE(format, nullptr);
                format->click();
                CardSheetDialog* sheet = nullptr;
                QTRY_VERIFY_WITH_TIMEOUT(
                    (sheet = modal->findChild<CardSheetDialog*>()) && sheet->isVisible(), 10000);
                refusal = sheet->informativeText();
                sheet->buttons().first()->click();
                QTest::keyClick(modal, Qt::Key_Escape);
            });
            pressSettingsButton();
            EXPECT_EQ(pageFamily, QStringLiteral("Tolm"));
            EXPECT_EQ(refusal,
                TavroLanguages::SharedTavroLanguages().localized(
                    QString::fromUtf8(LocalizationKeys::kCannotFormat)));
        }
        EXPECT_EQ(m_alerts.sink().requests().size(), alertsBefore) << c.modelType;
        EXPECT_EQ(TolmSettingManager::SharedTolmSettingManager()->modelType(), c.modelType);
        // Type 26 only reads the camera languages before its window; the
        // others load the record, which may bring it up to its model's length.
        if (c.modelType == 26) {
            EXPECT_EQ(card.read(QStringLiteral("setup.cfg")), onCard);
        }
        m_window.reset();
    }
}

TEST_F(SettingsButtonTest, FolderThatIsNoCardAsksForTheCard)
{
    CardBuilder card;
    card.blackboxCfg(crlfLines(demoKelLines()));
    openWindow({ card.root() });
    // The user's folder is on no memory card.
    TolmSettingManager::SharedTolmSettingManager()->setSettingDirPath(QDir::tempPath());
    QStringList offered;
    QString pageName;
    EditorTestSupport::whenModal([&](QWidget* modal) {
        ASSERT_NE(modal, nullptr);
        auto* page = modal->findChild<SelectFlashMemoryView*>();
        ASSERT_NE(page, nullptr);
        pageName = page->objectName();
        for (int i = 0; i < page->list()->count(); ++i)
            offered << page->list()->item(i)->text();
        page->cancelButton()->click();
    });
    pressSettingsButton();
    EXPECT_EQ(pageName, QStringLiteral("SelectFlashMemoryView"));
    EXPECT_EQ(offered, QStringList { QFileInfo(card.root()).fileName() });
    EXPECT_EQ(TolmSettingManager::SharedTolmSettingManager()->settingDirPath(), QDir::tempPath());
}

TEST_F(SettingsButtonTest, SettingsOptionOnTheCommandLine)
{
    CardBuilder card;
    card.blackboxCfg(crlfLines(demoKelLines()));
    const auto parsed = ViewerCommandLine::parse({ QStringLiteral("tavro-viewer"),
        QStringLiteral("--card"), card.root(), QStringLiteral("--settings") });
    ASSERT_FALSE(parsed.exit);
    EXPECT_TRUE(parsed.options.openSettings);
    EXPECT_FALSE(ViewerCommandLine::parse({ QStringLiteral("tavro-viewer") }).options.openSettings);

    // The viewer started with it opens the card's editor once its window is up.
    ViewerOptions options = parsed.options;
    options.showSplash = false;
    AppDelegate delegate(options);
    QString pageName;
    EditorTestSupport::whenModal([&](QWidget* modal) {
        ASSERT_NE(modal, nullptr);
        auto* page = modal->findChild<SettingsPageWidget*>();
        ASSERT_NE(page, nullptr);
        pageName = page->objectName();
        page->cancelButton()->click();
    });
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !pageName.isEmpty(); }, 15000));
    EXPECT_EQ(pageName, QStringLiteral("KelSettingViewController"));
}
