#pragma once

#include "settings/SettingsPageModel.h"
#include "settings/native/NativeFamily.h"

// The native settings page (TolmSettingViewController) as a model: the page
// of every camera whose settings are the binary record SETTING/setup.cfg and
// that carries no settings page of its own. It reads and writes the shared
// configuration model (TolmSettingManager::SharedTolmSettingManager), which
// writes the record; the page itself only writes the clock request
// SETTING/time.dat.
class NativeSettingsPage final : public SettingsPageModel {
public:
    // `family` may be null: the page then shows nothing and saves nothing.
    NativeSettingsPage(qint64 modelType, const NativeFamily* family);

    QString family() const override;
    qint64 modelType() const override { return m_page.modelType; }
    QList<SettingControl> controls() const override;

    void applySettingData() override;
    Change userChange(const QString& name, int value) override;

    void sliderPressed(const QString& name) override;
    Change sliderMoved(const QString& name, int value) override;
    void sliderReleased(const QString& name) override;
    QString sliderGuide(const QString& name) const override;

    void pressReset() override;
    bool pressOk() override;

    SettingClock clock() const override { return m_clock; }
    void setClock(const SettingClock& clock) override;
    bool hasClock() const override { return m_family != nullptr; }

    QList<PartitionBar> partitionGraph() const override;
    std::optional<int> userSelectedLanguage() const override;

    // The clock group: filled from a pending SETTING/time.dat, and written
    // back (checked) or withdrawn (unchecked) on OK.
    void applySettingTime();
    void saveSettingTime();

private:
    Change validate(const QString& name, int value) const;
    void setControl(const QString& name, int value);
    void commonSpeedUnitRadioGroupTouched();
    void useParkingModeChanged();
    void revertParkingMode();
    void confirmParkingMode(int row);
    void fillCameraLanguages();

    NativePageState m_page;
    const NativeFamily* m_family = nullptr;
    SettingClock m_clock;
    QString m_draggedSlider;
    // The cur_language number of each item of the camera-language box.
    QList<qint32> m_languageNumbers;
};
