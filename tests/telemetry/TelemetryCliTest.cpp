// `tavro telemetry`: loader choice, JSON and CSV output, exit codes, and the
// MP4 path through ffmpeg's subtitle extraction.

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"
#include "TestFiles.h"
#include "TestTiming.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace TelemetryTestFiles;

namespace {

// `seconds` seconds of ten gsensor records (x = record number) and a fix.
QByteArray subtitleText(int seconds)
{
    SubtitleBuilder srt;
    for (int s = 0; s < seconds; ++s)
        srt.gsensorBlocks(10, s * 10)
            .block(SubtitleBuilder::rmc("A", "3723.2475", "S", "12658.4100", "E", "10.0"));
    return srt.bytes();
}

QByteArray kelClip()
{
    return RiffAviBuilder()
        .aviHeaders()
        .kelGRecord(128, 128, 228)
        .sentence(RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "1.0"))
        .bytes();
}

// Each output line as a JSON object; fails the test on anything else.
QList<QJsonObject> jsonLines(const QByteArray& out)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : out.split('\n')) {
        if (line.isEmpty())
            continue;
        QJsonParseError error;
        const QJsonDocument doc = QJsonDocument::fromJson(line, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << line.constData();
        EXPECT_TRUE(doc.isObject());
        objects.append(doc.object());
    }
    return objects;
}

void expectRecord(
    const QJsonObject& object, const QString& file, const QString& loader, int count, int gpsCount)
{
    SCOPED_TRACE(file.toStdString());
    EXPECT_EQ(object.keys(),
        QStringList({ "clipDataCount", "file", "gpsDataCount", "loader", "samples" }));
    EXPECT_EQ(object["file"].toString(), file);
    EXPECT_EQ(object["loader"].toString(), loader);
    EXPECT_EQ(object["clipDataCount"].toInt(), count);
    EXPECT_EQ(object["gpsDataCount"].toInt(), gpsCount);
    const QJsonArray samples = object["samples"].toArray();
    ASSERT_EQ(samples.size(), count);
    for (const QJsonValue& sample : samples)
        EXPECT_EQ(sample.toArray().size(), 6);
}

bool makeMp4(const QString& path, const QByteArray& srtText)
{
    const QString srt = writeClip("track.srt", srtText);
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg",
        { "-nostdin", "-loglevel", "error", "-y", "-f", "lavfi", "-i",
            "color=c=gray:size=160x90:rate=10:duration=4", "-i", srt, "-map", "0:v", "-map", "1:s",
            "-c:v", "mpeg4", "-c:s", "mov_text", path });
    return ffmpeg.waitForFinished(60000) && ffmpeg.exitCode() == 0;
}

} // namespace

TEST(TelemetryCli, JsonLinePerFile)
{
    const QString srt = writeClip("two.srt", subtitleText(2));
    const QString tail
        = writeClip("tail.avi", TailBlockBuilder().sample(1, "1.25", "-2.5", 30, 1, 2, 3).bytes());
    const QString nothing = writeClip("nothing.avi", "no telemetry here");
    const QString kel = writeClip("Park_20240101.avi", kelClip());
    const auto result = TestFiles::runCli({ "telemetry", srt, tail, nothing, kel });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    const QList<QJsonObject> lines = jsonLines(result.out);
    ASSERT_EQ(lines.size(), 4);
    expectRecord(lines[0], srt, "general", 20, 20);
    expectRecord(lines[1], tail, "general", 1, 1);
    expectRecord(lines[2], nothing, "general", 0, 0);
    expectRecord(lines[3], kel, "kel", 10, 10);

    // Coordinates are printed so they read back as the same float.
    const QJsonArray first = lines[0]["samples"].toArray()[0].toArray();
    EXPECT_EQ(first[0].toInt(), 0);
    EXPECT_EQ(static_cast<float>(first[3].toDouble()), -37.3874588f);
    EXPECT_EQ(static_cast<float>(first[4].toDouble()), 126.973503f);
    EXPECT_EQ(first[5].toInt(), 19);
    EXPECT_EQ(lines[3]["samples"].toArray()[0].toArray()[2].toInt(), 1000);
    EXPECT_TRUE(result.out.contains("-37.3874588,126.973503,19]"));
}

TEST(TelemetryCli, LoaderOptionOverridesTheName)
{
    const QString kel = writeClip("Rec_0001.avi", kelClip());
    const QString lowerCase = writeClip("rec_0001.avi", kelClip());
    const QString upperExt = writeClip("Event_0001.AVI", kelClip());
    // Both loaders read this clip; they differ in the G record's scale.
    const struct {
        QStringList args;
        QString loader;
        int gz;
    } cases[] = {
        { { "--loader", "auto", kel }, "kel", 1000 },
        { { kel, "--loader", "general" }, "general", -100 },
        { { lowerCase }, "general", -100 },
        { { upperExt }, "general", -100 },
        { { "--loader", "kel", upperExt }, "kel", 1000 },
    };
    for (const auto& c : cases) {
        const auto result = TestFiles::runCli(QStringList { "telemetry" } + c.args);
        ASSERT_EQ(result.exitCode, 0) << c.args.join(' ').toStdString();
        const QList<QJsonObject> lines = jsonLines(result.out);
        ASSERT_EQ(lines.size(), 1);
        expectRecord(lines[0], c.args.filter(".").first(), c.loader, 10, 10);
        EXPECT_EQ(lines[0]["samples"].toArray()[0].toArray()[2].toInt(), c.gz);
    }
}

TEST(TelemetryCli, CsvRowPerSampleWithMediaTime)
{
    const QString srt = writeClip("csv.srt", subtitleText(2));
    const QString empty = writeClip("empty.srt", "");
    const auto result = TestFiles::runCli({ "telemetry", "--format", "csv", srt, empty });
    ASSERT_EQ(result.exitCode, 0);
    const QList<QByteArray> lines = result.out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 21);
    EXPECT_EQ(lines[0], "file,time,gx,gy,gz,lat,lng,speed");
    EXPECT_EQ(lines[1], srt.toUtf8() + ",0.0,0,-20,128,-37.3874588,126.973503,19");
    EXPECT_EQ(lines[20], srt.toUtf8() + ",1.9,19,-20,128,-37.3874588,126.973503,19");
}

TEST(TelemetryCli, ExitCodes)
{
    const QString good = writeClip("good.srt", subtitleText(1));
    const QString missing = scratchPath("missing.avi");
    const struct {
        QStringList args;
        int exitCode;
        int lines;
    } cases[] = {
        { {}, 2, 0 },
        { { "--loader", "xyz", good }, 2, 0 },
        { { "--format", "xml", good }, 2, 0 },
        { { "--format" }, 2, 0 },
        { { "--verbose", good }, 2, 0 },
        { { missing, good }, 1, 1 },
        { { scratchPath("") }, 1, 0 }, // a folder
        { { "--", good }, 0, 1 },
    };
    for (const auto& c : cases) {
        const auto result = TestFiles::runCli(QStringList { "telemetry" } + c.args);
        SCOPED_TRACE(c.args.join(' ').toStdString());
        EXPECT_EQ(result.exitCode, c.exitCode);
        EXPECT_EQ(jsonLines(result.out).size(), c.lines);
        if (c.exitCode != 0) {
            EXPECT_FALSE(result.err.isEmpty());
        }
        if (c.exitCode == 2) {
            EXPECT_TRUE(result.err.contains("usage: tavro telemetry"));
        }
    }
    const auto result = TestFiles::runCli({ "telemetry", missing });
    EXPECT_TRUE(result.err.contains(missing.toUtf8()));
}

TEST(TelemetryCli, PipesSocketsAndDevicesAreRefusedAtOnce)
{
    // Only regular files are clips, as in the clip list: a pipe nobody
    // writes to, a socket and a device each end the command with status 1.
    const QString fifo = scratchPath("waiting.avi");
    const QString socketPath = scratchPath("listening.avi");
    QFile::remove(fifo);
    QFile::remove(socketPath);
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const QByteArray socketName = QFile::encodeName(socketPath);
    ASSERT_LT(size_t(socketName.size()), sizeof(address.sun_path));
    std::copy(socketName.cbegin(), socketName.cend(), address.sun_path);
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    ::listen(listener, 1);
    const QString good = writeClip("good.srt", subtitleText(1));
    for (const QString& path : { fifo, socketPath, QStringLiteral("/dev/zero") }) {
        SCOPED_TRACE(path.toStdString());
        QElapsedTimer clock;
        clock.start();
        const auto result
            = TestFiles::runCli({ "telemetry", path, good }, {}, TestTiming::scaled(10000));
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_LT(clock.elapsed(), TestTiming::scaled(5000));
        EXPECT_TRUE(result.err.contains("not a regular file")) << result.err.constData();
        // The other files are still read.
        EXPECT_EQ(jsonLines(result.out).size(), 1);
    }
    ::close(listener);
}

TEST(TelemetryCli, Mp4WithoutFfmpegCannotBeRead)
{
    const QString mp4 = writeClip("noffmpeg.mp4", "not really a clip");
    const auto result = TestFiles::runCli({ "telemetry", mp4 }, { "PATH=/nonexistent" });
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.out.isEmpty());
    EXPECT_TRUE(result.err.contains("ffmpeg")) << result.err.constData();
}

TEST(TelemetryCli, Mp4ThroughItsSubtitleTrack)
{
    if (!TestFiles::haveTool("ffmpeg"))
        GTEST_SKIP() << "ffmpeg is not installed";
    const QString mp4 = scratchPath("FRONT_F.MP4");
    ASSERT_TRUE(makeMp4(mp4, subtitleText(3)));
    const auto result = TestFiles::runCli({ "telemetry", mp4 });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    const QList<QJsonObject> lines = jsonLines(result.out);
    ASSERT_EQ(lines.size(), 1);
    expectRecord(lines[0], mp4, "general", 30, 30);
    EXPECT_EQ(lines[0]["samples"].toArray()[29].toArray()[0].toInt(), 29);

    // Read as it stands, the MP4 container carries no telemetry of its own.
    const auto general = TestFiles::runCli({ "telemetry", "--loader", "general", mp4 });
    expectRecord(jsonLines(general.out).value(0), mp4, "general", 0, 0);

    // A clip without a subtitle track has no telemetry, which is not an error.
    const QString plain = scratchPath("plain.mp4");
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg",
        { "-nostdin", "-loglevel", "error", "-y", "-f", "lavfi", "-i",
            "color=size=64x64:duration=1", "-c:v", "mpeg4", plain });
    ASSERT_TRUE(ffmpeg.waitForFinished(60000));
    const auto noTrack = TestFiles::runCli({ "telemetry", "--format", "csv", plain });
    EXPECT_EQ(noTrack.exitCode, 0);
    EXPECT_EQ(noTrack.out, "file,time,gx,gy,gz,lat,lng,speed\n");
}
