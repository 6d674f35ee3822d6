#include "settings/native/NativeSettingsPage.h"

#include "config/AlertSink.h"
#include "config/TimeDatFile.h"
#include "config/TolmSettingManager.h"
#include "i18n/LocalizationKeys.h"

namespace {

namespace C = NativeControl;

TolmSettingManager& sharedModel()
{
    // The shared instance never changes; Reset replaces its contents.
    return *TolmSettingManager::SharedTolmSettingManager();
}

QString key(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

NativeSettingsPage::NativeSettingsPage(qint64 modelType, const NativeFamily* family)
    : m_family(family)
{
    m_page.modelType = modelType;
    m_page.threeRowParking = NativeRules::isThreeRowParkingModel(modelType);
    if (m_family) {
        m_family->applyModelFeatures(m_page);
        m_page.controls.show(C::kCameraLanguage, 0, -1);
    }
    m_clock.value = QDateTime::currentDateTime();
}

QString NativeSettingsPage::family() const
{
    return m_family ? QString::fromLatin1(m_family->name) : QString();
}

QList<SettingControl> NativeSettingsPage::controls() const
{
    QList<SettingControl> shown;
    for (const SettingControl& control : m_page.controls.all()) {
        if (control.visible)
            shown.append(control);
    }
    return shown;
}

void NativeSettingsPage::applySettingData()
{
    if (!m_family)
        return;
    m_family->apply(m_page, sharedModel());
    fillCameraLanguages();
    applySettingTime();
}

SettingsPageModel::Change NativeSettingsPage::validate(const QString& name, int value) const
{
    const SettingControl* control = m_page.controls.find(name);
    if (!control || !control->visible)
        return Change::UnknownControl;
    if (!control->enabled || value < control->minimum || value > control->maximum)
        return Change::OutOfRange;
    return Change::Applied;
}

SettingsPageModel::Change NativeSettingsPage::userChange(const QString& name, int value)
{
    const Change check = validate(name, value);
    if (check != Change::Applied)
        return check;
    if (m_page.controls.find(name)->kind == SettingControlKind::Slider) {
        sliderPressed(name);
        sliderMoved(name, value);
        sliderReleased(name);
        return Change::Applied;
    }
    setControl(name, value);
    return Change::Applied;
}

void NativeSettingsPage::setControl(const QString& name, int value)
{
    m_page.controls.setValue(name, value);
    if (name == C::kSpeedUnit)
        commonSpeedUnitRadioGroupTouched();
    else if (name == C::kParkingMode)
        useParkingModeChanged();
    else if (name == C::kCameraLanguage)
        m_page.userSelectedLanguage = m_languageNumbers.at(value);
}

void NativeSettingsPage::fillCameraLanguages()
{
    // The languages the camera announces on its card, by name; the box
    // selects the one the record holds, or nothing when the camera doesn't
    // offer it (the stored number is then kept).
    m_languageNumbers.clear();
    QStringList names;
    for (const CameraLanguage& language : sharedModel().languages()) {
        if (language.second.isEmpty())
            continue; // a blank in the announcement, not a language
        m_languageNumbers.append(language.first);
        names.append(languageTitleByExpandingCode(language.second));
    }
    SettingControl* box = m_page.controls.find(C::kCameraLanguage);
    box->titles = names;
    box->maximum = int(names.size()) - 1;
    box->value = int(m_languageNumbers.indexOf(m_page.userSelectedLanguage));
}

void NativeSettingsPage::sliderPressed(const QString& name)
{
    const SettingControl* control = m_page.controls.find(name);
    if (control && control->visible && control->kind == SettingControlKind::Slider)
        m_draggedSlider = name;
}

SettingsPageModel::Change NativeSettingsPage::sliderMoved(const QString& name, int value)
{
    const Change check = validate(name, value);
    if (check == Change::Applied)
        setControl(name, value);
    return check;
}

void NativeSettingsPage::sliderReleased(const QString&)
{
    // Releasing any slider forgets the dragged one, which hides every guide.
    m_draggedSlider.clear();
}

QString NativeSettingsPage::sliderGuide(const QString& name) const
{
    if (name.isEmpty() || name != m_draggedSlider)
        return {};
    const SettingControl* control = m_page.controls.find(name);
    // The label above the slider's current position. The time-limit slider's
    // labels start at position 1 (position 0 has none).
    const int first = name == C::kTimeLimit ? 1 : control->minimum;
    const int index = control->value - first;
    if (index >= 0 && index < control->titles.size())
        return control->titles.at(index);
    return control->titles.isEmpty() ? QString::number(control->value) : QString();
}

void NativeSettingsPage::commonSpeedUnitRadioGroupTouched()
{
    // Only the captions change: the selected warning-speed row stays.
    NativeRules::retitleLaneSpeeds(m_page.controls);
}

void NativeSettingsPage::useParkingModeChanged()
{
    NativeControlSet& c = m_page.controls;
    const int row = c.value(C::kParkingMode);
    const bool threeRows = m_page.threeRowParking;
    if (!threeRows && row == 0) {
        // Switching parking recording on needs no question; the field is
        // stored when the page is confirmed.
        c.setEnabled(NativeControl::parkingSliders(), true);
        return;
    }
    AlertRequest question;
    question.titleKey = key(LocalizationKeys::kTabParking);
    if (!threeRows || row == 2)
        question.messageKey = key(LocalizationKeys::kParkingOffQuestion);
    else if (row == 0)
        question.messageKey = key(LocalizationKeys::kParkingMotionQuestion);
    else
        question.messageKey = key(LocalizationKeys::kTimeLapseQuestion);
    question.buttonKeys = { key(LocalizationKeys::kNo), key(LocalizationKeys::kYes) };
    question.style = 0;
    if (AlertSink::shared().showAlert(question) == AlertSink::kSecondButtonReturn)
        confirmParkingMode(row);
    else
        revertParkingMode();
}

void NativeSettingsPage::revertParkingMode()
{
    // Back to what the model holds. A stored 0 selects "off" on the
    // three-row models but row 0 on the two-row ones: the camera's program
    // does exactly that, and cameras expect the page to behave alike.
    NativeControlSet& c = m_page.controls;
    switch (sharedModel().parking_mode_set()) {
    case 1:
        c.setValue(C::kParkingMode, 0);
        break;
    case 2:
        c.setValue(C::kParkingMode, 1);
        break;
    case 0:
        c.setValue(C::kParkingMode, m_page.threeRowParking ? 2 : 0);
        break;
    default:
        break;
    }
}

void NativeSettingsPage::confirmParkingMode(int row)
{
    // The answer takes effect on the model at once, before the page is
    // confirmed (Cancel leaves it there, in memory).
    NativeControlSet& c = m_page.controls;
    TolmSettingManager& model = sharedModel();
    const QStringList& sliders = NativeControl::parkingSliders();
    if (row == 0) {
        c.setEnabled(sliders, true);
        model.setParking_mode_set(1);
    } else if (row == 1 && m_page.threeRowParking) {
        c.setEnabled(sliders, true);
        c.setEnabled(C::kParkingMotion, false);
        model.setParking_mode_set(2);
    } else {
        c.setEnabled(sliders, false);
        model.setParking_mode_set(0);
    }
}

void NativeSettingsPage::pressReset()
{
    if (!m_family)
        return;
    // The card's default.cfg when it has one, otherwise the factory values
    // of the five oldest models; later models keep their values. Nothing is
    // written until the page is confirmed.
    TolmSettingManager::resetSharedToDefaults();
    m_family->apply(m_page, sharedModel());
    fillCameraLanguages();
}

bool NativeSettingsPage::pressOk()
{
    if (!m_family)
        return true;
    TolmSettingManager& model = sharedModel();
    m_family->save(m_page, model);
    const bool written = model.saveData();
    saveSettingTime();
    return written;
}

void NativeSettingsPage::setClock(const SettingClock& clock)
{
    if (!m_family)
        return;
    m_clock = clock;
}

void NativeSettingsPage::applySettingTime()
{
    if (!m_family)
        return;
    m_clock.checked = false;
    m_clock.value = QDateTime::currentDateTime();
    // A clock request still waiting on the card is shown as checked, at the
    // instant it names read on this computer's clock: "14:05:09,+0000" shows
    // as 23:05:09 in Tokyo.
    if (const std::optional<QDateTime> pending
        = TimeDatFile::read(sharedModel().settingDirPath())) {
        m_clock.checked = true;
        m_clock.value = pending->toLocalTime();
    }
}

void NativeSettingsPage::saveSettingTime()
{
    if (!m_family)
        return;
    const QString card = sharedModel().settingDirPath();
    if (card.isEmpty())
        return;
    // The camera reads the request at its next start; failures are ignored
    // as the camera's own program does (the record's write reports the card).
    // The request names its zone: this computer's, for the instant chosen.
    if (m_clock.checked)
        TimeDatFile::write(card, m_clock.value.toLocalTime());
    else
        TimeDatFile::remove(card);
}

QList<PartitionBar> NativeSettingsPage::partitionGraph() const
{
    if (!m_page.controls.visible(C::kPartition))
        return {};
    return NativeRules::partitionBars(m_page.controls.value(C::kPartition));
}

std::optional<int> NativeSettingsPage::userSelectedLanguage() const
{
    if (!m_family)
        return std::nullopt;
    return m_page.userSelectedLanguage;
}
