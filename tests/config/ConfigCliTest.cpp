// The tavro card, config, kel and languages commands run as a user would,
// comparing their exact output and exit codes.
#include "CardBuilder.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include <gtest/gtest.h>

namespace {

// Runs `tavro` with the words of `line`, %1 standing for the card folder
// (temporary folders have no blanks in their names).
TestFiles::CliResult run(const char* line, const CardBuilder& card)
{
    return TestFiles::runCli(QString::fromLatin1(line).arg(card.root()).split(u' '));
}

} // namespace

TEST(ConfigCliTest, CardIdentifyLanguagesAndConfigShowPrintWithoutWriting)
{
    CardBuilder card, unknown;
    const QByteArray record = SetupCfgBuilder(464)
                                  .productName("Dravi")
                                  .version("1.02.17")
                                  .localId(3)
                                  .text(380, 32, "K\"T")
                                  .bytes();
    card.setupCfg(record).verDat("# Language ISO Code: en fr\n");
    EXPECT_EQ(run("card identify %1", card).out,
        "{\"modelType\":3,\"modelName\":\"Dravi\",\"localID\":3,\"firmwareVersionInt\":17,"
        "\"version\":\"1.02.17\",\"fieldCount\":78,\"recordSize\":504}\n");
    EXPECT_EQ(run("card identify %1", unknown).out,
        "{\"modelType\":-1,\"modelName\":null,\"localID\":-1,\"firmwareVersionInt\":0,"
        "\"version\":null,\"fieldCount\":60,\"recordSize\":432}\n");
    EXPECT_EQ(run("languages %1", card).out, "{\"languages\":[[0,\"\"],[1,\"en\"],[2,\"fr\"]]}\n");
    EXPECT_EQ(
        run("languages %1", unknown).out, "{\"languages\":[[0,\"en\"],[1,\"fr\"],[4,\"es\"]]}\n");
    // Fields past the file read as zero; nothing is written.
    const QByteArray shown = run("config show %1 --model-type 26", card).out;
    EXPECT_TRUE(
        shown.startsWith("{\"modelType\":26,\"fieldCount\":116,\"recordSize\":596,\"fields\""
                         ":{\"checksum\":0,\"cfg_struct_version\":0,\"product_name\":\"Dravi\","))
        << shown.constData();
    EXPECT_TRUE(shown.contains(",\"tz_key\":\"K\\\"T\",\"date_format\":0,"));
    EXPECT_TRUE(shown.endsWith(",\"avn_onoff\":0}}\n"));
    EXPECT_EQ(card.read(QStringLiteral("setup.cfg")), record);
}

TEST(ConfigCliTest, LoadSetAndDefaultsWriteTheCardButNeverInAGuessedLayout)
{
    CardBuilder card, odd, blank;
    card.setupCfg(SetupCfgBuilder(432).productName("Orlo").bytes(), QStringLiteral("setting"));
    EXPECT_TRUE(run("config load %1", card).out.contains("\"fieldCount\":79"));
    const auto set = TestFiles::runCli({ "config", "set", card.root(), "front_resolution=2",
        "tz_key=GMT Standard Time", "driving_guide_version=0x0D030D00" });
    ASSERT_EQ(set.exitCode, 0) << set.err.constData();
    const QByteArray written = card.read(QStringLiteral("setup.cfg"));
    EXPECT_EQ(written.mid(52, 4), QByteArray("\x02\0\0\0", 4));
    EXPECT_EQ(written.mid(380, 18), QByteArray("GMT Standard Time\0", 18));
    EXPECT_EQ(written.mid(224, 4), QByteArray("\x00\x0D\x03\x0D", 4));

    // A record no model claims, and a card without any, are refused.
    const QByteArray oddRecord(300, '\x5a');
    odd.setupCfg(oddRecord);
    for (const char* line : { "config load %1", "config defaults %1", "config set %1 wdr=1" }) {
        for (const CardBuilder* refused : { &odd, &blank }) {
            const auto result = run(line, *refused);
            EXPECT_EQ(result.exitCode, 1) << line;
            EXPECT_TRUE(result.err.contains("--model-type")) << result.err.constData();
        }
    }
    EXPECT_EQ(odd.read(QStringLiteral("setup.cfg")), oddRecord);
    EXPECT_FALSE(blank.exists(QStringLiteral("setup.cfg")));
    EXPECT_TRUE(run("config defaults %1 --model-type 4 --local-id 3", blank)
                    .out.contains("\"tz_key\":\"GMT Standard Time\""));
    EXPECT_EQ(blank.read(QStringLiteral("setup.cfg")).size(), 464);
}

TEST(ConfigCliTest, ExitCodesAndTheMemoryCardError)
{
    CardBuilder card, blocked;
    card.setupCfg(SetupCfgBuilder(432).productName("Tolm").bytes());
    const std::pair<const char*, int> cases[] = { { "card", 2 }, { "card eject %1", 2 },
        { "card identify %1/missing", 1 }, { "config show", 2 }, { "config show %1/missing", 1 },
        { "config show %1 --model-type", 2 }, { "config show %1 --model-type x", 2 },
        { "config set %1", 2 }, { "config set %1 nope=1", 2 }, { "config set %1 wdr=high", 2 },
        { "config set %1 wdr", 2 }, { "config set %1 wdr=4294967296", 2 },
        { "config set %1 wdr=4294967295", 0 }, { "kel set %1 novalue", 2 },
        { "kel clock %1 --at yesterday", 2 }, { "kel clock %1 --at 2016-03-07T14:05:09", 0 },
        { "kel show %1/missing", 1 }, { "languages", 2 }, { "languages %1/missing", 1 } };
    for (const auto& [line, exitCode] : cases) {
        const auto result = run(line, card);
        EXPECT_EQ(result.exitCode, exitCode) << line;
        EXPECT_EQ(result.out.isEmpty(), exitCode != 0) << line;
        EXPECT_EQ(result.err.isEmpty(), exitCode == 0) << line;
    }
    TestFiles::write(blocked.root() + QStringLiteral("/SETTING"), "in the way");
    const auto defaults = run("config defaults %1 --model-type 1", blocked);
    EXPECT_EQ(defaults.exitCode, 1);
    EXPECT_TRUE(defaults.err.contains("메모리카드를 확인하여 주시기 바랍니다."))
        << defaults.err.constData();
    EXPECT_EQ(run("kel set %1 voice_out=0", blocked).exitCode, 1);
    EXPECT_EQ(TestFiles::read(blocked.root() + QStringLiteral("/SETTING")), "in the way");
}
