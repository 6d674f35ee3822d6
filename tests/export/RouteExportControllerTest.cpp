// The viewer's route export: runs off the caller's thread, reports progress,
// and writes nothing when cancelled, without positions or on a bad path.
#include "ExportTestSupport.h"

#include "TestFiles.h"

#include "app/session/RouteExportController.h"
#include "library/ClipLibrary.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace ExportTestSupport;

namespace {

// `count` clips of two seconds each (subtitle text, read by the general loader).
QStringList writeClips(const QString& folder, int count, const QByteArray& status = "A")
{
    QVector<Second> seconds(2);
    QStringList clips;
    for (int i = 0; i < count; ++i) {
        for (int s = 0; s < 2; ++s)
            seconds[s] = { QByteArray::number(100000 + 2 * i + s) + ".00", "010124", status };
        clips << folder + QStringLiteral("/clip%1.srt").arg(i, 3, 10, QLatin1Char('0'));
        TestFiles::write(clips.last(), subtitleText(seconds));
    }
    return clips;
}

RouteExport::Result runExport(RouteExportController& controller, const QStringList& clips,
    RouteFormat format, const QString& path, bool cancelAtOnce = false)
{
    QSignalSpy finished(&controller, &RouteExportController::finished);
    EXPECT_TRUE(controller.start(clips, format, true, path));
    EXPECT_TRUE(controller.isRunning());
    EXPECT_FALSE(controller.start(clips, format, true, path)); // one at a time
    if (cancelAtOnce)
        controller.cancel();
    EXPECT_TRUE(finished.wait(30000));
    EXPECT_FALSE(controller.isRunning());
    return finished.isEmpty() ? RouteExport::Result {}
                              : finished.first().first().value<RouteExport::Result>();
}

} // namespace

TEST(RouteExportController, WritesTheTripsAndReportsProgressOrNothing)
{
    QTemporaryDir dir;
    RouteExportController controller;
    QSignalSpy progress(&controller, &RouteExportController::progressChanged);
    const QString gpx = dir.filePath("route.gpx");
    const RouteExport::Result result
        = runExport(controller, writeClips(dir.path(), 5), RouteFormat::Gpx, gpx);
    EXPECT_EQ(result.status, RouteExport::Status::Written);
    EXPECT_EQ(result.clips, 5);
    EXPECT_EQ(result.trips, 1); // back to back: one drive
    EXPECT_EQ(result.points, 100);
    EXPECT_EQ(attributeValues(TestFiles::read(gpx), "trkpt", "lat").size(), 100);
    // One report per clip, in order, although several workers read them.
    QList<QVariantList> expected;
    for (int done = 1; done <= 5; ++done)
        expected.append({ done, 5 });
    EXPECT_EQ(QList<QVariantList>(progress.begin(), progress.end()), expected);

    const QString kml = dir.filePath("route.kml");
    const QStringList noFix = writeClips(dir.filePath("nofix"), 2, "V");
    const RouteExport::Result none = runExport(controller, noFix, RouteFormat::Kml, kml);
    EXPECT_EQ(none.status, RouteExport::Status::NoContent);
    EXPECT_EQ(none.trips, 0); // a drive without positions is no trip on the map
    const QStringList many = writeClips(dir.filePath("many"), 300);
    EXPECT_EQ(runExport(controller, many, RouteFormat::Kml, kml, true).status,
        RouteExport::Status::Cancelled);
    EXPECT_FALSE(QFileInfo::exists(kml));
    // After a cancel the next export runs in full.
    EXPECT_EQ(runExport(controller, many.mid(0, 2), RouteFormat::Kml, kml).status,
        RouteExport::Status::Written);
    const RouteExport::Result bad = runExport(
        controller, many.mid(0, 2), RouteFormat::Kml, dir.filePath("missing/route.kml"));
    EXPECT_EQ(bad.status, RouteExport::Status::WriteFailed);
    EXPECT_FALSE(bad.error.isEmpty());
}

TEST(RouteExportController, ClipsOfTheListAndTheFileSuffix)
{
    QTemporaryDir dir;
    for (const char* name : { "cont_rec/b_F.mp4", "cont_rec/a_F.mp4", "evt_rec/c_F.avi" })
        TestFiles::write(dir.filePath(name), "x");
    ClipLibrary library;
    library.refreshVideoFileListWithURL(QUrl::fromLocalFile(dir.path()));
    library.setSelectedRow(1);
    EXPECT_EQ(RouteExportController::clipsToExport(library, false),
        QStringList { dir.filePath("cont_rec/b_F.mp4") });
    EXPECT_EQ(RouteExportController::clipsToExport(library, true).size(), 3);
    library.setSelectedRow(-1);
    EXPECT_TRUE(RouteExportController::clipsToExport(library, false).isEmpty());
    const std::tuple<const char*, RouteFormat, const char*> cases[] = {
        { "/tmp/drive", RouteFormat::Gpx, "/tmp/drive.gpx" },
        { "/tmp/drive.GPX", RouteFormat::Gpx, "/tmp/drive.GPX" },
        { "/tmp/d.kml", RouteFormat::GeoJson, "/tmp/d.kml.geojson" },
        { "/tmp/d.csv", RouteFormat::Csv, "/tmp/d.csv" },
    };
    for (const auto& [path, format, expected] : cases)
        EXPECT_EQ(RouteExportController::pathWithSuffix(path, format), expected);
    EXPECT_EQ(RouteExportController::dialogFormats().size(), 4);
}
