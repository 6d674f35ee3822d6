#include "settings/native/NativeFamily.h"

#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"
#include "i18n/LocalizationKeys.h"

namespace NativeRules {

namespace {
namespace Keys = LocalizationKeys;
namespace C = NativeControl;

QStringList keys(std::initializer_list<const char*> utf8)
{
    QStringList list;
    for (const char* k : utf8)
        list.append(QString::fromUtf8(k));
    return list;
}
} // namespace

QStringList laneSpeedTitles(bool milesPerHour)
{
    if (milesPerHour)
        return keys({ Keys::kSpeed30mph, Keys::kSpeed40mph, Keys::kSpeed50mph, Keys::kSpeed65mph });
    return keys({ Keys::kSpeed50km, Keys::kSpeed60km, Keys::kSpeed80km, Keys::kSpeed100km });
}

void retitleLaneSpeeds(NativeControlSet& controls)
{
    controls.setTitles(C::kLdwsSpeed, laneSpeedTitles(controls.value(C::kSpeedUnit) == 1));
}

QStringList parkingModeTitles(bool threeRows)
{
    if (threeRows)
        return keys({ Keys::kParkingMotion, Keys::kTimeLapse, Keys::kOff });
    return keys({ Keys::kOn, Keys::kOff });
}

QStringList timeLimitGuides(bool fourPositions)
{
    if (fourPositions)
        return keys({ Keys::kHours6, Keys::kHours12, Keys::kHours24, Keys::kHours48 });
    return keys({ Keys::kHours1, Keys::kHours2, Keys::kHours4, Keys::kHours6, Keys::kHours12,
        Keys::kHours24, Keys::kHours48 });
}

void applyVoice(NativeControlSet& controls, const TolmSettingManager& model)
{
    const qint32 volume = model.audio_ment_volume();
    if (volume >= 0 && volume <= 3)
        controls.setValue(C::kVoiceMent, volume);
    if (model.voice_ment() == 0)
        controls.setValue(C::kVoiceMent, 0);
}

void saveVoice(const NativeControlSet& controls, TolmSettingManager& model)
{
    const int position = controls.value(C::kVoiceMent);
    model.setAudio_ment_volume(position);
    model.setVoice_ment(position != 0 ? 1 : 0);
}

void lockRearResolution(NativeControlSet& controls)
{
    if (controls.value(C::kFrontResolution) == 0) {
        controls.setValue(C::kRearResolution, 0);
        controls.setEnabled(C::kRearResolution, false);
    } else {
        controls.setEnabled(C::kRearResolution, true);
    }
}

QList<PartitionBar> partitionBars(int column)
{
    // The partition types A, B and C are the camera maker's, the same three
    // splits the Kel-family camera uses; both cameras format the card into
    // continuous, event, parking and manual areas by these shares.
    const QList<QMap<QString, QString>>& ratios = KelSettingManager::memoryPartitionRatiosArray();
    if (column < 0 || column >= ratios.size())
        return {};
    struct Kind {
        const char* name;
        const char* caption;
    };
    constexpr Kind kKinds[] = {
        { "continuous", LocalizationKeys::kContinuousRecording },
        { "event", LocalizationKeys::kDrivingImpact },
        { "park", LocalizationKeys::kTabParking },
        { "manual", LocalizationKeys::kManualRecording },
    };
    QList<PartitionBar> bars;
    for (const Kind& kind : kKinds) {
        bool ok = false;
        const int percent = ratios.at(column).value(QString::fromLatin1(kind.name)).toInt(&ok);
        bars.append(
            { QString::fromLatin1(kind.name), ok ? percent : 0, QString::fromUtf8(kind.caption) });
    }
    return bars;
}

} // namespace NativeRules

const NativeFamily* nativeFamilyForModelType(qint64 modelType)
{
    switch (modelType) {
    case 0:
        return &kRuvaFamily;
    case 1:
        return &kTolmFamily;
    case 2:
        return &kPeskFamily;
    case 3:
    case 4:
    case 9:
        return &kDraviFamily;
    case 5:
    case 10:
    case 18:
        return &kOrloFamily;
    case 7:
    case 8:
    case 14:
        return &kKimboFamily;
    case 11:
    case 12:
    case 13:
    case 15:
    case 19:
        return &kYarroFamily;
    default:
        return nullptr;
    }
}
