// Loading setup.cfg from a card and its write-back, saving, default.cfg and
// the editor's reset, on card folders written byte by byte.
#include "CardBuilder.h"
#include "RecordingAlertSink.h"
#include "SetupCfgBuilder.h"

#include "config/TolmSettingManager.h"

#include <QDir>

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
    QByteArray written() const { return card.read(QStringLiteral("setup.cfg")); }

    CardBuilder card;
    ScopedAlertRecorder alerts;
};

} // namespace

TEST_F(SetupLoadSaveTest, LoadingRewritesTheRecordInTheModelsLayoutOrTakesTheDefaults)
{
    // A short record of a newer model, in the lower-case folder, grows; the
    // fields past its end keep their values.
    card.setupCfg(SetupCfgBuilder(432).productName("Orlo").int32(428, 2).bytes(), "setting");
    card.verDat("# Language ISO Code:ko en\n");
    TolmSettingManager& orlo = manager(5, card.root());
    orlo.setLow_vol_shutdown(1); // field 68
    orlo.setSet_resolution(6); // field 78
    orlo.loadData();
    EXPECT_EQ(orlo.cur_language(), 2);
    EXPECT_EQ(orlo.languages(), CameraLanguageList({ { 0, "ko" }, { 1, "en" } }));
    EXPECT_EQ(written(),
        SetupCfgBuilder(508).productName("Orlo").int32(428, 2).int32(464, 1).int32(504, 6).bytes());
    // SETTING is read before setting; a longer record is cut to the model's length.
    const QByteArray letters = SetupCfgBuilder::letterPattern(596).bytes();
    card.setupCfg(letters);
    manager(1, card.root()).loadData();
    EXPECT_EQ(written(), letters.left(432));
    // No record: the model's factory values, and nothing is written.
    CardBuilder empty;
    TolmSettingManager& pesk = manager(2, empty.root());
    pesk.loadData();
    EXPECT_EQ(pesk.lcd_off_timer(), 300000);
    EXPECT_FALSE(empty.exists(QStringLiteral("setup.cfg")));
    EXPECT_EQ(alerts.sink().requests().size(), 0);
}

TEST_F(SetupLoadSaveTest, AWriteCutShortLeavesTheOldRecordWhole)
{
    const QByteArray old = SetupCfgBuilder(300).productName("old").bytes();
    card.setupCfg(old);
    TolmSettingManager& tolm = manager(1, card.root());
    // A file size limit below the record's length makes the new file fail midway.
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
    EXPECT_EQ(written(), old);
    EXPECT_EQ(QDir(card.root() + QStringLiteral("/SETTING")).entryList(QDir::Files),
        QStringList { QStringLiteral("setup.cfg") });
    ASSERT_EQ(alerts.sink().memoryCardErrors(), 1);
    EXPECT_EQ(alerts.sink().requests()[0].buttonKeys, QStringList { QStringLiteral("OK") });
}

TEST_F(SetupLoadSaveTest, ResetTakesTheCardDefaultsButKeepsWhatTheCameraReports)
{
    // Only SETTING/default.cfg counts, and an empty one changes nothing.
    TolmSettingManager& current = manager(1, card.root());
    card.defaultCfg(QByteArray())
        .file("default.cfg", SetupCfgBuilder(432).int32(52, 7).bytes(), "setting");
    current.setFront_resolution(1);
    EXPECT_TRUE(current.loadDefaultDataFromDefaultCfgFile());
    EXPECT_EQ(current.front_resolution(), 1);
    EXPECT_FALSE(manager(1, QString()).loadDefaultDataFromDefaultCfgFile());

    card.defaultCfg(SetupCfgBuilder(432).productName("Tolm").version("0.00").int32(52, 5).bytes());
    manager(1, card.root());
    current.setVersion(QStringLiteral("1.02.17"));
    current.setFirmwareVersionInt(17);
    current.setDriving_guide_version(42);
    current.setLocalID(2);
    // Whoever held the model before the reset holds the reset one.
    EXPECT_EQ(TolmSettingManager::resetSharedToDefaults(), &current);
    EXPECT_EQ(current.front_resolution(), 5);
    EXPECT_EQ(current.version(), QStringLiteral("1.02.17"));
    EXPECT_EQ(current.firmwareVersionInt(), 17);
    EXPECT_EQ(current.driving_guide_version(), 42);
    EXPECT_EQ(current.localID(), 2);
    EXPECT_EQ(current.modelType(), 1);
    EXPECT_FALSE(card.exists(QStringLiteral("setup.cfg")));
}
