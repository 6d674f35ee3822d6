#include "NativePageFixture.h"

#include "config/ModelCatalogue.h"
#include "config/SetupRecordCodec.h"
#include "config/TolmSettingManager.h"

namespace {

const char* const kTypical
    = "front_resolution=3 front_framerate=5 front_quality=2 front_brightness=1 rear_resolution=3 "
      "rear_brightness=0 audio_record=1 voice_ment=1 audio_ment_volume=2 enable_driving_guide=1 "
      "acceleration_sensor=3 record_cevent_overwrite=1 record_motion_overwrite=0 "
      "record_prevent_overwrite=1 record_manual_overwrite=1 parking_acceleration_sensor=5 "
      "parking_mode_set=1 parking_motion_sensitivity=3 parking_time_limit=24 battery_12v_R_off=3 "
      "battery_24v_R_off=4 partition_type=2 security_led_mode=1 gmt_offset=-480 daylight_offset=1 "
      "date_format=1 measurement_unit=0 lcd_brightness=1 lcd_off_timer=30000 cur_language=2 wdr=1 "
      "ldws_depart_Sensitivity=1 adas_car_high=1 ldws_left_depart_Sensitivity=1 "
      "ldws_right_depart_Sensitivity=2 ldws_depart_speed=1 fcws_onoff=1 fcws_frontal_sensitivity=1 "
      "fcmd_onoff=1 ldws_onoff=1 parking_night_vision=1 speed_stamp=1";

// Each "name=value" of the text, the name looked up with `find`.
template <typename Check> void forEachPair(const char* text, Check check)
{
    for (const QString& word : QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts)) {
        const qsizetype eq = word.indexOf(u'=');
        check(word.left(eq), word.mid(eq + 1).toInt());
    }
}

SetupField field(const QString& name)
{
    const int index = SetupRecordLayout::indexOfName(name);
    EXPECT_GE(index, 0) << qPrintable(name);
    return SetupField(std::max(index, 0));
}

} // namespace

QByteArray typicalRecord(qint64 modelType, int firmware, const char* fields)
{
    TolmSettingManager camera;
    camera.setModelType(modelType);
    camera.setFirmwareVersionInt(firmware);
    const auto set
        = [&](const QString& name, int value) { camera.setIntValue(field(name), value); };
    forEachPair(kTypical, set);
    // Ruva pairs its zone key with its zone by position: UTC-08:00 is
    // position 5, and the fifth key is Korea's.
    camera.setFront_resolution(modelType == kRuva ? 2 : 3);
    camera.setTz_key(modelType == kRuva ? "Korea Standard Time" : "Pacific Standard Time");
    camera.setProduct_name(modelType == kDraviUk ? QStringLiteral("Dravi")
                                                 : ModelCatalogue::modelNameList().at(modelType));
    camera.setVersion(QStringLiteral("1.00.17"));
    camera.setCfg_struct_version(0x10013);
    camera.setChecksum(camera.getSaveDataSize());
    forEachPair(fields, set);
    return SetupRecordCodec::encode(camera.values(), camera.getSettingVariableCount());
}

void NativePageTest::SetUp()
{
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    answer(AlertSink::kSecondButtonReturn);
}

void NativePageTest::TearDown()
{
    m_page.reset();
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    AlertSink::setShared(nullptr);
}

void NativePageTest::answer(int code)
{
    m_sink = std::make_shared<RecordingAlertSink>(code);
    AlertSink::setShared(m_sink);
}

SettingsPageModel& NativePageTest::open(qint64 modelType, const char* fields, int firmware)
{
    m_card.setupCfg(typicalRecord(modelType, firmware, fields));
    TolmSettingManager* model = TolmSettingManager::ChagneTolmSettingManager(nullptr);
    model->setSettingDirPath(m_card.root());
    model->setModelType(modelType);
    model->setFirmwareVersionInt(firmware);
    model->loadData();
    return reopen(modelType);
}

SettingsPageModel& NativePageTest::reopen(qint64 modelType)
{
    m_page = createSettingsPageModel(modelType);
    EXPECT_NE(m_page, nullptr) << "type " << modelType;
    m_page->applySettingData();
    return *m_page;
}

SettingControl NativePageTest::control(const QString& part) const
{
    QList<SettingControl> found = m_page->controls();
    found.removeIf([&](const SettingControl& c) { return !c.name.contains(part); });
    EXPECT_EQ(found.size(), 1) << qPrintable(part);
    SettingControl missing;
    missing.value = -99;
    return found.value(0, missing);
}

SettingsPageModel::Change NativePageTest::change(const QString& part, int value)
{
    return m_page->userChange(control(part).name, value);
}

void NativePageTest::expectControls(const char* expected) const
{
    for (const QString& word : QString::fromLatin1(expected).split(u' ', Qt::SkipEmptyParts)) {
        if (word.startsWith(u'+') || word.startsWith(u'-'))
            EXPECT_EQ(control(word.mid(1)).enabled, word.startsWith(u'+')) << qPrintable(word);
        else
            EXPECT_EQ(value(word.section(u'=', 0, 0)), word.section(u'=', 1).toInt())
                << qPrintable(word);
    }
}

void NativePageTest::expectSaved(const char* expected)
{
    EXPECT_TRUE(m_page->pressOk());
    SetupValues values;
    SetupRecordCodec::decodeDefaultCfg(savedRecord(), values);
    forEachPair(expected, [&](const QString& name, int value) {
        EXPECT_EQ(values.ints[size_t(field(name))], value) << qPrintable(name);
    });
}
