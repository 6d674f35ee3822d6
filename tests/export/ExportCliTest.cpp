// `tavro export`, `tavro trips` and the route formats of `tavro telemetry` on
// a small demo card (written once by make-demo-card), read back with gpsbabel.
#include "ExportTestSupport.h"

#include "TestFiles.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ExportTestSupport;

namespace {

class ExportCli : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!TestFiles::haveTool("ffmpeg"))
            return;
        s_dir = new QTemporaryDir;
        s_card = s_dir->filePath("card");
        QProcess make;
        make.start(QStringLiteral(TAVRO_MAKE_DEMO_CARD_PATH),
            { "--out", s_card, "--length", "3", "--clips", "3", "--front-size", "192x108",
                "--rear-size", "96x54", "--fps", "10", "--no-extra-cards" });
        s_made = make.waitForFinished(240000) && make.exitCode() == 0;
    }
    static void TearDownTestSuite() { delete s_dir; }

    void SetUp() override
    {
        if (!TestFiles::haveTool("ffmpeg"))
            GTEST_SKIP() << "ffmpeg is not installed";
        ASSERT_TRUE(s_made) << "make-demo-card failed";
    }

    static QStringList files(const QString& pattern)
    {
        QStringList found;
        QDirIterator it(s_card, { pattern }, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            found << it.next();
        found.sort();
        return found;
    }

    static inline QTemporaryDir* s_dir = nullptr;
    static inline QString s_card;
    static inline bool s_made = false;
};

QJsonArray samplesOf(const QByteArray& jsonLine)
{
    return QJsonDocument::fromJson(jsonLine).object()["samples"].toArray();
}

QList<QJsonObject> jsonLines(const QByteArray& out)
{
    QList<QJsonObject> objects;
    for (const QByteArray& line : out.split('\n')) {
        if (!line.isEmpty())
            objects << QJsonDocument::fromJson(line).object();
    }
    return objects;
}

QDateTime utc(const QJsonValue& value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
}

} // namespace

TEST_F(ExportCli, NativeReaderGivesTheSamplesOfTheFfmpegPathOnEveryDemoClip)
{
    const QStringList mp4s = files("*.mp4");
    ASSERT_GE(mp4s.size(), 9);
    int withTelemetry = 0;
    for (const QString& mp4 : mp4s) {
        SCOPED_TRACE(mp4.toStdString());
        const auto viaFfmpeg = TestFiles::runCli({ "telemetry", mp4 });
        const auto viaTrack = TestFiles::runCli({ "telemetry", "--loader", "native", mp4 });
        ASSERT_EQ(viaFfmpeg.exitCode, 0);
        ASSERT_EQ(viaTrack.exitCode, 0);
        EXPECT_EQ(samplesOf(viaTrack.out), samplesOf(viaFfmpeg.out));
        EXPECT_EQ(QJsonDocument::fromJson(viaTrack.out)["loader"], "native");
        withTelemetry += samplesOf(viaTrack.out).isEmpty() ? 0 : 1;
    }
    EXPECT_EQ(withTelemetry, mp4s.size() - 1); // all but the camera's own export
}

TEST_F(ExportCli, CardExportIsAGpxThatGpsbabelReads)
{
    if (!haveGpsbabel())
        GTEST_SKIP() << "gpsbabel is not installed";
    const QString out = scratchPath("card.gpx");
    const auto run = TestFiles::runCli({ "export", s_card, "--format", "gpx", "--output", out });
    ASSERT_EQ(run.exitCode, 0) << run.err.constData();
    const QByteArray gpx = TestFiles::read(out);
    const auto points = gpsbabelPoints("gpx", gpx);
    ASSERT_TRUE(points.has_value());
    EXPECT_GT(points->size(), 300);
    EXPECT_EQ(points->size(), attributeValues(gpx, "trkpt", "lat").size());
    // The same card as GeoJSON: a feature for each clip, as GPX has a segment.
    const QJsonObject geo = QJsonDocument::fromJson(
        TestFiles::runCli({ "export", s_card, "--format", "geojson" }).out)
                                .object();
    EXPECT_EQ(geo["features"].toArray().size(), elementTexts(gpx, "trkseg").size());
}

TEST_F(ExportCli, ConsecutiveClipsMakeOneTripWithRisingTimes)
{
    const QStringList fronts = files("*_F.mp4").filter("cont_rec");
    ASSERT_EQ(fronts.size(), 3);
    const auto trip
        = TestFiles::runCli(QStringList { "telemetry", "--format", "gpx", "--trip" } + fronts);
    ASSERT_EQ(trip.exitCode, 0) << trip.err.constData();
    EXPECT_EQ(elementTexts(trip.out, "trk").size(), 1);
    EXPECT_EQ(elementTexts(trip.out, "trkseg").size(), 3);
    const QStringList times = elementTexts(trip.out, "time");
    ASSERT_EQ(times.size(), 90);
    QStringList rising = times; // one clock format: text order is time order
    rising.sort();
    rising.removeDuplicates();
    EXPECT_EQ(rising, times);
    // Without --trip every clip is a track of its own.
    const auto perClip = TestFiles::runCli(QStringList { "telemetry", "--format", "kml" } + fronts);
    EXPECT_EQ(elementTexts(perClip.out, "Placemark").size(), 3);
}

TEST_F(ExportCli, BadInputAndUnwritableOutput)
{
    const QString garbage = scratchPath("garbage_F.mp4");
    TestFiles::write(garbage, QByteArray(5000, '\x7f'));
    const QString saved = files("SAVED_*.mp4").value(0);
    ASSERT_FALSE(saved.isEmpty());

    // Clips without telemetry: an empty document, said on stderr, not an error.
    const auto empty = TestFiles::runCli(
        { "telemetry", "--format", "gpx", "--loader", "native", "--trip", saved });
    EXPECT_EQ(empty.exitCode, 0);
    EXPECT_TRUE(elementTexts(empty.out, "trk").isEmpty());
    EXPECT_TRUE(empty.err.contains("no positions")) << empty.err.constData();
    // A file that is no clip at all cannot be read: exit 1, the others still written.
    const auto bad = TestFiles::runCli({ "telemetry", "--format", "geojson", "--loader", "native",
        garbage, files("*_F.mp4").first() });
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(QJsonDocument::fromJson(bad.out).object()["features"].toArray().size(), 1);

    // An output that cannot be written leaves nothing behind, and an old file intact.
    const QString folder = scratchPath("a-folder.gpx");
    QDir().mkpath(folder);
    const auto onFolder = TestFiles::runCli(
        { "telemetry", "--format", "kml", "--output", folder, files("*_F.mp4").first() });
    EXPECT_EQ(onFolder.exitCode, 1);
    EXPECT_TRUE(QFileInfo(folder).isDir());
    EXPECT_EQ(QDir(scratchPath("")).entryList({ "*.gpx.*", "a-folder*" }, QDir::AllEntries),
        QStringList { "a-folder.gpx" });

    // Usage errors.
    for (const QStringList& args :
        { QStringList { "export" }, QStringList { "export", s_card, "--format", "json" },
            QStringList { "telemetry", "--trip", "--format", "json", saved } })
        EXPECT_EQ(TestFiles::runCli(args).exitCode, 2) << args.join(' ').toStdString();
    EXPECT_EQ(TestFiles::runCli({ "export", scratchPath("nowhere") }).exitCode, 1);
}

TEST_F(ExportCli, TripsOfTheCardAndTheExportAgree)
{
    const auto run = TestFiles::runCli({ "trips", s_card });
    ASSERT_EQ(run.exitCode, 0) << run.err.constData();
    const QList<QJsonObject> trips = jsonLines(run.out);
    // The drive, the motion clip half an hour later, the parked knock.
    ASSERT_EQ(trips.size(), 3) << run.out.constData();
    static const QRegularExpression kThreeDecimals(
        QStringLiteral("\"(duration|offset|distanceKm)\":\\d+\\.\\d{3}[,}]"));
    EXPECT_TRUE(kThreeDecimals.match(QString::fromUtf8(run.out)).hasMatch());
    QStringList listed;
    for (int t = 0; t < trips.size(); ++t) {
        const QJsonObject& trip = trips[t];
        EXPECT_EQ(trip["trip"].toInt(), t);
        EXPECT_TRUE(trip["start"].toString().endsWith('Z'));
        const QDateTime start = utc(trip["start"]);
        EXPECT_NEAR(start.msecsTo(utc(trip["end"])) / 1000.0, trip["duration"].toDouble(), 0.001);
        if (t > 0) {
            EXPECT_LT(utc(trips[t - 1]["end"]), start);
        }
        double lastOffset = -1;
        QStringList clips;
        for (const QJsonValue& value : trip["clips"].toArray()) {
            const QJsonObject clip = value.toObject();
            clips << clip["path"].toString();
            EXPECT_GT(clip["offset"].toDouble(), lastOffset);
            EXPECT_NEAR(clip["duration"].toDouble(), 3.0, 0.2);
            lastOffset = clip["offset"].toDouble();
            const QString rear = clip["rear"].toString();
            if (clip["path"].toString().endsWith("_F.mp4")) {
                EXPECT_TRUE(rear.endsWith("_R.mp4")) << rear.toStdString();
            }
            listed << clip["path"].toString() << rear;
        }
        // The marks of a drive are the Trips tests'; here they name its clips.
        for (const QJsonValue& value : trip["events"].toArray())
            EXPECT_TRUE(clips.contains(value.toObject()["clip"].toString()));
    }
    QMap<QString, int> kinds;
    for (const QJsonValue& value : trips[0]["events"].toArray())
        ++kinds[value.toObject()["kind"].toString()];
    EXPECT_EQ(kinds["event-clip"], 3);
    EXPECT_EQ(kinds["manual-clip"], 2);
    EXPECT_GE(kinds["impact"], 1);
    EXPECT_GT(trips[0]["distanceKm"].toDouble(), 0.1);
    EXPECT_GT(trips[0]["maxSpeedKmh"].toDouble(), 10);
    // Every clip of the recording folders once, no export or time-lapse.
    for (const QString& file : files("*")) {
        const bool driving = !file.contains("Saved_Videos") && !file.contains("timelapse")
            && file.contains("_rec/");
        EXPECT_EQ(listed.count(file), driving ? 1 : 0) << file.toStdString();
    }

    // `tavro export` writes the same trips: each clip with positions in the
    // trip `tavro trips` puts it in.
    const QJsonObject geo = QJsonDocument::fromJson(
        TestFiles::runCli({ "export", s_card, "--format", "geojson" }).out)
                                .object();
    int features = 0;
    for (const QJsonValue& value : geo["features"].toArray()) {
        const QJsonObject properties = value.toObject()["properties"].toObject();
        const int trip = properties["trip"].toInt() - 1;
        ASSERT_GE(trip, 0);
        ASSERT_LT(trip, trips.size());
        EXPECT_TRUE(
            QJsonDocument(trips[trip]).toJson().contains(properties["file"].toString().toUtf8()));
        ++features;
    }
    EXPECT_GT(features, 8);

    // A longer gap makes one trip of the day.
    const QList<QJsonObject> oneDay
        = jsonLines(TestFiles::runCli({ "trips", s_card, "--gap", "7200" }).out);
    ASSERT_EQ(oneDay.size(), 1);
    EXPECT_EQ(oneDay[0]["clips"].toArray().size(),
        trips[0]["clips"].toArray().size() + trips[1]["clips"].toArray().size()
            + trips[2]["clips"].toArray().size());

    for (const QStringList& args :
        { QStringList { "trips" }, QStringList { "trips", s_card, "--gap" },
            QStringList { "trips", s_card, "--gap", "-1" },
            QStringList { "trips", s_card, "--gap", "soon" },
            QStringList { "trips", s_card, "--fast" }, QStringList { "trips", s_card, s_card } })
        EXPECT_EQ(TestFiles::runCli(args).exitCode, 2) << args.join(' ').toStdString();
    const auto missing = TestFiles::runCli({ "trips", scratchPath("no-such-card") });
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_FALSE(missing.err.isEmpty());
}
