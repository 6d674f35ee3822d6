// The native page as a whole: which family and controls each model gets,
// records that come back as they were, the firmware gate, the parking
// question, the camera language box, slider guides, the partition graph,
// Reset and the clock.
#include "NativePageFixture.h"
#include "ScopedTimeZone.h"

#include "config/TolmSettingManager.h"
#include "i18n/LocalizationKeys.h"

#include <QTimeZone>

namespace {

using Change = SettingsPageModel::Change;

TolmSettingManager& model()
{
    return *TolmSettingManager::SharedTolmSettingManager();
}

QByteArray fields(const char* name, int value)
{
    return QStringLiteral("%1=%2").arg(QLatin1String(name)).arg(value).toLatin1();
}

} // namespace

TEST_F(NativePageTest, EachModelTypeOpensItsFamilyWithItsControls)
{
    // By model type from -1 to 29: the family, and how many controls its page shows.
    const char* const kFamily[] = { nullptr, "Ruva", "Tolm", "Pesk", "Dravi", "Dravi", "Orlo",
        nullptr, "Kimbo", "Kimbo", "Dravi", "Orlo", "Yarro", "Yarro", "Yarro", "Kimbo", "Yarro",
        nullptr, nullptr, "Orlo", "Yarro", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
        nullptr, "", "", nullptr };
    const int kShown[]
        = { 0, 26, 24, 26, 35, 35, 31, 0, 34, 34, 37, 34, 35, 35, 35, 34, 35, 0, 0, 34, 35 };
    const QStringList tabs { "공통", "상시모드", "주차모드", "부가기능" };
    for (qint64 type = -1; type <= 29; ++type) {
        SCOPED_TRACE(testing::Message() << "type " << type);
        const auto page = type == 6 ? nullptr : createNativeSettingsPageModel(type);
        ASSERT_EQ(page != nullptr, kFamily[type + 1] != nullptr);
        if (!page)
            continue;
        EXPECT_EQ(page->family(), QString::fromLatin1(kFamily[type + 1]));
        EXPECT_EQ(page->modelType(), type);
        EXPECT_EQ(page->controls().size(), type < 27 ? kShown[type + 1] : 0);
        EXPECT_EQ(page->hasClock(), type < 27);
        for (const SettingControl& c : page->controls()) {
            EXPECT_TRUE(tabs.contains(c.section) && !c.caption.isEmpty()) << qPrintable(c.name);
            // A control that captions its positions has one caption for each.
            const bool captioned = !c.titles.isEmpty() && c.kind != SettingControlKind::CheckBox
                && !c.name.contains("TimeLimit");
            EXPECT_TRUE(!captioned || c.maximum - c.minimum + 1 == c.titles.size())
                << qPrintable(c.name);
        }
    }
    // The hand-picked DVR models open a page with nothing on it; OK writes nothing.
    EXPECT_TRUE(createSettingsPageModel(27)->pressOk());
    EXPECT_FALSE(createSettingsPageModel(28)->userSelectedLanguage().has_value());
    EXPECT_EQ(createSettingsPageModel(6)->family(), QStringLiteral("Kel"));
}

TEST_F(NativePageTest, AnUntouchedRecordComesBackAsItWasWithTheModelsName)
{
    for (const qint64 type : { 0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12, 13, 14, 15, 18, 19 }) {
        for (const int firmware : { 16, 17 }) {
            SCOPED_TRACE(testing::Message() << "type " << type << " fw " << firmware);
            open(type, "ldws_right_depart_Sensitivity=1", firmware);
            const QByteArray loaded = savedRecord();
            // The record names the model, whatever name the card held.
            model().setProduct_name(QStringLiteral("somebody"));
            EXPECT_TRUE(m_page->pressOk());
            EXPECT_EQ(savedRecord(), loaded);
            EXPECT_EQ(m_page->userSelectedLanguage(), 2);
        }
    }
}

TEST_F(NativePageTest, RefusedChangesAndTheCameraLanguageBox)
{
    open(kOrlo, "front_resolution=2");
    EXPECT_EQ(m_page->userChange(QStringLiteral("noSuchControl"), 0), Change::UnknownControl);
    EXPECT_EQ(m_page->userChange(QStringLiteral("alwaysLDWSRightSensitivitySlider"), 1),
        Change::UnknownControl);
    // The rear group is locked by the front one.
    const std::pair<const char*, int> outOfRange[] = { { "GMT", -1 }, { "GMT", 39 },
        { "MemoryPartition", 3 }, { "parkingMode", 2 }, { "RearResolution", 1 } };
    for (const auto& [part, position] : outOfRange)
        EXPECT_EQ(change(part, position), Change::OutOfRange) << part << " " << position;
    EXPECT_EQ(change("GMT", 38), Change::Applied);
    expectControls("alwaysShock=3 MemoryPartition=1 parkingMode=0 GMT=38");

    // A blank after the colon numbers an empty code 0; it is no language.
    m_card.verDat("# Language ISO Code: en ko fr\n");
    open(kDravi, "cur_language=2");
    EXPECT_EQ(control("Language").titles, QStringList({ "English", "Korean", "French" }));
    expectControls("Language=1");
    EXPECT_EQ(change("Language", 2), Change::Applied);
    EXPECT_EQ(m_page->userSelectedLanguage(), 3);
    expectSaved("cur_language=3");
    // A language the camera doesn't announce: no selection, the number stays.
    open(kVelt, "cur_language=9");
    expectControls("Language=-1");
    EXPECT_EQ(change("Language", 3), Change::OutOfRange);
    expectSaved("cur_language=9");
}

TEST_F(NativePageTest, ParkingQuestionAnswers)
{
    namespace Keys = LocalizationKeys;
    struct Case {
        qint64 type;
        int stored;
        int row;
        int answer; // 1000 "아니오", 1001 "예"
        const char* question; // nullptr: none
        const char* after; // controls
        int modelAfter;
    };
    const Case cases[] = {
        { kOrlo, 0, 0, 1001, nullptr, "parkingMode=0 +parkingMotion +parkingShock", 0 },
        { kOrlo, 1, 1, 1001, Keys::kParkingOffQuestion, "parkingMode=1 -parkingMotion -24V", 0 },
        { kOrlo, 1, 1, 1000, Keys::kParkingOffQuestion, "parkingMode=0 +parkingMotion", 1 },
        { kVelt, 0, 0, 1001, Keys::kParkingMotionQuestion, "parkingMode=0 +parkingMotion +12V", 1 },
        { kHolta, 1, 1, 1001, Keys::kTimeLapseQuestion,
            "parkingMode=1 -parkingMotion +parkingShock", 2 },
        { kSarn, 1, 2, 1001, Keys::kParkingOffQuestion,
            "parkingMode=2 -parkingMotion -parkingShock", 0 },
        { kVelt, 0, 0, 1000, Keys::kParkingMotionQuestion, "parkingMode=2 -parkingMotion", 0 },
        { kHolta, 2, 2, 1000, Keys::kParkingOffQuestion,
            "parkingMode=1 -parkingMotion +parkingShock", 2 },
        { kHolta, 7, 0, 1000, Keys::kParkingMotionQuestion, "parkingMode=0", 7 },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(
            testing::Message() << "type " << c.type << " stored " << c.stored << " row " << c.row);
        open(c.type, fields("parking_mode_set", c.stored).constData());
        const QByteArray loaded = savedRecord();
        answer(c.answer);
        ASSERT_EQ(change("parkingMode", c.row), Change::Applied);
        ASSERT_EQ(m_sink->requests().size(), c.question ? 1 : 0);
        if (c.question) {
            const AlertRequest& q = m_sink->requests().first();
            EXPECT_EQ(q.titleKey + u'|' + q.messageKey + u'|' + q.buttonKeys.join(u'|'),
                QStringLiteral("주차모드|%1|아니오|예").arg(QString::fromUtf8(c.question)));
        }
        expectControls(c.after);
        // "예" changes the model at once; the card only on OK, and Cancel keeps it in memory.
        EXPECT_EQ(model().parking_mode_set(), c.modelAfter);
        m_page->pressCancel();
        EXPECT_EQ(savedRecord(), loaded);
    }
}

TEST_F(NativePageTest, GuidesZoneKeysAndThePartitionGraph)
{
    // The time-limit guide shows while the slider is held: four labels on
    // the Orlo and Dravi families (6-48 h), seven on the others (1-48 h).
    open(kKimbo);
    const QString slider = control("TimeLimit").name;
    m_page->sliderPressed(slider);
    m_page->sliderMoved(slider, 1);
    EXPECT_EQ(m_page->sliderGuide(slider), QStringLiteral("1시간"));
    EXPECT_EQ(m_page->sliderGuide(control("parkingMotion").name), QString());
    m_page->sliderReleased(control("alwaysShock").name);
    EXPECT_EQ(m_page->sliderGuide(slider), QString());
    open(kOrlo);
    m_page->sliderPressed(slider);
    m_page->sliderMoved(slider, 4);
    EXPECT_EQ(m_page->sliderGuide(slider), QStringLiteral("48시간"));
    expectSaved("parking_time_limit=48");
    // Ruva stores the key at the label's position in the key list (label 29,
    // UTC+09:00, goes with key 29); labels past the 32nd keep the stored key.
    const std::pair<int, const char*> zones[] = { { 540, "Alaskan Standard Time" },
        { 780, "Korea Standard Time" }, { -720, "Samoa Standard Time" } };
    for (const auto& [minutes, key] : zones) {
        open(kRuva, fields("gmt_offset", minutes).constData());
        EXPECT_TRUE(m_page->pressOk());
        EXPECT_EQ(savedRecord().mid(380, 32), QByteArray(key).leftJustified(32, '\0'));
    }
    // The camera leaves 5 % of the card out of every split.
    const QList<int> shares[] = { { 60, 22, 4, 9 }, { 35, 17, 4, 39 }, { 53, 19, 14, 9 } };
    open(kVelt);
    for (int column = 0; column < 3; ++column) {
        change("MemoryPartition", column);
        QList<int> percents;
        for (const PartitionBar& bar : m_page->partitionGraph())
            percents.append(bar.percent);
        EXPECT_EQ(percents, shares[column]);
    }
    EXPECT_EQ(m_page->partitionGraph().last().key, QStringLiteral("manual"));
}

// (Reset from the card's default.cfg runs in `tavro settings`' test.)
TEST_F(NativePageTest, ResetWithoutDefaultCfgTakesTheFactoryValuesAndWritesNothing)
{
    // The five oldest models take their factory values (48 hours, parking off,
    // partition A); the others keep theirs (12 hours, on, C). The Orlo and
    // Dravi sliders count 6-48 h in four steps.
    const std::tuple<qint64, int, const char*> cases[] = { { kRuva, 7, "" }, { kTolm, 7, "" },
        { kPesk, 7, "" }, { kDraviUk, 4, "" }, { kVelt, 2, "" }, { kKimbo, 5, "" },
        { kOrlo, 4, "SpeedUnit=1 DST=1" } }; // the Orlo counts in miles, without daylight saving
    for (const auto& [type, hours, more] : cases) {
        SCOPED_TRACE(testing::Message() << "type " << type);
        const bool factory = type <= kOrlo;
        open(type, "parking_time_limit=12 parking_mode_set=1 partition_type=3 measurement_unit=0");
        const QByteArray record = savedRecord();
        m_page->pressReset();
        EXPECT_EQ(value("TimeLimit"), hours);
        EXPECT_EQ(value("MemoryPartition"), factory ? 0 : 2);
        EXPECT_EQ(model().parking_mode_set(), factory ? 0 : 1);
        expectControls(more);
        EXPECT_EQ(savedRecord(), record);
    }
}

TEST_F(NativePageTest, TheClockRequestOnTheCardIsInThisComputersZone)
{
    const ScopedTimeZone tokyo("Asia/Tokyo");
    open(kOrlo);
    EXPECT_FALSE(m_page->clock().checked);
    EXPECT_LE(qAbs(m_page->clock().value.secsTo(QDateTime::currentDateTime())), 5);
    // Checked: OK leaves a request for the chosen instant, in this computer's
    // zone whatever zone it was chosen in.
    const QDateTime when(QDate(2016, 3, 7), QTime(14, 5, 9), QTimeZone(0));
    m_page->setClock({ true, when });
    EXPECT_TRUE(m_page->pressOk());
    EXPECT_EQ(m_card.read(QStringLiteral("time.dat")), QByteArray("2016,03,07,23,05,09,+0900"));
    // A pending request shows checked, at its instant on this computer's clock.
    QFile::remove(m_card.path(QStringLiteral("time.dat")));
    m_card.file(
        QStringLiteral("time.dat"), "2016,03,07,14,05,09,+0000\r\n", QStringLiteral("setting"));
    reopen(kOrlo);
    EXPECT_EQ(m_page->clock(), (SettingClock { true, when }));
    EXPECT_EQ(m_page->clock().value.time(), QTime(23, 5, 9));
    EXPECT_EQ(m_page->clock().value.offsetFromUtc(), 9 * 3600);
    // Unchecked: OK withdraws it from both folders; a garbled one shows unchecked.
    m_page->setClock({ false, when });
    EXPECT_TRUE(m_page->pressOk());
    EXPECT_FALSE(m_card.exists(QStringLiteral("time.dat"), QStringLiteral("setting")));
    EXPECT_FALSE(m_card.exists(QStringLiteral("time.dat")));
    m_card.file(QStringLiteral("time.dat"), "2016,02,30,14,05,09,+0900");
    EXPECT_FALSE(reopen(kOrlo).clock().checked);
    // Without a card OK shows the memory-card alert and writes no clock.
    model().setSettingDirPath(QString());
    m_page->setClock({ true, when });
    EXPECT_FALSE(m_page->pressOk());
    EXPECT_EQ(m_sink->memoryCardErrors(), 1);
    EXPECT_EQ(m_card.read(QStringLiteral("time.dat")), QByteArray("2016,02,30,14,05,09,+0900"));
}
