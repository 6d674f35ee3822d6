// Controls to fields on the Orlo and Dravi families, the edge cases the
// camera's program has, the firmware gate, the product names and the parking
// question with its answers.
#include "NativePageFixture.h"

#include "config/TolmSettingManager.h"

#include <set>

namespace {

constexpr qint64 kOrlo = 5, kVelt = 10, kHolta = 18, kDravi = 3, kDraviUk = 4, kSarn = 9;

struct ControlValue {
    const char* control;
    int value;
};

struct SaveCase {
    const char* what;
    qint64 modelType;
    int firmware;
    std::initializer_list<FieldValue> record;
    std::initializer_list<ControlValue> changes;
    std::initializer_list<FieldValue> expected;
};

// Offsets of the 4-byte words that differ between two records of one length.
std::set<int> changedWords(const QByteArray& before, const QByteArray& after)
{
    std::set<int> words;
    EXPECT_EQ(before.size(), after.size());
    for (int i = 0; i < std::min(before.size(), after.size()); ++i) {
        if (before.at(i) != after.at(i))
            words.insert(i / 4 * 4);
    }
    return words;
}

QString textAt(const QByteArray& record, int offset, int width)
{
    const QByteArray field = record.mid(offset, width);
    return QString::fromUtf8(field.left(field.indexOf('\0') < 0 ? width : field.indexOf('\0')));
}

class OrloDraviSave : public NativePageTest {
protected:
    void check(const SaveCase& c)
    {
        SCOPED_TRACE(c.what);
        open(c.modelType, typicalRecord(c.modelType, c.firmware, c.record), c.firmware);
        for (const ControlValue& change : c.changes) {
            EXPECT_EQ(m_page->userChange(QString::fromLatin1(change.control), change.value),
                SettingsPageModel::Change::Applied)
                << change.control;
        }
        const QByteArray saved = pressOk();
        for (const FieldValue& f : c.expected)
            EXPECT_EQ(int32At(saved, f.offset), f.value) << c.what << " @" << f.offset;
    }
};

} // namespace

TEST_F(OrloDraviSave, EachControlStoresItsField)
{
    const SaveCase cases[] = {
        { "front 2 forces and stores the rear", kOrlo, 0,
            { { At::front_resolution, 2 }, { At::rear_resolution, 3 } }, {},
            { { At::front_resolution, 2 }, { At::rear_resolution, 2 } } },
        { "front column 1 stores 3", kVelt, 0, { { At::front_resolution, 2 } },
            { { "alwaysRadioGroupFrontResolution", 1 } }, { { At::front_resolution, 3 } } },
        { "motion 2 saved as 3", kOrlo, 0, { { At::parking_motion_sensitivity, 2 } }, {},
            { { At::parking_motion_sensitivity, 3 } } },
        { "motion 4 saved as 3", kDravi, 0, { { At::parking_motion_sensitivity, 4 } }, {},
            { { At::parking_motion_sensitivity, 3 } } },
        { "motion position 3 stores 5", kHolta, 0, {}, { { "parkingMotionSlider", 3 } },
            { { At::parking_motion_sensitivity, 5 } } },
        { "time 36 kept at position 0", kOrlo, 0, { { At::parking_time_limit, 36 } }, {},
            { { At::parking_time_limit, 36 } } },
        { "time position 1 stores 6", kSarn, 0, {}, { { "parkingTimeLimitSlider_36x", 1 } },
            { { At::parking_time_limit, 6 } } },
        { "gmt 100 saved as UTC on Orlo", kOrlo, 0, { { At::gmt_offset, 100 } }, {},
            { { At::gmt_offset, 0 } } },
        { "gmt 100 kept on Dravi", kDravi, 0, { { At::gmt_offset, 100 } }, {},
            { { At::gmt_offset, 100 } } },
        { "gmt 570 round trip", kVelt, 0, { { At::gmt_offset, 570 } }, {},
            { { At::gmt_offset, 570 } } },
        { "gmt UTC+09:00 stores 540", kDraviUk, 0, {}, { { "commonGMTComboBox", 29 } },
            { { At::gmt_offset, 540 } } },
        { "LED 0 saved as 0", kOrlo, 0, { { At::security_led_mode, 0 } }, {},
            { { At::security_led_mode, 0 } } },
        { "LED row 2 stores 3", kDravi, 0, {}, { { "etcSecurityLEDRadioGroup", 2 } },
            { { At::security_led_mode, 3 } } },
        { "speed unit switch keeps the lane speed row", kOrlo, 0,
            { { At::ldws_depart_speed, 3 }, { At::measurement_unit, 0 } },
            { { "commonSpeedUnitRadioGroup", 1 } },
            { { At::ldws_depart_speed, 3 }, { At::measurement_unit, 1 } } },
        { "brightness left end stores 2", kOrlo, 0, { { At::front_brightness, 1 } },
            { { "commonFrontBrightnessSlider", 0 } }, { { At::front_brightness, 2 } } },
        { "brightness right end stores 0", kDravi, 0, { { At::rear_brightness, 2 } },
            { { "commonRearBrightnessSlider", 2 } }, { { At::rear_brightness, 0 } } },
        { "voice 0 silences", kVelt, 0, {}, { { "commonVoiceMentSlider", 0 } },
            { { At::audio_ment_volume, 0 }, { At::voice_ment, 0 } } },
        { "voice silenced on the card comes back silent", kOrlo, 0,
            { { At::voice_ment, 0 }, { At::audio_ment_volume, 3 } }, {},
            { { At::audio_ment_volume, 0 }, { At::voice_ment, 0 } } },
        { "voice 3", kSarn, 0, { { At::voice_ment, 0 } }, { { "commonVoiceMentSlider", 3 } },
            { { At::audio_ment_volume, 3 }, { At::voice_ment, 1 } } },
        { "daylight row 1 stores 0", kOrlo, 0, {}, { { "commonDSTRadioGroup", 1 } },
            { { At::daylight_offset, 0 } } },
        { "speed stamp row 1 stores 0", kHolta, 0, {}, { { "commonSpeedStampRadioGroup", 1 } },
            { { At::speed_stamp, 0 } } },
        { "shock 4", kOrlo, 0, {}, { { "alwaysShockSensitivitySlider", 4 } },
            { { At::acceleration_sensor, 4 } } },
        { "guide and wdr off", kDravi, 0, {},
            { { "alwaysDrivingGuideRadioGroup", 1 }, { "alwaysWDRRadioGroup", 1 } },
            { { At::enable_driving_guide, 0 }, { At::wdr, 0 } } },
        { "vehicle truck", kVelt, 0, {}, { { "alwaysVehicleTypeRadioGroup", 2 } },
            { { At::adas_car_high, 2 } } },
        { "Orlo's one lane slider stores all three", kOrlo, 0,
            { { At::ldws_right_depart_Sensitivity, 0 } }, { { "alwaysLDWSSensitivitySlider", 2 } },
            { { At::ldws_depart_Sensitivity, 2 }, { At::ldws_left_depart_Sensitivity, 2 },
                { At::ldws_right_depart_Sensitivity, 2 } } },
        { "Velt's lanes apart", kVelt, 0, { { At::ldws_depart_Sensitivity, 1 } },
            { { "alwaysLDWSSensitivitySlider", 0 }, { "alwaysLDWSRightSensitivitySlider", 2 } },
            { { At::ldws_left_depart_Sensitivity, 0 }, { At::ldws_right_depart_Sensitivity, 2 },
                { At::ldws_depart_Sensitivity, 1 } } },
        { "lane and collision off", kHolta, 0, {},
            { { "alwaysLDWSRadioGroup", 1 }, { "alwaysFCWSRadioGroup", 1 } },
            { { At::ldws_onoff, 0 }, { At::fcws_onoff, 0 } } },
        { "lane 5 comes back on", kOrlo, 0, { { At::ldws_onoff, 5 } }, {},
            { { At::ldws_onoff, 1 } } },
        { "collision sensitivity", kSarn, 0, {}, { { "alwaysFCWSSensitivitySlider", 0 } },
            { { At::fcws_frontal_sensitivity, 0 } } },
        { "parking shock, batteries", kDravi, 0, {},
            { { "parkingShockSensitivitySlider", 9 }, { "parkingBatteryOff12VSlider", 7 },
                { "parkingBatteryOff24VSlider", 0 } },
            { { At::parking_acceleration_sensor, 9 }, { At::battery_12v_R_off, 7 },
                { At::battery_24v_R_off, 0 } } },
        { "night vision off", kVelt, 0, {}, { { "parkingSuperNightVisionRadioGroup", 1 } },
            { { At::parking_night_vision, 0 } } },
        { "overwrite boxes", kOrlo, 0, { { At::record_motion_overwrite, 2 } },
            { { "etcOverwriteAlwaysShockCheckBox", 0 }, { "etcOverwriteManualCheckBox", 0 },
                { "etcOverwriteParkingShockCheckBox", 1 } },
            { { At::record_cevent_overwrite, 0 }, { At::record_manual_overwrite, 0 },
                { At::record_prevent_overwrite, 1 }, { At::record_motion_overwrite, 0 } } },
        { "partition C", kOrlo, 0, {}, { { "etcMemoryPartitionRadioGroup", 2 } },
            { { At::partition_type, 3 } } },
        { "LCD on Dravi", kDravi, 0, {},
            { { "commonLCDBrighnessSlider", 2 }, { "commonLCDOffTimerRadioGroup", 2 } },
            { { At::lcd_brightness, 2 }, { At::lcd_off_timer, 0 } } },
        { "LCD 10 minutes", kSarn, 0, {}, { { "commonLCDOffTimerRadioGroup", 1 } },
            { { At::lcd_off_timer, 600000 } } },
        { "FVDW off", kDravi, 17, {}, { { "alwaysFVDWRadioGroup", 1 } },
            { { At::fcmd_onoff, 0 } } },
    };
    for (const SaveCase& c : cases)
        check(c);
}

TEST_F(OrloDraviSave, UntouchedRecordComesBackAsItWas)
{
    // Saving straight after loading changes nothing but what the family
    // writes whatever the page shows: Orlo's one lane slider sets both lane
    // fields alike.
    struct Case {
        qint64 type;
        int firmware;
        std::set<int> changed;
    };
    const Case cases[] = {
        { kOrlo, 0, { At::ldws_right_depart_Sensitivity } },
        { kVelt, 0, {} },
        { kHolta, 0, {} },
        { kDravi, 16, {} },
        { kDravi, 17, {} },
        { kDraviUk, 17, {} },
        { kSarn, 0, {} },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type << " fw " << c.firmware);
        open(c.type, typicalRecord(c.type, c.firmware), c.firmware);
        const QByteArray loaded = savedRecord();
        EXPECT_EQ(changedWords(loaded, pressOk()), c.changed);
    }
}

TEST_F(OrloDraviSave, ProductNameOfTheModel)
{
    const std::pair<qint64, const char*> cases[] = { { kOrlo, "Orlo" }, { kVelt, "Velt" },
        { kHolta, "Holta" }, { kDravi, "Dravi" }, { kDraviUk, "Dravi" }, { kSarn, "Sarn" } };
    for (const auto& [type, name] : cases) {
        SetupCfgBuilder record = SetupCfgBuilder(recordSizeOf(type));
        record.productName("somebody");
        open(type, record.bytes());
        EXPECT_EQ(textAt(pressOk(), At::product_name, 16), QString::fromLatin1(name)) << type;
    }
}

TEST_F(OrloDraviSave, DraviBelowFirmware17KeepsAssistanceButWritesFcmd)
{
    open(kDravi, typicalRecord(kDravi, 16), 16);
    TolmSettingManager* model = TolmSettingManager::SharedTolmSettingManager();
    model->setAdas_car_high(1);
    model->setLdws_onoff(1);
    model->setFcmd_onoff(1);
    m_page->userChange(QStringLiteral("alwaysVehicleTypeRadioGroup"), 2);
    m_page->userChange(QStringLiteral("alwaysLDWSRadioGroup"), 1);
    m_page->userChange(QStringLiteral("alwaysFVDWRadioGroup"), 1);
    EXPECT_EQ(pressOk().size(), 464);
    model = TolmSettingManager::SharedTolmSettingManager();
    EXPECT_EQ(model->adas_car_high(), 1);
    EXPECT_EQ(model->ldws_onoff(), 1);
    EXPECT_EQ(model->fcmd_onoff(), 0);

    open(kDravi, typicalRecord(kDravi, 17), 17);
    m_page->userChange(QStringLiteral("alwaysVehicleTypeRadioGroup"), 2);
    const QByteArray saved = pressOk();
    EXPECT_EQ(saved.size(), 504);
    EXPECT_EQ(int32At(saved, At::adas_car_high), 2);
}

TEST_F(OrloDraviSave, ParkingQuestionAnswers)
{
    const QString offText
        = QStringLiteral("주차모드를 사용하지 않는 경우,\n차량 시동이 꺼지면 주차 중 "
                         "녹화가 되지 않습니다.\n주차모드 사용을 해제 하시겠습니까?");
    const QString motionText = QStringLiteral("주차모션 선택 시,\n타임랩스 영상이 삭제되고 "
                                              "주차모션 영상이 저장됩니다.\n적용하시겠습니까?");
    const QString lapseText
        = QStringLiteral("타임랩스 선택 시 \n주차모션 영상이 삭제되고 주차모드 및 "
                         "주차충격 영상이 타임랩스로 저장됩니다.\n적용하시겠습니까?");
    struct Case {
        const char* what;
        qint64 type;
        qint64 stored;
        int row;
        int answer;
        QString question; // empty: no question
        int rowAfter;
        qint64 modelAfter;
        bool motionEnabled, shockEnabled;
    };
    const int no = AlertSink::kFirstButtonReturn;
    const int yes = AlertSink::kSecondButtonReturn;
    const Case cases[] = {
        { "two rows, on: no question", kOrlo, 0, 0, yes, {}, 0, 0, true, true },
        { "two rows, off, yes", kOrlo, 1, 1, yes, offText, 1, 0, false, false },
        { "two rows, off, no", kOrlo, 1, 1, no, offText, 0, 1, true, true },
        { "two rows, stored 0, no goes to row 0", kDravi, 0, 1, no, offText, 0, 0, false, false },
        { "three rows, motion, yes", kVelt, 0, 0, yes, motionText, 0, 1, true, true },
        { "three rows, time-lapse, yes", kHolta, 1, 1, yes, lapseText, 1, 2, false, true },
        { "three rows, off, yes", kSarn, 1, 2, yes, offText, 2, 0, false, false },
        { "three rows, stored 0, no", kVelt, 0, 0, no, motionText, 2, 0, false, false },
        { "three rows, stored 2, no", kHolta, 2, 2, no, offText, 1, 2, false, true },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        open(c.type, typicalRecord(c.type, 0, { { At::parking_mode_set, c.stored } }));
        answer(c.answer);
        ASSERT_EQ(m_page->userChange(QStringLiteral("parkingModeRadioGroup"), c.row),
            SettingsPageModel::Change::Applied);
        if (c.question.isEmpty()) {
            EXPECT_TRUE(m_sink->requests().isEmpty());
        } else {
            ASSERT_EQ(m_sink->requests().size(), 1);
            const AlertRequest& q = m_sink->requests().first();
            EXPECT_EQ(q.titleKey, QStringLiteral("주차모드"));
            EXPECT_EQ(q.messageKey, c.question);
            EXPECT_EQ(
                q.buttonKeys, (QStringList { QStringLiteral("아니오"), QStringLiteral("예") }));
        }
        EXPECT_EQ(value(QStringLiteral("parkingModeRadioGroup")), c.rowAfter);
        // "예" writes the model at once; the card only on OK.
        EXPECT_EQ(TolmSettingManager::SharedTolmSettingManager()->parking_mode_set(), c.modelAfter);
        EXPECT_EQ(int32At(savedRecord(), At::parking_mode_set), c.stored);
        EXPECT_EQ(enabled(QStringLiteral("parkingMotionSlider")), c.motionEnabled);
        EXPECT_EQ(enabled(QStringLiteral("parkingShockSensitivitySlider")), c.shockEnabled);
    }
}

TEST_F(OrloDraviSave, CancelWritesNothingButKeepsTheParkingAnswerInMemory)
{
    open(kVelt, typicalRecord(kVelt, 0, { { At::parking_mode_set, 1 } }));
    const QByteArray loaded = savedRecord();
    m_page->userChange(QStringLiteral("parkingModeRadioGroup"), 1);
    m_page->userChange(QStringLiteral("commonDSTRadioGroup"), 1);
    m_page->pressCancel();
    EXPECT_EQ(savedRecord(), loaded);
    EXPECT_EQ(TolmSettingManager::SharedTolmSettingManager()->parking_mode_set(), 2);
    EXPECT_EQ(TolmSettingManager::SharedTolmSettingManager()->daylight_offset(), 1);
}

TEST_F(OrloDraviSave, RefusedChangesLeaveThePage)
{
    open(kOrlo, typicalRecord(kOrlo, 0, { { At::front_resolution, 2 } }));
    using Change = SettingsPageModel::Change;
    EXPECT_EQ(m_page->userChange(QStringLiteral("noSuchControl"), 0), Change::UnknownControl);
    EXPECT_EQ(m_page->userChange(QStringLiteral("alwaysLDWSRightSensitivitySlider"), 1),
        Change::UnknownControl); // not on Orlo
    EXPECT_EQ(
        m_page->userChange(QStringLiteral("alwaysShockSensitivitySlider"), 6), Change::OutOfRange);
    EXPECT_EQ(m_page->userChange(QStringLiteral("commonGMTComboBox"), -1), Change::OutOfRange);
    EXPECT_EQ(m_page->userChange(QStringLiteral("alwaysRadioGroupRearResolution"), 1),
        Change::OutOfRange); // locked by the front group
    EXPECT_EQ(value(QStringLiteral("alwaysShockSensitivitySlider")), 3);
}

TEST_F(OrloDraviSave, TimeLimitGuideShowsWhileDragging)
{
    open(kOrlo, typicalRecord(kOrlo));
    const QString slider = QStringLiteral("parkingTimeLimitSlider_36x");
    EXPECT_EQ(m_page->sliderGuide(slider), QString());
    m_page->sliderPressed(slider);
    m_page->sliderMoved(slider, 1);
    EXPECT_EQ(m_page->sliderGuide(slider), QStringLiteral("6시간"));
    m_page->sliderMoved(slider, 4);
    EXPECT_EQ(m_page->sliderGuide(slider), QStringLiteral("48시간"));
    EXPECT_EQ(m_page->sliderGuide(QStringLiteral("parkingMotionSlider")), QString());
    m_page->sliderReleased(slider);
    EXPECT_EQ(m_page->sliderGuide(slider), QString());
    EXPECT_EQ(value(slider), 4);

    // Seven labels on the other families.
    open(8, typicalRecord(8));
    m_page->sliderPressed(slider);
    m_page->sliderMoved(slider, 1);
    EXPECT_EQ(m_page->sliderGuide(slider), QStringLiteral("1시간"));
    m_page->sliderMoved(slider, 7);
    EXPECT_EQ(m_page->sliderGuide(slider), QStringLiteral("48시간"));
}

TEST_F(OrloDraviSave, PartitionGraphFollowsTheSelectedType)
{
    open(kOrlo, typicalRecord(kOrlo, 0, { { At::partition_type, 1 } }));
    for (int column = 0; column < 3; ++column) {
        m_page->userChange(QStringLiteral("etcMemoryPartitionRadioGroup"), column);
        const QList<PartitionBar> bars = m_page->partitionGraph();
        ASSERT_EQ(bars.size(), 4);
        QStringList kinds;
        int total = 0;
        for (const PartitionBar& bar : bars) {
            kinds.append(bar.key);
            total += bar.percent;
            EXPECT_GT(bar.percent, 0);
        }
        EXPECT_EQ(kinds,
            (QStringList { QStringLiteral("continuous"), QStringLiteral("event"),
                QStringLiteral("park"), QStringLiteral("manual") }));
        // The camera leaves 5 % of the card out of every split.
        EXPECT_EQ(total, 95);
    }
    // Type A, the recommended one, gives continuous recording the most.
    m_page->userChange(QStringLiteral("etcMemoryPartitionRadioGroup"), 0);
    EXPECT_EQ(m_page->partitionGraph().first().percent, 60);
}

TEST_F(OrloDraviSave, CameraLanguageBoxOffersTheCardsLanguages)
{
    // A blank after the colon numbers an empty code 0; it is no language.
    m_card.verDat("# Language ISO Code: en ko fr\n");
    open(kDravi, typicalRecord(kDravi, 0, { { At::cur_language, 2 } }));
    std::optional<SettingControl> box = m_page->control(QStringLiteral("commonLanguageComboBox"));
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->titles,
        (QStringList {
            QStringLiteral("English"), QStringLiteral("Korean"), QStringLiteral("French") }));
    EXPECT_EQ(box->value, 1);
    EXPECT_EQ(m_page->userChange(QStringLiteral("commonLanguageComboBox"), 2),
        SettingsPageModel::Change::Applied);
    EXPECT_EQ(m_page->userSelectedLanguage(), 3);
    EXPECT_EQ(int32At(pressOk(), At::cur_language), 3);

    // A language the camera doesn't announce: no selection, the number stays.
    open(kVelt, typicalRecord(kVelt, 0, { { At::cur_language, 9 } }));
    EXPECT_EQ(value(QStringLiteral("commonLanguageComboBox")), -1);
    EXPECT_EQ(m_page->userChange(QStringLiteral("commonLanguageComboBox"), 3),
        SettingsPageModel::Change::OutOfRange);
    EXPECT_EQ(int32At(pressOk(), At::cur_language), 9);
}
