// `tavro settings show|set` run as a user would: the words it takes, the page
// it prints, and the card it writes.
#include "KelPageFixture.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// `tavro settings WORDS` with the card folder after the first word.
TestFiles::CliResult settings(const QString& dir, const QString& words, const QStringList& env = {})
{
    QStringList args = words.split(u' ', Qt::SkipEmptyParts);
    args.insert(1, dir);
    return TestFiles::runCli(QStringList { QStringLiteral("settings") } + args, env);
}

QJsonObject page(const TestFiles::CliResult& result)
{
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(result.out.count('\n'), 1) << result.out.constData();
    return QJsonDocument::fromJson(result.out).object();
}

using SettingsCliTest = KelPageFixture;

} // namespace

TEST_F(SettingsCliTest, ProblemsNameTheWordAndWriteNothing)
{
    m_card.blackboxCfg(crlfLines(lines()));
    const QByteArray before = cardFile();
    const std::pair<const char*, const char*> cases[] = {
        { "list", "expected show or set and a card folder" },
        { "set", "set needs at least one NAME=VALUE, --reset or --clock" },
        { "set a=2147483648", "'a=2147483648' needs an integer value" },
        { "set a=-2147483649", "'a=-2147483649' needs an integer value" },
        { "set c=x=3", "'c=x=3' needs an integer value" },
        { "set =1", "unexpected argument '=1'" },
        { "show a=1", "unexpected argument 'a=1'" },
        { "set dstRadioGroup=0 --answer maybe", "--answer takes yes or no" },
        { "set dstRadioGroup=0 --clock", "--clock needs a value" },
        { "set --clock 2024-02-30T08:00:00",
            "--clock takes now, off or YYYY-MM-DDTHH:MM:SS, got '2024-02-30T08:00:00'" },
        { "show --model-type six", "--model-type needs an integer, got 'six'" },
        { "set noSuchControl=1", "the page has no control 'noSuchControl'" },
        { "set dstRadioGroup=0 impactSensitivitySlider=9",
            "impactSensitivitySlider=9 is out of the control's range" },
    };
    for (const auto& [words, problem] : cases) {
        const auto result = settings(m_card.root(), QString::fromLatin1(words));
        EXPECT_EQ(result.exitCode, 2) << words;
        EXPECT_TRUE(result.out.isEmpty()) << words;
        EXPECT_TRUE(result.err.startsWith("tavro: " + QByteArray(problem)))
            << result.err.constData();
    }
    EXPECT_EQ(cardFile(), before);
    // A Kel card, read as the model the words say, and set.
    const QJsonObject shown = page(settings(m_card.root(), "show --model-type 0x6"));
    EXPECT_EQ(shown["family"].toString(), QStringLiteral("Kel"));
    EXPECT_TRUE(shown["userSelectedLanguage"].isNull());
    EXPECT_EQ(shown["controls"].toObject().size(), 14);
    page(settings(m_card.root(), "set memoryPartitionRadioGroup=1 motionSensitivitySlider=+5"));
    EXPECT_EQ(cardFile(), crlfLines(lines("const=35 event=17 park=4 manual=39 motion_level=5")));
}

TEST_F(SettingsCliTest, ABinaryRecordCardThroughResetAndItsClockInThisComputersZone)
{
    // A Tolm camera asking for its clock to be set to 14:05:09 UTC; its
    // default.cfg has another shock sensitivity (acceleration_sensor at 120).
    CardBuilder card;
    card.setupCfg(
        SetupCfgBuilder(432).productName("Tolm").version("1.00.17").int32(120, 3).bytes());
    card.defaultCfg(SetupCfgBuilder(432).productName("Tolm").int32(120, 7).bytes());
    card.file(QStringLiteral("time.dat"), "2016,03,07,14,05,09,+0000");
    const QStringList tokyo { QStringLiteral("TZ=Asia/Tokyo") };
    const QJsonObject before = page(settings(card.root(), "show", tokyo));
    EXPECT_EQ(before["controls"]["alwaysShockSensitivitySlider"]["value"].toInt(), 3);
    EXPECT_TRUE(before["clock"]["checked"].toBool());
    EXPECT_EQ(before["clock"]["value"].toString(), "2016-03-07T23:05:09");
    const QJsonObject reset = page(settings(card.root(), "set --reset --answer yes", tokyo));
    EXPECT_EQ(reset["family"].toString(), QStringLiteral("Tolm"));
    EXPECT_EQ(reset["controls"]["alwaysShockSensitivitySlider"]["value"].toInt(), 7);
    const QByteArray saved = card.read(QStringLiteral("setup.cfg"));
    EXPECT_EQ(saved.size(), 432);
    EXPECT_EQ(saved.mid(120, 4), QByteArray("\x07\0\0\0", 4));
    EXPECT_EQ(saved.mid(8, 5), QByteArray("Tolm\0", 5));
    // OK writes the same instant back, from this computer's zone.
    EXPECT_EQ(card.read(QStringLiteral("time.dat")), QByteArray("2016,03,07,23,05,09,+0900"));
}

TEST_F(SettingsCliTest, UnwritableWebAndUnknownCards)
{
    // The camera's file is found under "setting", but SETTING/blackbox.cfg,
    // where writes go, is a folder.
    m_card.blackboxCfg(crlfLines(lines()), QStringLiteral("setting"));
    QDir().mkpath(m_card.path(QStringLiteral("blackbox.cfg")));
    const auto result = settings(m_card.root(), "set dstRadioGroup=0");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains("memory card")) << result.err.constData();
    CardBuilder web, unknown;
    web.setupCfg(SetupCfgBuilder(700).productName("zenti").bytes());
    const std::pair<const CardBuilder*, int> cards[] = { { &web, 16 }, { &unknown, -1 } };
    for (const auto& [card, type] : cards) {
        const QJsonObject shown = page(settings(card->root(), "show"));
        EXPECT_EQ(shown["modelType"].toInt(), type);
        EXPECT_TRUE(shown["family"].isNull() && shown["controls"].toObject().isEmpty());
        EXPECT_TRUE(!shown["clock"]["checked"].toBool(true) && shown["clock"]["value"].isNull());
        EXPECT_EQ(settings(card->root(), "set dstRadioGroup=0").exitCode, 2);
    }
}
