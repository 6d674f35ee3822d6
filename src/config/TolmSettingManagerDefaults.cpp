#include "config/TolmSettingManager.h"

#include "config/ModelCatalogue.h"

#include <array>

// Factory values for the five oldest models, which may have no setup.cfg on
// the card. Later models always carry their own files.
//
// A few values are the camera's own and are kept as they stand: the checksum
// column holds the record length of the model (no checksum is computed),
// Ruva's zone is spelt "Parcific Standard Time", Dravi's program path uses a
// backslash and Dravi repeats its product name as serial number.
namespace {

struct DefaultValue {
    enum class Kind { Unchanged, Absent, Number, Text };
    Kind kind = Kind::Unchanged;
    qint32 number = 0;
    const char* text = nullptr;
};

constexpr DefaultValue num(qint64 value)
{
    return { DefaultValue::Kind::Number, qint32(value), nullptr };
}
constexpr DefaultValue text(const char* value)
{
    return { DefaultValue::Kind::Text, 0, value };
}
constexpr DefaultValue kAbsent { DefaultValue::Kind::Absent, 0, nullptr };
constexpr DefaultValue kUnchanged {};

enum Column { kRuva, kTolm, kPesk, kDravi, kOrlo, kColumnCount };

struct DefaultRow {
    SetupField field;
    std::array<DefaultValue, kColumnCount> values;
};

const DefaultRow kDefaults[] = {
    { SetupField::checksum, { num(432), num(432), num(432), num(464), num(508) } },
    { SetupField::cfg_struct_version,
        { num(0x10005), num(0x10005), num(0x10005), num(0x10009), num(0x10013) } },
    { SetupField::product_name,
        { text("Ruva"), text("Tolm"), text("Pesk"), text("Dravi"), text("Orlo") } },
    { SetupField::serial_number, { kAbsent, kAbsent, kAbsent, text("Dravi"), kAbsent } },
    { SetupField::version, { kAbsent, kAbsent, kAbsent, kAbsent, kAbsent } },
    { SetupField::reserved, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::front_resolution, { num(2), num(3), num(3), num(3), num(3) } },
    { SetupField::front_framerate, { num(3), num(3), num(5), num(5), num(5) } },
    { SetupField::front_quality, { num(3), num(3), num(3), num(3), num(3) } },
    { SetupField::front_brightness, { num(1), num(0), num(0), num(1), num(1) } },
    { SetupField::front_constrast, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::front_shapness, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::rear_resolution, { num(0), num(2), num(2), num(3), num(3) } },
    { SetupField::rear_framerate, { num(0), num(3), num(3), num(5), num(5) } },
    { SetupField::rear_quality, { num(0), num(3), num(3), num(3), num(1) } },
    { SetupField::rear_brightness, { num(0), num(0), num(0), num(1), num(1) } },
    { SetupField::rear_contrast, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::rear_sharpness, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::audio_record, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::audio_record_volume, { num(0), num(3), num(3), num(3), num(3) } },
    { SetupField::voice_ment, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::audio_ment_volume, { num(3), num(3), num(3), num(2), num(2) } },
    { SetupField::enable_driving_guide, { num(0), num(1), num(0), num(1), num(1) } },
    { SetupField::acceleration_sensor, { num(7), num(6), num(6), num(2), num(2) } },
    { SetupField::enable_av_out, { num(0), num(0), num(1), num(1), num(1) } },
    { SetupField::av_out_mode, { num(0), num(4), num(4), num(4), num(4) } },
    { SetupField::record_cevent_overwrite, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::record_motion_overwrite, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::record_prevent_overwrite, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::record_manual_overwrite, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::record_image_overwrite, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::parking_front_resolution, { num(2), num(3), num(3), num(2), num(3) } },
    { SetupField::parking_front_framerate, { num(3), num(2), num(2), num(2), num(2) } },
    { SetupField::parking_front_quality, { num(3), num(3), num(3), num(3), num(3) } },
    { SetupField::parking_rear_resolution, { num(0), num(2), num(2), num(2), num(3) } },
    { SetupField::parking_rear_framerate, { num(0), num(2), num(2), num(2), num(2) } },
    { SetupField::parking_rear_quality, { num(0), num(3), num(3), num(3), num(3) } },
    { SetupField::parking_acceleration_sensor, { num(7), num(7), num(7), num(3), num(3) } },
    { SetupField::parking_mode_set, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::parking_motion_set, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::parking_front_motion_region,
        { num(4095), num(4095), num(4095), num(4095), num(4095) } },
    { SetupField::parking_rear_motion_region,
        { num(4095), num(4095), num(4095), num(4095), num(4095) } },
    { SetupField::parking_motion_sensitivity, { num(2), num(3), num(2), num(3), num(3) } },
    { SetupField::parking_time_limit, { num(48), num(48), num(48), num(48), num(48) } },
    { SetupField::battery_12v_R_off, { num(6), num(6), num(6), num(6), num(6) } },
    { SetupField::battery_24v_R_off, { num(6), num(6), num(6), num(6), num(6) } },
    { SetupField::partition_type, { num(1), num(1), num(1), num(1), num(1) } },
    { SetupField::security_led_mode, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::enable_format_sd, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::driving_guide_version, { num(0), num(0), num(0), num(0), num(0x0D030D00) } },
    { SetupField::setting_path,
        { text("SETTING/Ruva_Setting.exe"), text("SETTING/Tolm_Setting.exe"),
            text("SETTING/Pesk_Setting.exe"), text("SETTING\\Dravi_Setting.exe"),
            text("SETTING/Orlo_Setting.exe") } },
    { SetupField::micom_version, { kAbsent, kAbsent, kAbsent, kAbsent, kAbsent } },
    { SetupField::gmt_offset, { num(-480), num(-480), num(-480), num(-480), num(-480) } },
    { SetupField::daylight_offset, { num(1), num(1), num(1), num(1), num(0) } },
    { SetupField::tz_key,
        { text("Parcific Standard Time"), text("Pacific Standard Time"),
            text("Pacific Standard Time"), text("Pacific Standard Time"),
            text("Pacific Standard Time") } },
    { SetupField::date_format, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::measurement_unit, { num(0), num(0), num(0), num(0), num(1) } },
    { SetupField::lcd_brightness, { num(0), num(0), num(5), num(1), num(1) } },
    { SetupField::lcd_off_timer, { num(0), num(0), num(300000), num(30000), num(30000) } },
    { SetupField::cur_language, { num(0), num(0), num(0), num(0), num(0) } },
    { SetupField::battery_auto_set, { kUnchanged, kUnchanged, kUnchanged, num(0), num(0) } },
    { SetupField::wdr, { kUnchanged, kUnchanged, kUnchanged, num(1), num(1) } },
    { SetupField::ldws_detect, { kUnchanged, kUnchanged, kUnchanged, num(0), num(1) } },
    { SetupField::ldws_offset_top, { kUnchanged, kUnchanged, kUnchanged, num(114), num(114) } },
    { SetupField::ldws_offset_bottom, { kUnchanged, kUnchanged, kUnchanged, num(218), num(218) } },
    { SetupField::ldws_depart_Sensitivity, { kUnchanged, kUnchanged, kUnchanged, num(2), num(2) } },
    { SetupField::voice_detect, { kUnchanged, kUnchanged, kUnchanged, num(1), num(0) } },
    { SetupField::local_id, { kUnchanged, kUnchanged, kUnchanged, num(0), num(1) } },
    { SetupField::low_vol_shutdown, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(1) } },
    { SetupField::adas_car_high, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(0) } },
    { SetupField::ldws_left_depart_Sensitivity,
        { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(2) } },
    { SetupField::ldws_right_depart_Sensitivity,
        { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(2) } },
    { SetupField::ldws_depart_speed, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(2) } },
    { SetupField::fcws_onoff, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(1) } },
    { SetupField::fcws_frontal_sensitivity,
        { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(2) } },
    { SetupField::fcmd_onoff, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(0) } },
    { SetupField::llws_onoff, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(0) } },
    { SetupField::ldws_onoff, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(1) } },
    { SetupField::set_resolution, { kUnchanged, kUnchanged, kUnchanged, kUnchanged, num(0) } },
};

void applyColumn(TolmSettingManager& manager, Column column)
{
    for (const DefaultRow& row : kDefaults) {
        const DefaultValue& value = row.values[size_t(column)];
        switch (value.kind) {
        case DefaultValue::Kind::Unchanged:
            break;
        case DefaultValue::Kind::Absent:
            manager.setTextValue(row.field, QString());
            break;
        case DefaultValue::Kind::Number:
            manager.setIntValue(row.field, value.number);
            break;
        case DefaultValue::Kind::Text:
            manager.setTextValue(row.field, QString::fromUtf8(value.text));
            break;
        }
    }
}

} // namespace

void TolmSettingManager::loadDefaultValue()
{
    switch (m_modelType) {
    case 0:
        loadDefaultDataForRuva();
        break;
    case 1:
        loadDefaultDataForTolm();
        break;
    case 2:
        loadDefaultDataForPesk();
        break;
    case ModelCatalogue::kDraviModelType:
    case ModelCatalogue::kDraviUkModelType:
        loadDefaultDataForDravi();
        break;
    case 5:
        loadDefaultDataForOrlo();
        break;
    default:
        break; // later models have no built-in values
    }
}

void TolmSettingManager::loadDefaultDataForRuva()
{
    applyColumn(*this, kRuva);
}
void TolmSettingManager::loadDefaultDataForTolm()
{
    applyColumn(*this, kTolm);
}
void TolmSettingManager::loadDefaultDataForPesk()
{
    applyColumn(*this, kPesk);
}
void TolmSettingManager::loadDefaultDataForOrlo()
{
    applyColumn(*this, kOrlo);
}

void TolmSettingManager::loadDefaultDataForDravi()
{
    applyColumn(*this, kDravi);
    // The UK variant of the camera runs on Greenwich time and miles.
    if (m_localID == ModelCatalogue::kDraviUkLocalID) {
        setLocal_id(3);
        setGmt_offset(0);
        setDaylight_offset(0);
        setTz_key(QStringLiteral("GMT Standard Time"));
        setMeasurement_unit(1);
    }
}

TolmSettingManager* TolmSettingManager::resetSharedToDefaults()
{
    TolmSettingManager* current = SharedTolmSettingManager();
    auto fresh = std::make_unique<TolmSettingManager>();
    fresh->setSettingDirPath(current->settingDirPath());
    fresh->setModelType(current->modelType());
    if (!fresh->loadDefaultDataFromDefaultCfgFile()) {
        current->loadDefaultValue();
        return current;
    }
    // What the camera reports about itself is not a setting to reset.
    fresh->setVersion(current->version());
    fresh->setFirmwareVersionInt(current->firmwareVersionInt());
    fresh->setDriving_guide_version(current->driving_guide_version());
    // Nor is which card and model this is.
    fresh->setSdcard_url(current->sdcard_url());
    fresh->setLocalID(current->localID());
    fresh->setModelName(current->modelName());
    fresh->setLanguages(current->languages());
    fresh->m_alertSink = current->m_alertSink;
    // `current` stays valid: it is the shared instance, which takes over.
    return ChagneTolmSettingManager(std::move(fresh));
}
