#include "settings/kel/KelSettingViewController.h"

#include "config/KelSettingManager.h"
#include "i18n/LocalizationKeys.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

namespace {

using Self = KelSettingViewController;
namespace Keys = LocalizationKeys;

// A radio group writes one of its values into one line; the position of the
// file's value is the selected row or column.
struct RadioLine {
    const QString& name;
    const char* key;
    QStringList values; // by position
};

const QList<RadioLine>& radioLines()
{
    static const QList<RadioLine> kLines {
        { Self::kVoiceGuidance, "voice_out=", { QStringLiteral("1"), QStringLiteral("0") } },
        { Self::kParkingMode, "park_mode=", { QStringLiteral("1"), QStringLiteral("0") } },
        // The camera cuts its power at 11.8, 12.0 or 12.2 V; "0" never.
        { Self::kParkingVoltage, "power_off_vlt=",
            { QStringLiteral("0"), QStringLiteral("11800"), QStringLiteral("12000"),
                QStringLiteral("12200") } },
        { Self::kDst, "summer_time=", { QStringLiteral("1"), QStringLiteral("0") } },
        { Self::kVoiceRecord, "mic_in=", { QStringLiteral("1"), QStringLiteral("0") } },
        { Self::kLanguage, "language=", { QStringLiteral("us"), QStringLiteral("fr") } },
        { Self::kSpeedUnit, "osd_speed=", { QStringLiteral("1"), QStringLiteral("2") } },
        { Self::kSecurityLed, "front_led=", { QStringLiteral("1"), QStringLiteral("0") } },
    };
    return kLines;
}

const RadioLine* radioLine(const QString& name)
{
    for (const RadioLine& line : radioLines()) {
        if (line.name == name)
            return &line;
    }
    return nullptr;
}

struct SliderLine {
    const QString& name;
    const char* key;
    // The guide label of a value: 0, 1 or 2 (low, medium, high).
    int (*guide)(int value);
};

int halfStepGuide(int value)
{
    return (value - 1) / 2;
}

int offsetGuide(int value)
{
    return value - 2;
}

const QList<SliderLine>& sliderLines()
{
    static const QList<SliderLine> kLines {
        { Self::kVoiceVolume, "voice_volume=", halfStepGuide },
        { Self::kImpact, "acc_level=", offsetGuide },
        { Self::kMotion, "motion_level=", halfStepGuide },
    };
    return kLines;
}

const SliderLine* sliderLine(const QString& name)
{
    for (const SliderLine& line : sliderLines()) {
        if (line.name == name)
            return &line;
    }
    return nullptr;
}

// The [capacity] lines and the ratio names they take their percentages from,
// in writing order.
struct CapacityLine {
    const char* key;
    const char* ratio;
    const char* caption;
};

constexpr CapacityLine kCapacityLines[] = {
    { "const=", "continuous", Keys::kWennaContinuous },
    { "event=", "event", Keys::kWennaEvent },
    { "park=", "park", Keys::kWennaParking },
    { "manual=", "manual", Keys::kWennaManual },
};

constexpr float kPacificOffset = -8.0f;

bool sameValue(const QString& fileValue, const QString& value)
{
    const QString trimmed = fileValue.trimmed();
    bool fileNumber = false;
    bool number = false;
    const qlonglong a = trimmed.toLongLong(&fileNumber);
    const qlonglong b = value.toLongLong(&number);
    if (fileNumber && number)
        return a == b;
    return trimmed == value;
}

SettingControl radioGroup(
    const QString& name, const char* section, const char* caption, const QStringList& titles)
{
    SettingControl c;
    c.name = name;
    c.kind = SettingControlKind::RadioGroup;
    c.section = QString::fromUtf8(section);
    c.caption = QString::fromUtf8(caption);
    c.titles = titles;
    c.maximum = int(titles.size()) - 1;
    return c;
}

SettingControl slider(
    const QString& name, const char* section, const char* caption, int minimum, int maximum)
{
    SettingControl c;
    c.name = name;
    c.kind = SettingControlKind::Slider;
    c.section = QString::fromUtf8(section);
    c.caption = QString::fromUtf8(caption);
    c.minimum = minimum;
    c.maximum = maximum;
    c.value = minimum;
    return c;
}

QStringList keys(std::initializer_list<const char*> list)
{
    QStringList out;
    for (const char* key : list)
        out << QString::fromUtf8(key);
    return out;
}

} // namespace

const QList<KelSettingViewController::TimeZone>& KelSettingViewController::timeZones()
{
    // Shown as they stand, spacing and spelling included.
    static const QList<TimeZone> kZones {
        { "(UTC-10:00) Hawaii", -10.0f },
        { "(UTC-09:00) Alaska", -9.0f },
        { "(UTC-08:00) Pacific Standard Time (U.S.A and Canada)", -8.0f },
        { "(UTC-07:00) Mountain Standard Time (U.S.A and Canada)", -7.0f },
        { "(UTC-06:00) Central Standard Time (U.S.A and Canada)", -6.0f },
        { "(UTC-05:00) Eastern Standard Time (U.S.A and Canada)", -5.0f },
        { "(UTC-04:00) Atlantic  Standard Time (Canada)", -4.0f },
        { "(UTC) Greenwich", 0.0f },
        { "(UTC+01:00) Brussels, Copenhagen, Madrid, Paris", 1.0f },
        { "(UTC+08:00) Kuala Lumpur, Singapore", 8.0f },
        { "(UTC+09:30) Adelaide", 9.5f },
        { "(UTC+10:00) Canberra, Melbourne, Sidney", 10.0f },
    };
    return kZones;
}

KelSettingViewController::KelSettingViewController(
    qint64 modelType, KelSettingManager* manager, std::function<QDateTime()> now)
    : m_modelType(modelType)
    , m_kel(manager ? *manager : *KelSettingManager::SharedKelSettingManager())
    , m_now(now ? std::move(now) : [] { return QDateTime::currentDateTime(); })
{
    buildControls();
    applyModelFeatures();
}

void KelSettingViewController::buildControls()
{
    const QStringList onOff = keys({ Keys::kWennaOn, Keys::kWennaOff });
    // Unit texts are the same in every language.
    const QStringList voltages { QString::fromUtf8(Keys::kWennaOff), QStringLiteral("11.8V"),
        QStringLiteral("12.0V"), QStringLiteral("12.2V") };
    QStringList zones;
    for (const TimeZone& zone : timeZones())
        zones << QString::fromUtf8(zone.label);

    SettingControl timeZone;
    timeZone.name = kTimeZone;
    timeZone.kind = SettingControlKind::ComboBox;
    timeZone.section = QString::fromUtf8(Keys::kTabCommon);
    timeZone.caption = QString::fromUtf8(Keys::kWennaTimeZone);
    timeZone.titles = zones;
    timeZone.maximum = int(zones.size()) - 1;

    // The clock group: the check box, the date picker and the current-time
    // button (its caption is the first title).
    SettingControl dateTime;
    dateTime.name = kDateTime;
    dateTime.kind = SettingControlKind::CheckBox;
    dateTime.section = QString::fromUtf8(Keys::kTabCommon);
    dateTime.caption = QString::fromUtf8(Keys::kWennaSetDateTime);
    dateTime.titles = keys({ Keys::kWennaCurrentTime });
    dateTime.maximum = 1;

    m_controls = {
        radioGroup(kLanguage, Keys::kTabCommon, Keys::kWennaLanguage,
            keys({ Keys::kWennaEnglish, Keys::kWennaFrench })),
        radioGroup(kSpeedUnit, Keys::kTabCommon, Keys::kWennaSpeedUnit,
            { QStringLiteral("KM/H"), QStringLiteral("MPH") }),
        timeZone,
        radioGroup(kDst, Keys::kTabCommon, Keys::kWennaDaylightSaving, onOff),
        dateTime,
        radioGroup(kVoiceGuidance, Keys::kTabContinuous, Keys::kWennaVoiceGuidance, onOff),
        slider(kVoiceVolume, Keys::kTabContinuous, Keys::kWennaVoiceVolume, 1, 6),
        radioGroup(kVoiceRecord, Keys::kTabContinuous, Keys::kWennaVoiceRecord, onOff),
        slider(kImpact, Keys::kTabContinuous, Keys::kWennaImpactSensitivity, 2, 4),
        radioGroup(kSecurityLed, Keys::kTabContinuous, Keys::kWennaSecurityLed, onOff),
        radioGroup(kParkingMode, Keys::kTabParking, Keys::kWennaParkingMode, onOff),
        radioGroup(kParkingVoltage, Keys::kTabParking, Keys::kWennaCutOffVoltage, voltages),
        slider(kMotion, Keys::kTabParking, Keys::kWennaMotionSensitivity, 1, 6),
        radioGroup(kMemoryPartition, Keys::kWennaMemoryPartition, "",
            keys({ Keys::kPartitionTypeA, Keys::kPartitionTypeB, Keys::kPartitionTypeC })),
    };
}

void KelSettingViewController::applyModelFeatures()
{
    // The picker shows now, greyed out, until the box is ticked.
    m_clock = { false, m_now() };
    setValue(kDateTime, 0);
    // applyModelFeatures_Wenna: nothing beyond the family's features.
}

SettingControl* KelSettingViewController::find(const QString& name)
{
    for (SettingControl& c : m_controls) {
        if (c.name == name)
            return &c;
    }
    return nullptr;
}

const SettingControl* KelSettingViewController::find(const QString& name) const
{
    return const_cast<KelSettingViewController*>(this)->find(name);
}

void KelSettingViewController::setValue(const QString& name, int value)
{
    if (SettingControl* c = find(name))
        c->value = value;
}

void KelSettingViewController::setEnabled(const QString& name, bool enabled)
{
    if (SettingControl* c = find(name))
        c->enabled = enabled;
}

// --- filling the page

QString KelSettingViewController::applySettingData_MemoryPartition(const QString& key) const
{
    return m_kel.valueForKey(key);
}

void KelSettingViewController::applySettingData()
{
    for (const RadioLine& line : radioLines()) {
        const QString value = m_kel.valueForKey(QString::fromUtf8(line.key));
        int position = -1;
        for (qsizetype i = 0; !value.isNull() && i < line.values.size() && position < 0; ++i) {
            if (sameValue(value, line.values[i]))
                position = int(i);
        }
        setValue(line.name, position);
    }
    setEnabled(kVoiceVolume, find(kVoiceGuidance)->value == 0);
    setEnabled(kParkingVoltage, find(kParkingMode)->value == 0);

    for (const SliderLine& line : sliderLines()) {
        SettingControl* c = find(line.name);
        bool ok = false;
        const int value = m_kel.valueForKey(QString::fromUtf8(line.key)).trimmed().toInt(&ok);
        c->value = ok ? std::clamp(value, c->minimum, c->maximum) : c->minimum;
    }

    int zoneIndex = -1;
    bool ok = false;
    const float offset = m_kel.valueForKey(QStringLiteral("local_time=")).trimmed().toFloat(&ok);
    for (qsizetype i = 0; ok && i < timeZones().size() && zoneIndex < 0; ++i) {
        if (std::fabs(timeZones()[i].offset - offset) < 1e-4f)
            zoneIndex = int(i);
    }
    setValue(kTimeZone, zoneIndex);

    int partition = -1;
    const auto& ratios = KelSettingManager::memoryPartitionRatiosArray();
    for (qsizetype entry = 0; entry < ratios.size() && partition < 0; ++entry) {
        bool all = true;
        for (const CapacityLine& line : kCapacityLines) {
            const QString value = applySettingData_MemoryPartition(QString::fromUtf8(line.key));
            all = all && !value.isNull()
                && sameValue(value, ratios[entry].value(QString::fromUtf8(line.ratio)));
        }
        if (all)
            partition = int(entry);
    }
    setValue(kMemoryPartition, partition);
}

QList<PartitionBar> KelSettingViewController::partitionGraph() const
{
    const int type = find(kMemoryPartition)->value;
    const auto& ratios = KelSettingManager::memoryPartitionRatiosArray();
    QList<PartitionBar> bars;
    for (const CapacityLine& line : kCapacityLines) {
        // A file of no known type shows what it holds.
        const QString text = type >= 0 && type < ratios.size()
            ? ratios[type].value(QString::fromUtf8(line.ratio))
            : applySettingData_MemoryPartition(QString::fromUtf8(line.key)).trimmed();
        const int percent = std::clamp(text.toInt(), 0, 100);
        bars.append({ QString::fromUtf8(line.ratio), percent, QString::fromUtf8(line.caption) });
    }
    return bars;
}

// --- the user's changes

SettingsPageModel::Change KelSettingViewController::userChange(const QString& name, int value)
{
    SettingControl* c = find(name);
    if (!c)
        return Change::UnknownControl;
    if (!c->visible || !c->enabled || value < c->minimum || value > c->maximum)
        return Change::OutOfRange;
    if (c->kind == SettingControlKind::Slider) {
        sliderPressed(name);
        sliderMoved(name, value);
        sliderReleased(name);
        return Change::Applied;
    }
    c->value = value;
    runHandler(name);
    return Change::Applied;
}

void KelSettingViewController::runHandler(const QString& name)
{
    if (name == kMemoryPartition)
        memoryPartitionRadioGroupTouched();
    else if (name == kVoiceGuidance)
        voiceGuidanceRadioGroupTouched();
    else if (name == kParkingMode)
        parkingModeRadioGroupTouched();
    else if (name == kParkingVoltage)
        parkingModeVoltageRadioGroupTouched();
    else if (name == kDst)
        dstRadioGroupTouched();
    else if (name == kVoiceRecord)
        voiceRecordRadioGroupTouched();
    else if (name == kLanguage)
        languageRadioGroupTouched();
    else if (name == kSpeedUnit)
        speedUnitRadioGroupTouched();
    else if (name == kSecurityLed)
        securityLEDRadioGroupTouched();
    else if (name == kTimeZone)
        timeZoneComboBoxChanged();
    else if (name == kDateTime)
        dateTimeCheckBoxTouched();
}

bool KelSettingViewController::write(const QString& key, const QString& value)
{
    return m_kel.setValueForKey(key, value);
}

void KelSettingViewController::memoryPartitionSetValue(const QString& key, const QString& value)
{
    write(key, value);
}

void KelSettingViewController::memoryPartitionRadioGroupTouched()
{
    const int type = find(kMemoryPartition)->value;
    const auto& ratios = KelSettingManager::memoryPartitionRatiosArray();
    if (type < 0 || type >= ratios.size())
        return;
    for (const CapacityLine& line : kCapacityLines)
        memoryPartitionSetValue(
            QString::fromUtf8(line.key), ratios[type].value(QString::fromUtf8(line.ratio)));
    // The graph follows the selected type (partitionGraph()).
}

namespace {

void writeRadio(KelSettingManager& kel, const QString& name, int position)
{
    const RadioLine* line = radioLine(name);
    if (line && position >= 0 && position < line->values.size())
        kel.setValueForKey(QString::fromUtf8(line->key), line->values[position]);
}

} // namespace

void KelSettingViewController::voiceGuidanceRadioGroupTouched()
{
    const int row = find(kVoiceGuidance)->value;
    writeRadio(m_kel, kVoiceGuidance, row);
    setEnabled(kVoiceVolume, row == 0);
}

void KelSettingViewController::parkingModeRadioGroupTouched()
{
    const int row = find(kParkingMode)->value;
    writeRadio(m_kel, kParkingMode, row);
    setEnabled(kParkingVoltage, row == 0);
}

void KelSettingViewController::parkingModeVoltageRadioGroupTouched()
{
    writeRadio(m_kel, kParkingVoltage, find(kParkingVoltage)->value);
}

void KelSettingViewController::dstRadioGroupTouched()
{
    writeRadio(m_kel, kDst, find(kDst)->value);
}

void KelSettingViewController::voiceRecordRadioGroupTouched()
{
    writeRadio(m_kel, kVoiceRecord, find(kVoiceRecord)->value);
}

void KelSettingViewController::languageRadioGroupTouched()
{
    writeRadio(m_kel, kLanguage, find(kLanguage)->value);
}

void KelSettingViewController::speedUnitRadioGroupTouched()
{
    writeRadio(m_kel, kSpeedUnit, find(kSpeedUnit)->value);
}

void KelSettingViewController::securityLEDRadioGroupTouched()
{
    writeRadio(m_kel, kSecurityLed, find(kSecurityLed)->value);
}

void KelSettingViewController::timeZoneComboBoxChanged()
{
    const int index = find(kTimeZone)->value;
    const float offset
        = index >= 0 && index < timeZones().size() ? timeZones()[index].offset : kPacificOffset;
    write(QStringLiteral("local_time="), QString::asprintf("%f", double(offset)));
}

void KelSettingViewController::dateTimeCheckBoxTouched()
{
    const bool checked = find(kDateTime)->value != 0;
    m_clock.checked = checked;
    const QString key = QStringLiteral("set=");
    const QString line = key + (checked ? QStringLiteral("1") : QStringLiteral("0"));
    QStringList lines = m_kel.linedSettings();
    if (lines.isEmpty())
        return;
    // Without a "set=" line the file's first line takes it: the camera reads
    // its clock request from there.
    qsizetype index = 0;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].startsWith(key)) {
            index = i;
            break;
        }
    }
    lines[index] = line;
    m_kel.setLinedSettings(lines);
}

void KelSettingViewController::setClock(const SettingClock& clock)
{
    m_clock.value = clock.value;
    if (clock.checked != m_clock.checked) {
        setValue(kDateTime, clock.checked ? 1 : 0);
        dateTimeCheckBoxTouched();
    }
}

void KelSettingViewController::dateTimeCurrentTimeButtonTouched()
{
    m_clock.value = m_now();
}

// --- sliders

void KelSettingViewController::sliderPressed(const QString& name)
{
    if (sliderLine(name))
        m_currentMouseDownSlider = name;
}

SettingsPageModel::Change KelSettingViewController::sliderMoved(const QString& name, int value)
{
    SettingControl* c = find(name);
    if (!c || c->kind != SettingControlKind::Slider)
        return Change::UnknownControl;
    if (value < c->minimum || value > c->maximum)
        return Change::OutOfRange;
    c->value = value;
    sliderChanged(name, name);
    return Change::Applied;
}

void KelSettingViewController::sliderReleased(const QString& name)
{
    if (name != m_currentMouseDownSlider)
        return;
    m_currentMouseDownSlider.clear();
    hideSlidersGuide();
}

QString KelSettingViewController::sliderGuide(const QString& name) const
{
    return !name.isEmpty() && name == m_currentMouseDownSlider ? m_sliderGuide : QString();
}

void KelSettingViewController::sliderChanged(const QString& name, const QString& sender)
{
    const SliderLine* line = sliderLine(name);
    const SettingControl* c = find(name);
    if (!line || !c)
        return;
    static const char* const kGuides[] = { Keys::kLow, Keys::kMedium, Keys::kHigh };
    const int guide = std::clamp(line->guide(c->value), 0, 2);
    // Only the slider under the mouse writes: the page's own calls don't.
    if (sender.isEmpty() || sender != m_currentMouseDownSlider)
        return;
    m_sliderGuide = QString::fromUtf8(kGuides[guide]);
    write(QString::fromUtf8(line->key), QString::number(c->value));
}

void KelSettingViewController::hideSlidersGuide()
{
    for (const SliderLine& line : sliderLines())
        sliderChanged(line.name, QString());
    m_sliderGuide.clear();
}

// --- buttons

void KelSettingViewController::pressReset()
{
    // Only the Wenna has built-in defaults; nothing is written until OK.
    m_kel.loadDefaultValue();
    applySettingData();
}

bool KelSettingViewController::pressOk()
{
    if (m_clock.checked) {
        m_kel.removeTimeDateDelimiters();
        m_kel.addTimeDateDelimiters(KelSettingManager::clockLines(m_clock.value));
    }
    // saveData_Wenna: nothing beyond the family's save.
    return m_kel.saveData();
}
