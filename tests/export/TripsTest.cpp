// Drives on a card: which clips make them, what their containers say, and a
// drive's statistics and marks.
#include "ExportTestSupport.h"

#include "CardTreeBuilder.h"
#include "DriveClip.h"
#include "FfmpegClipBuilder.h"
#include "TelemetryTextBuilders.h"
#include "TestFiles.h"

#include "library/ClipMediaInfo.h"
#include "trips/CardTrips.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

using namespace ExportTestSupport;

namespace {

constexpr int64_t kStart = 1710497700000; // 2024-03-15 10:15:00 UTC

// A clip of `seconds` of telemetry from `start`, heading north 0.0001° a
// second from `lat` at `speed` km/h (no fix without a latitude), lying flat
// (1 g down) except for the knocks: {tenth of a second, sideways g}.
TripClip clip(const QString& path, TripClip::Source source, int64_t start, int seconds, double lat,
    int speed, double videoSeconds, const QList<QPair<int, double>>& knocks = {})
{
    QVector<RouteSample> samples;
    for (int i = 0; i < seconds * 10; ++i) {
        RouteSample s = sample(lat + i / 10 * 1e-4, 127.0, start + i * 100, speed);
        s.hasFix = lat != 0;
        for (const auto& [tenth, g] : knocks) {
            if (tenth == i)
                s.gx = int(std::lround(g * 128));
        }
        samples.append(s);
    }
    auto timeline = std::make_shared<ClipTimeline>(handMade(path, samples));
    timeline->media.seconds = videoSeconds;
    return TripClip { path, {}, source, 0, 0, timeline };
}

QStringList describe(const QVector<TripEvent>& events)
{
    QStringList texts;
    for (const TripEvent& event : events)
        texts << QStringLiteral("%1 %2 %3 @%4")
                     .arg(TripEvent::kindName(event.kind))
                     .arg(event.offset, 0, 'f', 1)
                     .arg(event.peakG ? QString::number(*event.peakG, 'f', 2) : QStringLiteral("-"))
                     .arg(event.clip);
    return texts;
}

} // namespace

TEST(Trips, StatisticsAndMarksOfADrive)
{
    // Knocks: 0.6 g at 10 s, rising to 2.0 g before 20 s, a new one of 0.7 g
    // at 20 s, exactly 0.5 g (no knock) at 35 s, and 0.9 g at 55 s whose ten
    // seconds run into the next clip, where 1.2 g is felt at 63 s.
    const Trip trip = Trip::fromClips({
        clip("/card/cont_rec/a_F.mp4", TripClip::Source::Continuous, kStart, 60, 37.0, 71, 60.033,
            { { 100, 0.6 }, { 120, 1.5 }, { 199, 2.0 }, { 200, 0.7 }, { 350, 0.5 }, { 550, 0.9 } }),
        clip("/card/evt_rec/b_F.mp4", TripClip::Source::Event, kStart + 61000, 30, 37.006, 50, 30.0,
            { { 20, 1.2 }, { 50, 0.8 } }),
        clip("/card/manual_rec/c.avi", TripClip::Source::Manual, kStart + 95000, 20, 0, 0, 20.0),
    });
    EXPECT_EQ(trip.startUtc, kStart);
    EXPECT_EQ(trip.endUtc, kStart + 115000);
    EXPECT_DOUBLE_EQ(trip.duration(), 115.0);
    EXPECT_DOUBLE_EQ(trip.clips[1].offset, 61.0);
    EXPECT_DOUBLE_EQ(trip.clips[0].duration, 60.033);
    EXPECT_EQ(describe(trip.events),
        QStringList({ "impact 10.0 2.00 @0", "impact 20.0 0.70 @0", "impact 55.0 1.20 @0",
            "event-clip 61.0 - @1", "impact 66.0 0.80 @1", "manual-clip 95.0 - @2" }));
    EXPECT_EQ(trip.impactCount(), 4);
    EXPECT_EQ(trip.maxSpeedKmh, 71);
    // Straight north from 37.0° to 37.0089°: the length of that arc.
    const double arc = (37.006 + 29 * 1e-4 - 37.0) * M_PI / 180 * 6371.0088;
    EXPECT_NEAR(trip.distanceKm, arc, 1e-6);
    EXPECT_EQ(trip.route().size(), 60 + 30);

    // A drive without a fix has no top speed and no distance. Its first mark
    // is a knock, whose ten seconds hold the next one.
    const Trip parked = Trip::fromClips({ clip("/card/parking_rec/p.avi", TripClip::Source::Parking,
        kStart, 5, 0, 0, 5.0, { { 10, 0.6 }, { 15, 0.9 } }) });
    EXPECT_EQ(describe(parked.events), QStringList { "impact 1.0 0.90 @0" });
    EXPECT_FALSE(parked.maxSpeedKmh.has_value());
    EXPECT_EQ(parked.distanceKm, 0.0);
    EXPECT_TRUE(parked.route().isEmpty());
}

TEST(Trips, ContainerLengthStreamsAndPictureSize)
{
    if (!TestFiles::haveTool("ffmpeg"))
        GTEST_SKIP() << "ffmpeg is not installed";
    QTemporaryDir dir;
    const QString avi = dir.filePath("dual.avi");
    const QString mp4 = dir.filePath("front_F.mp4");
    ASSERT_TRUE(FfmpegClipBuilder::makeDualStreamAvi(avi, true))
        << FfmpegClipBuilder::lastLog().toStdString();
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(mp4, DriveClip::telemetrySrt(1, 0), 96));

    const ClipMediaInfo two = ClipMediaInfo::read(avi);
    EXPECT_NEAR(two.seconds, 1.0, 0.05);
    EXPECT_EQ(two.videoStreams, 2);
    EXPECT_EQ(two.audioStreams, 1);
    EXPECT_EQ(two.frameSize, QSize(64, 48));
    const ClipMediaInfo one = ClipMediaInfo::read(mp4);
    EXPECT_NEAR(one.seconds, 1.0, 0.05);
    EXPECT_EQ(one.videoStreams, 1);
    EXPECT_EQ(one.audioStreams, 0);
    EXPECT_EQ(one.frameSize, QSize(96, 48));

    // Cut short, garbage, a header claiming more than the file holds: nothing
    // known, nothing read beyond the bytes.
    const QByteArray whole = TestFiles::read(mp4);
    const QByteArray aviBytes = TestFiles::read(avi);
    QByteArray lying = aviBytes.left(4096);
    lying.replace(16, 4, QByteArray(4, '\xff')); // the header list's size
    for (const QByteArray& bytes : { whole.left(whole.size() / 3), aviBytes.left(40), lying,
             TailBlockBuilder::videoLikeBytes(5000, 3), QByteArray("\0\0\0\x01moov", 8) }) {
        EXPECT_FALSE(ClipMediaInfo::fromBytes(bytes).isKnown())
            << bytes.left(16).toHex().constData();
    }
    EXPECT_FALSE(ClipMediaInfo::read(dir.filePath("missing.mp4")).isKnown());
}

TEST(Trips, RecordingFoldersMakeDrivesWithRearsBesideTheirFronts)
{
    QTemporaryDir dir;
    CardTreeBuilder card(dir.path());
    card.addAll({ "cont_rec/a_F.mp4", "cont_rec/a_R.mp4", "cont_rec/orphan_R.mp4",
        "evt_rec/b_F_BC.mp4", "evt_rec/b_R_BC.mp4", "manual_rec/c.avi", "parking_rec/p.avi",
        "motion_rec/m.avi", "Saved_Videos/s.mp4", "motion_timelapse_rec/t.mov", "top.mp4" });
    QStringList found;
    for (const CardTrips::CardClip& clip : CardTrips::scan(dir.path()))
        found << QStringLiteral("%1+%2:%3")
                     .arg(clip.path.mid(dir.path().size() + 1),
                         clip.rear.isEmpty() ? "" : clip.rear.mid(dir.path().size() + 1))
                     .arg(int(clip.source));
    found.sort();
    EXPECT_EQ(found,
        QStringList({ "cont_rec/a_F.mp4+cont_rec/a_R.mp4:0", "cont_rec/orphan_R.mp4+:0",
            "evt_rec/b_F_BC.mp4+evt_rec/b_R_BC.mp4:1", "manual_rec/c.avi+:2", "motion_rec/m.avi+:3",
            "parking_rec/p.avi+:4" }));

    // A folder of copied clips: those lying in it.
    QTemporaryDir plain;
    CardTreeBuilder copies(plain.path());
    copies.addAll({ "x_F.mp4", "x_R.mp4", "deeper/y.mp4" });
    const QVector<CardTrips::CardClip> loose = CardTrips::scan(plain.path());
    ASSERT_EQ(loose.size(), 1);
    EXPECT_TRUE(loose[0].path.endsWith("x_F.mp4"));
    EXPECT_TRUE(loose[0].rear.endsWith("x_R.mp4"));
}
