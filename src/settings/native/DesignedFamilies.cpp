// The Ruva, Tolm, Pesk, Kimbo and Yarro families of the native page. Each
// family is one table below: a row ties one control to one record field, and
// lists the stored value of each of the control's positions, lowest first.
// Reading selects the position of the stored value; a value the list lacks
// leaves the control where it was, or selects the row's fallback. Saving
// writes the value of the control's position. The page shows exactly the
// controls its family's table names.
//
// Besides its table, every family writes its model's product name and the
// camera language the user chose, keeps the always-on continuous-recording
// box checked, and follows the same consistency rules as the Orlo family:
// the voice prompt is silent at volume 0, a front resolution at the lowest
// column locks the rear one there, the lane and collision switches enable
// their sliders, and parking mode off disables the parking sliders.
#include "settings/native/NativeFamily.h"

#include "settings/native/TimeZoneLists.h"

#include "config/ModelCatalogue.h"
#include "config/TolmSettingManager.h"
#include "i18n/LocalizationKeys.h"

namespace {

namespace C = NativeControl;
namespace Keys = LocalizationKeys;
using F = SetupField;

constexpr int kUntouched = -1;

enum class Special {
    None,
    Voice, // audio_ment_volume, with voice_ment following it
    Zone, // gmt_offset through the zone label list
    ZoneWithKey, // gmt_offset, and tz_key from the zone keys at the same position
};

struct FieldRow {
    QString control;
    F field;
    int minimum = 0;
    QList<qint32> stored; // stored[i] is the value of position minimum + i
    int readFallback = kUntouched;
    QStringList titles = {}; // captions where the page's defaults don't fit
    Special special = Special::None;
    // The control also has a position 0 below the listed ones, which keeps
    // the stored value on saving.
    bool zeroKeeps = false;
};

struct DesignedTable {
    QList<FieldRow> rows;
};

QList<qint32> range(qint32 low, qint32 high)
{
    QList<qint32> values;
    for (qint32 v = low; v <= high; ++v)
        values.append(v);
    return values;
}

QStringList keys(std::initializer_list<const char*> utf8)
{
    QStringList list;
    for (const char* k : utf8)
        list.append(QString::fromUtf8(k));
    return list;
}

// Rows every family shares, by kind of camera.
const QList<qint32> kOnOff { 1, 0 }; // row 0 "on" stores 1, row 1 "off" stores 0
const QList<qint32> kBrightness { 2, 1, 0 }; // the slider runs opposite to the value
const QList<qint32> kLedModes { 1, 2, 3, 0 };
const QList<qint32> kPartitionTypes { 1, 2, 3 };
const QList<qint32> kSevenHourSteps { 1, 2, 4, 6, 12, 24, 48 };

FieldRow voiceRow()
{
    return { C::kVoiceMent, F::audio_ment_volume, 0, range(0, 3), kUntouched, {}, Special::Voice };
}

FieldRow zoneRow(Special special = Special::Zone)
{
    const TimeZoneLists& zones = TimeZoneLists::insertGMTData();
    return { C::kGmt, F::gmt_offset, 0, zones.gmtHourList, int(zones.gmtHourList.indexOf(0)),
        zones.gmtDescList, special };
}

QList<FieldRow> parkingRows(const QList<qint32>& motion, int motionFallback)
{
    return {
        { C::kParkingMode, F::parking_mode_set, 0, kOnOff, 1,
            NativeRules::parkingModeTitles(false) },
        { C::kParkingShock, F::parking_acceleration_sensor, 1, range(1, 10) },
        { C::kParkingMotion, F::parking_motion_sensitivity, 0, motion, motionFallback },
        { C::kTimeLimit, F::parking_time_limit, 1, kSevenHourSteps, kUntouched,
            NativeRules::timeLimitGuides(false), Special::None, true },
        { C::kBattery12V, F::battery_12v_R_off, 0, range(0, 7) },
        { C::kBattery24V, F::battery_24v_R_off, 0, range(0, 7) },
    };
}

QList<FieldRow> extrasRows()
{
    return {
        { C::kOverwriteShock, F::record_cevent_overwrite, 0, { 0, 1 } },
        { C::kOverwriteMotion, F::record_motion_overwrite, 0, { 0, 1 } },
        { C::kOverwriteParkingShock, F::record_prevent_overwrite, 0, { 0, 1 } },
        { C::kOverwriteManual, F::record_manual_overwrite, 0, { 0, 1 } },
        { C::kSecurityLed, F::security_led_mode, 0, kLedModes },
        { C::kPartition, F::partition_type, 0, kPartitionTypes },
    };
}

// The 60-field cameras count their motion sensitivity 0-5 themselves.
const QList<qint32> kMotionSixSteps = range(0, 5);
// The 81-field cameras use the four steps of the Orlo family.
const QList<qint32> kMotionFourSteps { 0, 1, 3, 5 };

// ---- The tables --------------------------------------------------------------

// Ruva: a front camera only, with its frame rate, quality, sound recording
// and date stamp; it also stores the zone key of the selected zone.
DesignedTable ruvaTable()
{
    DesignedTable t;
    t.rows = {
        { C::kFrontBrightness, F::front_brightness, 0, kBrightness },
        voiceRow(),
        zoneRow(Special::ZoneWithKey),
        { C::kDst, F::daylight_offset, 0, kOnOff, 1 },
        { C::kDateFormat, F::date_format, 0, range(0, 2) },
        { C::kSpeedUnit, F::measurement_unit, 0, { 0, 1 }, 0 },
        { C::kAudioRecord, F::audio_record, 0, kOnOff, 1 },
        { C::kFrontResolution, F::front_resolution, 0, { 1, 2, 3 }, kUntouched,
            keys({ Keys::kResolutionVga, Keys::kResolutionHd, Keys::kResolutionFhd }) },
        { C::kFrontFrameRate, F::front_framerate, 0, { 5, 4, 3, 2 } },
        { C::kFrontQuality, F::front_quality, 0, { 1, 2, 3 } },
        { C::kShock, F::acceleration_sensor, 1, range(1, 10) },
        { C::kDrivingGuide, F::enable_driving_guide, 0, kOnOff, 1 },
    };
    t.rows += parkingRows(kMotionSixSteps, kUntouched);
    t.rows += extrasRows();
    return t;
}

// Tolm: front and rear cameras on the base record.
DesignedTable tolmTable()
{
    DesignedTable t;
    t.rows = {
        { C::kFrontBrightness, F::front_brightness, 0, kBrightness },
        { C::kRearBrightness, F::rear_brightness, 0, kBrightness },
        voiceRow(),
        zoneRow(),
        { C::kDst, F::daylight_offset, 0, kOnOff, 1 },
        { C::kSpeedUnit, F::measurement_unit, 0, { 0, 1 }, 0 },
        { C::kFrontResolution, F::front_resolution, 0, { 2, 3 } },
        { C::kRearResolution, F::rear_resolution, 0, { 2, 3 } },
        { C::kShock, F::acceleration_sensor, 1, range(1, 10) },
        { C::kDrivingGuide, F::enable_driving_guide, 0, kOnOff, 1 },
    };
    t.rows += parkingRows(kMotionSixSteps, kUntouched);
    t.rows += extrasRows();
    return t;
}

// Pesk: Tolm's page and the camera's screen (brightness 0-5, switch-off
// after 30 s, 5 min or never).
DesignedTable peskTable()
{
    DesignedTable t = tolmTable();
    t.rows.insert(6,
        { C::kLcdBrightness, F::lcd_brightness, 0, range(0, 5), kUntouched,
            keys({ "0", "1", "2", "3", "4", "5" }) });
    t.rows.insert(7,
        { C::kLcdOffTimer, F::lcd_off_timer, 0, { 30000, 300000, 0 }, 2,
            keys({ Keys::kSeconds30, Keys::kMinutes5, Keys::kAlwaysOn }) });
    return t;
}

// Kimbo (Brask, Kimbo, Jorra): the 81-field record with driver assistance,
// night vision and the speed stamp, and a two-row parking group.
DesignedTable kimboTable()
{
    DesignedTable t;
    t.rows = {
        { C::kFrontBrightness, F::front_brightness, 0, kBrightness },
        { C::kRearBrightness, F::rear_brightness, 0, kBrightness },
        voiceRow(),
        zoneRow(),
        { C::kDst, F::daylight_offset, 0, kOnOff, 1 },
        { C::kSpeedUnit, F::measurement_unit, 0, { 0, 1 }, 0 },
        { C::kSpeedStamp, F::speed_stamp, 0, kOnOff, 0 },
        { C::kFrontResolution, F::front_resolution, 0, { 2, 3 }, 1 },
        { C::kRearResolution, F::rear_resolution, 0, { 2, 3 }, 1 },
        { C::kShock, F::acceleration_sensor, 1, range(1, 5) },
        { C::kDrivingGuide, F::enable_driving_guide, 0, kOnOff, 1 },
        { C::kWdr, F::wdr, 0, kOnOff, 1 },
        { C::kVehicleType, F::adas_car_high, 0, range(0, 2), 0 },
        { C::kLdws, F::ldws_onoff, 0, kOnOff, 0 },
        { C::kLdwsLeft, F::ldws_left_depart_Sensitivity, 0, range(0, 2), 2 },
        { C::kLdwsRight, F::ldws_right_depart_Sensitivity, 0, range(0, 2), 2 },
        { C::kLdwsSpeed, F::ldws_depart_speed, 0, range(0, 3), 2 },
        { C::kFcws, F::fcws_onoff, 0, kOnOff, 0 },
        { C::kFcwsSensitivity, F::fcws_frontal_sensitivity, 0, range(0, 2), 2 },
    };
    t.rows += parkingRows(kMotionFourSteps, 2);
    t.rows.insert(t.rows.size() - 5, { C::kNightVision, F::parking_night_vision, 0, kOnOff, 1 });
    t.rows += extrasRows();
    return t;
}

// Yarro (Yarro, Nubo, Ixel, Pallo, Gemmo): Kimbo's page and the
// front-vehicle departure alert.
DesignedTable yarroTable()
{
    DesignedTable t = kimboTable();
    qsizetype after = 0;
    while (t.rows.at(after).control != C::kFcwsSensitivity)
        ++after;
    t.rows.insert(after + 1, { C::kFvdw, F::fcmd_onoff, 0, kOnOff, 0 });
    return t;
}

// ---- One table's page features, apply and save ---------------------------

const DesignedTable& tableOf(qint64 modelType)
{
    static const DesignedTable kRuva = ruvaTable();
    static const DesignedTable kTolm = tolmTable();
    static const DesignedTable kPesk = peskTable();
    static const DesignedTable kKimbo = kimboTable();
    static const DesignedTable kYarro = yarroTable();
    switch (modelType) {
    case 0:
        return kRuva;
    case 1:
        return kTolm;
    case 2:
        return kPesk;
    case 7:
    case 8:
    case 14:
        return kKimbo;
    default:
        return kYarro;
    }
}

void designedFeatures(NativePageState& page)
{
    NativeControlSet& c = page.controls;
    for (const FieldRow& row : tableOf(page.modelType).rows)
        c.show(row.control, row.zeroKeeps ? 0 : row.minimum,
            row.minimum + int(row.stored.size()) - 1, row.titles);
    c.show(C::kOverwriteAlways, 0, 1);
    if (c.visible(C::kLdwsSpeed)) {
        c.setTitles(C::kLdwsSpeed, NativeRules::laneSpeedTitles(false));
        c.find(C::kLdwsSpeed)->titlesFollowState = true;
    }
}

// Switches on and off that decide whether other controls can be used.
void applyEnabling(NativeControlSet& c)
{
    if (c.visible(C::kRearResolution))
        NativeRules::lockRearResolution(c);
    if (c.visible(C::kLdws))
        c.setEnabled(NativeControl::laneControls(), c.value(C::kLdws) == 0);
    if (c.visible(C::kFcws))
        c.setEnabled(C::kFcwsSensitivity, c.value(C::kFcws) == 0);
    c.setEnabled(NativeControl::parkingSliders(), c.value(C::kParkingMode) == 0);
}

void applyDesigned(NativePageState& page, const TolmSettingManager& m)
{
    NativeControlSet& c = page.controls;
    page.userSelectedLanguage = m.cur_language();
    for (const FieldRow& row : tableOf(page.modelType).rows) {
        const qsizetype index = row.stored.indexOf(m.intValue(row.field));
        if (index >= 0)
            c.setValue(row.control, row.minimum + int(index));
        else if (row.readFallback != kUntouched)
            c.setValue(row.control, row.readFallback);
        if (row.special == Special::Voice && m.voice_ment() == 0)
            c.setValue(row.control, 0);
    }
    c.setValue(C::kOverwriteAlways, 1);
    NativeRules::retitleLaneSpeeds(c);
    applyEnabling(c);
}

void saveDesigned(const NativePageState& page, TolmSettingManager& m)
{
    const NativeControlSet& c = page.controls;
    const QStringList& names = ModelCatalogue::modelNameList();
    if (page.modelType >= 0 && page.modelType < names.size())
        m.setProduct_name(names.at(page.modelType));
    m.setCur_language(page.userSelectedLanguage);
    for (const FieldRow& row : tableOf(page.modelType).rows) {
        const int index = c.value(row.control) - row.minimum;
        if (index < 0 || index >= row.stored.size())
            continue; // no selection: the stored value stays
        m.setIntValue(row.field, row.stored.at(index));
        if (row.special == Special::Voice)
            m.setVoice_ment(index != 0 ? 1 : 0);
        if (row.special == Special::ZoneWithKey) {
            // Ruva's program takes the key at the label's position in the
            // key list (the two lists differ in order and length); the camera
            // reads the offset, so the key only has to be one it knows. Labels
            // past the last key keep the stored key.
            const QStringList& zoneKeys = TimeZoneLists::insertGMTData().timezoneNameList;
            if (index < zoneKeys.size())
                m.setTz_key(zoneKeys.at(index));
        }
    }
}

} // namespace

const NativeFamily kRuvaFamily { "Ruva", designedFeatures, applyDesigned, saveDesigned };
const NativeFamily kTolmFamily { "Tolm", designedFeatures, applyDesigned, saveDesigned };
const NativeFamily kPeskFamily { "Pesk", designedFeatures, applyDesigned, saveDesigned };
const NativeFamily kKimboFamily { "Kimbo", designedFeatures, applyDesigned, saveDesigned };
const NativeFamily kYarroFamily { "Yarro", designedFeatures, applyDesigned, saveDesigned };
