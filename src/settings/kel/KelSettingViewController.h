#pragma once

#include "settings/SettingsPageModel.h"

#include <QDateTime>
#include <QMap>

#include <functional>

class KelSettingManager;

// The settings page of the Kel-family camera (model Wenna), without widgets.
//
// The camera's SETTING/blackbox.cfg is the line list of KelSettingManager;
// the page has no typed model of it. Every control writes its line the moment
// the user sets it (the first line beginning with the control's key is
// replaced by key + value; a missing key writes nothing), and OK writes the
// whole list to the card. Cancel writes nothing (the edited lines stay in
// memory until the next loadData).
//
// Values no position stands for (power_off_vlt=13000, a local_time= offset
// not in the zone list, [capacity] values of no partition type, a key missing
// from the file): a radio group or the time-zone box shows no selection (-1),
// a slider the nearest end of its range. Showing never writes: the file's
// line stays as it is until the user touches that control. The memory-partition
// graph then shows the file's own percentages.
//
// The date-time check box starts cleared on every opening, whatever "set="
// holds: it asks for the camera's clock to be set on this OK.
class KelSettingViewController final : public SettingsPageModel {
public:
    // Works on `manager` (the shared KelSettingManager when null), which must
    // outlive the page: load it before building the page, never replace it. `now`
    // gives the time the date picker starts at and the current-time button
    // takes (the computer's clock when empty).
    explicit KelSettingViewController(qint64 modelType = 6, KelSettingManager* manager = nullptr,
        std::function<QDateTime()> now = {});

    QString family() const override { return QStringLiteral("Kel"); }
    qint64 modelType() const override { return m_modelType; }
    QList<SettingControl> controls() const override { return m_controls; }

    void applySettingData() override;
    Change userChange(const QString& name, int value) override;
    void sliderPressed(const QString& name) override;
    Change sliderMoved(const QString& name, int value) override;
    void sliderReleased(const QString& name) override;
    QString sliderGuide(const QString& name) const override;
    void pressReset() override;
    bool pressOk() override;

    bool hasClock() const override { return true; }
    SettingClock clock() const override { return m_clock; }
    // Ticking or clearing the box runs the check box's own handler (its
    // "set=" line); the time is the date picker's.
    void setClock(const SettingClock& clock) override;
    QList<PartitionBar> partitionGraph() const override;

    // The current-time button: the date picker shows now.
    void dateTimeCurrentTimeButtonTouched();

    // The twelve time zones of the box: label and UTC offset in hours.
    struct TimeZone {
        const char* label;
        float offset;
    };
    static const QList<TimeZone>& timeZones();

    // Control names, as `tavro settings` and the page know them.
    static inline const QString kMemoryPartition = QStringLiteral("memoryPartitionRadioGroup");
    static inline const QString kVoiceGuidance = QStringLiteral("voiceGuidanceRadioGroup");
    static inline const QString kParkingMode = QStringLiteral("parkingModeRadioGroup");
    static inline const QString kParkingVoltage = QStringLiteral("parkingModeVoltageRadioGroup");
    static inline const QString kDst = QStringLiteral("dstRadioGroup");
    static inline const QString kVoiceRecord = QStringLiteral("voiceRecordRadioGroup");
    static inline const QString kLanguage = QStringLiteral("languageRadioGroup");
    static inline const QString kSpeedUnit = QStringLiteral("speedUnitRadioGroup");
    static inline const QString kSecurityLed = QStringLiteral("securityLEDRadioGroup");
    static inline const QString kVoiceVolume = QStringLiteral("voiceGuidanceSlider");
    static inline const QString kImpact = QStringLiteral("impactSensitivitySlider");
    static inline const QString kMotion = QStringLiteral("motionSensitivitySlider");
    static inline const QString kTimeZone = QStringLiteral("timeZoneComboBox");
    static inline const QString kDateTime = QStringLiteral("dateTimeCheckBox");

private:
    void buildControls();
    void applyModelFeatures();
    SettingControl* find(const QString& name);
    const SettingControl* find(const QString& name) const;
    void setValue(const QString& name, int value);
    void setEnabled(const QString& name, bool enabled);
    void runHandler(const QString& name);

    // The handlers of the page's controls.
    void memoryPartitionRadioGroupTouched();
    void voiceGuidanceRadioGroupTouched();
    void parkingModeRadioGroupTouched();
    void parkingModeVoltageRadioGroupTouched();
    void dstRadioGroupTouched();
    void voiceRecordRadioGroupTouched();
    void languageRadioGroupTouched();
    void speedUnitRadioGroupTouched();
    void securityLEDRadioGroupTouched();
    void timeZoneComboBoxChanged();
    void dateTimeCheckBoxTouched();
    // A slider's handler; `sender` is the slider that called it, "" for a
    // call from the page itself (which writes nothing).
    void sliderChanged(const QString& name, const QString& sender);
    void hideSlidersGuide();

    QString applySettingData_MemoryPartition(const QString& key) const;
    void memoryPartitionSetValue(const QString& key, const QString& value);
    bool write(const QString& key, const QString& value);

    qint64 m_modelType;
    KelSettingManager& m_kel;
    std::function<QDateTime()> m_now;
    QList<SettingControl> m_controls;
    SettingClock m_clock;
    QString m_currentMouseDownSlider;
    QString m_sliderGuide;
};
