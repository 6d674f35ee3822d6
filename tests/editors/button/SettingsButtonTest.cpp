// The viewer's settings end to end: `--settings` opens a Kel card's editor at
// start and OK writes exactly the changed lines; a binary-record card's native
// page is whole and translated and changes exactly the fields moved.
#include "CardBuilder.h"
#include "EditorTestSupport.h"
#include "RecordingAlertSink.h"
#include "TestFiles.h"
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
#include "editors/page/SettingControlRow.h"
#include "editors/page/SettingsPageWidget.h"
#include "editors/page/TickSlider.h"
#include "i18n/ViewerLanguage.h"
#include "settings/kel/KelSettingViewController.h"
#include "style/TavroStyle.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTabWidget>

namespace {

QJsonObject configFields(const QString& card)
{
    const TestFiles::CliResult run = TestFiles::runCli({ "config", "show", card });
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    return QJsonDocument::fromJson(run.out).object().value(QStringLiteral("fields")).toObject();
}

class SettingsButtonTest : public ::testing::Test {
protected:
    void SetUp() override
    {
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

    ScopedAlertRecorder m_alerts;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace

// Reset waits for OK; the clock group (unchecked, greyed, in English) writes
// the clock after "set=1".
TEST_F(SettingsButtonTest, SettingsOptionOpensTheKelEditorAtStartAndOkWritesTheLines)
{
    KelSettingManager kel;
    kel.loadDefaultData_Wenna();
    const QStringList factory = kel.linedSettings();
    kel.setValueForKey(QStringLiteral("park_mode="), QStringLiteral("1"));
    CardBuilder card;
    card.blackboxCfg(crlfLines(kel.linedSettings()));
    const QByteArray onCard = card.read(QStringLiteral("blackbox.cfg"));
    const auto parsed
        = ViewerCommandLine::parse({ "tavro-viewer", "--card", card.root(), "--settings" });
    ASSERT_TRUE(parsed.options.openSettings && !parsed.exit);
    ViewerOptions options = parsed.options;
    options.showSplash = false;
    AppDelegate delegate(options);
    QString pageName;
    bool frameless = false;
    EditorTestSupport::whenModal([&](QWidget* modal) {
        auto* page = modal ? modal->findChild<SettingsPageWidget*>() : nullptr;
        ASSERT_NE(page, nullptr);
        pageName = page->objectName();
        frameless = modal->windowFlags() & Qt::FramelessWindowHint;
        ViewerTestSupport::saveScreenshot(*modal, QStringLiteral("settings-kel"));
        page->resetButton()->click();
        EXPECT_EQ(card.read(QStringLiteral("blackbox.cfg")), onCard);
        page->row(KelSettingViewController::kDst)->radios()[0]->click(); // daylight saving on
        EXPECT_FALSE(page->clockCheckBox()->isChecked() || page->clockEdit()->isEnabled());
        EXPECT_EQ(page->clockEdit()->locale().language(), QLocale::English);
        page->clockCheckBox()->click();
        EXPECT_TRUE(page->clockEdit()->isEnabled() && page->currentTimeButton()->isEnabled());
        page->clockEdit()->setDateTime(QDateTime(QDate(2016, 3, 7), QTime(14, 5, 9)));
        page->okButton()->click();
    });
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !pageName.isEmpty(); }, 15000));
    EXPECT_EQ(pageName, QStringLiteral("KelSettingViewController"));
    EXPECT_TRUE(frameless);
    // The factory lines (park_mode reset), daylight saving on, the clock set.
    QStringList expected = factory;
    for (const QString line : { "summer_time=1", "set=1", "year=2016", "month=3", "day=7",
             "hour=14", "min=5", "sec=9" }) {
        const qsizetype at = expected.indexOf(QRegularExpression(line.section(u'=', 0, 0) + "=.*"));
        ASSERT_GE(at, 0) << qPrintable(line);
        expected[at] = line;
    }
    EXPECT_EQ(
        KelSettingManager::linesFromText(card.read(QStringLiteral("blackbox.cfg"))), expected);
}

TEST_F(SettingsButtonTest, NativePageFitsInFrenchAndChangesExactlyTheFieldsMoved)
{
    // A Dravi camera's card as the camera leaves it, with the owner's Korean clock.
    CardBuilder card;
    TolmSettingManager camera;
    camera.setSettingDirPath(card.root());
    camera.setModelType(3);
    camera.loadDefaultValue(); // "Dravi", in km/h
    camera.setVersion(QStringLiteral("1.03.17"));
    camera.setFirmwareVersionInt(17);
    camera.setGmt_offset(540);
    camera.setTz_key(QStringLiteral("Korea Standard Time"));
    ASSERT_TRUE(camera.saveData());
    const QJsonObject before = configFields(card.root());
    ASSERT_FALSE(before.isEmpty());

    // In French (the longest texts) every tab fits a 1280×800 screen, nothing
    // cut off, no Korean key left untranslated; then one change on two tabs.
    ViewerTestSupport::useLanguage(QStringLiteral("fr"));
    int shock = -1;
    // The main window with the card as its one memory card, and its settings button.
    auto volumes = std::make_shared<FolderVolumeSource>();
    volumes->addFolder(card.root());
    Utils::setVolumeSource(volumes);
    m_window = std::make_unique<MainWindow>();
    m_window->showMainWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    EditorTestSupport::whenModal([&](QWidget* modal) {
        auto* page = modal ? modal->findChild<SettingsPageWidget*>() : nullptr;
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(page->objectName(), QStringLiteral("TolmSettingViewController"));
        EXPECT_LE(modal->width(), 1280);
        EXPECT_LE(modal->height(), 800);
        ASSERT_EQ(page->tabs()->count(), 4);
        for (int tab = 0; tab < 4; ++tab) {
            page->tabs()->setCurrentIndex(tab);
            QCoreApplication::processEvents();
            EditorTestSupport::expectNothingClipped(*modal, "tab " + std::to_string(tab));
            QStringList texts { page->tabs()->tabText(tab) };
            for (QWidget* widget : modal->findChildren<QWidget*>())
                if (widget->isVisibleTo(modal))
                    texts << widget->property(
                                       widget->inherits("QComboBox") ? "currentText" : "text")
                                 .toString();
            static const QRegularExpression korean(QStringLiteral("[\u3130-\u318F\uAC00-\uD7A3]"));
            for (const QString& text : texts)
                EXPECT_FALSE(text.contains(korean)) << tab << ": " << text.toStdString();
        }
        // 상시모드: the shock sensitivity one step with the keyboard.
        page->tabs()->setCurrentIndex(1);
        TickSlider* slider = page->row(QStringLiteral("alwaysShockSensitivitySlider"))->slider();
        slider->setFocus();
        QTest::keyClick(slider, slider->value() < slider->maximum() ? Qt::Key_Right : Qt::Key_Left);
        shock = slider->value();
        // 부가기능: the security LED on another row.
        page->tabs()->setCurrentIndex(3);
        const QList<QRadioButton*> led
            = page->row(QStringLiteral("etcSecurityLEDRadioGroup"))->radios();
        ASSERT_EQ(led.size(), 4);
        QTest::mouseClick(led[0]->isChecked() ? led[1] : led[0], Qt::LeftButton);
        page->okButton()->click();
    });
    QTest::mouseClick(m_window->headerBar()->settingsButton(), Qt::LeftButton);
    const QJsonObject after = configFields(card.root());
    QStringList changed;
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (after.value(it.key()) != it.value())
            changed << it.key();
    }
    EXPECT_EQ(changed, (QStringList { "acceleration_sensor", "security_led_mode" }));
    EXPECT_EQ(after.value(QStringLiteral("acceleration_sensor")).toInt(), shock);
    EXPECT_EQ(m_alerts.sink().requests().size(), 0);
}
