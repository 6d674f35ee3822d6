#pragma once

#include "config/CameraLanguages.h"
#include "config/SetupRecordLayout.h"
#include "config/SetupValues.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>

class AlertSink;

// The settings model of the camera on the card: which card and model it is,
// the camera's language list, and one property per field of SETTING/setup.cfg.
// One shared instance per process, reached through SharedTolmSettingManager().
//
// The shared instance lives as long as the process: a pointer or reference to
// it taken anywhere (a command, a page, the settings router, a window) stays
// valid across every replacement, which hands it another manager's contents.
class TolmSettingManager {
public:
    TolmSettingManager();
    TolmSettingManager(const TolmSettingManager&) = default;
    TolmSettingManager& operator=(const TolmSettingManager&) = default;
    TolmSettingManager(TolmSettingManager&&) = default;
    TolmSettingManager& operator=(TolmSettingManager&&) = default;

    // The shared instance, created on first use; it lasts until the process ends.
    static TolmSettingManager* SharedTolmSettingManager();
    // Makes `manager` the shared model: the shared instance takes over its
    // contents (a null manager: those of a fresh one) and `manager` goes.
    // Returns the shared instance, the same one as before.
    static TolmSettingManager* ChagneTolmSettingManager(
        std::unique_ptr<TolmSettingManager> manager);

    // Card identification.
    void loadVersionInfo();
    QString findSDCardPath();
    qint64 loadModelTypeWithSDPath(const QString& path);
    qint64 loadLocalIDWithSDPath(const QString& path) const;
    QString loadVersionSDPath(const QString& path) const;
    // Identifies the card at settingDirPath without rescanning the volumes:
    // model type, region id, firmware version.
    void identifySettingDir();
    // The display name after identification: the list entry of the model
    // type, except for self-describing records, which keep the name read
    // from the card; absent for an unknown model.
    void refreshModelName();

    // The record.
    qint32 getSettingVariableCount() const;
    qint32 getSaveDataSize() const;
    static qint32 offsetFromValue(SetupField field);
    // The record's fields in file order, and their widths in bytes. The width
    // list ends with one extra entry of width 1 that no field uses, as the
    // camera's own list does.
    static QList<SetupField> settingVariableList();
    static QList<qint32> settingByteSizeList();
    void loadData();
    bool saveData();
    bool loadDefaultDataFromDefaultCfgFile();

    // Built-in factory values.
    void loadDefaultValue();
    void loadDefaultDataForRuva();
    void loadDefaultDataForTolm();
    void loadDefaultDataForPesk();
    void loadDefaultDataForDravi();
    void loadDefaultDataForOrlo();
    // The editor's reset: the card's own SETTING/default.cfg when it has one
    // (read into a fresh manager that then becomes the shared instance,
    // keeping the firmware version text, its number and the driving-guide
    // version of the current one), otherwise the built-in values of the
    // model. Returns the shared manager (the same instance as before).
    static TolmSettingManager* resetSharedToDefaults();

    // The camera's language list from SETTING/lang/ver.dat.
    void loadLanguages();
    CameraLanguageList languages() const { return m_languages; }
    void setLanguages(const CameraLanguageList& languages) { m_languages = languages; }

    // Plain properties.
    QString settingDirPath() const { return m_settingDirPath; }
    void setSettingDirPath(const QString& path) { m_settingDirPath = path; }
    QUrl sdcard_url() const { return m_sdcardUrl; }
    void setSdcard_url(const QUrl& url) { m_sdcardUrl = url; }
    qint64 modelType() const { return m_modelType; }
    void setModelType(qint64 type) { m_modelType = type; }
    qint64 localID() const { return m_localID; }
    void setLocalID(qint64 id) { m_localID = id; }
    qint32 firmwareVersionInt() const { return m_firmwareVersionInt; }
    void setFirmwareVersionInt(qint32 version) { m_firmwareVersionInt = version; }
    QString modelName() const { return m_modelName; }
    void setModelName(const QString& name) { m_modelName = name; }
    static const QStringList& modelNameList();

    // Generic field access, by the field's index in the record.
    qint32 intValue(SetupField field) const { return m_values.ints[size_t(field)]; }
    void setIntValue(SetupField field, qint32 value) { m_values.ints[size_t(field)] = value; }
    QString textValue(SetupField field) const { return m_values.texts[size_t(field)]; }
    void setTextValue(SetupField field, const QString& text)
    {
        m_values.texts[size_t(field)] = text;
    }
    const SetupValues& values() const { return m_values; }
    void setValues(const SetupValues& values) { m_values = values; }

    // Where failed card writes are reported (the shared sink when unset).
    void setAlertSink(std::shared_ptr<AlertSink> sink) { m_alertSink = std::move(sink); }

    // One getter and one setter per record field, named after the field
    // (front_resolution(), setFront_resolution(...), tz_key(), setTz_key(...)).
#define TAVRO_SETUP_ACCESSORS_Int(name, Name)                                                      \
    qint32 name() const                                                                            \
    {                                                                                              \
        return intValue(SetupField::name);                                                         \
    }                                                                                              \
    void set##Name(qint32 value)                                                                   \
    {                                                                                              \
        setIntValue(SetupField::name, value);                                                      \
    }
#define TAVRO_SETUP_ACCESSORS_Int32(name, Name) TAVRO_SETUP_ACCESSORS_Int(name, Name)
#define TAVRO_SETUP_ACCESSORS_UInt16(name, Name) TAVRO_SETUP_ACCESSORS_Int(name, Name)
#define TAVRO_SETUP_ACCESSORS_Int8(name, Name) TAVRO_SETUP_ACCESSORS_Int(name, Name)
#define TAVRO_SETUP_ACCESSORS_Text(name, Name)                                                     \
    QString name() const                                                                           \
    {                                                                                              \
        return textValue(SetupField::name);                                                        \
    }                                                                                              \
    void set##Name(const QString& value)                                                           \
    {                                                                                              \
        setTextValue(SetupField::name, value);                                                     \
    }
#define TAVRO_SETUP_FIELD(name, Name, width, kind) TAVRO_SETUP_ACCESSORS_##kind(name, Name)
#include "config/SetupFields.def"
#undef TAVRO_SETUP_FIELD
#undef TAVRO_SETUP_ACCESSORS_Int
#undef TAVRO_SETUP_ACCESSORS_Int32
#undef TAVRO_SETUP_ACCESSORS_UInt16
#undef TAVRO_SETUP_ACCESSORS_Int8
#undef TAVRO_SETUP_ACCESSORS_Text

private:
    void showMemoryCardAlert() const;

    QString m_settingDirPath;
    QUrl m_sdcardUrl;
    qint64 m_modelType = -1;
    qint64 m_localID = -1;
    qint32 m_firmwareVersionInt = 0;
    QString m_modelName;
    CameraLanguageList m_languages;
    SetupValues m_values;
    std::shared_ptr<AlertSink> m_alertSink;
};
