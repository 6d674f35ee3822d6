// `tavro cut` through the real tool and the real ffmpeg, on a drive of three
// 3-second clips: a red front camera with sound, a blue rear camera (none
// for the last clip), a key frame every second.
#include "DriveClip.h"
#include "MediaProbe.h"
#include "TestFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr int kClipSeconds = 3;
constexpr int kFps = 10;
const QDateTime kStart(QDate(2026, 5, 14), QTime(8, 15, 0), Qt::UTC);

class CutCli : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
            return;
        s_dir = new QTemporaryDir;
        s_made = true;
        for (int i = 0; i < 3; ++i) {
            const QDateTime at = kStart.addSecs(i * kClipSeconds);
            const QString base = s_dir->filePath("card/cont_rec/")
                + at.toString(QStringLiteral("yyyyMMdd_HHmmss"));
            s_made = s_made
                && DriveClip::make(base + "_F.mp4", kClipSeconds, 160, 120, kFps, 0,
                    { at, i * kClipSeconds, -1 }, { "red", true })
                && (i == 2
                    || DriveClip::make(base + "_R.mp4", kClipSeconds, 80, 60, kFps, 7,
                        { at, i * kClipSeconds, -1 }, { "blue", false }));
        }
    }
    static void TearDownTestSuite() { delete s_dir; }

    void SetUp() override
    {
        if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
            GTEST_SKIP() << "ffmpeg is not installed";
        ASSERT_TRUE(s_made);
    }

    // Cuts [from, to) of the drive into out/NAME; the printed line.
    QJsonObject cut(const QString& name, double from, double to, const QStringList& options = {})
    {
        const TestFiles::CliResult run = TestFiles::runCli(
            QStringList { "cut", card(), "--trip", "0", "--from", QString::number(from), "--to",
                QString::number(to), "--output", m_out.filePath(name) }
            + options);
        EXPECT_EQ(run.exitCode, 0) << run.err.constData();
        EXPECT_TRUE(run.err.contains("100%")) << run.err.constData();
        return QJsonDocument::fromJson(run.out).object();
    }

    static QString card() { return s_dir->filePath("card"); }

    QTemporaryDir m_out;
    static inline QTemporaryDir* s_dir = nullptr;
    static inline bool s_made = false;
};

QString utc(double secondsIntoDrive)
{
    return kStart.addMSecs(qint64(secondsIntoDrive * 1000))
        .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz'Z'"));
}

TEST_F(CutCli, CopyRunsAcrossClipsFromTheKeyFrameBeforeTheStart)
{
    // 2.5 s lies after the key frame at 2.0 s of the first clip; the cut
    // runs through the second clip into the third.
    const QJsonObject front = cut("front.mp4", 2.5, 7.4);
    EXPECT_EQ(front["output"].toString(), m_out.filePath("front.mp4"));
    EXPECT_EQ(front["start"].toString(), utc(2.0));
    EXPECT_DOUBLE_EQ(front["duration"].toDouble(), 5.4);
    EXPECT_FALSE(front["reencoded"].toBool());
    const QString report = MediaProbe::describe(m_out.filePath("front.mp4"));
    EXPECT_TRUE(report.contains("width=160\nheight=120\nnb_read_packets=54\n"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("nb_streams=2")) << "the front camera's sound";
    EXPECT_NEAR(MediaProbe::duration(m_out.filePath("front.mp4")), 5.4, 0.1);

    // The rear camera alone: the last clip has none, so the cut ends with
    // the second clip.
    const QJsonObject rear = cut("rear.mp4", 2.5, 7.4, { "--camera", "rear" });
    EXPECT_EQ(rear["start"].toString(), utc(2.0));
    EXPECT_DOUBLE_EQ(rear["duration"].toDouble(), 4.0);
    EXPECT_TRUE(MediaProbe::describe(m_out.filePath("rear.mp4"))
                    .contains("width=80\nheight=60\nnb_read_packets=40\n"));
    EXPECT_EQ(MediaProbe::colourAt(m_out.filePath("rear.mp4"), 1.0, 40, 30, 80), "blue");
}

TEST_F(CutCli, BothCamerasInOnePictureExactToTheFrame)
{
    const QJsonObject pip = cut("pip.mp4", 2.5, 7.4, { "--compose", "pip" });
    EXPECT_EQ(pip["start"].toString(), utc(2.5));
    EXPECT_DOUBLE_EQ(pip["duration"].toDouble(), 4.9);
    EXPECT_TRUE(pip["reencoded"].toBool());
    const QString file = m_out.filePath("pip.mp4");
    EXPECT_TRUE(MediaProbe::describe(file).contains("width=160\nheight=120\nnb_read_packets=49\n"))
        << MediaProbe::describe(file).toStdString();
    EXPECT_NEAR(MediaProbe::duration(file), 4.9, 0.1);
    // The rear inset (40x30) in the lower right, the front all around it;
    // black where the last clip has no rear camera.
    EXPECT_EQ(MediaProbe::colourAt(file, 1.0, 80, 60, 160), "red");
    EXPECT_EQ(MediaProbe::colourAt(file, 1.0, 130, 100, 160), "blue");
    EXPECT_EQ(MediaProbe::colourAt(file, 1.0, 100, 100, 160), "red");
    EXPECT_EQ(MediaProbe::colourAt(file, 4.5, 130, 100, 160), "black");

    const QJsonObject side = cut("side.mp4", 2.5, 7.4, { "--compose", "side" });
    const QString wide = m_out.filePath("side.mp4");
    // One picture the front's size, each camera fitted into its half.
    EXPECT_TRUE(MediaProbe::describe(wide).contains("width=160\nheight=120\nnb_read_packets=49\n"));
    EXPECT_EQ(MediaProbe::colourAt(wide, 1.0, 40, 60, 160), "red");
    EXPECT_EQ(MediaProbe::colourAt(wide, 1.0, 120, 60, 160), "blue");
    EXPECT_EQ(MediaProbe::colourAt(wide, 4.5, 120, 60, 160), "black");
}

TEST_F(CutCli, OverlayDrawsTheTelemetryOnThePicture)
{
    for (const QStringList& options :
        { QStringList { "--overlay" }, QStringList { "--compose", "pip", "--overlay" } }) {
        const QJsonObject drawn = cut("drawn.mp4", 1.0, 4.0, options);
        EXPECT_TRUE(drawn["reencoded"].toBool());
        const QString file = m_out.filePath("drawn.mp4");
        // The text box in the upper left is no longer the camera's red; the
        // middle of the picture still is.
        int changed = 0;
        for (int x = 4; x < 150; x += 4)
            changed += MediaProbe::colourAt(file, 1.5, x, 8, 160) == "red" ? 0 : 1;
        EXPECT_GT(changed, 10) << options.join(' ').toStdString();
        EXPECT_EQ(MediaProbe::colourAt(file, 1.5, 80, 60, 160), "red");
    }
}

TEST_F(CutCli, BadCommandLinesAndUnwritableOutputs)
{
    // `tavro cut CARD --trip ...` into `output`.
    const auto cutInto = [](const QString& options, const QString& output) {
        return TestFiles::runCli(QStringList { "cut", card(), "--trip" } + options.split(' ')
            + QStringList { "--output", output });
    };
    const QString out = m_out.filePath("x.mp4");
    for (const char* options : { "0 --from 1", "0 --from 3 --to 2",
             "0 --from 1 --to 2 --compose grid", "5 --from 1 --to 2", "0 --from 20 --to 30" })
        EXPECT_EQ(cutInto(options, out).exitCode, 2) << options;
    // A folder that does not exist; a folder standing where the file should
    // go (ffmpeg writes, the rename fails): nothing is left behind.
    EXPECT_EQ(cutInto("0 --from 1 --to 2", m_out.filePath("missing/x.mp4")).exitCode, 1);
    ASSERT_TRUE(QDir(m_out.path()).mkdir("taken.mp4"));
    EXPECT_EQ(cutInto("0 --from 1 --to 2", m_out.filePath("taken.mp4")).exitCode, 1);
    EXPECT_EQ(QDir(m_out.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList { "taken.mp4" });
    EXPECT_TRUE(QDir(m_out.filePath("taken.mp4")).isEmpty());
}

TEST_F(CutCli, TerminatedMidwayLeavesNoFile)
{
    // An ffmpeg that starts writing and then takes its time; ffprobe is the
    // real one beside it.
    QTemporaryDir tools;
    const QString ffmpeg = TestFiles::writeStalledFfmpeg(tools.path());

    QProcess tavro;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("TAVRO_FFMPEG", ffmpeg);
    tavro.setProcessEnvironment(env);
    tavro.start(QStringLiteral(TAVRO_CLI_PATH),
        { "cut", card(), "--trip", "0", "--from", "0", "--to", "9", "--compose", "side", "--output",
            m_out.filePath("stopped.mp4") });
    ASSERT_TRUE(tavro.waitForStarted());
    // Wait until ffmpeg has written into the partial file.
    QString partial;
    for (int i = 0; i < 300 && partial.isEmpty(); ++i) {
        tavro.waitForReadyRead(100);
        const QStringList found
            = QDir(m_out.path()).entryList({ "*.part" }, QDir::Hidden | QDir::Files);
        if (!found.isEmpty() && QFileInfo(m_out.filePath(found.first())).size() > 0)
            partial = found.first();
    }
    ASSERT_FALSE(partial.isEmpty());
    tavro.terminate();
    ASSERT_TRUE(tavro.waitForFinished(10000));
    EXPECT_EQ(tavro.exitStatus(), QProcess::CrashExit) << "ends by the signal";
    EXPECT_TRUE(QDir(m_out.path()).isEmpty());
}

} // namespace
