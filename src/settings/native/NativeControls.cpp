#include "settings/native/NativeControls.h"

#include "i18n/LocalizationKeys.h"

namespace NativeControl {

const QStringList& parkingSliders()
{
    static const QStringList kSliders { kParkingShock, kParkingMotion, kTimeLimit, kBattery12V,
        kBattery24V };
    return kSliders;
}

const QStringList& laneControls()
{
    static const QStringList kControls { kLdwsLeft, kLdwsRight, kLdwsSpeed };
    return kControls;
}

} // namespace NativeControl

namespace {

using Kind = SettingControlKind;
namespace Keys = LocalizationKeys;
namespace C = NativeControl;

QString key(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList keys(std::initializer_list<const char*> utf8)
{
    QStringList list;
    for (const char* k : utf8)
        list.append(key(k));
    return list;
}

struct ControlEntry {
    const QString& name;
    Kind kind;
    const char* tab;
    const char* caption;
    QStringList titles;
};

QStringList onOff()
{
    return keys({ Keys::kOn, Keys::kOff });
}

QStringList lowToHigh()
{
    return keys({ Keys::kLow, Keys::kMedium, Keys::kHigh });
}

// Page order: tab by tab, top to bottom. Ranges and the titles that differ
// between models are set by the model's page features.
QList<ControlEntry> pageControls()
{
    return {
        { C::kFrontBrightness, Kind::Slider, Keys::kTabCommon, Keys::kFrontBrightness,
            lowToHigh() },
        { C::kRearBrightness, Kind::Slider, Keys::kTabCommon, Keys::kRearBrightness, lowToHigh() },
        { C::kVoiceMent, Kind::Slider, Keys::kTabCommon, Keys::kVoiceGuidance, {} },
        { C::kCameraLanguage, Kind::ComboBox, Keys::kTabCommon, Keys::kCameraLanguage, {} },
        { C::kGmt, Kind::ComboBox, Keys::kTabCommon, Keys::kTimeZone, {} },
        { C::kDst, Kind::RadioGroup, Keys::kTabCommon, Keys::kDaylightSaving, onOff() },
        { C::kDateFormat, Kind::RadioGroup, Keys::kTabCommon, Keys::kDateFormat,
            keys({ Keys::kDateYmd, Keys::kDateMdy, Keys::kDateDmy }) },
        { C::kSpeedUnit, Kind::RadioGroup, Keys::kTabCommon, Keys::kMenuSpeedUnit,
            keys({ Keys::kKmh, Keys::kMph }) },
        { C::kSpeedStamp, Kind::RadioGroup, Keys::kTabCommon, Keys::kSpeedStamp, onOff() },
        { C::kAudioRecord, Kind::RadioGroup, Keys::kTabCommon, Keys::kAudioRecord, onOff() },
        { C::kLcdBrightness, Kind::Slider, Keys::kTabCommon, Keys::kLcdBrightness, lowToHigh() },
        { C::kLcdOffTimer, Kind::RadioGroup, Keys::kTabCommon, Keys::kLcdOffTimer,
            keys({ Keys::kSeconds30, Keys::kMinutes10, Keys::kAlwaysOn }) },

        { C::kFrontResolution, Kind::RadioGroup, Keys::kTabContinuous, Keys::kFrontResolution,
            keys({ Keys::kResolutionHd, Keys::kResolutionFhd }) },
        { C::kRearResolution, Kind::RadioGroup, Keys::kTabContinuous, Keys::kRearResolution,
            keys({ Keys::kResolutionHd, Keys::kResolutionFhd }) },
        { C::kFrontFrameRate, Kind::RadioGroup, Keys::kTabContinuous, Keys::kFrontFrameRate,
            keys({ Keys::kFps30, Keys::kFps20, Keys::kFps15, Keys::kFps10 }) },
        { C::kFrontQuality, Kind::RadioGroup, Keys::kTabContinuous, Keys::kFrontQuality,
            lowToHigh() },
        { C::kShock, Kind::Slider, Keys::kTabContinuous, Keys::kImpactSensitivity, {} },
        { C::kDrivingGuide, Kind::RadioGroup, Keys::kTabContinuous, Keys::kDrivingGuide, onOff() },
        { C::kWdr, Kind::RadioGroup, Keys::kTabContinuous, Keys::kWdr, onOff() },
        { C::kVehicleType, Kind::RadioGroup, Keys::kTabContinuous, Keys::kVehicleType,
            keys({ Keys::kSedan, Keys::kSuv, Keys::kTruckBus }) },
        { C::kLdws, Kind::RadioGroup, Keys::kTabContinuous, Keys::kLaneDeparture, onOff() },
        { C::kLdwsLeft, Kind::Slider, Keys::kTabContinuous, Keys::kLeftLaneSensitivity,
            lowToHigh() },
        { C::kLdwsRight, Kind::Slider, Keys::kTabContinuous, Keys::kRightLaneSensitivity,
            lowToHigh() },
        { C::kLdwsSpeed, Kind::RadioGroup, Keys::kTabContinuous, Keys::kWarningSpeed, {} },
        { C::kFcws, Kind::RadioGroup, Keys::kTabContinuous, Keys::kForwardCollision, onOff() },
        { C::kFcwsSensitivity, Kind::Slider, Keys::kTabContinuous,
            Keys::kForwardCollisionSensitivity, lowToHigh() },
        { C::kFvdw, Kind::RadioGroup, Keys::kTabContinuous, Keys::kFrontVehicleDeparture, onOff() },

        { C::kParkingMode, Kind::RadioGroup, Keys::kTabParking, Keys::kTabParking, onOff() },
        { C::kNightVision, Kind::RadioGroup, Keys::kTabParking, Keys::kSuperNightVision, onOff() },
        { C::kParkingShock, Kind::Slider, Keys::kTabParking, Keys::kParkingImpactSensitivity, {} },
        { C::kParkingMotion, Kind::Slider, Keys::kTabParking, Keys::kMotionSensitivity, {} },
        { C::kTimeLimit, Kind::Slider, Keys::kTabParking, Keys::kParkingTimeLimit, {} },
        { C::kBattery12V, Kind::Slider, Keys::kTabParking, Keys::kLowVoltage12V, {} },
        { C::kBattery24V, Kind::Slider, Keys::kTabParking, Keys::kLowVoltage24V, {} },

        // Each box says what it does: the recordings of its kind are overwritten
        // when the card is full.
        { C::kOverwriteAlways, Kind::CheckBox, Keys::kTabExtras, Keys::kContinuousRecording,
            keys({ Keys::kOverwrite }) },
        { C::kOverwriteShock, Kind::CheckBox, Keys::kTabExtras, Keys::kDrivingImpact,
            keys({ Keys::kOverwrite }) },
        { C::kOverwriteMotion, Kind::CheckBox, Keys::kTabExtras, Keys::kParkingMotion,
            keys({ Keys::kOverwrite }) },
        { C::kOverwriteParkingShock, Kind::CheckBox, Keys::kTabExtras, Keys::kParkingImpact,
            keys({ Keys::kOverwrite }) },
        { C::kOverwriteManual, Kind::CheckBox, Keys::kTabExtras, Keys::kManualRecording,
            keys({ Keys::kOverwrite }) },
        { C::kSecurityLed, Kind::RadioGroup, Keys::kTabExtras, Keys::kSecurityLed,
            keys({ Keys::kAlwaysOn, Keys::kWhileDriving, Keys::kWhileParked, Keys::kOff }) },
        { C::kPartition, Kind::RadioGroup, Keys::kTabExtras, Keys::kMemoryPartition,
            keys({ Keys::kPartitionTypeA, Keys::kPartitionTypeB, Keys::kPartitionTypeC }) },
    };
}

} // namespace

NativeControlSet::NativeControlSet()
{
    for (const ControlEntry& entry : pageControls()) {
        SettingControl control;
        control.name = entry.name;
        control.kind = entry.kind;
        control.section = key(entry.tab);
        control.caption = key(entry.caption);
        control.titles = entry.titles;
        control.maximum = entry.kind == Kind::CheckBox ? 1 : qMax<int>(0, entry.titles.size() - 1);
        control.visible = false;
        m_index.insert(control.name, m_controls.size());
        m_controls.append(control);
    }
}

SettingControl* NativeControlSet::find(const QString& name)
{
    const auto it = m_index.constFind(name);
    return it == m_index.cend() ? nullptr : &m_controls[*it];
}

const SettingControl* NativeControlSet::find(const QString& name) const
{
    const auto it = m_index.constFind(name);
    return it == m_index.cend() ? nullptr : &m_controls[*it];
}

int NativeControlSet::value(const QString& name) const
{
    const SettingControl* control = find(name);
    return control ? control->value : 0;
}

void NativeControlSet::setValue(const QString& name, int value)
{
    if (SettingControl* control = find(name))
        control->value = value;
}

bool NativeControlSet::enabled(const QString& name) const
{
    const SettingControl* control = find(name);
    return control && control->enabled;
}

void NativeControlSet::setEnabled(const QString& name, bool enabled)
{
    if (SettingControl* control = find(name))
        control->enabled = enabled;
}

void NativeControlSet::setEnabled(const QStringList& names, bool enabled)
{
    for (const QString& name : names)
        setEnabled(name, enabled);
}

bool NativeControlSet::visible(const QString& name) const
{
    const SettingControl* control = find(name);
    return control && control->visible;
}

void NativeControlSet::show(
    const QString& name, int minimum, int maximum, const QStringList& titles)
{
    SettingControl* control = find(name);
    if (!control)
        return;
    control->visible = true;
    control->minimum = minimum;
    control->maximum = maximum;
    control->value = minimum;
    if (!titles.isEmpty())
        control->titles = titles;
}

void NativeControlSet::setTitles(const QString& name, const QStringList& titles)
{
    if (SettingControl* control = find(name))
        control->titles = titles;
}
