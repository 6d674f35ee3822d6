// The tavro card, config, kel and languages commands run as a user would,
// comparing their exact output and exit codes.
#include "CardBuilder.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace {

TestFiles::CliResult run(const QStringList& args)
{
    return TestFiles::runCli(args);
}

QJsonObject json(const TestFiles::CliResult& result)
{
    QJsonParseError error {};
    const QJsonDocument doc = QJsonDocument::fromJson(result.out, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << result.out.constData();
    return doc.object();
}

struct ExitCase {
    QStringList args;
    int exitCode;
};

} // namespace

TEST(ConfigCliTest, CardIdentifyPrintsTheModel)
{
    CardBuilder card;
    card.setupCfg(SetupCfgBuilder(464).productName("Dravi").version("1.02.17").localId(3).bytes());
    const auto result = run({ QStringLiteral("card"), QStringLiteral("identify"), card.root() });
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(result.out,
        QByteArray(
            "{\"modelType\":3,\"modelName\":\"Dravi\",\"localID\":3,\"firmwareVersionInt\":17,"
            "\"version\":\"1.02.17\",\"fieldCount\":78,\"recordSize\":504}\n"));

    CardBuilder unknown;
    const auto none = run({ QStringLiteral("card"), QStringLiteral("identify"), unknown.root() });
    EXPECT_EQ(none.out,
        QByteArray("{\"modelType\":-1,\"modelName\":null,\"localID\":-1,\"firmwareVersionInt\":0,"
                   "\"version\":null,\"fieldCount\":60,\"recordSize\":432}\n"));
}

TEST(ConfigCliTest, ConfigShowDecodesWithoutWriting)
{
    CardBuilder card;
    const QByteArray file = SetupCfgBuilder(432)
                                .sizeWord(432)
                                .productName("Tolm")
                                .text(380, 32, "Korea \"KST\"")
                                .int32(52, 3)
                                .bytes();
    card.setupCfg(file);
    const auto result = run({ QStringLiteral("config"), QStringLiteral("show"), card.root() });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_TRUE(result.out.startsWith(
        "{\"modelType\":1,\"fieldCount\":60,\"recordSize\":432,\"fields\":{\"checksum\":432,"
        "\"cfg_struct_version\":0,\"product_name\":\"Tolm\",\"serial_number\":\"\","))
        << result.out.constData();
    EXPECT_TRUE(result.out.contains("\"tz_key\":\"Korea \\\"KST\\\"\""));
    EXPECT_TRUE(result.out.endsWith("\"cur_language\":0}}\n"));
    const QJsonObject fields = json(result)[QStringLiteral("fields")].toObject();
    EXPECT_EQ(fields.size(), 60);
    EXPECT_EQ(fields[QStringLiteral("front_resolution")].toInt(), 3);
    EXPECT_EQ(card.read(QStringLiteral("setup.cfg")), file);

    // A record read as a larger model: fields past the file stay absent.
    const auto wide = run({ QStringLiteral("config"), QStringLiteral("show"), card.root(),
        QStringLiteral("--model-type"), QStringLiteral("26") });
    const QJsonObject wideFields = json(wide)[QStringLiteral("fields")].toObject();
    EXPECT_EQ(wideFields.size(), 116);
    EXPECT_EQ(json(wide)[QStringLiteral("recordSize")].toInt(), 596);
    EXPECT_EQ(card.read(QStringLiteral("setup.cfg")), file);
}

TEST(ConfigCliTest, ConfigLoadSetAndDefaultsWriteTheCard)
{
    CardBuilder card;
    card.setupCfg(SetupCfgBuilder(432).productName("Orlo").bytes(), QStringLiteral("setting"));
    const auto load = run({ QStringLiteral("config"), QStringLiteral("load"), card.root() });
    ASSERT_EQ(load.exitCode, 0) << load.err.constData();
    EXPECT_EQ(json(load)[QStringLiteral("fieldCount")].toInt(), 79);
    EXPECT_EQ(card.read(QStringLiteral("setup.cfg")).size(), 508);

    const auto set = run({ QStringLiteral("config"), QStringLiteral("set"), card.root(),
        QStringLiteral("front_resolution=2"), QStringLiteral("tz_key=GMT Standard Time"),
        QStringLiteral("driving_guide_version=0x0D030D00") });
    ASSERT_EQ(set.exitCode, 0) << set.err.constData();
    const QByteArray written = card.read(QStringLiteral("setup.cfg"));
    EXPECT_EQ(written[52], 2);
    EXPECT_EQ(written.mid(380, 18), QByteArray("GMT Standard Time\0", 18));
    EXPECT_EQ(written.mid(224, 4), QByteArray("\x00\x0D\x03\x0D", 4));
    EXPECT_EQ(json(set)[QStringLiteral("fields")]
                  .toObject()[QStringLiteral("driving_guide_version")]
                  .toInt(),
        0x0D030D00);

    CardBuilder blank;
    const auto defaults = run({ QStringLiteral("config"), QStringLiteral("defaults"), blank.root(),
        QStringLiteral("--model-type"), QStringLiteral("4"), QStringLiteral("--local-id"),
        QStringLiteral("3") });
    ASSERT_EQ(defaults.exitCode, 0) << defaults.err.constData();
    const QJsonObject fields = json(defaults)[QStringLiteral("fields")].toObject();
    EXPECT_EQ(fields[QStringLiteral("tz_key")].toString(), QStringLiteral("GMT Standard Time"));
    EXPECT_EQ(fields[QStringLiteral("version")], QJsonValue(QJsonValue::Null));
    EXPECT_EQ(blank.read(QStringLiteral("setup.cfg")).size(), 464);
}

TEST(ConfigCliTest, AnUnknownModelIsNeverWrittenWithoutModelType)
{
    // A record no model claims, and a card without any: nothing is written
    // in a guessed layout.
    CardBuilder odd;
    const QByteArray oddRecord(300, '\x5a');
    odd.setupCfg(oddRecord);
    CardBuilder blank;
    for (const QString& action : { QStringLiteral("load"), QStringLiteral("defaults") }) {
        for (CardBuilder* card : { &odd, &blank }) {
            const auto refused = run({ QStringLiteral("config"), action, card->root() });
            EXPECT_EQ(refused.exitCode, 1) << qPrintable(action);
            EXPECT_TRUE(refused.out.isEmpty());
            EXPECT_TRUE(refused.err.contains("--model-type")) << refused.err.constData();
        }
    }
    const auto set = run({ QStringLiteral("config"), QStringLiteral("set"), odd.root(),
        QStringLiteral("front_resolution=2") });
    EXPECT_EQ(set.exitCode, 1);
    EXPECT_EQ(odd.read(QStringLiteral("setup.cfg")), oddRecord);
    EXPECT_FALSE(QFileInfo::exists(blank.root() + QStringLiteral("/SETTING/setup.cfg")));

    // Told the model, it goes ahead.
    const auto told = run({ QStringLiteral("config"), QStringLiteral("load"), odd.root(),
        QStringLiteral("--model-type"), QStringLiteral("1") });
    EXPECT_EQ(told.exitCode, 0) << told.err.constData();
    EXPECT_NE(odd.read(QStringLiteral("setup.cfg")), oddRecord);
}

TEST(ConfigCliTest, KelCommandsEditTheLineFile)
{
    CardBuilder card;
    card.blackboxCfg(crlfLines({ QStringLiteral("[blackbox]"), QStringLiteral("voice_out=1"),
        QStringLiteral("[time]"), QStringLiteral("set=1") }));
    const auto show = run({ QStringLiteral("kel"), QStringLiteral("show"), card.root() });
    EXPECT_EQ(show.out,
        QByteArray("{\"lines\":[\"[blackbox]\",\"voice_out=1\",\"[time]\",\"set=1\"]}\n"));

    const auto set = run({ QStringLiteral("kel"), QStringLiteral("set"), card.root(),
        QStringLiteral("voice_out=0"), QStringLiteral("mic_in=1") });
    EXPECT_EQ(set.exitCode, 0);
    EXPECT_TRUE(set.err.contains("mic_in="));
    EXPECT_EQ(card.read(QStringLiteral("blackbox.cfg")),
        QByteArray("[blackbox]\r\nvoice_out=0\r\n[time]\r\nset=1"));

    const auto clock = run({ QStringLiteral("kel"), QStringLiteral("clock"), card.root(),
        QStringLiteral("--at"), QStringLiteral("2016-03-07T14:05:09") });
    EXPECT_EQ(clock.out,
        QByteArray("{\"lines\":[\"[blackbox]\",\"voice_out=0\",\"[time]\",\"set=1\",\"year=2016\","
                   "\"month=3\",\"day=7\",\"hour=14\",\"min=5\",\"sec=9\"]}\n"));

    CardBuilder empty;
    const auto defaults = run({ QStringLiteral("kel"), QStringLiteral("show"), empty.root() });
    EXPECT_TRUE(defaults.out.startsWith("{\"lines\":[\"[capacity]\",\"const="));
    EXPECT_FALSE(empty.exists(QStringLiteral("blackbox.cfg")));
}

TEST(ConfigCliTest, LanguagesListsTheCameraAnnouncement)
{
    CardBuilder card;
    card.verDat("# Language ISO Code: en fr\n");
    EXPECT_EQ(run({ QStringLiteral("languages"), card.root() }).out,
        QByteArray("{\"languages\":[[0,\"\"],[1,\"en\"],[2,\"fr\"]]}\n"));
    CardBuilder none;
    EXPECT_EQ(run({ QStringLiteral("languages"), none.root() }).out,
        QByteArray("{\"languages\":[[0,\"en\"],[1,\"fr\"],[4,\"es\"]]}\n"));
}

TEST(ConfigCliTest, ExitCodes)
{
    CardBuilder card;
    card.setupCfg(SetupCfgBuilder(432).productName("Tolm").bytes());
    CardBuilder empty;
    const QString missing = card.root() + QStringLiteral("/no-such-folder");
    const ExitCase cases[] = {
        { { QStringLiteral("card") }, 2 },
        { { QStringLiteral("card"), QStringLiteral("eject"), card.root() }, 2 },
        { { QStringLiteral("card"), QStringLiteral("identify"), missing }, 1 },
        { { QStringLiteral("config"), QStringLiteral("show") }, 2 },
        { { QStringLiteral("config"), QStringLiteral("show"), empty.root() }, 1 },
        { { QStringLiteral("config"), QStringLiteral("show"), missing }, 1 },
        { { QStringLiteral("config"), QStringLiteral("show"), card.root(),
              QStringLiteral("--model-type") },
            2 },
        { { QStringLiteral("config"), QStringLiteral("show"), card.root(),
              QStringLiteral("--model-type"), QStringLiteral("x") },
            2 },
        { { QStringLiteral("config"), QStringLiteral("set"), card.root() }, 2 },
        { { QStringLiteral("config"), QStringLiteral("set"), card.root(),
              QStringLiteral("nope=1") },
            2 },
        { { QStringLiteral("config"), QStringLiteral("set"), card.root(),
              QStringLiteral("front_quality=high") },
            2 },
        { { QStringLiteral("config"), QStringLiteral("set"), card.root(),
              QStringLiteral("front_quality") },
            2 },
        { { QStringLiteral("kel"), QStringLiteral("set"), card.root(), QStringLiteral("novalue") },
            2 },
        { { QStringLiteral("kel"), QStringLiteral("clock"), card.root(), QStringLiteral("--at"),
              QStringLiteral("yesterday") },
            2 },
        { { QStringLiteral("kel"), QStringLiteral("show"), missing }, 1 },
        { { QStringLiteral("languages") }, 2 },
        { { QStringLiteral("languages"), missing }, 1 },
        { { QStringLiteral("config"), QStringLiteral("show"), card.root() }, 0 },
    };
    for (const ExitCase& c : cases) {
        const auto result = run(c.args);
        EXPECT_EQ(result.exitCode, c.exitCode) << qPrintable(c.args.join(u' '));
        if (c.exitCode != 0) {
            EXPECT_TRUE(result.out.isEmpty()) << qPrintable(c.args.join(u' '));
            EXPECT_FALSE(result.err.isEmpty()) << qPrintable(c.args.join(u' '));
        }
    }
}

TEST(ConfigCliTest, AFailedCardWriteReportsTheMemoryCardError)
{
    CardBuilder card;
    TestFiles::write(card.root() + QStringLiteral("/SETTING"), "in the way");
    const auto set = run({ QStringLiteral("config"), QStringLiteral("defaults"), card.root(),
        QStringLiteral("--model-type"), QStringLiteral("1") });
    EXPECT_EQ(set.exitCode, 1);
    EXPECT_TRUE(set.out.isEmpty());
    EXPECT_TRUE(set.err.contains("메모리카드를 확인하여 주시기 바랍니다.")) << set.err.constData();
    const auto kel = run({ QStringLiteral("kel"), QStringLiteral("set"), card.root(),
        QStringLiteral("voice_out=0") });
    EXPECT_EQ(kel.exitCode, 1);
    EXPECT_TRUE(kel.err.contains("메모리카드 오류"));
    EXPECT_EQ(TestFiles::read(card.root() + QStringLiteral("/SETTING")), QByteArray("in the way"));
}
