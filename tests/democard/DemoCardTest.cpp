// The demo-card generator, run with a tiny configuration, checked with the
// viewer's own parsers (through the tavro tool), ffprobe and ffmpeg.

#include "TestFiles.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr int kClipSeconds = 3; // ten samples and ten frames a second

TestFiles::CliResult runProgram(const QString& program, const QStringList& args)
{
    QProcess process;
    process.start(program, args);
    if (!process.waitForFinished(180000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return { process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError() };
}

// Few short, small clips: the whole card in seconds.
TestFiles::CliResult makeCard(const QString& out, int seed, const QStringList& more = {})
{
    return runProgram(TAVRO_MAKE_DEMO_CARD_PATH,
        QStringList { "--out", out, "--length", QString::number(kClipSeconds), "--clips", "2",
            "--front-size", "192x108", "--rear-size", "96x54", "--fps", "10", "--seed",
            QString::number(seed) }
            + more);
}

// Every clip of a card, as "folder/name", sorted.
QStringList clipFiles(const QString& card)
{
    QStringList files;
    for (QDirIterator it(
             card, { "*.mp4", "*.avi", "*.mov" }, QDir::Files, QDirIterator::Subdirectories);
         it.hasNext();)
        files << QDir(card).relativeFilePath(it.next());
    files.sort();
    return files;
}

struct Sample {
    int x, y, z;
    double lat, lng;
    int speed;
};
struct Telemetry {
    QString loader;
    int count = -1;
    int gps = -1;
    std::vector<Sample> samples;
};

// The telemetry of each clip, as `tavro telemetry --loader auto` reads it.
QMap<QString, Telemetry> telemetryOf(const QString& card, const QStringList& files)
{
    QStringList paths;
    for (const QString& file : files)
        paths << card + u'/' + file;
    const TestFiles::CliResult run = TestFiles::runCli(
        QStringList { "telemetry", "--loader", "auto", "--format", "json" } + paths);
    EXPECT_EQ(run.exitCode, 0) << run.err.constData();
    QMap<QString, Telemetry> result;
    for (const QByteArray& line : run.out.split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (object.isEmpty())
            continue;
        Telemetry& t = result[QDir(card).relativeFilePath(object.value("file").toString())];
        t = { object.value("loader").toString(), object.value("clipDataCount").toInt(-1),
            object.value("gpsDataCount").toInt(-1), {} };
        for (const QJsonValue& value : object.value("samples").toArray()) {
            const QJsonArray s = value.toArray();
            t.samples.push_back({ s[0].toInt(), s[1].toInt(), s[2].toInt(), s[3].toDouble(),
                s[4].toDouble(), s[5].toInt() });
        }
    }
    return result;
}

class DemoCardTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
            return;
        s_dir = std::make_unique<QTemporaryDir>();
        s_card = s_dir->filePath("card");
        s_run = makeCard(s_card, 7);
        s_files = clipFiles(s_card);
        s_telemetry = telemetryOf(s_card, s_files);
    }
    static void TearDownTestSuite() { s_dir.reset(); }
    void SetUp() override
    {
        if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
            GTEST_SKIP() << "ffmpeg and ffprobe are needed";
        ASSERT_EQ(s_run.exitCode, 0) << s_run.err.constData();
    }
    static QStringList filesMatching(const QString& pattern)
    {
        return s_files.filter(QRegularExpression(pattern));
    }

    static inline std::unique_ptr<QTemporaryDir> s_dir;
    static inline QString s_card;
    static inline TestFiles::CliResult s_run;
    static inline QStringList s_files;
    static inline QMap<QString, Telemetry> s_telemetry;
};

// Each clip's folder and name, its streams as ffprobe finds them, and its
// telemetry as the viewer reads it (the Kel loader for the Kel names).
TEST_F(DemoCardTest, EveryRecordingKindInItsFolderWithItsStreamsAndTelemetry)
{
    // GPS: the receiver finds its fix while a motion clip runs; knock: event
    // and parking clips feel it (peak > 150), driving clips don't (< 120).
    enum Gps { All, Some, NoTelemetry };
    enum Knock { Soft = -1, Any, Hard };
    const struct {
        const char* pattern;
        int files;
        const char *streams, *loader;
        Gps gps;
        Knock knock;
    } kinds[] = { { "^cont_rec/\\d{8}_\\d{6}_[FR]\\.mp4$", 4, "video,subtitle", "general", All,
                      Soft },
        { "^cont_rec/\\d{8}_\\d{6}_T\\.avi$", 1, "video,audio", "general", All, Soft },
        { "^cont_rec/Rec_\\d{8}_\\d{6}\\.avi$", 1, "video,video", "kel", All, Soft },
        { "^evt_rec/\\d{8}_\\d{6}_F(_BC)?\\.mp4$", 2, "video,subtitle", "general", All, Hard },
        { "^evt_rec/\\d{8}_\\d{6}_R(_BC)?\\.mp4$", 2, "video,subtitle", "general", All, Any },
        { "^evt_rec/Event_\\d{8}_\\d{6}\\.avi$", 1, "video,video", "kel", All, Hard },
        { "^manual_rec/\\d{8}_\\d{6}_M\\.avi$", 1, "video,video,audio", "general", All, Any },
        { "^manual_rec/Manual_\\d{8}_\\d{6}\\.avi$", 1, "video,video,audio", "kel", All, Any },
        { "^parking_rec/Park_\\d{8}_\\d{6}\\.avi$", 1, "video,video", "kel", All, Hard },
        { "^motion_rec/\\d{8}_\\d{6}_D\\.avi$", 1, "video,video", "general", Some, Soft },
        { "^motion_timelapse_rec/\\d{8}_\\d{6}_TL\\.mov$", 1, "video", "general", All, Soft },
        { "^Saved_Videos/SAVED_\\d{8}_\\d{6}\\.mp4$", 1, "video", "general", NoTelemetry, Any } };
    int matched = 0;
    for (const auto& kind : kinds) {
        const QStringList files = filesMatching(kind.pattern);
        EXPECT_EQ(files.size(), kind.files) << kind.pattern;
        matched += files.size();
        for (const QString& file : files) {
            const TestFiles::CliResult probe = runProgram("ffprobe",
                { "-v", "error", "-show_entries", "stream=codec_type", "-of", "csv=p=0",
                    s_card + u'/' + file });
            EXPECT_EQ(probe.out.trimmed().replace('\n', ','), kind.streams) << qPrintable(file);
            EXPECT_EQ(probe.err.trimmed(), "") << qPrintable(file);
            const Telemetry& t = s_telemetry.value(file);
            EXPECT_EQ(t.loader, kind.loader) << qPrintable(file);
            EXPECT_EQ(t.count, kind.gps == NoTelemetry ? 0 : kClipSeconds * 10) << qPrintable(file);
            EXPECT_TRUE(kind.gps == Some ? t.gps > 0 && t.gps < t.count : t.gps == t.count)
                << qPrintable(file) << " " << t.gps;
            int peak = 0;
            for (const Sample& s : t.samples)
                peak = std::max(peak, std::abs(s.x) + std::abs(s.y) + std::abs(s.z - 128));
            EXPECT_TRUE(kind.knock == Any || (kind.knock == Hard ? peak > 150 : peak < 120))
                << qPrintable(file) << " " << peak;
        }
    }
    EXPECT_EQ(matched, s_files.size());
    // The tail block sits within the window the viewer searches.
    EXPECT_GE(TestFiles::read(s_card + u'/' + filesMatching("_T\\.avi$").value(0))
                  .right(33006)
                  .indexOf("ETKLP1"),
        0);
    // The last continuous pair is H.265.
    const TestFiles::CliResult codec = runProgram("ffprobe",
        { "-v", "error", "-select_streams", "v:0", "-show_entries", "stream=codec_name", "-of",
            "csv=p=0", s_card + u'/' + filesMatching("^cont_rec/.*_F\\.mp4$").last() });
    EXPECT_EQ(codec.out.trimmed(), "hevc");
}

TEST_F(DemoCardTest, TheCardsIdentifyAsTheirCameras)
{
    const std::pair<QString, int> cards[]
        = { { s_card, 1 }, { s_card + "-kel", 6 }, { s_card + "-web", 16 } };
    for (const auto& [card, modelType] : cards) {
        const TestFiles::CliResult run = TestFiles::runCli({ "card", "identify", card });
        EXPECT_EQ(QJsonDocument::fromJson(run.out).object().value("modelType").toInt(-2), modelType)
            << qPrintable(card);
    }
    // The web-configured camera carries its settings page and its factory record.
    EXPECT_TRUE(TestFiles::read(s_card + "-web/SETTING/html/index.html").contains("get_cfg"));
    EXPECT_EQ(QFileInfo(s_card + "-web/SETTING/default.cfg").size(),
        QFileInfo(s_card + "-web/SETTING/setup.cfg").size());
    EXPECT_TRUE(TestFiles::runCli({ "languages", s_card }).out.contains("[1,\"ko\"]"));
}

// The AVI clips the generator rewrites decode whole, every frame of both cameras there.
TEST_F(DemoCardTest, RewrittenAviClipsDecodeWhole)
{
    for (const QString& file : filesMatching("\\.avi$")) {
        const TestFiles::CliResult frames = runProgram("ffprobe",
            { "-v", "error", "-count_frames", "-select_streams", "v", "-show_entries",
                "stream=nb_read_frames", "-of", "csv=p=0", s_card + u'/' + file });
        EXPECT_EQ(frames.err.trimmed(), "") << qPrintable(file);
        for (const QByteArray& count : frames.out.trimmed().split('\n'))
            EXPECT_EQ(count.toInt(), kClipSeconds * 10) << qPrintable(file);
    }
}

TEST_F(DemoCardTest, LeavesAnUpToDateCardAloneRewritesACutOneAndRefusesForeignFolders)
{
    const QDateTime before = QFileInfo(s_card + u'/' + s_files.first()).lastModified();
    const TestFiles::CliResult again = makeCard(s_card, 7);
    EXPECT_EQ(again.exitCode, 0);
    EXPECT_TRUE(again.err.contains("up to date")) << again.err.constData();
    EXPECT_EQ(QFileInfo(s_card + u'/' + s_files.first()).lastModified(), before);

    QTemporaryDir cut;
    TestFiles::write(cut.filePath(".make-demo-card"), "unfinished\n");
    TestFiles::write(cut.filePath("cont_rec/20260514_081500_F.mp4"), "half a clip");
    EXPECT_EQ(runProgram(TAVRO_MAKE_DEMO_CARD_PATH,
                  { "--out", cut.path(), "--length", "2", "--clips", "1", "--front-size", "64x36",
                      "--rear-size", "32x18", "--no-extra-cards" })
                  .exitCode,
        0);
    EXPECT_GT(QFileInfo(cut.filePath("cont_rec/20260514_081500_F.mp4")).size(), 1000);

    QTemporaryDir foreign;
    TestFiles::write(foreign.filePath("holiday.mp4"), "not ours");
    EXPECT_EQ(makeCard(foreign.path(), 7).exitCode, 1);
    EXPECT_EQ(TestFiles::read(foreign.filePath("holiday.mp4")), "not ours");
    EXPECT_EQ(runProgram(TAVRO_MAKE_DEMO_CARD_PATH,
                  { "--front-size", "301x100", "--out", foreign.filePath("new") })
                  .exitCode,
        2);
}

} // namespace
