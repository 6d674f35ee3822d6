// The settings page drawn over the Kel page model: what the widgets show for
// a card, and that clicks, drags, the clock group and the buttons reach the
// card's blackbox.cfg as the model says.
#include "CardBuilder.h"
#include "EditorTestSupport.h"
#include "RecordingAlertSink.h"
#include "ViewerTestSupport.h"

#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"
#include "editors/page/PartitionGraphView.h"
#include "editors/page/SettingControlRow.h"
#include "editors/page/SettingsPageWidget.h"
#include "editors/page/TickSlider.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "settings/SettingsPages.h"
#include "settings/kel/KelSettingViewController.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSignalSpy>

namespace {

using Page = KelSettingViewController;

class KelPageWidgetTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ViewerTestSupport::useOwnSettings("tavro-editors-kel-page-test");
        QSettings().clear();
        ViewerLanguage::initializeLanguageSetting();
        TolmSettingManager* card = TolmSettingManager::ChagneTolmSettingManager(nullptr);
        card->setSettingDirPath(m_card.root());
        card->setModelType(6);
        KelSettingManager::setSharedKelSettingManager(nullptr);
    }
    void TearDown() override
    {
        m_page.reset();
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        KelSettingManager::setSharedKelSettingManager(nullptr);
        QSettings().clear();
    }

    // The card holds `lines`; the page is built on them as the viewer does.
    SettingsPageWidget& open(const QStringList& lines)
    {
        m_card.blackboxCfg(crlfLines(lines));
        KelSettingManager::SharedKelSettingManager()->loadData();
        auto model = createSettingsPageModel(6);
        model->applySettingData();
        m_page = std::make_unique<SettingsPageWidget>(
            std::move(model), SettingsPageWidget::Layout::Sections);
        m_page->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(m_page.get()));
        return *m_page;
    }
    static QStringList defaults()
    {
        return KelSettingManager::linesFromText(KelSettingManager::defaultFileText());
    }
    static QStringList with(QStringList lines, const QString& key, const QString& value)
    {
        for (QString& line : lines) {
            if (line.startsWith(key)) {
                line = key + value;
                break;
            }
        }
        return lines;
    }
    QStringList lines() const
    {
        return KelSettingManager::SharedKelSettingManager()->linedSettings();
    }
    QStringList cardLines() const
    {
        return KelSettingManager::linesFromText(m_card.read(QStringLiteral("blackbox.cfg")));
    }

    CardBuilder m_card;
    ScopedAlertRecorder m_alerts;
    std::unique_ptr<SettingsPageWidget> m_page;
};

} // namespace

TEST_F(KelPageWidgetTest, ShowsTheFileAndDrawsEveryControl)
{
    SettingsPageWidget& page = open(with(defaults(), "power_off_vlt=", "13000"));
    EXPECT_EQ(page.sectionKeys().size(), 4);
    EXPECT_EQ(page.tabs(), nullptr);
    // Type A, the first radio of the partition group.
    const QList<QRadioButton*> partition = page.row(Page::kMemoryPartition)->radios();
    ASSERT_EQ(partition.size(), 3);
    EXPECT_TRUE(partition[0]->isChecked());
    // An unknown cut-off voltage: no column checked.
    for (QRadioButton* radio : page.row(Page::kParkingVoltage)->radios())
        EXPECT_FALSE(radio->isChecked());
    // Pacific time in the zone box; sliders with a tick per position.
    EXPECT_EQ(page.row(Page::kTimeZone)->comboBox()->currentIndex(), 2);
    EXPECT_EQ(page.row(Page::kTimeZone)->comboBox()->count(), 12);
    TickSlider* voice = page.row(Page::kVoiceVolume)->slider();
    EXPECT_EQ(voice->value(), 3);
    EXPECT_EQ(voice->tickPositions().size(), 6);
    EXPECT_EQ(page.row(Page::kImpact)->slider()->tickPositions().size(), 3);
    // The clock group replaces the date-time box: unchecked, greyed, English.
    EXPECT_EQ(page.row(Page::kDateTime), nullptr);
    ASSERT_NE(page.clockCheckBox(), nullptr);
    EXPECT_FALSE(page.clockCheckBox()->isChecked());
    EXPECT_FALSE(page.clockEdit()->isEnabled());
    EXPECT_FALSE(page.currentTimeButton()->isEnabled());
    EXPECT_EQ(page.clockEdit()->locale().language(), QLocale::English);
}

TEST_F(KelPageWidgetTest, ClicksWriteTheirLinesAndTheGraphFollows)
{
    const QStringList before = with(defaults(), "park_mode=", "1");
    SettingsPageWidget& page = open(before);
    page.row(Page::kMemoryPartition)->radios()[1]->click();
    page.row(Page::kParkingVoltage)->radios()[2]->click();
    QComboBox* zones = page.row(Page::kTimeZone)->comboBox();
    zones->setCurrentIndex(10);
    emit zones->activated(10);
    QStringList expected = with(before, "const=", "35");
    expected = with(expected, "event=", "17");
    expected = with(expected, "manual=", "39");
    expected = with(expected, "power_off_vlt=", "12000");
    expected = with(expected, "local_time=", "9.500000");
    EXPECT_EQ(lines(), expected);

    // Bars of percent x full width / 100, labelled "N%".
    PartitionGraphView* graph = page.partitionGraph();
    ASSERT_NE(graph, nullptr);
    const int percents[] = { 35, 17, 4, 39 };
    ASSERT_EQ(graph->barCount(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(
            graph->barRect(i).width(), percents[i] * graph->originPartitionGraphWidth() / 100);
        EXPECT_EQ(graph->barLabel(i), QStringLiteral("%1%").arg(percents[i]));
    }

    // Parking mode off disables the voltage group.
    page.row(Page::kParkingMode)->radios()[1]->click();
    EXPECT_FALSE(page.row(Page::kParkingVoltage)->field()->isEnabled());
}

TEST_F(KelPageWidgetTest, SliderWritesWhileDraggedWithItsGuide)
{
    const QStringList before = defaults();
    SettingsPageWidget& page = open(before);
    SettingControlRow* row = page.row(Page::kMotion);
    TickSlider* slider = row->slider();
    EXPECT_TRUE(row->guide()->text().isEmpty());
    slider->setSliderDown(true);
    slider->setSliderPosition(6);
    EXPECT_EQ(lines(), with(before, "motion_level=", "6"));
    EXPECT_EQ(row->guide()->text(), TavroLanguages::SharedTavroLanguages().localized("높음"));
    slider->setSliderPosition(1);
    EXPECT_EQ(row->guide()->text(), TavroLanguages::SharedTavroLanguages().localized("낮음"));
    slider->setSliderDown(false);
    EXPECT_TRUE(row->guide()->text().isEmpty());
    EXPECT_EQ(lines(), with(before, "motion_level=", "1"));
    // A key press moves it by one position and writes once.
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(lines(), with(before, "motion_level=", "2"));
}

TEST_F(KelPageWidgetTest, ClockGroupAndOkWriteTheClock)
{
    SettingsPageWidget& page = open(defaults());
    QSignalSpy finished(&page, &SettingPage::finished);
    page.clockCheckBox()->click();
    EXPECT_TRUE(page.clockEdit()->isEnabled());
    EXPECT_TRUE(page.currentTimeButton()->isEnabled());
    page.clockEdit()->setDateTime(QDateTime(QDate(2016, 3, 7), QTime(14, 5, 9)));
    page.okButton()->click();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].toInt(), 1);
    const QStringList saved = cardLines();
    const qsizetype set = saved.indexOf(QStringLiteral("set=1"));
    ASSERT_GE(set, 0);
    EXPECT_EQ(saved.mid(set + 1, 6),
        QStringList({ "year=2016", "month=3", "day=7", "hour=14", "min=5", "sec=9" }));
}

TEST_F(KelPageWidgetTest, CancelWritesNothingAndResetWaitsForOk)
{
    const QStringList edited = with(defaults(), "language=", "fr");
    SettingsPageWidget& page = open(edited);
    const QByteArray onCard = m_card.read(QStringLiteral("blackbox.cfg"));
    QSignalSpy finished(&page, &SettingPage::finished);
    page.row(Page::kSpeedUnit)->radios()[1]->click();
    page.resetButton()->click();
    EXPECT_TRUE(page.row(Page::kLanguage)->radios()[0]->isChecked());
    EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), onCard);
    page.cancelButton()->click();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].toInt(), 0);
    EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), onCard);
}

TEST_F(KelPageWidgetTest, FitsTheScreenInEveryLanguage)
{
    SettingsPageWidget& page = open(defaults());
    for (const QString code : { "en", "fr", "ja", "pt" }) {
        ViewerTestSupport::useLanguage(code);
        page.adjustSize();
        QCoreApplication::processEvents();
        EXPECT_LE(page.width(), 1280) << code.toStdString();
        EXPECT_LE(page.height(), 760) << code.toStdString();
        EXPECT_EQ(page.okButton()->text(), QStringLiteral("OK"));
        EXPECT_EQ(page.row(Page::kLanguage)->caption()->text(),
            TavroLanguages::SharedTavroLanguages().localizedIn(code, "Wenna : 언어"));
        EditorTestSupport::expectNothingClipped(page, code.toStdString());
        ViewerTestSupport::saveScreenshot(page, QStringLiteral("kel-page-") + code);
    }
}
