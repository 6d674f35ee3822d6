// The native settings page in the viewer, end to end: the settings button on
// a binary-record card opens the four-tab page; a slider and a radio row
// changed through the widgets and OK change exactly those two record fields
// as `tavro config show` reads them. Every tab of a Dravi and a Velt camera
// in every language fits the screen with every caption translated and whole
// (screenshots with TAVRO_SCREENSHOT_DIR).
#include "CardBuilder.h"
#include "EditorTestSupport.h"
#include "RecordingAlertSink.h"
#include "TestFiles.h"
#include "ViewerTestSupport.h"

#include "app/window/HeaderBar.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "config/FolderVolumeSource.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "editors/page/SettingControlRow.h"
#include "editors/page/SettingsPageWidget.h"
#include "editors/page/TickSlider.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "style/TavroStyle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTabWidget>

namespace {

constexpr qint64 kDravi = 3;
constexpr qint64 kVelt = 10;

// A camera's card as the camera leaves it: its factory record written through
// the settings model, with the owner's Korean clock (like the demo card).
void writeCamera(const CardBuilder& card, qint64 modelType)
{
    TolmSettingManager manager;
    manager.setSettingDirPath(card.root());
    // Velt has no built-in values of its own: it starts from its family's.
    manager.setModelType(modelType == kVelt ? 5 : modelType);
    manager.loadDefaultValue();
    manager.setModelType(modelType);
    manager.setProduct_name(modelType == kVelt ? QStringLiteral("Velt") : QStringLiteral("Dravi"));
    manager.setVersion(QStringLiteral("1.03.17"));
    manager.setFirmwareVersionInt(17);
    manager.setGmt_offset(540);
    manager.setTz_key(QStringLiteral("Korea Standard Time"));
    manager.setMeasurement_unit(0);
    ASSERT_TRUE(manager.saveData());
}

QJsonObject configFields(const QString& card)
{
    const TestFiles::CliResult run
        = TestFiles::runCli({ QStringLiteral("config"), QStringLiteral("show"), card });
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    return QJsonDocument::fromJson(run.out).object().value(QStringLiteral("fields")).toObject();
}

bool hasHangul(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return (c.unicode() >= 0xAC00 && c.unicode() <= 0xD7A3)
            || (c.unicode() >= 0x3130 && c.unicode() <= 0x318F);
    });
}

// Every text the user can read on the visible tab of `modal`.
QStringList visibleTexts(QWidget& modal)
{
    QStringList texts;
    for (QLabel* label : modal.findChildren<QLabel*>()) {
        if (label->isVisibleTo(&modal))
            texts << label->text();
    }
    for (QAbstractButton* button : modal.findChildren<QAbstractButton*>()) {
        if (button->isVisibleTo(&modal))
            texts << button->text();
    }
    for (QComboBox* box : modal.findChildren<QComboBox*>()) {
        if (!box->isVisibleTo(&modal))
            continue;
        for (int i = 0; i < box->count(); ++i)
            texts << box->itemText(i);
    }
    if (auto* tabs = modal.findChild<QTabWidget*>()) {
        for (int i = 0; i < tabs->count(); ++i)
            texts << tabs->tabText(i);
    }
    texts.removeAll(QString());
    return texts;
}

class NativePageWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ViewerTestSupport::useOwnSettings("tavro-editors-native-page-test");
        QSettings().clear();
        ViewerLanguage::initializeLanguageSetting();
        TavroStyle::apply(*qApp);
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
    }
    void TearDown() override
    {
        m_window.reset();
        Utils::setVolumeSource(nullptr);
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        QSettings().clear();
    }

    void openWindow(const QString& card)
    {
        auto volumes = std::make_shared<FolderVolumeSource>();
        volumes->addFolder(card);
        Utils::setVolumeSource(volumes);
        m_window = std::make_unique<MainWindow>();
        m_window->showMainWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        QCoreApplication::processEvents();
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

TEST_F(NativePageWindowTest, SliderAndRadioRowThroughTheWidgetsChangeExactlyTheirFields)
{
    CardBuilder card;
    writeCamera(card, kDravi);
    const QJsonObject before = configFields(card.root());
    ASSERT_FALSE(before.isEmpty());
    openWindow(card.root());

    QString pageName;
    QStringList tabs;
    int shock = -1;
    EditorTestSupport::whenModal([&](QWidget* modal) {
        ASSERT_NE(modal, nullptr);
        auto* page = modal->findChild<SettingsPageWidget*>();
        ASSERT_NE(page, nullptr);
        pageName = page->objectName();
        for (int i = 0; i < page->tabs()->count(); ++i)
            tabs << page->tabs()->tabText(i);
        // 상시모드: the shock sensitivity one step up with the keyboard.
        page->tabs()->setCurrentIndex(1);
        TickSlider* slider = page->row(QStringLiteral("alwaysShockSensitivitySlider"))->slider();
        const int was = slider->value();
        slider->setFocus();
        QTest::keyClick(slider, was < slider->maximum() ? Qt::Key_Right : Qt::Key_Left);
        shock = slider->value();
        EXPECT_NE(shock, was);
        // 부가기능: the security LED on another row.
        page->tabs()->setCurrentIndex(3);
        const QList<QRadioButton*> led
            = page->row(QStringLiteral("etcSecurityLEDRadioGroup"))->radios();
        ASSERT_EQ(led.size(), 4);
        QRadioButton* other = led[0]->isChecked() ? led[1] : led[0];
        QTest::mouseClick(other, Qt::LeftButton);
        EXPECT_TRUE(other->isChecked());
        page->okButton()->click();
    });
    pressSettingsButton();
    EXPECT_EQ(pageName, QStringLiteral("TolmSettingViewController"));
    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    QStringList expectedTabs;
    for (const char* key : { "공통", "상시모드", "주차모드", "부가기능" })
        expectedTabs << languages.localized(QString::fromUtf8(key));
    EXPECT_EQ(tabs, expectedTabs);

    const QJsonObject after = configFields(card.root());
    QStringList changed;
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (after.value(it.key()) != it.value())
            changed << it.key();
    }
    EXPECT_EQ(changed,
        (QStringList {
            QStringLiteral("acceleration_sensor"), QStringLiteral("security_led_mode") }));
    EXPECT_EQ(after.value(QStringLiteral("acceleration_sensor")).toInt(), shock);
    EXPECT_EQ(m_alerts.sink().requests().size(), 0);
}

// Each tab of the page in each language: inside a 1280×800 screen, nothing
// cut off, every control captioned and no Korean key left untranslated.
TEST_F(NativePageWindowTest, EveryTabFitsAndIsTranslatedInEveryLanguage)
{
    for (const qint64 modelType : { kDravi, kVelt }) {
        CardBuilder card;
        writeCamera(card, modelType);
        openWindow(card.root());
        const QString model = modelType == kVelt ? QStringLiteral("velt") : QStringLiteral("dravi");
        for (const QString code : { "en", "fr", "ja", "pt" }) {
            const std::string where = model.toStdString() + " " + code.toStdString();
            ViewerTestSupport::useLanguage(code);
            int tabCount = 0;
            EditorTestSupport::whenModal([&](QWidget* modal) {
                ASSERT_NE(modal, nullptr);
                auto* page = modal->findChild<SettingsPageWidget*>();
                ASSERT_NE(page, nullptr);
                EXPECT_LE(modal->width(), 1280) << where;
                EXPECT_LE(modal->height(), 800) << where;
                tabCount = page->tabs()->count();
                for (int tab = 0; tab < tabCount; ++tab) {
                    page->tabs()->setCurrentIndex(tab);
                    QCoreApplication::processEvents();
                    const std::string at = where + " tab " + std::to_string(tab);
                    EditorTestSupport::expectNothingClipped(*modal, at);
                    for (const SettingControl& control : page->model().controls()) {
                        SettingControlRow* row = page->row(control.name);
                        if (!control.visible || !row || !row->field()->isVisibleTo(modal))
                            continue;
                        EXPECT_FALSE(control.caption.isEmpty())
                            << at << " " << control.name.toStdString();
                        // A bare box beside a recording kind wouldn't say it
                        // is about overwriting.
                        if (row->checkBox()) {
                            EXPECT_FALSE(row->checkBox()->text().isEmpty()) << at;
                        }
                    }
                    for (const QString& text : visibleTexts(*modal))
                        EXPECT_FALSE(hasHangul(text)) << at << ": " << text.toStdString();
                    ViewerTestSupport::saveScreenshot(
                        *modal, QStringLiteral("native-%1-%2-tab%3").arg(model, code).arg(tab + 1));
                }
                page->cancelButton()->click();
            });
            pressSettingsButton();
            EXPECT_EQ(tabCount, 4) << where;
        }
        m_window.reset();
    }
}
