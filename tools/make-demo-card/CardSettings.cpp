#include "CardSettings.h"

#include "config/CardFiles.h"
#include "config/KelSettingManager.h"
#include "config/TolmSettingManager.h"

#include <QDir>
#include <QFile>

namespace CardSettings {

namespace {

constexpr qint64 kTolmModelType = 1;
constexpr qint64 kZentiModelType = 16;
constexpr qint32 kZentiRecordVersion = 0x10021;

// The camera's language announcement, as its firmware writes it.
QByteArray verDat(const QString& firmware, const QString& codes)
{
    return QStringLiteral("# Language pack\n# Firmware: %1\n# Language ISO Code:%2\n")
        .arg(firmware, codes)
        .toUtf8();
}

// What the owner changed from the factory values: Korean time, brighter
// front picture, Korean voice.
void applyOwnerSettings(TolmSettingManager& manager)
{
    manager.setGmt_offset(540);
    manager.setDaylight_offset(0);
    manager.setTz_key(QStringLiteral("Korea Standard Time"));
    manager.setFront_brightness(2);
    manager.setMeasurement_unit(0);
    manager.setCur_language(1);
}

bool failed(QString& error, const QString& what)
{
    error = what;
    return false;
}

} // namespace

bool writeRecordCamera(const QString& cardRoot, QString& error)
{
    TolmSettingManager manager;
    manager.setSettingDirPath(cardRoot);
    manager.setModelType(kTolmModelType);
    manager.loadDefaultDataForTolm();
    manager.setSerial_number(QStringLiteral("TLM26A0514001"));
    manager.setVersion(QStringLiteral("1.02.17"));
    manager.setMicom_version(QStringLiteral("MC1.04"));
    // The factory record first, kept as default.cfg.
    if (!manager.saveData())
        return failed(error, QStringLiteral("cannot write setup.cfg"));
    QByteArray factory;
    if (!CardFiles::readWhole(
            CardFiles::settingWritePath(cardRoot, QStringLiteral("setup.cfg")), factory)
        || !CardFiles::writeSettingFile(cardRoot, QStringLiteral("default.cfg"), factory))
        return failed(error, QStringLiteral("cannot write default.cfg"));
    applyOwnerSettings(manager);
    if (!manager.saveData())
        return failed(error, QStringLiteral("cannot write setup.cfg"));
    if (!CardFiles::writeSettingFile(cardRoot, QStringLiteral("lang/ver.dat"),
            verDat(manager.version(), QStringLiteral("en ko ja fr es"))))
        return failed(error, QStringLiteral("cannot write lang/ver.dat"));
    return true;
}

bool writeKelCamera(const QString& cardRoot, QString& error)
{
    // The Kel manager writes to the card of the shared settings model.
    TolmSettingManager* shared = TolmSettingManager::SharedTolmSettingManager();
    const QString previousRoot = shared->settingDirPath();
    shared->setSettingDirPath(cardRoot);
    KelSettingManager kel;
    kel.loadDefaultData_Wenna();
    bool ok = !kel.linedSettings().isEmpty();
    if (ok) {
        kel.setValueForKey(QStringLiteral("model="), QStringLiteral("Wenna"));
        kel.setValueForKey(QStringLiteral("version="), QStringLiteral("1.00.08"));
        kel.setValueForKey(QStringLiteral("park_mode="), QStringLiteral("1"));
        kel.setValueForKey(QStringLiteral("power_off_vlt="), QStringLiteral("12000"));
        ok = kel.saveData();
    }
    shared->setSettingDirPath(previousRoot);
    return ok || failed(error, QStringLiteral("cannot write blackbox.cfg"));
}

bool writeWebCamera(const QString& cardRoot, QString& error)
{
    TolmSettingManager manager;
    manager.setSettingDirPath(cardRoot);
    manager.setModelType(kTolmModelType);
    manager.loadDefaultDataForTolm();
    manager.setModelType(kZentiModelType);
    manager.setProduct_name(QStringLiteral("Zenti"));
    manager.setSerial_number(QStringLiteral("ZNT26B0514002"));
    manager.setVersion(QStringLiteral("2.01.05"));
    manager.setSetting_path(QStringLiteral("SETTING/html/index.html"));
    manager.setCfg_struct_version(kZentiRecordVersion);
    manager.setChecksum(manager.getSaveDataSize());
    // The factory record first, kept as default.cfg for the page's reset.
    if (!manager.saveData())
        return failed(error, QStringLiteral("cannot write setup.cfg"));
    QByteArray factory;
    if (!CardFiles::readWhole(
            CardFiles::settingWritePath(cardRoot, QStringLiteral("setup.cfg")), factory)
        || !CardFiles::writeSettingFile(cardRoot, QStringLiteral("default.cfg"), factory))
        return failed(error, QStringLiteral("cannot write default.cfg"));
    applyOwnerSettings(manager);
    if (!manager.saveData())
        return failed(error, QStringLiteral("cannot write setup.cfg"));
    if (!CardFiles::writeSettingFile(cardRoot, QStringLiteral("lang/ver.dat"),
            verDat(manager.version(), QStringLiteral("en ko ja zh-Hans fr de es"))))
        return failed(error, QStringLiteral("cannot write lang/ver.dat"));
    // The camera's own settings page (tools/make-demo-card/web); the folder
    // marks the camera kind.
    QFile page(QStringLiteral(":/demo-web/index.html"));
    if (!page.open(QIODevice::ReadOnly)
        || !CardFiles::writeSettingFile(
            cardRoot, QStringLiteral("html/index.html"), page.readAll()))
        return failed(error, QStringLiteral("cannot write SETTING/html/index.html"));
    return true;
}

} // namespace CardSettings
