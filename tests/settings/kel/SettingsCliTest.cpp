// `tavro settings show|set` run as a user would, on Kel cards (and on a
// binary-record card, and a card whose editor is the web page, which has no
// page to show).
#include "KelPageFixture.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

namespace {

class SettingsCliTest : public KelPageFixture {
protected:
    void SetUp() override
    {
        KelPageFixture::SetUp();
        m_card.blackboxCfg(crlfLines(with(defaultLines(), "park_mode=", "1")));
        m_before = cardFile();
    }

    TestFiles::CliResult run(const QStringList& args)
    {
        QStringList all { QStringLiteral("settings") };
        all << args.first() << m_card.root() << args.mid(1);
        return TestFiles::runCli(all);
    }

    static QJsonObject page(const TestFiles::CliResult& result)
    {
        const QList<QByteArray> lines = result.out.trimmed().split('\n');
        EXPECT_EQ(lines.size(), 1) << result.out.constData();
        return QJsonDocument::fromJson(lines.value(0)).object();
    }
    static int value(const QJsonObject& page, const char* control)
    {
        return page["controls"].toObject()[QLatin1String(control)].toObject()["value"].toInt(-99);
    }
    QString cardValue(const QString& key) const
    {
        KelSettingManager kel;
        kel.setLinedSettings(KelSettingManager::linesFromText(cardFile()));
        return kel.valueForKey(key);
    }

    QByteArray m_before;
};

} // namespace

TEST_F(SettingsCliTest, ShowPrintsTheKelPageAndWritesNothing)
{
    const auto result = run({ "show" });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    const QJsonObject shown = page(result);
    EXPECT_EQ(shown["modelType"].toInt(), 6);
    EXPECT_EQ(shown["family"].toString(), QStringLiteral("Kel"));
    EXPECT_TRUE(shown["userSelectedLanguage"].isNull());
    const QJsonObject controls = shown["controls"].toObject();
    const QStringList names { "memoryPartitionRadioGroup", "voiceGuidanceRadioGroup",
        "parkingModeRadioGroup", "parkingModeVoltageRadioGroup", "dstRadioGroup",
        "voiceRecordRadioGroup", "languageRadioGroup", "speedUnitRadioGroup",
        "securityLEDRadioGroup", "voiceGuidanceSlider", "impactSensitivitySlider",
        "motionSensitivitySlider", "timeZoneComboBox", "dateTimeCheckBox" };
    EXPECT_EQ(controls.size(), names.size());
    for (const QString& name : names) {
        const QJsonObject control = controls[name].toObject();
        EXPECT_TRUE(control["visible"].toBool()) << name.toStdString();
        EXPECT_TRUE(control.contains("enabled")) << name.toStdString();
    }
    // The default file: type A, voice on at 3, parking on, Pacific time.
    EXPECT_EQ(value(shown, "memoryPartitionRadioGroup"), 0);
    EXPECT_EQ(value(shown, "voiceGuidanceSlider"), 3);
    EXPECT_EQ(value(shown, "parkingModeRadioGroup"), 0);
    EXPECT_EQ(value(shown, "parkingModeVoltageRadioGroup"), 0);
    EXPECT_EQ(value(shown, "timeZoneComboBox"), 2);
    EXPECT_EQ(value(shown, "dateTimeCheckBox"), 0);
    const QJsonObject clock = shown["clock"].toObject();
    EXPECT_FALSE(clock["checked"].toBool());
    EXPECT_TRUE(QDateTime::fromString(clock["value"].toString(), Qt::ISODate).isValid());
    EXPECT_EQ(cardFile(), m_before);
}

TEST_F(SettingsCliTest, SetWritesTheControlsLinesAndPrintsThePage)
{
    const auto result = run({ "set", "memoryPartitionRadioGroup=1",
        "parkingModeVoltageRadioGroup=3", "timeZoneComboBox=10", "motionSensitivitySlider=5" });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    const QJsonObject shown = page(result);
    EXPECT_EQ(value(shown, "memoryPartitionRadioGroup"), 1);
    EXPECT_EQ(value(shown, "parkingModeVoltageRadioGroup"), 3);
    EXPECT_EQ(cardValue("const="), "35");
    EXPECT_EQ(cardValue("manual="), "39");
    EXPECT_EQ(cardValue("power_off_vlt="), "12200");
    EXPECT_EQ(cardValue("local_time="), "9.500000");
    EXPECT_EQ(cardValue("motion_level="), "5");
    // Everything else as it was.
    EXPECT_EQ(cardValue("voice_volume="), "3");
    EXPECT_EQ(KelSettingManager::linesFromText(cardFile()).size(),
        KelSettingManager::linesFromText(m_before).size());
}

TEST_F(SettingsCliTest, UsageErrorsWriteNothing)
{
    const QList<QStringList> cases {
        { "set", "noSuchControl=1" },
        { "set", "impactSensitivitySlider=9" },
        { "set", "dstRadioGroup=0", "memoryPartitionRadioGroup=3" },
        { "set", "dstRadioGroup=x" },
        { "set" },
        { "set", "dstRadioGroup=0", "--answer", "maybe" },
        { "set", "dstRadioGroup=0", "--clock", "tomorrow" },
        { "show", "--reset" },
        { "show", "--model-type" },
    };
    for (const QStringList& args : cases) {
        const auto result = run(args);
        EXPECT_EQ(result.exitCode, 2) << args.join(' ').toStdString();
        EXPECT_TRUE(result.out.isEmpty()) << args.join(' ').toStdString();
        EXPECT_EQ(cardFile(), m_before) << args.join(' ').toStdString();
    }
}

TEST_F(SettingsCliTest, ClockDateTicksTheBoxAndWritesTheClockLines)
{
    const auto result = run({ "set", "--clock", "2016-03-07T14:05:09" });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    const QJsonObject clock = page(result)["clock"].toObject();
    EXPECT_TRUE(clock["checked"].toBool());
    EXPECT_EQ(clock["value"].toString(), QStringLiteral("2016-03-07T14:05:09"));
    const QStringList lines = KelSettingManager::linesFromText(cardFile());
    const qsizetype set = lines.indexOf(QStringLiteral("set=1"));
    ASSERT_GE(set, 0);
    EXPECT_EQ(lines.mid(set + 1, 6),
        QStringList({ "year=2016", "month=3", "day=7", "hour=14", "min=5", "sec=9" }));
}

TEST_F(SettingsCliTest, ResetWritesTheBuiltInDefaults)
{
    const auto result = run({ "set", "--reset" });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(cardFile(), KelSettingManager::defaultFileText());
}

TEST_F(SettingsCliTest, BinaryRecordCardThroughResetAndItsClockRequest)
{
    // A Tolm camera asking for its clock to be set to 14:05:09 UTC; its
    // default.cfg has another shock sensitivity.
    constexpr int kShock = 120; // acceleration_sensor
    const auto record = [](int shock) {
        return SetupCfgBuilder(432).productName("Tolm").version("1.00.17").int32(kShock, shock);
    };
    CardBuilder card;
    card.setupCfg(record(3).bytes());
    card.defaultCfg(record(7).bytes());
    card.file(QStringLiteral("time.dat"), "2016,03,07,14,05,09,+0000");
    const QStringList tokyo { QStringLiteral("TZ=Asia/Tokyo") };
    const auto settings = [&](QStringList args) {
        args.insert(1, card.root());
        return TestFiles::runCli(QStringList { QStringLiteral("settings") } + args, tokyo);
    };

    auto result = settings({ "show" });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    QJsonObject shown = page(result);
    EXPECT_EQ(value(shown, "alwaysShockSensitivitySlider"), 3);
    // The request's instant on this computer's clock.
    EXPECT_TRUE(shown["clock"].toObject()["checked"].toBool());
    EXPECT_EQ(shown["clock"].toObject()["value"].toString(), "2016-03-07T23:05:09");

    // Reset takes default.cfg; the card is still the Tolm camera it was.
    result = settings({ "set", "--reset" });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    shown = page(result);
    EXPECT_EQ(shown["modelType"].toInt(), 1);
    EXPECT_EQ(shown["family"].toString(), QStringLiteral("Tolm"));
    EXPECT_EQ(value(shown, "alwaysShockSensitivitySlider"), 7);
    const QByteArray saved = card.read(QStringLiteral("setup.cfg"));
    ASSERT_EQ(saved.size(), 432);
    EXPECT_EQ(qFromLittleEndian<qint32>(saved.constData() + kShock), 7);
    EXPECT_EQ(saved.mid(8, 5), QByteArray("Tolm\0", 5));
    // OK writes the same instant back, from this computer's zone.
    EXPECT_EQ(card.read(QStringLiteral("time.dat")), QByteArray("2016,03,07,23,05,09,+0900"));
}

TEST_F(SettingsCliTest, UnwritableCardExitsOne)
{
    // The camera's file is found under "setting", but SETTING/blackbox.cfg,
    // where writes go, is a folder.
    CardBuilder card;
    card.blackboxCfg(crlfLines(defaultLines()), QStringLiteral("setting"));
    QDir().mkpath(card.path(QStringLiteral("blackbox.cfg")));
    const auto result = TestFiles::runCli(
        { QStringLiteral("settings"), QStringLiteral("set"), card.root(), "dstRadioGroup=0" });
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains("memory card")) << result.err.constData();
}

TEST_F(SettingsCliTest, WebAndUnknownCardsHaveNoPage)
{
    CardBuilder web;
    web.setupCfg(SetupCfgBuilder(700).productName("zenti").bytes());
    auto result
        = TestFiles::runCli({ QStringLiteral("settings"), QStringLiteral("show"), web.root() });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    QJsonObject shown = page(result);
    EXPECT_EQ(shown["modelType"].toInt(), 16);
    EXPECT_TRUE(shown["family"].isNull());
    EXPECT_TRUE(shown["controls"].toObject().isEmpty());
    EXPECT_FALSE(shown["clock"].toObject()["checked"].toBool(true));
    EXPECT_TRUE(shown["clock"].toObject()["value"].isNull());

    CardBuilder unknown;
    result
        = TestFiles::runCli({ QStringLiteral("settings"), QStringLiteral("show"), unknown.root() });
    ASSERT_EQ(result.exitCode, 0);
    shown = page(result);
    EXPECT_EQ(shown["modelType"].toInt(), -1);
    EXPECT_TRUE(shown["family"].isNull());
    // A Kel card read as another model through the override.
    result = run({ "show", "--model-type", "6" });
    EXPECT_EQ(page(result)["family"].toString(), QStringLiteral("Kel"));
}
