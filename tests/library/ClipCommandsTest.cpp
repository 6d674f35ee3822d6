// The `tavro clips` and `tavro convert` commands, run as a user would (convert
// with the real ffmpeg on clips generated for the test).
#include "CardTreeBuilder.h"
#include "DriveClip.h"
#include "FfmpegClipBuilder.h"
#include "TestFiles.h"

#include "library/Utils.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ClipCommandsTest : public ::testing::Test {
protected:
    TestFiles::CliResult run(const QStringList& args, const QString& ffmpeg = {})
    {
        QStringList env { "XDG_CACHE_HOME=" + m_dir.filePath("cache") };
        if (!ffmpeg.isEmpty())
            env << "TAVRO_FFMPEG=" + ffmpeg;
        return TestFiles::runCli(args, env);
    }
    QJsonObject files(const QStringList& paths) const
    {
        return { { "files", QJsonArray::fromStringList(paths) } };
    }

    QTemporaryDir m_dir;
    CardTreeBuilder m_card { m_dir.filePath("card") };
};

TEST_F(ClipCommandsTest, ClipsPrintsOneLinePerRowInDisplayedOrder)
{
    m_card.addAll({ "evt_rec/e_R.mp4", "evt_rec/e_F.mp4", "parking_rec/p.AVI", "Saved_Videos/s.mov",
        "cont_rec/c.mp4", "cont_rec/x.mkv", "top \"q\".mp4" });
    const QString root = m_card.root();
    const QString url = QUrl::fromLocalFile(root).toString(QUrl::FullyEncoded);
    auto line = [&root](const QString& rel, const QString& partner = {}) {
        return QStringLiteral("{\"name\":\"%1\",\"path\":\"%2\",\"partner\":\"%3\",\"saved\":%4}\n")
            .arg(QString(rel).section('/', -1).replace("\"", "\\\""),
                QString(root + '/' + rel).replace("\"", "\\\""), partner,
                rel.startsWith("Saved") ? "true" : "false");
    };
    const QString events = line("evt_rec/e_F.mp4", url + "/evt_rec/e_R.mp4")
        + line("evt_rec/e_R.mp4", url + "/evt_rec/e_F.mp4") + line("parking_rec/p.AVI");
    const std::pair<QStringList, QString> cases[] = {
        { { "clips", root },
            line("Saved_Videos/s.mov") + line("cont_rec/c.mp4") + events + line("top \"q\".mp4") },
        { { "clips", root, "--filter", "event" }, events },
        { { "clips", "--filter", "continuous", root }, line("cont_rec/c.mp4") },
        { { "clips", root, "--filter", "manual" }, "" },
    };
    for (const auto& [args, out] : cases) {
        const auto result = run(args);
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        EXPECT_EQ(QString::fromUtf8(result.out), out);
    }
    for (const QStringList& args : { QStringList { "clips" }, { "clips", root, "--filter" },
             { "clips", root, "--filter", "parking" }, { "clips", root, root },
             { "clips", root, "--sort" }, { "convert" }, { "convert", root, root } }) {
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
    const QString mov = m_card.add("manual_rec/m.mov", "not inspected");
    auto result = run({ "convert", mov });
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(QJsonDocument::fromJson(result.out).object(), files({ mov }));
    EXPECT_EQ(run({ "convert", m_dir.filePath("absent.mp4") }).exitCode, 1);
    if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
        GTEST_SKIP() << "ffmpeg is not installed";
    // An MP4 pair: both cameras, each with its telemetry records in a subtitle file.
    const QString front = m_card.path("evt_rec/a_F.mp4");
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(front, DriveClip::telemetrySrt(1, 5), 64))
        << qPrintable(FfmpegClipBuilder::lastLog());
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(
        m_card.path("evt_rec/a_R.mp4"), DriveClip::telemetrySrt(1, 6), 48));
    result = run({ "convert", front });
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    const QString folder
        = m_dir.filePath("cache/tavro/tavro/work/temp_video/a_F_%1").arg(QFileInfo(front).size());
    EXPECT_EQ(QJsonDocument::fromJson(result.out).object(),
        files({ folder + "/a_F_f.mov", folder + "/a_F_r.mov" }));
    for (const auto& [camera, width, tag] :
        { std::tuple { "f", 64, 5 }, std::tuple { "r", 48, 6 } }) {
        const QString base = folder + "/a_F_" + camera;
        EXPECT_EQ(FfmpegClipBuilder::streams(base + ".mov").value(0),
            QStringLiteral("video %1x48").arg(width));
        const QString text = QString::fromUtf8(TestFiles::read(base + ".srt"));
        EXPECT_TRUE(text.contains(QStringLiteral("gsensor,%1,-20,128").arg(tag))) << camera;
        EXPECT_EQ(text.count("GPRMC,000000.00,A,3723.2475,N,12658.4100,E,30.0,"), 1);
        EXPECT_EQ(text.count(" --> "), 11);
    }
    // A two-camera AVI splits into front and rear, the sound (if any) with each.
    for (const bool withAudio : { true, false }) {
        const QString avi = m_card.path(withAudio ? "evt_rec/dual_a.avi" : "evt_rec/dual.avi");
        ASSERT_TRUE(FfmpegClipBuilder::makeDualStreamAvi(avi, withAudio))
            << qPrintable(FfmpegClipBuilder::lastLog());
        EXPECT_EQ(Utils::GetAviType(avi), Utils::kAviTypeH264);
        const QJsonArray made
            = QJsonDocument::fromJson(run({ "convert", avi }).out).object()["files"].toArray();
        ASSERT_EQ(made.size(), 2) << withAudio;
        const QStringList audio = withAudio ? QStringList { "audio" } : QStringList {};
        EXPECT_EQ(
            FfmpegClipBuilder::streams(made[0].toString()), QStringList { "video 64x48" } + audio);
        EXPECT_EQ(
            FfmpegClipBuilder::streams(made[1].toString()), QStringList { "video 32x24" } + audio);
    }
    // Clips ffmpeg cannot read, and a missing ffmpeg: an empty list and exit 1.
    const QString garbage = m_card.add("evt_rec/g.mp4", QByteArray(2048, 'g'));
    const QString garbageAvi = m_card.add(
        "evt_rec/g.avi", QByteArray("RIFF\x10\0\0\0AVI LIST", 16) + QByteArray(500, '\xff'));
    for (const auto& [clip, ffmpeg] :
        { std::pair { garbage, QString() }, std::pair { garbageAvi, QString() },
            std::pair { garbage, m_dir.filePath("none/ffmpeg") } }) {
        result = run({ "convert", clip }, ffmpeg);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(QJsonDocument::fromJson(result.out).object(), files({}));
    }
}

} // namespace
