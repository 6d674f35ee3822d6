// Telling which camera wrote a card: product names, self-describing records,
// the Kel family's blackbox.cfg, region id and firmware version, and finding
// the card among the mounted volumes.
#include "CardBuilder.h"
#include "FakeVolumeSource.h"
#include "SetupCfgBuilder.h"

#include "config/FolderVolumeSource.h"
#include "config/TolmSettingManager.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

QByteArray named(const QByteArray& name, int size = 432)
{
    return SetupCfgBuilder(size).productName(name).resize(size).bytes();
}

// A record that names its layout version and its own length.
QByteArray described(qint64 structVersion, int size, qint64 sizeWord)
{
    return SetupCfgBuilder(size).sizeWord(sizeWord).structVersion(structVersion).bytes();
}

QByteArray versioned(const QByteArray& version, int size = 432)
{
    return SetupCfgBuilder(size).productName("Tolm").version(version).resize(size).bytes();
}

} // namespace

TEST(CardIdentificationTest, ProductNamesInAnyCaseAndTheIdentificationMatrix)
{
    // Every name but the hand-picked Dravi UK (4), the Kel camera (6) and the
    // models from 26 on; the Pesk camera also writes "esk".
    const QStringList& models = TolmSettingManager::modelNameList();
    ASSERT_EQ(models.size(), 29);
    for (qint64 type = 0; type < 27; ++type) {
        const QString name = type == 26 ? QStringLiteral("ESK") : models[type].toUpper();
        CardBuilder card;
        card.setupCfg(named(name.toUtf8()));
        const qint64 expected = type == 26 ? 2 : type == 4 || type == 6 ? -1 : type;
        EXPECT_EQ(TolmSettingManager().loadModelTypeWithSDPath(card.root()), expected) << type;
    }

    struct Case {
        QByteArray setupCfg; // null: none
        bool blackbox; // a setting/blackbox.cfg beside it
        qint64 modelType;
        qint32 firmware;
    };
    const Case cases[] = {
        // A name no model has falls to the Kel test, then to unknown.
        { named("Dravi UK"), false, -1, 0 },
        { named("dravi"), true, 3, 0 },
        { named("Dravi UK"), true, 6, 0 },
        { QByteArray(), false, -1, 0 },
        { QByteArray(""), false, -1, 0 },
        { QByteArray("\x10\0\0\0", 4), true, 6, 0 },
        // Self-describing: layout 0x10030 on and a size word equal to the length.
        { described(0x10030, 596, 596), false, 26, 0 },
        { described(0x10031, 8, 8), false, 26, 0 },
        { described(0x1002F, 596, 596), true, 6, 0 },
        { described(0x10030, 596, 597), false, -1, 0 },
        { described(0x10030, 596, 595), true, 6, 0 },
        // The firmware: the leading digits of the version's last piece.
        { versioned("2.10"), false, 1, 10 },
        { versioned("1.09rc"), false, 1, 9 },
        { versioned("1.beta"), false, 1, 0 },
        { versioned("1.5", 47), false, 1, 0 },
        { versioned("1.5", 48), false, 1, 5 },
    };
    for (const Case& c : cases) {
        CardBuilder card;
        if (!c.setupCfg.isNull())
            card.setupCfg(c.setupCfg);
        if (c.blackbox)
            card.blackboxCfg("[capacity]", QStringLiteral("setting"));
        TolmSettingManager manager;
        manager.setSettingDirPath(card.root());
        manager.setFirmwareVersionInt(99);
        manager.identifySettingDir();
        EXPECT_EQ(manager.modelType(), c.modelType) << c.setupCfg.left(30).toHex().constData();
        EXPECT_EQ(manager.firmwareVersionInt(), c.firmware) << c.setupCfg.mid(40, 10).constData();
    }
    // The lower-case folder is asked first.
    CardBuilder both;
    both.setupCfg(named("Tolm"), QStringLiteral("setting")).setupCfg(named("Orlo"));
    EXPECT_EQ(TolmSettingManager().loadModelTypeWithSDPath(both.root()), 1);
}

TEST(CardIdentificationTest, ModelNamesRegionIdAndVersionText)
{
    CardBuilder card;
    card.setupCfg(
        SetupCfgBuilder(596).sizeWord(596).structVersion(0x10031).productName("New-Pro").bytes());
    TolmSettingManager manager;
    manager.setSettingDirPath(card.root());
    manager.identifySettingDir();
    manager.refreshModelName();
    EXPECT_EQ(manager.modelName(), QStringLiteral("New-Pro"));
    for (const qint64 type : { 28, 29 }) {
        manager.setModelType(type);
        manager.refreshModelName();
        EXPECT_EQ(manager.modelName(), type == 28 ? "DVR-Sabro" : "");
    }
    // The region, read from any record long enough, is taken for the Dravi when valid.
    const std::pair<QByteArray, qint64> regions[] = {
        { SetupCfgBuilder(464).productName("Dravi").localId(0).bytes(), 0 },
        { SetupCfgBuilder(464).productName("Dravi").localId(6).bytes(), 6 },
        { SetupCfgBuilder(464).productName("Dravi").localId(7).bytes(), 5 },
        { SetupCfgBuilder(463).productName("Dravi").bytes(), 5 },
        { SetupCfgBuilder(464).productName("Tolm").localId(2).bytes(), 5 },
    };
    for (const auto& [file, kept] : regions) {
        card.setupCfg(file);
        manager.setLocalID(5);
        manager.identifySettingDir();
        EXPECT_EQ(manager.localID(), kept);
    }
    EXPECT_EQ(manager.loadLocalIDWithSDPath(card.root()), 2);
    card.setupCfg(SetupCfgBuilder(48).version("1234567890ABC").bytes());
    EXPECT_EQ(manager.loadVersionSDPath(card.root()), QStringLiteral("1234567890"));
}

TEST(CardIdentificationTest, TheFirstIdentifiedCardOnALocalRemovableVolumeWins)
{
    CardBuilder fixedDisk, network, unknown, first, second;
    for (CardBuilder* card : { &fixedDisk, &network, &second })
        card->setupCfg(named("Tolm"));
    first.setupCfg(named("Orlo"));
    const QString nested = fixedDisk.root() + QStringLiteral("/media/CARD");
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(fixedDisk.root(), true, false).add(network.root(), false, true);
    volumes->add(nested, true, true, QStringLiteral("CARD")).add(unknown.root(), true, true);
    volumes->add(first.root(), true, true).add(second.root(), true, true);
    ScopedVolumeSource scope(volumes);
    TolmSettingManager manager;
    manager.setSettingDirPath(QStringLiteral("/set/beforehand"));
    manager.loadVersionInfo();
    EXPECT_EQ(manager.settingDirPath(), first.root());
    EXPECT_EQ(manager.sdcard_url(), QUrl::fromLocalFile(first.root()));
    EXPECT_EQ(manager.modelType(), 5);
    // The innermost volume holds a path; a longer name is not below a volume.
    const std::pair<QString, bool> paths[] = { { first.path("setup.cfg"), true },
        { first.root() + "-sibling", false }, { network.root(), false },
        { fixedDisk.root() + "/media", false }, { nested + "/DCIM", true }, { QString(), false } };
    for (const auto& [path, external] : paths)
        EXPECT_EQ(Utils::isEXteranlMemoryWithURL(QUrl::fromLocalFile(path)), external)
            << qPrintable(path);
    EXPECT_FALSE(Utils::isEXteranlMemoryWithURL(QUrl(QStringLiteral("https://example.invalid/"))));
    EXPECT_EQ(Utils::volumeNameWithURL(QUrl::fromLocalFile(nested)), QStringLiteral("CARD"));

    // Without an identified card, none is kept.
    volumes->remove(first.root());
    volumes->remove(second.root());
    manager.loadVersionInfo();
    EXPECT_TRUE(manager.settingDirPath().isEmpty());
    EXPECT_TRUE(manager.sdcard_url().isEmpty());
    EXPECT_EQ(manager.modelType(), -1);

    // Folders declared as cards, with the names given or their own.
    ScopedVolumeSource declared(std::make_shared<FolderVolumeSource>(
        QList<FolderVolumeSource::Folder> { { unknown.root(), {} }, { first.root(), "ORLO" } }));
    EXPECT_EQ(manager.findSDCardPath(), first.root());
    EXPECT_EQ(Utils::volumeNameWithURL(QUrl::fromLocalFile(first.path("setup.cfg"))), "ORLO");
    EXPECT_EQ(Utils::volumeNameWithURL(QUrl::fromLocalFile(unknown.root())),
        QFileInfo(unknown.root()).fileName());
}
