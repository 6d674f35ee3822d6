// `tavro telemetry`: loader choice, JSON and CSV output, exit codes, files
// that are no clips (an MP4 among them, when there is no ffmpeg).

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

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace TelemetryTestFiles;

namespace {

QByteArray subtitleText(int seconds)
{
    SubtitleBuilder srt;
    for (int s = 0; s < seconds; ++s)
        srt.gsensorBlocks(10, s * 10)
            .block(SubtitleBuilder::rmc("A", "3723.2475", "S", "12658.4100", "E", "10.0"));
    return srt.bytes();
}

// Each output line as a JSON object.
QList<QJsonObject> jsonLines(const QByteArray& out)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : out.split('\n')) {
        if (!line.isEmpty())
            objects.append(QJsonDocument::fromJson(line).object());
    }
    return objects;
}

QJsonObject record(const QString& file, const char* loader, int gps, const QJsonArray& sample = {},
    int repeats = 0)
{
    QJsonArray samples;
    for (int i = 0; i < repeats; ++i)
        samples.append(sample);
    return { { "file", file }, { "loader", loader }, { "clipDataCount", repeats },
        { "gpsDataCount", gps }, { "samples", samples } };
}

} // namespace

TEST(TelemetryCli, JsonLinePerFileWithTheLoaderTheNameCallsFor)
{
    RiffAviBuilder kelClip;
    kelClip.aviHeaders()
        .kelGRecord(128, 128, 228)
        .sentence(RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "1.0"));
    const QByteArray kelBytes = kelClip.bytes();
    const QString tail
        = writeClip("tail.avi", TailBlockBuilder().sample(1, "1.25", "-2.5", 30, 1, 2, 3).bytes());
    const QString nothing = writeClip("nothing.avi", "no telemetry here");
    const QString kel = writeClip("Park_20240101.avi", kelBytes);
    const QString lower = writeClip("rec_0001.avi", kelBytes);
    const QString upper = writeClip("Event_0001.AVI", kelBytes);
    // Both loaders read a Kel clip; they differ in the G record's scale.
    const QJsonArray asKel { 0, 0, 1000, 37.3874588, 126.973503, 2 };
    const QJsonArray asGeneral { 0, 0, -100, 37.3874588, 126.973503, 2 };
    const auto result = TestFiles::runCli({ "telemetry", tail, nothing, kel, lower, upper });
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(jsonLines(result.out),
        QList<QJsonObject>({ record(tail, "general", 1, { 1, 2, 3, 1.25, -2.5, 30 }, 1),
            record(nothing, "general", 0), record(kel, "kel", 10, asKel, 10),
            record(lower, "general", 10, asGeneral, 10),
            record(upper, "general", 10, asGeneral, 10) }));
    EXPECT_EQ(jsonLines(TestFiles::runCli({ "telemetry", "--loader", "kel", upper }).out),
        QList<QJsonObject> { record(upper, "kel", 10, asKel, 10) });
    EXPECT_EQ(jsonLines(TestFiles::runCli({ "telemetry", kel, "--loader", "general" }).out),
        QList<QJsonObject> { record(kel, "general", 10, asGeneral, 10) });

    const QString srt = writeClip("csv.srt", subtitleText(2));
    const auto csv
        = TestFiles::runCli({ "telemetry", "--format", "csv", srt, writeClip("empty.srt", "") });
    const QList<QByteArray> rows = csv.out.trimmed().split('\n');
    ASSERT_EQ(rows.size(), 21);
    EXPECT_EQ(rows[0], "file,time,gx,gy,gz,lat,lng,speed");
    EXPECT_EQ(rows[1], srt.toUtf8() + ",0.0,0,-20,128,-37.3874588,126.973503,19");
    EXPECT_EQ(rows[20], srt.toUtf8() + ",1.9,19,-20,128,-37.3874588,126.973503,19");
}

TEST(TelemetryCli, ExitCodesAndFilesThatAreNoClips)
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
        EXPECT_EQ(result.err.isEmpty(), c.exitCode == 0);
        EXPECT_EQ(result.err.contains("usage: tavro telemetry"), c.exitCode == 2);
    }
    // Only regular files are clips, as in the clip list: a pipe nobody writes
    // to and a device each end the command with status 1 at once.
    const QString fifo = scratchPath("waiting.avi");
    QFile::remove(fifo);
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    for (const QString& path : { fifo, QStringLiteral("/dev/zero") }) {
        QElapsedTimer clock;
        clock.start();
        const auto result
            = TestFiles::runCli({ "telemetry", path, good }, {}, TestTiming::scaled(10000));
        EXPECT_EQ(result.exitCode, 1) << path.toStdString();
        EXPECT_LT(clock.elapsed(), TestTiming::scaled(5000));
        EXPECT_TRUE(result.err.contains("not a regular file")) << result.err.constData();
        EXPECT_EQ(jsonLines(result.out).size(), 1); // the other file is still read
    }
    // Without ffmpeg an MP4 (the name says so, in any case) is read through
    // its own track; this one is no movie. (Both ways are compared on the demo card.)
    const auto fake = TestFiles::runCli(
        { "telemetry", writeClip("NOFFMPEG.MP4", "not really a clip") }, { "PATH=/nonexistent" });
    EXPECT_EQ(fake.exitCode, 1);
    EXPECT_TRUE(fake.out.isEmpty());
    EXPECT_TRUE(fake.err.contains("ffmpeg not found")) << fake.err.constData();
}
