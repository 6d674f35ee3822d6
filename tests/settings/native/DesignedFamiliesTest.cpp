// The Ruva, Tolm, Pesk, Kimbo and Yarro families: a record the page can show
// comes back byte for byte, one change per tab lands in its own field, and
// the fields each family deliberately rewrites are rewritten as designed.
#include "NativePageFixture.h"

#include <set>

namespace {

// Every model type of the five families.
const qint64 kDesignedTypes[] = { 0, 1, 2, 7, 8, 14, 11, 12, 13, 15, 19 };

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
    const qsizetype end = field.indexOf('\0');
    return QString::fromUtf8(end < 0 ? field : field.left(end));
}

using DesignedFamilies = NativePageTest;

} // namespace

TEST_F(DesignedFamilies, EachModelHasItsFamily)
{
    const std::pair<qint64, const char*> families[] = { { 0, "Ruva" }, { 1, "Tolm" }, { 2, "Pesk" },
        { 7, "Kimbo" }, { 8, "Kimbo" }, { 14, "Kimbo" }, { 11, "Yarro" }, { 12, "Yarro" },
        { 13, "Yarro" }, { 15, "Yarro" }, { 19, "Yarro" }, { 3, "Dravi" }, { 4, "Dravi" },
        { 9, "Dravi" }, { 5, "Orlo" }, { 10, "Orlo" }, { 18, "Orlo" } };
    for (const auto& [type, family] : families) {
        const std::unique_ptr<SettingsPageModel> page = createSettingsPageModel(type);
        ASSERT_NE(page, nullptr) << type;
        EXPECT_EQ(page->family(), QString::fromLatin1(family)) << type;
        EXPECT_EQ(page->modelType(), type);
        EXPECT_TRUE(page->hasClock());
    }
    // Kel and web-configured models are not this page's; the hand-picked DVR
    // models open it with nothing on it.
    for (const qint64 type : { -1, 6, 16, 17, 20, 26 })
        EXPECT_EQ(createNativeSettingsPageModel(type), nullptr) << type;
    for (const qint64 type : { 27, 28 }) {
        const std::unique_ptr<SettingsPageModel> page = createSettingsPageModel(type);
        ASSERT_NE(page, nullptr);
        EXPECT_TRUE(page->controls().isEmpty());
        EXPECT_TRUE(page->pressOk());
        EXPECT_FALSE(page->userSelectedLanguage().has_value());
    }
}

TEST_F(DesignedFamilies, UntouchedRecordComesBackByteForByte)
{
    for (const qint64 type : kDesignedTypes) {
        SCOPED_TRACE(testing::Message() << "type " << type);
        open(type, typicalRecord(type));
        const QByteArray loaded = savedRecord();
        ASSERT_EQ(loaded.size(), recordSizeOf(type));
        EXPECT_EQ(pressOk(), loaded);
        EXPECT_EQ(m_page->userSelectedLanguage(), 2);
    }
}

TEST_F(DesignedFamilies, OneChangePerTabLandsInItsField)
{
    for (const qint64 type : kDesignedTypes) {
        SCOPED_TRACE(testing::Message() << "type " << type);
        open(type, typicalRecord(type));
        const QByteArray loaded = savedRecord();
        using Change = SettingsPageModel::Change;
        EXPECT_EQ(
            m_page->userChange(QStringLiteral("commonFrontBrightnessSlider"), 0), Change::Applied);
        EXPECT_EQ(
            m_page->userChange(QStringLiteral("alwaysShockSensitivitySlider"), 4), Change::Applied);
        EXPECT_EQ(
            m_page->userChange(QStringLiteral("parkingBatteryOff12VSlider"), 6), Change::Applied);
        EXPECT_EQ(
            m_page->userChange(QStringLiteral("etcSecurityLEDRadioGroup"), 3), Change::Applied);
        const QByteArray saved = pressOk();
        EXPECT_EQ(changedWords(loaded, saved),
            (std::set<int> { At::front_brightness, At::acceleration_sensor, At::battery_12v_R_off,
                At::security_led_mode }));
        EXPECT_EQ(int32At(saved, At::front_brightness), 2);
        EXPECT_EQ(int32At(saved, At::acceleration_sensor), 4);
        EXPECT_EQ(int32At(saved, At::battery_12v_R_off), 6);
        EXPECT_EQ(int32At(saved, At::security_led_mode), 0);
    }
}

TEST_F(DesignedFamilies, FamilyControlsLandInTheirFields)
{
    struct Case {
        qint64 type;
        const char* control;
        int position;
        int offset;
        qint64 stored;
    };
    const Case cases[] = {
        { 0, "alwaysRadioGroupFrontFrameRate", 3, At::front_framerate, 2 },
        { 0, "alwaysRadioGroupFrontQuality", 2, At::front_quality, 3 },
        { 0, "alwaysRadioGroupFrontResolution", 0, At::front_resolution, 1 },
        { 0, "commonDateFormatRadioGroup", 2, At::date_format, 2 },
        { 0, "commonAudioRecordRadioGroup", 1, At::audio_record, 0 },
        { 1, "alwaysRadioGroupRearResolution", 0, At::rear_resolution, 2 },
        { 1, "parkingMotionSlider", 5, At::parking_motion_sensitivity, 5 },
        { 1, "parkingTimeLimitSlider_36x", 3, At::parking_time_limit, 4 },
        { 2, "commonLCDOffTimerRadioGroup", 2, At::lcd_off_timer, 0 },
        { 2, "commonLCDBrighnessSlider", 5, At::lcd_brightness, 5 },
        { 8, "parkingSuperNightVisionRadioGroup", 1, At::parking_night_vision, 0 },
        { 7, "commonSpeedStampRadioGroup", 1, At::speed_stamp, 0 },
        { 14, "alwaysLDWSRightSensitivitySlider", 0, At::ldws_right_depart_Sensitivity, 0 },
        { 8, "parkingMotionSlider", 3, At::parking_motion_sensitivity, 5 },
        { 11, "alwaysFVDWRadioGroup", 1, At::fcmd_onoff, 0 },
        { 13, "alwaysVehicleTypeRadioGroup", 2, At::adas_car_high, 2 },
        { 19, "commonGMTComboBox", 29, At::gmt_offset, 540 },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type << " " << c.control);
        open(c.type, typicalRecord(c.type));
        const QByteArray loaded = savedRecord();
        ASSERT_EQ(m_page->userChange(QString::fromLatin1(c.control), c.position),
            SettingsPageModel::Change::Applied);
        const QByteArray saved = pressOk();
        EXPECT_EQ(changedWords(loaded, saved), std::set<int> { c.offset });
        EXPECT_EQ(int32At(saved, c.offset), c.stored);
    }
}

TEST_F(DesignedFamilies, NormalisedFields)
{
    // Ruva stores the zone key at the selected label's position in the key
    // list (label 29, "UTC+09:00", pairs with key 29), whatever key it held.
    open(0, typicalRecord(0, 0, { { At::gmt_offset, 540 } }));
    QByteArray saved = pressOk();
    EXPECT_EQ(textAt(saved, At::tz_key, 32), QStringLiteral("Alaskan Standard Time"));
    // Labels past the 32nd have no key: the stored one stays.
    open(0, typicalRecord(0, 0, { { At::gmt_offset, 780 } }));
    saved = pressOk();
    EXPECT_EQ(textAt(saved, At::tz_key, 32), QStringLiteral("Korea Standard Time"));

    // A silenced voice prompt saves volume 0; a product name is the model's.
    SetupCfgBuilder pesk = SetupCfgBuilder(432);
    pesk.productName("esk").int32(At::voice_ment, 0).int32(At::audio_ment_volume, 3);
    open(2, pesk.bytes());
    saved = pressOk();
    EXPECT_EQ(textAt(saved, At::product_name, 16), QStringLiteral("Pesk"));
    EXPECT_EQ(int32At(saved, At::audio_ment_volume), 0);

    // A rear above a lowest front is brought down; odd switch values become
    // the row they show; an unknown zone becomes UTC.
    open(8,
        typicalRecord(8, 0,
            { { At::front_resolution, 2 }, { At::rear_resolution, 3 },
                { At::record_cevent_overwrite, 2 }, { At::ldws_onoff, 7 },
                { At::gmt_offset, 100 } }));
    saved = pressOk();
    EXPECT_EQ(int32At(saved, At::rear_resolution), 2);
    EXPECT_EQ(int32At(saved, At::record_cevent_overwrite), 0);
    EXPECT_EQ(int32At(saved, At::ldws_onoff), 1);
    EXPECT_EQ(int32At(saved, At::gmt_offset), 0);

    // A parking time the slider can't show is kept.
    open(1, typicalRecord(1, 0, { { At::parking_time_limit, 36 } }));
    EXPECT_EQ(int32At(pressOk(), At::parking_time_limit), 36);
}

TEST_F(DesignedFamilies, SwitchesGovernTheirControls)
{
    open(11,
        typicalRecord(
            11, 0, { { At::ldws_onoff, 0 }, { At::fcws_onoff, 0 }, { At::parking_mode_set, 0 } }));
    EXPECT_FALSE(enabled(QStringLiteral("alwaysLDWSSpeedRadioGroup")));
    EXPECT_FALSE(enabled(QStringLiteral("alwaysFCWSSensitivitySlider")));
    EXPECT_FALSE(enabled(QStringLiteral("parkingMotionSlider")));
    EXPECT_EQ(value(QStringLiteral("parkingModeRadioGroup")), 1);
    // Switching parking on needs no question on two-row models.
    m_page->userChange(QStringLiteral("parkingModeRadioGroup"), 0);
    EXPECT_TRUE(m_sink->requests().isEmpty());
    EXPECT_TRUE(enabled(QStringLiteral("parkingMotionSlider")));
    EXPECT_EQ(int32At(pressOk(), At::parking_mode_set), 1);
}
