// The `tavro clips` and `tavro convert` commands, run as a user would.
#include "CardTreeBuilder.h"
#include "FfmpegClipBuilder.h"
#include "TestFiles.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ClipCommandsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_card = std::make_unique<CardTreeBuilder>(m_dir.filePath("card"));
        m_env = QStringList { "XDG_CACHE_HOME=" + m_dir.filePath("cache") };
    }

    TestFiles::CliResult run(const QStringList& args, const QStringList& extraEnv = {})
    {
        return TestFiles::runCli(args, m_env + extraEnv);
    }

    QTemporaryDir m_dir;
    std::unique_ptr<CardTreeBuilder> m_card;
    QStringList m_env;
};

TEST_F(ClipCommandsTest, ClipsPrintsOneLinePerRowInDisplayedOrder)
{
    m_card->addAll({ "evt_rec/e_R.mp4", "evt_rec/e_F.mp4", "parking_rec/p.AVI",
        "Saved_Videos/s.mov", "cont_rec/c.mp4", "cont_rec/x.mkv", "top \"q\".mp4" });
    const QString root = m_card->root();
    auto line = [&root](const QString& rel, const QString& partner, bool saved) {
        return QStringLiteral("{\"name\":\"%1\",\"path\":\"%2\",\"partner\":\"%3\",\"saved\":%4}")
            .arg(QString(rel).section('/', -1).replace("\"", "\\\""),
                QString(root + '/' + rel).replace("\"", "\\\""), partner, saved ? "true" : "false");
    };
    const QString fileRoot = QUrl::fromLocalFile(root).toString(QUrl::FullyEncoded);
    const QString all = QStringList {
        line("Saved_Videos/s.mov", "", true),
        line("cont_rec/c.mp4", "", false),
        line("evt_rec/e_F.mp4", fileRoot + "/evt_rec/e_R.mp4", false),
        line("evt_rec/e_R.mp4", fileRoot + "/evt_rec/e_F.mp4", false),
        line("parking_rec/p.AVI", "", false),
        line("top \"q\".mp4", "", false),
    }.join('\n') + '\n';
    auto result = run({ "clips", root });
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(QString::fromUtf8(result.out), all);

    result = run({ "clips", root, "--filter", "event" });
    EXPECT_EQ(result.exitCode, 0);
    const QString event = QStringList {
        line("evt_rec/e_F.mp4", fileRoot + "/evt_rec/e_R.mp4", false),
        line("evt_rec/e_R.mp4", fileRoot + "/evt_rec/e_F.mp4", false),
        line("parking_rec/p.AVI", "", false),
    }.join('\n') + '\n';
    EXPECT_EQ(QString::fromUtf8(result.out), event);
    result = run({ "clips", "--filter", "continuous", root });
    EXPECT_EQ(QString::fromUtf8(result.out), line("cont_rec/c.mp4", "", false) + '\n');
    result = run({ "clips", root, "--filter", "manual" });
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.isEmpty());
}

TEST_F(ClipCommandsTest, ClipsRefusesBadCommandLines)
{
    const QString root = m_card->root();
    const QList<QStringList> usage { { "clips" }, { "clips", root, "--filter" },
        { "clips", root, "--filter", "parking" }, { "clips", root, root },
        { "clips", root, "--sort" } };
    for (const QStringList& args : usage) {
        const auto result = run(args);
        EXPECT_EQ(result.exitCode, 2) << qPrintable(args.join(' '));
        EXPECT_TRUE(result.out.isEmpty());
    }
    const auto missing = run({ "clips", m_dir.filePath("absent") });
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains("absent"));
}

TEST_F(ClipCommandsTest, ConvertPrintsThePlayableFiles)
{
    const QString mov = m_card->add("manual_rec/m.mov", "not inspected");
    auto result = run({ "convert", mov });
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(QJsonDocument::fromJson(result.out).object(),
        (QJsonObject { { "files", QJsonArray { mov } } }));

    EXPECT_EQ(run({ "convert" }).exitCode, 2);
    EXPECT_EQ(run({ "convert", mov, mov }).exitCode, 2);
    EXPECT_EQ(run({ "convert", m_dir.filePath("absent.mp4") }).exitCode, 1);

    if (!TestFiles::haveTool("ffmpeg"))
        GTEST_SKIP() << "ffmpeg is not installed";
    const QString front = m_card->path("evt_rec/a_F.mp4");
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(front, FfmpegClipBuilder::telemetrySrt(1, 5)));
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(
        m_card->path("evt_rec/a_R.mp4"), FfmpegClipBuilder::telemetrySrt(1, 6)));
    result = run({ "convert", front });
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    const QJsonArray files = QJsonDocument::fromJson(result.out).object().value("files").toArray();
    ASSERT_EQ(files.size(), 2) << result.out.constData();
    const QString folder
        = m_dir.filePath("cache/tavro/tavro/work/temp_video/a_F_%1").arg(QFileInfo(front).size());
    EXPECT_EQ(files[0].toString(), folder + "/a_F_f.mov");
    EXPECT_EQ(files[1].toString(), folder + "/a_F_r.mov");
    EXPECT_TRUE(QFileInfo::exists(folder + "/a_F_f.srt"));
    EXPECT_TRUE(QFileInfo::exists(folder + "/a_F_r.srt"));

    // A clip ffmpeg cannot read, and a missing ffmpeg: an empty list and exit 1.
    const QString garbage = m_card->add("evt_rec/g.mp4", QByteArray(2048, 'g'));
    for (const QStringList& env :
        { QStringList {}, QStringList { "TAVRO_FFMPEG=" + m_dir.filePath("none/ffmpeg") } }) {
        result = run({ "convert", garbage }, env);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(QJsonDocument::fromJson(result.out).object(),
            (QJsonObject { { "files", QJsonArray {} } }));
    }
}

} // namespace
