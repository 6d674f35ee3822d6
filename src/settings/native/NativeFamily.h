#pragma once

#include "settings/native/NativeControls.h"

#include <QString>

class TolmSettingManager;

// What one family's apply and save operations work on: the page's controls,
// the camera language the user chose, and which model the page was built for.
struct NativePageState {
    qint64 modelType = -1;
    NativeControlSet controls;
    int userSelectedLanguage = 0;
    // The parking group has three rows (parking motion, time-lapse, off) on
    // these models and two (on, off) on every other.
    bool threeRowParking = false;
};

// One family of the native page: which controls its models show
// (applyModelFeatures), fields to controls (apply<Family>SettingData) and
// controls to fields (save<Family>SettingData, without the final write of the
// record, which the page does).
struct NativeFamily {
    const char* name;
    void (*applyModelFeatures)(NativePageState& page);
    void (*apply)(NativePageState& page, const TolmSettingManager& model);
    void (*save)(const NativePageState& page, TolmSettingManager& model);
};

// The family of a model type, or null for the types the page has no family
// for (Wenna, the web-configured models, the hand-picked DVR models, unknown).
const NativeFamily* nativeFamilyForModelType(qint64 modelType);

// The families, each in its own file.
extern const NativeFamily kOrloFamily;
extern const NativeFamily kDraviFamily;
extern const NativeFamily kRuvaFamily;
extern const NativeFamily kTolmFamily;
extern const NativeFamily kPeskFamily;
extern const NativeFamily kKimboFamily;
extern const NativeFamily kYarroFamily;

// Rules every family shares.
namespace NativeRules {

bool isThreeRowParkingModel(qint64 modelType);

// The lane warning-speed rows follow the speed unit: "50km" … "100km" or
// "30mph" … "65mph". Only the captions change, never the selected row.
QStringList laneSpeedTitles(bool milesPerHour);
void retitleLaneSpeeds(NativeControlSet& controls);

// The parking group's rows for the model.
QStringList parkingModeTitles(bool threeRows);

// The parking time-limit slider's guide labels: 6, 12, 24 and 48 hours on
// the Orlo and Dravi families, 1, 2, 4, 6, 12, 24 and 48 hours on the others.
QStringList timeLimitGuides(bool fourPositions);

// The voice-prompt slider: its position is the volume, and a silenced
// camera (voice_ment 0) shows position 0.
void applyVoice(NativeControlSet& controls, const TolmSettingManager& model);
void saveVoice(const NativeControlSet& controls, TolmSettingManager& model);

// The rear resolution can't be above the front one: a front group at
// column 0 takes the rear group to column 0 and locks it.
void lockRearResolution(NativeControlSet& controls);

// The memory-partition graph's shares for a partition column (0-2), or empty.
QList<PartitionBar> partitionBars(int column);

} // namespace NativeRules
