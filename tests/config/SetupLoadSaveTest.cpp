// Loading setup.cfg from a card, its write-back, saving, default.cfg and the
// editor's reset, on card folders written byte by byte.
#include "CardBuilder.h"
#include "RecordingAlertSink.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include "config/TolmSettingManager.h"

#include <QDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace {

class SetupLoadSaveTest : public ::testing::Test {
protected:
    void TearDown() override { TolmSettingManager::ChagneTolmSettingManager(nullptr); }

    TolmSettingManager& manager(qint64 modelType, const QString& root)
    {
        TolmSettingManager* fresh = TolmSettingManager::ChagneTolmSettingManager(nullptr);
        fresh->setModelType(modelType);
        fresh->setSettingDirPath(root);
        return *fresh;
    }

    static qint32 wordAt(const QByteArray& bytes, int offset)
    {
        return qFromLittleEndian<qint32>(bytes.constData() + offset);
    }

    CardBuilder card;
    ScopedAlertRecorder alerts;
};

} // namespace

TEST_F(SetupLoadSaveTest, ShortRecordOfANewerModelIsWrittenBackInItsLayout)
{
    card.setupCfg(SetupCfgBuilder(432).sizeWord(432).productName("Orlo").int32(428, 2).bytes());
    TolmSettingManager& orlo = manager(5, card.root());
    orlo.setSet_resolution(6); // field 78, beyond the 432-byte file
    orlo.setLow_vol_shutdown(1); // field 68
    orlo.loadData();
    EXPECT_EQ(orlo.cur_language(), 2);
    const QByteArray written = card.read(QStringLiteral("setup.cfg"));
    ASSERT_EQ(written.size(), 508);
    EXPECT_EQ(wordAt(written, 428), 2);
    EXPECT_EQ(wordAt(written, 464), 1);
    EXPECT_EQ(wordAt(written, 504), 6);
    EXPECT_EQ(alerts.sink().requests().size(), 0);
}

TEST_F(SetupLoadSaveTest, LongerRecordIsCutToTheModelsLength)
{
    card.setupCfg(SetupCfgBuilder::letterPattern(596).productName("Tolm").bytes());
    TolmSettingManager& tolm = manager(1, card.root());
    tolm.loadData();
    const QByteArray written = card.read(QStringLiteral("setup.cfg"));
    EXPECT_EQ(written, SetupCfgBuilder::letterPattern(596).productName("Tolm").bytes().left(432));
}

TEST_F(SetupLoadSaveTest, LowerCaseFolderIsReadAndTheUpperCaseOneWritten)
{
    card.setupCfg(
        SetupCfgBuilder(432).productName("Ruva").int32(52, 4).bytes(), QStringLiteral("setting"));
    TolmSettingManager& ruva = manager(0, card.root());
    ruva.loadData();
    EXPECT_EQ(ruva.front_resolution(), 4);
    EXPECT_EQ(card.read(QStringLiteral("setup.cfg")).size(), 432);
}

TEST_F(SetupLoadSaveTest, MissingRecordAppliesTheModelDefaultsAndWritesNothing)
{
    TolmSettingManager& pesk = manager(2, card.root());
    pesk.loadData();
    EXPECT_EQ(pesk.product_name(), QStringLiteral("Pesk"));
    EXPECT_EQ(pesk.lcd_off_timer(), 300000);
    EXPECT_FALSE(QDir(card.root() + QStringLiteral("/SETTING")).exists());

    TolmSettingManager& noCard = manager(1, QString());
    noCard.loadData();
    EXPECT_EQ(noCard.product_name(), QStringLiteral("Tolm"));
}

TEST_F(SetupLoadSaveTest, LoadingReadsTheCameraLanguages)
{
    card.setupCfg(SetupCfgBuilder(432).productName("Tolm").bytes())
        .verDat("# Language ISO Code:ko en\n");
    TolmSettingManager& tolm = manager(1, card.root());
    tolm.loadData();
    const CameraLanguageList expected { { 0, QStringLiteral("ko") }, { 1, QStringLiteral("en") } };
    EXPECT_EQ(tolm.languages(), expected);
}

TEST_F(SetupLoadSaveTest, SavingWithoutACardShowsTheMemoryCardAlert)
{
    TolmSettingManager& tolm = manager(1, QString());
    tolm.setFront_quality(9);
    EXPECT_FALSE(tolm.saveData());
    ASSERT_EQ(alerts.sink().memoryCardErrors(), 1);
    EXPECT_EQ(alerts.sink().requests()[0].buttonKeys, QStringList { QStringLiteral("OK") });
    EXPECT_EQ(tolm.front_quality(), 9);
}

TEST_F(SetupLoadSaveTest, AFailedWriteShowsTheAlertAndKeepsTheOldFile)
{
    // The setting folder is taken by a file: nothing can be created under it.
    TestFiles::write(card.root() + QStringLiteral("/SETTING"), "not a folder");
    TolmSettingManager& tolm = manager(1, card.root());
    EXPECT_FALSE(tolm.saveData());
    EXPECT_EQ(
        TestFiles::read(card.root() + QStringLiteral("/SETTING")), QByteArray("not a folder"));

    // setup.cfg itself is a folder.
    CardBuilder second;
    QDir().mkpath(second.path(QStringLiteral("setup.cfg")));
    TolmSettingManager& other = manager(1, second.root());
    EXPECT_FALSE(other.saveData());
    EXPECT_EQ(alerts.sink().memoryCardErrors(), 2);
}

TEST_F(SetupLoadSaveTest, AWriteCutShortLeavesTheOldRecordWhole)
{
    const QByteArray old = SetupCfgBuilder(300).productName("old").bytes();
    card.setupCfg(old);
    TolmSettingManager& tolm = manager(1, card.root());
    // Limit file size below the record's length, so the new file fails midway.
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit previous {};
    getrlimit(RLIMIT_FSIZE, &previous);
    rlimit limit = previous;
    limit.rlim_cur = 400;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const bool saved = tolm.saveData();
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);
    EXPECT_FALSE(saved);
    EXPECT_EQ(card.read(QStringLiteral("setup.cfg")), old);
    EXPECT_EQ(QDir(card.root() + QStringLiteral("/SETTING")).entryList(QDir::Files),
        QStringList { QStringLiteral("setup.cfg") });
    EXPECT_EQ(alerts.sink().memoryCardErrors(), 1);
}

TEST_F(SetupLoadSaveTest, DefaultFileFillsFieldsFromTheUpperCaseFolderOnly)
{
    TolmSettingManager& tolm = manager(1, card.root());
    EXPECT_FALSE(tolm.loadDefaultDataFromDefaultCfgFile());

    card.file(QStringLiteral("default.cfg"), SetupCfgBuilder(432).int32(52, 5).bytes(),
        QStringLiteral("setting"));
    EXPECT_FALSE(tolm.loadDefaultDataFromDefaultCfgFile());

    tolm.setFront_resolution(1);
    card.defaultCfg(QByteArray());
    EXPECT_TRUE(tolm.loadDefaultDataFromDefaultCfgFile());
    EXPECT_EQ(tolm.front_resolution(), 1);

    card.defaultCfg(SetupCfgBuilder(432).int32(52, 5).productName("Tolm").bytes());
    EXPECT_TRUE(tolm.loadDefaultDataFromDefaultCfgFile());
    EXPECT_EQ(tolm.front_resolution(), 5);
    EXPECT_EQ(tolm.product_name(), QStringLiteral("Tolm"));
    EXPECT_FALSE(card.exists(QStringLiteral("setup.cfg")));

    TolmSettingManager& noCard = manager(1, QString());
    EXPECT_FALSE(noCard.loadDefaultDataFromDefaultCfgFile());
}

TEST_F(SetupLoadSaveTest, ResetTakesTheCardDefaultsButKeepsWhatTheCameraReports)
{
    card.defaultCfg(SetupCfgBuilder(432)
                        .productName("Tolm")
                        .version("0.00")
                        .int32(52, 5)
                        .int32(224, 1)
                        .bytes());
    TolmSettingManager& current = manager(1, card.root());
    current.setVersion(QStringLiteral("1.02.17"));
    current.setFirmwareVersionInt(17);
    current.setDriving_guide_version(42);
    current.setFront_resolution(1);
    TolmSettingManager* shared = TolmSettingManager::resetSharedToDefaults();
    EXPECT_EQ(shared, TolmSettingManager::SharedTolmSettingManager());
    // Whoever held the model before the reset holds the reset one.
    EXPECT_EQ(shared, &current);
    EXPECT_EQ(current.front_resolution(), 5);
    EXPECT_EQ(shared->version(), QStringLiteral("1.02.17"));
    EXPECT_EQ(shared->firmwareVersionInt(), 17);
    EXPECT_EQ(shared->driving_guide_version(), 42);
    EXPECT_EQ(shared->settingDirPath(), card.root());
    EXPECT_EQ(shared->modelType(), 1);
}

TEST_F(SetupLoadSaveTest, ResetWithoutACardFileRunsTheBuiltInValues)
{
    TolmSettingManager& dravi = manager(4, card.root());
    dravi.setLocalID(3);
    dravi.setFront_resolution(0);
    EXPECT_EQ(TolmSettingManager::resetSharedToDefaults(), &dravi);
    EXPECT_EQ(dravi.front_resolution(), 3);
    EXPECT_EQ(dravi.tz_key(), QStringLiteral("GMT Standard Time"));
}
