// The demo-card generator, run with a tiny configuration, checked with the
// viewer's own parsers (through the tavro tool), ffprobe, ffmpeg and mpv.

#include "TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

struct ProgramRun {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

ProgramRun runProgram(const QString& program, const QStringList& args)
{
    QProcess process;
    process.start(program, args);
    ProgramRun run;
    if (!process.waitForFinished(180000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

ProgramRun makeCard(const QStringList& args)
{
    return runProgram(QStringLiteral(TAVRO_MAKE_DEMO_CARD_PATH), args);
}

constexpr int kClipSeconds = 3;
constexpr int kSamplesPerClip = kClipSeconds * 10;

// Few short, small clips: the whole card in seconds.
QStringList tinyCard(const QString& out, int seed)
{
    return { QStringLiteral("--out"), out, QStringLiteral("--length"),
        QString::number(kClipSeconds), QStringLiteral("--clips"), QStringLiteral("2"),
        QStringLiteral("--front-size"), QStringLiteral("192x108"), QStringLiteral("--rear-size"),
        QStringLiteral("96x54"), QStringLiteral("--fps"), QStringLiteral("10"),
        QStringLiteral("--seed"), QString::number(seed) };
}

const QStringList kCardFolders { "cont_rec", "evt_rec", "motion_rec", "manual_rec", "parking_rec",
    "motion_timelapse_rec", "Saved_Videos" };

// Every clip file of a card, in its card folders, sorted by path.
QStringList clipFiles(const QString& card)
{
    QStringList files;
    for (const QString& folder : kCardFolders) {
        QDirIterator it(
            card + QLatin1Char('/') + folder, { "*.mp4", "*.avi", "*.mov" }, QDir::Files);
        while (it.hasNext())
            files << it.next();
    }
    files.sort();
    return files;
}

QString nameOf(const QString& path)
{
    return QFileInfo(path).fileName();
}
QString folderOf(const QString& path)
{
    return QFileInfo(path).dir().dirName();
}

bool isKelName(const QString& name)
{
    static const QRegularExpression kel(QStringLiteral("^(Rec|Event|Park|Manual)_.*\\.avi$"));
    return kel.match(name).hasMatch();
}

struct Sample {
    int x = 0, y = 0, z = 0;
    double lat = 0, lng = 0;
    int speed = 0;
};

struct Telemetry {
    QString loader;
    int count = -1;
    int gps = -1;
    QVector<Sample> samples;

    int peakKnock() const
    {
        int peak = 0;
        for (const Sample& s : samples)
            peak = std::max(peak, std::abs(s.x) + std::abs(s.y) + std::abs(s.z - 128));
        return peak;
    }
};

// The telemetry of every file, as `tavro telemetry --loader auto` reads it.
QMap<QString, Telemetry> telemetryOf(const QStringList& files)
{
    QMap<QString, Telemetry> result;
    const TestFiles::CliResult run = TestFiles::runCli(
        QStringList { "telemetry", "--loader", "auto", "--format", "json" } + files);
    EXPECT_EQ(run.exitCode, 0) << run.err.constData();
    for (const QByteArray& line : run.out.split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (object.isEmpty())
            continue;
        Telemetry telemetry;
        telemetry.loader = object.value("loader").toString();
        telemetry.count = object.value("clipDataCount").toInt(-1);
        telemetry.gps = object.value("gpsDataCount").toInt(-1);
        for (const QJsonValue& value : object.value("samples").toArray()) {
            const QJsonArray s = value.toArray();
            telemetry.samples.push_back({ s[0].toInt(), s[1].toInt(), s[2].toInt(), s[3].toDouble(),
                s[4].toDouble(), s[5].toInt() });
        }
        result.insert(QFileInfo(object.value("file").toString()).absoluteFilePath(), telemetry);
    }
    return result;
}

double metresBetween(const Sample& a, const Sample& b)
{
    const double dy = (b.lat - a.lat) * 111320.0;
    const double dx = (b.lng - a.lng) * 111320.0 * std::cos(a.lat * M_PI / 180.0);
    return std::hypot(dx, dy);
}

// The stream kinds ffprobe finds, e.g. "video,video,audio"; empty on failure.
QString streamKinds(const QString& file, QString& errors)
{
    const ProgramRun run = runProgram(QStringLiteral("ffprobe"),
        { "-v", "error", "-show_entries", "stream=codec_type", "-of", "csv=p=0", file });
    errors = QString::fromLocal8Bit(run.err).trimmed();
    if (run.exitCode != 0)
        return QString();
    return QString::fromLatin1(run.out).trimmed().split(QLatin1Char('\n')).join(QLatin1Char(','));
}

class DemoCardTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
            return;
        s_dir = std::make_unique<QTemporaryDir>();
        s_card = s_dir->filePath("card");
        s_run = makeCard(tinyCard(s_card, 7));
        s_files = clipFiles(s_card);
        s_telemetry = telemetryOf(s_files);
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
        const QRegularExpression re(pattern);
        QStringList matching;
        for (const QString& file : s_files)
            if (re.match(folderOf(file) + QLatin1Char('/') + nameOf(file)).hasMatch())
                matching << file;
        return matching;
    }

    static inline std::unique_ptr<QTemporaryDir> s_dir;
    static inline QString s_card;
    static inline ProgramRun s_run;
    static inline QStringList s_files;
    static inline QMap<QString, Telemetry> s_telemetry;
};

TEST_F(DemoCardTest, WritesEveryRecordingKindIntoItsCardFolder)
{
    for (const QString& folder : kCardFolders)
        EXPECT_FALSE(filesMatching("^" + folder + "/").isEmpty()) << qPrintable(folder);
    const QStringList expected {
        "^cont_rec/\\d{8}_\\d{6}_F\\.mp4$",
        "^cont_rec/\\d{8}_\\d{6}_R\\.mp4$",
        "^cont_rec/Rec_.*\\.avi$",
        "^cont_rec/.*_T\\.avi$",
        "^manual_rec/.*_M\\.avi$",
        "^manual_rec/Manual_.*\\.avi$",
        "^evt_rec/.*_F_BC\\.mp4$",
        "^evt_rec/.*_R_BC\\.mp4$",
        "^evt_rec/Event_.*\\.avi$",
        "^parking_rec/Park_.*\\.avi$",
        "^motion_rec/.*\\.avi$",
        "^motion_timelapse_rec/.*\\.mov$",
        "^Saved_Videos/.*\\.mp4$",
    };
    for (const QString& pattern : expected)
        EXPECT_FALSE(filesMatching(pattern).isEmpty()) << qPrintable(pattern);
    // Two continuous pairs, an event pair and a "BC" pair, nine single files.
    EXPECT_EQ(s_files.size(), 4 + 2 + 2 + 9);
    // The tail block sits within the window the viewer searches.
    for (const QString& file : filesMatching("_T\\.avi$")) {
        const QByteArray bytes = TestFiles::read(file);
        EXPECT_GE(bytes.right(33006).indexOf("ETKLP1"), 0) << qPrintable(file);
    }
}

TEST_F(DemoCardTest, ListsFrontAndRearClipsAsPartners)
{
    const TestFiles::CliResult run = TestFiles::runCli({ "clips", s_card });
    ASSERT_EQ(run.exitCode, 0) << run.err.constData();
    QMap<QString, QString> partners;
    for (const QByteArray& line : run.out.split('\n')) {
        const QJsonObject row = QJsonDocument::fromJson(line).object();
        if (!row.isEmpty())
            partners.insert(row.value("name").toString(), row.value("partner").toString());
    }
    EXPECT_EQ(partners.size(), s_files.size());
    int pairs = 0;
    for (const QString& file : filesMatching("_F\\.mp4$")) {
        const QString rear = QString(file).replace("_F.mp4", "_R.mp4");
        EXPECT_EQ(partners.value(nameOf(file)), QUrl::fromLocalFile(rear).toString())
            << qPrintable(file);
        EXPECT_EQ(partners.value(nameOf(rear)), QUrl::fromLocalFile(file).toString())
            << qPrintable(rear);
        ++pairs;
    }
    EXPECT_EQ(pairs, 3);
}

TEST_F(DemoCardTest, EveryClipButTheExportCarriesTelemetry)
{
    ASSERT_EQ(s_telemetry.size(), s_files.size());
    for (const QString& file : s_files) {
        const Telemetry& t = s_telemetry[file];
        const QString name = folderOf(file) + "/" + nameOf(file);
        EXPECT_EQ(t.loader, isKelName(nameOf(file)) ? "kel" : "general") << qPrintable(name);
        if (folderOf(file) == "Saved_Videos") {
            EXPECT_EQ(t.count, 0) << qPrintable(name);
            continue;
        }
        EXPECT_EQ(t.count, kSamplesPerClip) << qPrintable(name);
        if (folderOf(file) == "motion_rec") {
            // The receiver finds its fix while the clip runs.
            EXPECT_GT(t.gps, 0) << qPrintable(name);
            EXPECT_LT(t.gps, t.count) << qPrintable(name);
        } else {
            EXPECT_EQ(t.gps, t.count) << qPrintable(name);
        }
    }
}

TEST_F(DemoCardTest, TheDriveIsOneRouteAcrossConsecutiveClips)
{
    // Front files of the drive, in recording order (the time stamp in the name).
    QStringList drive
        = filesMatching("^(cont_rec|manual_rec|evt_rec)/.*(_F|_F_BC|_T|_M)\\.(mp4|avi)$")
        + filesMatching("^(cont_rec|manual_rec|evt_rec)/(Rec|Event|Manual)_");
    const QRegularExpression stamp(QStringLiteral("\\d{8}_\\d{6}"));
    std::sort(drive.begin(), drive.end(), [&](const QString& a, const QString& b) {
        return stamp.match(nameOf(a)).captured() < stamp.match(nameOf(b)).captured();
    });
    ASSERT_EQ(drive.size(), 9);
    for (qsizetype i = 0; i < drive.size(); ++i) {
        const QVector<Sample>& samples = s_telemetry[drive[i]].samples;
        ASSERT_EQ(samples.size(), kSamplesPerClip) << qPrintable(drive[i]);
        for (const Sample& s : samples) {
            EXPECT_TRUE(s.lat > 37.2 && s.lat < 37.4 && s.lng > 126.9 && s.lng < 127.1)
                << qPrintable(drive[i]) << " " << s.lat << "," << s.lng;
            EXPECT_TRUE(s.speed >= 0 && s.speed <= 110) << s.speed;
            EXPECT_NEAR(s.z, 128, 130) << qPrintable(drive[i]);
        }
        for (qsizetype k = 10; k < samples.size(); k += 10)
            EXPECT_LE(std::abs(samples[k].speed - samples[k - 10].speed), 30)
                << qPrintable(drive[i]);
        if (i == 0)
            continue;
        // One second of driving lies between the last fix of a clip and the
        // first of the next.
        const Sample& end = s_telemetry[drive[i - 1]].samples.back();
        EXPECT_LT(metresBetween(end, samples.front()), 40.0) << qPrintable(drive[i]);
    }
    // The car pulls away: it is faster at the end of the drive than at the start.
    EXPECT_GT(s_telemetry[drive.back()].samples.back().speed,
        s_telemetry[drive.front()].samples.front().speed);
}

TEST_F(DemoCardTest, EventClipsFeelTheKnockAndDrivingClipsDoNot)
{
    for (const QString& file :
        filesMatching("^(evt_rec/.*(_F|_F_BC)\\.mp4|evt_rec/Event_|parking_rec/Park_)"))
        EXPECT_GT(s_telemetry[file].peakKnock(), 150) << qPrintable(file);
    for (const QString& file : filesMatching("^(cont_rec|motion_rec|motion_timelapse_rec)/"))
        EXPECT_LT(s_telemetry[file].peakKnock(), 120) << qPrintable(file);
}

TEST_F(DemoCardTest, FfprobeFindsTheCameraStreamsInEveryFile)
{
    const QList<QPair<QString, QString>> expected {
        { "^(cont_rec|evt_rec)/.*\\.mp4$", "video,subtitle" },
        { "^Saved_Videos/", "video" },
        { "^motion_timelapse_rec/", "video" },
        { "^cont_rec/.*_T\\.avi$", "video,audio" },
        { "^(cont_rec/Rec_|evt_rec/Event_|parking_rec/Park_|motion_rec/)", "video,video" },
        { "^manual_rec/", "video,video,audio" },
    };
    int checked = 0;
    for (const auto& [pattern, kinds] : expected) {
        for (const QString& file : filesMatching(pattern)) {
            QString errors;
            EXPECT_EQ(streamKinds(file, errors), kinds) << qPrintable(file);
            EXPECT_TRUE(errors.isEmpty()) << qPrintable(file) << ": " << qPrintable(errors);
            ++checked;
        }
    }
    EXPECT_EQ(checked, s_files.size());
    // The last continuous pair is H.265.
    const QString hevc = filesMatching("^cont_rec/.*_F\\.mp4$").last();
    const ProgramRun codec = runProgram("ffprobe",
        { "-v", "error", "-select_streams", "v:0", "-show_entries", "stream=codec_name", "-of",
            "csv=p=0", hevc });
    EXPECT_EQ(codec.out.trimmed(), "hevc");
}

TEST_F(DemoCardTest, RewrittenAviClipsDecodeWholeAndPlay)
{
    for (const QString& file : filesMatching("\\.avi$")) {
        const ProgramRun decode = runProgram(
            "ffmpeg", { "-nostdin", "-v", "error", "-i", file, "-map", "0", "-f", "null", "-" });
        EXPECT_EQ(decode.exitCode, 0) << qPrintable(file);
        EXPECT_TRUE(decode.err.trimmed().isEmpty())
            << qPrintable(file) << ": " << decode.err.constData();
        // Every frame of both cameras is there (10 frames a second).
        const ProgramRun frames = runProgram("ffprobe",
            { "-v", "error", "-count_packets", "-select_streams", "v", "-show_entries",
                "stream=nb_read_packets", "-of", "csv=p=0", file });
        for (const QByteArray& count : frames.out.trimmed().split('\n'))
            EXPECT_EQ(count.toInt(), kClipSeconds * 10) << qPrintable(file);
        if (TestFiles::haveTool("mpv")) {
            const ProgramRun play = runProgram(
                "mpv", { "--no-config", "--vo=null", "--ao=null", "--frames=5", file });
            EXPECT_EQ(play.exitCode, 0) << qPrintable(file) << ": " << play.err.constData();
        }
    }
}

TEST_F(DemoCardTest, TheCardsIdentifyAsTheirCameras)
{
    const QList<QPair<QString, int>> cards { { s_card, 1 }, { s_card + "-kel", 6 },
        { s_card + "-web", 16 } };
    for (const auto& [card, modelType] : cards) {
        const TestFiles::CliResult run = TestFiles::runCli({ "card", "identify", card });
        ASSERT_EQ(run.exitCode, 0) << run.err.constData();
        EXPECT_EQ(QJsonDocument::fromJson(run.out).object().value("modelType").toInt(-2), modelType)
            << qPrintable(card);
    }
    EXPECT_EQ(QFileInfo(s_card + "/SETTING/default.cfg").size(), 432);
    EXPECT_EQ(QFileInfo(s_card + "/SETTING/setup.cfg").size(), 432);
    EXPECT_TRUE(QFileInfo(s_card + "-web/SETTING/html").isDir());
    // The web-configured camera carries its settings page and its factory record.
    EXPECT_TRUE(TestFiles::read(s_card + "-web/SETTING/html/index.html").contains("get_cfg"));
    EXPECT_EQ(QFileInfo(s_card + "-web/SETTING/default.cfg").size(),
        QFileInfo(s_card + "-web/SETTING/setup.cfg").size());
    const TestFiles::CliResult languages = TestFiles::runCli({ "languages", s_card });
    EXPECT_TRUE(languages.out.contains("[1,\"ko\"]")) << languages.out.constData();
    const TestFiles::CliResult kel = TestFiles::runCli({ "kel", "show", s_card + "-kel" });
    EXPECT_TRUE(kel.out.contains("model=Wenna")) << kel.out.constData();
}

TEST_F(DemoCardTest, OneSeedAlwaysWritesTheSameCard)
{
    QTemporaryDir again;
    const ProgramRun run = makeCard(tinyCard(again.filePath("card"), 7) << "--no-extra-cards");
    ASSERT_EQ(run.exitCode, 0) << run.err.constData();
    const QStringList files = clipFiles(again.filePath("card"));
    ASSERT_EQ(files.size(), s_files.size());
    for (qsizetype i = 0; i < files.size(); ++i) {
        EXPECT_EQ(nameOf(files[i]), nameOf(s_files[i]));
        EXPECT_TRUE(TestFiles::read(files[i]) == TestFiles::read(s_files[i]))
            << qPrintable(files[i]);
    }
    // Another seed drives differently (other road noise), on the same route.
    QTemporaryDir other;
    const ProgramRun otherRun = makeCard(tinyCard(other.filePath("card"), 8) << "--no-extra-cards");
    ASSERT_EQ(otherRun.exitCode, 0) << otherRun.err.constData();
    const QString first = filesMatching("^cont_rec/.*_F\\.mp4$").first();
    const QString otherFirst = other.filePath("card/cont_rec/") + nameOf(first);
    const Telemetry a = s_telemetry[first];
    const Telemetry b = telemetryOf({ otherFirst }).value(otherFirst);
    ASSERT_EQ(b.count, a.count);
    bool differs = false;
    for (qsizetype k = 0; k < a.samples.size(); ++k)
        differs = differs || a.samples[k].x != b.samples[k].x || a.samples[k].y != b.samples[k].y;
    EXPECT_TRUE(differs);
}

TEST_F(DemoCardTest, LeavesAnUpToDateCardAloneAndRefusesForeignFolders)
{
    const QString clip = s_files.first();
    const QDateTime before = QFileInfo(clip).lastModified();
    const ProgramRun again = makeCard(tinyCard(s_card, 7));
    EXPECT_EQ(again.exitCode, 0);
    EXPECT_TRUE(again.err.contains("up to date")) << again.err.constData();
    EXPECT_EQ(QFileInfo(clip).lastModified(), before);

    // A card whose writing was cut short is written again.
    QTemporaryDir cut;
    TestFiles::write(cut.filePath(".make-demo-card"), "unfinished\n");
    TestFiles::write(cut.filePath("cont_rec/20260514_081500_F.mp4"), "half a clip");
    const ProgramRun redone = makeCard({ "--out", cut.path(), "--length", "2", "--clips", "1",
        "--front-size", "64x36", "--rear-size", "32x18", "--no-extra-cards" });
    EXPECT_EQ(redone.exitCode, 0) << redone.err.constData();
    EXPECT_GT(QFileInfo(cut.filePath("cont_rec/20260514_081500_F.mp4")).size(), 1000);

    QTemporaryDir foreign;
    TestFiles::write(foreign.filePath("holiday.mp4"), "not ours");
    const ProgramRun refused = makeCard(tinyCard(foreign.path(), 7));
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(TestFiles::read(foreign.filePath("holiday.mp4")), "not ours");

    for (const QStringList& bad :
        { QStringList { "--length", "0" }, QStringList { "--front-size", "301x100" },
            QStringList { "--resolution", "4k" }, QStringList {} }) {
        QStringList args = bad;
        if (!bad.isEmpty())
            args << "--out" << foreign.filePath("new");
        EXPECT_EQ(makeCard(args).exitCode, 2) << qPrintable(bad.join(' '));
    }
}

} // namespace
