// The settings page drawn over the Kel page model: what the widgets show for
// a card, and that clicks, drags, the clock group and the buttons reach the
// card's blackbox.cfg as the model says, and only on OK.
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
using Changes = QList<std::pair<QString, QString>>;

// The lines with each "key=" given its value.
QStringList with(const QStringList& lines, const Changes& changes)
{
    KelSettingManager kel;
    kel.setLinedSettings(lines);
    for (const auto& [key, value] : changes)
        kel.setValueForKey(key, value);
    return kel.linedSettings();
}

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
    }

    // The card holds the factory file with `changes`; the page is built on it
    // as the viewer does.
    SettingsPageWidget& open(const Changes& changes = {})
    {
        m_lines
            = with(KelSettingManager::linesFromText(KelSettingManager::defaultFileText()), changes);
        m_card.blackboxCfg(crlfLines(m_lines));
        m_onCard = m_card.read(QStringLiteral("blackbox.cfg"));
        KelSettingManager::SharedKelSettingManager()->loadData();
        auto model = createSettingsPageModel(6);
        model->applySettingData();
        m_page = std::make_unique<SettingsPageWidget>(
            std::move(model), SettingsPageWidget::Layout::Sections);
        m_page->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(m_page.get()));
        m_finished = std::make_unique<QSignalSpy>(m_page.get(), &SettingPage::finished);
        return *m_page;
    }
    QStringList modelLines() const
    {
        return KelSettingManager::SharedKelSettingManager()->linedSettings();
    }

    CardBuilder m_card;
    QStringList m_lines;
    QByteArray m_onCard;
    ScopedAlertRecorder m_alerts;
    std::unique_ptr<SettingsPageWidget> m_page;
    std::unique_ptr<QSignalSpy> m_finished;
};

} // namespace

TEST_F(KelPageWidgetTest, ClicksDragsAndTheGraphFollowTheModelButCancelWritesNothing)
{
    SettingsPageWidget& page = open({ { "park_mode=", "1" }, { "power_off_vlt=", "13000" } });
    EXPECT_EQ(page.sectionKeys().size(), 4);
    ASSERT_EQ(page.row(Page::kMemoryPartition)->radios().size(), 3);
    EXPECT_TRUE(page.row(Page::kMemoryPartition)->radios()[0]->isChecked()); // type A
    for (QRadioButton* radio : page.row(Page::kParkingVoltage)->radios())
        EXPECT_FALSE(radio->isChecked()) << "an unknown cut-off voltage checks no column";
    QComboBox* zones = page.row(Page::kTimeZone)->comboBox();
    EXPECT_EQ(zones->currentIndex(), 2); // Pacific time

    page.row(Page::kMemoryPartition)->radios()[1]->click();
    page.row(Page::kParkingVoltage)->radios()[2]->click();
    zones->setCurrentIndex(10);
    emit zones->activated(10);
    // The slider writes while dragged, with its guide.
    TickSlider* motion = page.row(Page::kMotion)->slider();
    motion->setSliderDown(true);
    motion->setSliderPosition(6);
    EXPECT_EQ(page.row(Page::kMotion)->guide()->text(),
        TavroLanguages::SharedTavroLanguages().localized("높음"));
    motion->setSliderDown(false);
    EXPECT_EQ(modelLines(),
        with(m_lines,
            { { "const=", "35" }, { "event=", "17" }, { "manual=", "39" },
                { "power_off_vlt=", "12000" }, { "local_time=", "9.500000" },
                { "motion_level=", "6" } }));
    // Bars of percent x full width / 100, labelled "N%".
    PartitionGraphView* graph = page.partitionGraph();
    ASSERT_EQ(graph->barCount(), 4);
    const int percents[] = { 35, 17, 4, 39 };
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(
            graph->barRect(i).width(), percents[i] * graph->originPartitionGraphWidth() / 100);
        EXPECT_EQ(graph->barLabel(i), QStringLiteral("%1%").arg(percents[i]));
    }
    // Parking mode off disables the voltage group.
    page.row(Page::kParkingMode)->radios()[1]->click();
    EXPECT_FALSE(page.row(Page::kParkingVoltage)->field()->isEnabled());
    page.cancelButton()->click();
    EXPECT_EQ(m_finished->value(0), QVariantList { 0 });
    EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), m_onCard);
}

TEST_F(KelPageWidgetTest, ResetWaitsForOkAndTheClockGroupWritesTheClock)
{
    SettingsPageWidget& page = open({ { "language=", "fr" } });
    page.resetButton()->click();
    EXPECT_TRUE(page.row(Page::kLanguage)->radios()[0]->isChecked());
    EXPECT_EQ(m_card.read(QStringLiteral("blackbox.cfg")), m_onCard);
    // The clock group replaces the date-time box: unchecked and greyed, in English.
    EXPECT_EQ(page.row(Page::kDateTime), nullptr);
    EXPECT_FALSE(page.clockCheckBox()->isChecked());
    EXPECT_FALSE(page.clockEdit()->isEnabled() || page.currentTimeButton()->isEnabled());
    EXPECT_EQ(page.clockEdit()->locale().language(), QLocale::English);
    page.clockCheckBox()->click();
    EXPECT_TRUE(page.clockEdit()->isEnabled() && page.currentTimeButton()->isEnabled());
    page.clockEdit()->setDateTime(QDateTime(QDate(2016, 3, 7), QTime(14, 5, 9)));
    page.okButton()->click();
    EXPECT_EQ(m_finished->value(0), QVariantList { 1 });
    const QStringList saved
        = KelSettingManager::linesFromText(m_card.read(QStringLiteral("blackbox.cfg")));
    const qsizetype set = saved.indexOf(QStringLiteral("set=1"));
    ASSERT_GE(set, 0);
    EXPECT_EQ(saved.mid(set + 1, 6),
        QStringList({ "year=2016", "month=3", "day=7", "hour=14", "min=5", "sec=9" }));
    // Reset brought the factory language back ("fr" was on the card).
    EXPECT_EQ(saved.filter(QStringLiteral("language=")),
        KelSettingManager::linesFromText(KelSettingManager::defaultFileText())
            .filter(QStringLiteral("language=")));
}
