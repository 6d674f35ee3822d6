// Telling which camera wrote a card: product names, self-describing records,
// the Kel family's blackbox.cfg, region id and firmware version, and finding
// the card among the mounted volumes.
#include "CardBuilder.h"
#include "FakeVolumeSource.h"
#include "SetupCfgBuilder.h"

#include "config/FolderVolumeSource.h"
#include "config/TolmSettingManager.h"

#include <gtest/gtest.h>

namespace {

struct IdentifyCase {
    const char* what;
    QByteArray setupCfg; // empty: no setup.cfg
    const char* setupDir; // "SETTING" or "setting"
    bool blackbox;
    qint64 modelType;
    qint32 firmware;
    int fieldCount;
};

void expectIdentified(const IdentifyCase& c)
{
    CardBuilder card;
    if (!c.setupCfg.isNull())
        card.setupCfg(c.setupCfg, QString::fromLatin1(c.setupDir));
    if (c.blackbox)
        card.blackboxCfg("[capacity]", QStringLiteral("setting"));
    TolmSettingManager manager;
    manager.setSettingDirPath(card.root());
    manager.identifySettingDir();
    EXPECT_EQ(manager.modelType(), c.modelType) << c.what;
    EXPECT_EQ(manager.firmwareVersionInt(), c.firmware) << c.what;
    EXPECT_EQ(manager.getSettingVariableCount(), c.fieldCount) << c.what;
}

QByteArray named(const QByteArray& name, int size = 432)
{
    return SetupCfgBuilder(size).sizeWord(size).productName(name).bytes();
}

QByteArray selfDescribing(const QByteArray& name, qint64 structVersion, int size, qint64 sizeWord)
{
    return SetupCfgBuilder(size)
        .sizeWord(sizeWord)
        .structVersion(structVersion)
        .productName(name)
        .bytes();
}

} // namespace

TEST(CardIdentificationTest, ProductNamesRoundTripToTheirModels)
{
    // Every model that a card names by its product name is found again from
    // that name, in any case; the hand-picked Dravi UK (4), the Kel camera
    // (6) and the self-describing models (26 on) are not named this way.
    const QStringList& models = TolmSettingManager::modelNameList();
    for (qint64 type = 0; type < 26; ++type) {
        if (type == 4 || type == 6)
            continue;
        const QString name = models.at(type);
        for (const QString& written : { name, name.toUpper(), name.toLower() }) {
            CardBuilder card;
            card.setupCfg(named(written.toUtf8()));
            TolmSettingManager manager;
            EXPECT_EQ(manager.loadModelTypeWithSDPath(card.root()), type) << qPrintable(written);
        }
    }
    // Worked examples of names that are not in the list as such.
    const std::pair<const char*, qint64> others[] = { { "esk", 2 }, { "dvr-lusk", 25 } };
    for (const auto& [name, type] : others) {
        CardBuilder card;
        card.setupCfg(named(name));
        TolmSettingManager manager;
        EXPECT_EQ(manager.loadModelTypeWithSDPath(card.root()), type) << name;
    }
}

TEST(CardIdentificationTest, IdentificationMatrix)
{
    const IdentifyCase cases[] = {
        { "hand-picked name is not read from a card", named("Dravi UK"), "SETTING", false, -1, 0,
            60 },
        { "hand-picked name falls to the Kel test", named("Dravi UK"), "SETTING", true, 6, 0, 60 },
        { "lower-case folder", named("Tolm"), "setting", false, 1, 0, 60 },
        { "self-describing record", selfDescribing("Trevo-X", 0x10030, 596, 596), "SETTING", false,
            26, 0, 116 },
        { "older layout and blackbox.cfg", selfDescribing("Other", 0x1002F, 596, 596), "SETTING",
            true, 6, 0, 60 },
        { "size word one past the file", selfDescribing("Other", 0x10030, 596, 597), "SETTING",
            false, -1, 0, 60 },
        { "size word one past, with blackbox", selfDescribing("Other", 0x10030, 596, 597),
            "SETTING", true, 6, 0, 60 },
        { "only blackbox.cfg", QByteArray(), "SETTING", true, 6, 0, 60 },
        { "nothing on the card", QByteArray(), "SETTING", false, -1, 0, 60 },
        { "empty setup.cfg", QByteArray(""), "SETTING", false, -1, 0, 60 },
        { "record too short for a name", QByteArray("\x10\0\0\0", 4), "SETTING", true, 6, 0, 60 },
        { "Dravi at firmware 16",
            SetupCfgBuilder(464).productName("Dravi").version("1.00.16").bytes(), "SETTING", false,
            3, 16, 68 },
        { "Dravi at firmware 17",
            SetupCfgBuilder(464).productName("Dravi").version("1.02.17").bytes(), "SETTING", false,
            3, 17, 78 },
        { "version 2.10", SetupCfgBuilder(432).productName("Tolm").version("2.10").bytes(),
            "SETTING", false, 1, 10, 60 },
        { "version without digits",
            SetupCfgBuilder(432).productName("Tolm").version("1.beta").bytes(), "SETTING", false, 1,
            0, 60 },
        { "version too short to hold",
            SetupCfgBuilder(47).productName("Tolm").version("1.5").resize(47).bytes(), "SETTING",
            false, 1, 0, 60 },
    };
    for (const IdentifyCase& c : cases)
        expectIdentified(c);
}

TEST(CardIdentificationTest, SelfDescribingRecordKeepsTheNameAsWritten)
{
    CardBuilder card;
    card.setupCfg(selfDescribing("NewCam-Pro", 0x10031, 596, 596));
    TolmSettingManager manager;
    manager.setSettingDirPath(card.root());
    manager.identifySettingDir();
    manager.refreshModelName();
    EXPECT_EQ(manager.modelType(), 26);
    EXPECT_EQ(manager.modelName(), QStringLiteral("NewCam-Pro"));

    manager.setModelType(8);
    manager.refreshModelName();
    EXPECT_EQ(manager.modelName(), QStringLiteral("Kimbo"));
}

TEST(CardIdentificationTest, RegionIdIsReadOnlyWhenValid)
{
    const std::pair<QByteArray, qint64> cases[] = {
        { SetupCfgBuilder(464).productName("Dravi").localId(3).bytes(), 3 },
        { SetupCfgBuilder(464).productName("Dravi").localId(6).bytes(), 6 },
        { SetupCfgBuilder(464).productName("Dravi").localId(7).bytes(), -1 },
        { SetupCfgBuilder(464).productName("Dravi").localId(0xFFFFFFFF).bytes(), -1 },
        { SetupCfgBuilder(463).productName("Dravi").bytes(), -1 },
    };
    for (const auto& [file, expected] : cases) {
        CardBuilder card;
        card.setupCfg(file);
        TolmSettingManager manager;
        EXPECT_EQ(manager.loadLocalIDWithSDPath(card.root()), expected);
        manager.setLocalID(5);
        manager.setSettingDirPath(card.root());
        manager.identifySettingDir();
        EXPECT_EQ(manager.localID(), expected == -1 ? 5 : expected);
    }
    // Other models never read the region.
    CardBuilder tolm;
    tolm.setupCfg(SetupCfgBuilder(464).productName("Tolm").localId(2).bytes());
    TolmSettingManager manager;
    manager.setSettingDirPath(tolm.root());
    manager.identifySettingDir();
    EXPECT_EQ(manager.localID(), -1);
}

TEST(CardIdentificationTest, VersionTextIsCutAtItsFieldOrAbsent)
{
    CardBuilder card;
    card.setupCfg(SetupCfgBuilder(48).version("1234567890ABC").bytes());
    TolmSettingManager manager;
    EXPECT_EQ(manager.loadVersionSDPath(card.root()), QStringLiteral("1234567890"));
    CardBuilder empty;
    EXPECT_TRUE(manager.loadVersionSDPath(empty.root()).isNull());
}

TEST(CardIdentificationTest, TheFirstIdentifiedCardAmongTheVolumesWins)
{
    CardBuilder fixedDisk, unknown, first, second;
    fixedDisk.setupCfg(named("Tolm"));
    unknown.file(QStringLiteral("notes.txt"), "x");
    first.setupCfg(named("Orlo"));
    second.setupCfg(named("Ruva"));
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(fixedDisk.root(), true, false)
        .add(unknown.root(), true, true)
        .add(first.root(), true, true)
        .add(second.root(), true, true);
    ScopedVolumeSource scope(volumes);

    TolmSettingManager manager;
    manager.setSettingDirPath(QStringLiteral("/set/beforehand"));
    manager.loadVersionInfo();
    EXPECT_EQ(manager.settingDirPath(), first.root());
    EXPECT_EQ(manager.sdcard_url(), QUrl::fromLocalFile(first.root()));
    EXPECT_EQ(manager.modelType(), 5);
}

TEST(CardIdentificationTest, NoIdentifiedCardClearsTheCard)
{
    CardBuilder network, unknown;
    network.setupCfg(named("Tolm"));
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(network.root(), false, true).add(unknown.root(), true, true);
    ScopedVolumeSource scope(volumes);

    TolmSettingManager manager;
    manager.setSdcard_url(QUrl::fromLocalFile(QStringLiteral("/old")));
    manager.loadVersionInfo();
    EXPECT_TRUE(manager.settingDirPath().isEmpty());
    EXPECT_TRUE(manager.sdcard_url().isEmpty());
    EXPECT_EQ(manager.modelType(), -1);
}

TEST(CardIdentificationTest, DeclaredFoldersAreCardsWithTheirNames)
{
    CardBuilder card;
    card.setupCfg(named("Sarn"));
    auto folders = std::make_shared<FolderVolumeSource>();
    folders->addFolder(card.root(), QStringLiteral("SARN_CARD"));
    ScopedVolumeSource scope(folders);
    TolmSettingManager manager;
    EXPECT_EQ(manager.findSDCardPath(), card.root());
    EXPECT_EQ(Utils::volumeNameWithURL(QUrl::fromLocalFile(card.path(QStringLiteral("setup.cfg")))),
        QStringLiteral("SARN_CARD"));
}
