#pragma once

#include "settings/SettingsPageModel.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// The controls of the native settings page under the names of the editor's
// design. The tab of a control is its name prefix: common… (공통),
// always… (상시모드), parking… (주차모드), etc… (부가기능).
namespace NativeControl {

// 공통
inline const QString kFrontBrightness = QStringLiteral("commonFrontBrightnessSlider");
inline const QString kRearBrightness = QStringLiteral("commonRearBrightnessSlider");
inline const QString kVoiceMent = QStringLiteral("commonVoiceMentSlider");
inline const QString kCameraLanguage = QStringLiteral("commonLanguageComboBox");
inline const QString kGmt = QStringLiteral("commonGMTComboBox");
inline const QString kDst = QStringLiteral("commonDSTRadioGroup");
inline const QString kDateFormat = QStringLiteral("commonDateFormatRadioGroup");
inline const QString kSpeedUnit = QStringLiteral("commonSpeedUnitRadioGroup");
inline const QString kSpeedStamp = QStringLiteral("commonSpeedStampRadioGroup");
inline const QString kAudioRecord = QStringLiteral("commonAudioRecordRadioGroup");
// The camera's control is spelt so.
inline const QString kLcdBrightness = QStringLiteral("commonLCDBrighnessSlider");
inline const QString kLcdOffTimer = QStringLiteral("commonLCDOffTimerRadioGroup");

// 상시모드
inline const QString kFrontResolution = QStringLiteral("alwaysRadioGroupFrontResolution");
inline const QString kRearResolution = QStringLiteral("alwaysRadioGroupRearResolution");
inline const QString kFrontFrameRate = QStringLiteral("alwaysRadioGroupFrontFrameRate");
inline const QString kFrontQuality = QStringLiteral("alwaysRadioGroupFrontQuality");
inline const QString kShock = QStringLiteral("alwaysShockSensitivitySlider");
inline const QString kDrivingGuide = QStringLiteral("alwaysDrivingGuideRadioGroup");
inline const QString kWdr = QStringLiteral("alwaysWDRRadioGroup");
inline const QString kVehicleType = QStringLiteral("alwaysVehicleTypeRadioGroup");
inline const QString kLdws = QStringLiteral("alwaysLDWSRadioGroup");
inline const QString kLdwsLeft = QStringLiteral("alwaysLDWSSensitivitySlider");
inline const QString kLdwsRight = QStringLiteral("alwaysLDWSRightSensitivitySlider");
inline const QString kLdwsSpeed = QStringLiteral("alwaysLDWSSpeedRadioGroup");
inline const QString kFcws = QStringLiteral("alwaysFCWSRadioGroup");
inline const QString kFcwsSensitivity = QStringLiteral("alwaysFCWSSensitivitySlider");
inline const QString kFvdw = QStringLiteral("alwaysFVDWRadioGroup");

// 주차모드
inline const QString kParkingMode = QStringLiteral("parkingModeRadioGroup");
inline const QString kNightVision = QStringLiteral("parkingSuperNightVisionRadioGroup");
inline const QString kParkingShock = QStringLiteral("parkingShockSensitivitySlider");
inline const QString kParkingMotion = QStringLiteral("parkingMotionSlider");
inline const QString kTimeLimit = QStringLiteral("parkingTimeLimitSlider_36x");
inline const QString kBattery12V = QStringLiteral("parkingBatteryOff12VSlider");
inline const QString kBattery24V = QStringLiteral("parkingBatteryOff24VSlider");

// 부가기능
inline const QString kOverwriteAlways = QStringLiteral("etcOverwriteAlwaysCheckBox");
inline const QString kOverwriteShock = QStringLiteral("etcOverwriteAlwaysShockCheckBox");
inline const QString kOverwriteMotion = QStringLiteral("etcOverwriteParkingMotionCheckBox");
inline const QString kOverwriteParkingShock = QStringLiteral("etcOverwriteParkingShockCheckBox");
inline const QString kOverwriteManual = QStringLiteral("etcOverwriteManualCheckBox");
inline const QString kSecurityLed = QStringLiteral("etcSecurityLEDRadioGroup");
inline const QString kPartition = QStringLiteral("etcMemoryPartitionRadioGroup");

// The five sliders the parking mode switches on and off.
const QStringList& parkingSliders();
// The lane controls that follow the lane-departure switch.
const QStringList& laneControls();

} // namespace NativeControl

// Every control the native page can show, in page order, with its lookup by
// name. A fresh set has every control at its lowest position, unchecked,
// enabled and hidden; the model's page features then show the ones it has.
class NativeControlSet {
public:
    NativeControlSet();

    const QList<SettingControl>& all() const { return m_controls; }
    bool has(const QString& name) const { return m_index.contains(name); }
    SettingControl* find(const QString& name);
    const SettingControl* find(const QString& name) const;

    int value(const QString& name) const;
    void setValue(const QString& name, int value);
    bool enabled(const QString& name) const;
    void setEnabled(const QString& name, bool enabled);
    void setEnabled(const QStringList& names, bool enabled);
    bool visible(const QString& name) const;
    void show(const QString& name, int minimum, int maximum, const QStringList& titles = {});
    void setTitles(const QString& name, const QStringList& titles);

private:
    QList<SettingControl> m_controls;
    QHash<QString, qsizetype> m_index;
};
