#include "DemoClipPlan.h"

#include "DemoTimeline.h"

#include <algorithm>

namespace DemoClipPlan {

namespace {

using TelemetryScripts::SubtitleStyle;

DemoClip mp4Pair(
    const QString& folder, const QString& stem, const QString& front, const QString& rear)
{
    DemoClip clip;
    clip.folder = folder;
    clip.files = QStringList { stem + front + QStringLiteral(".mp4"),
        stem + rear + QStringLiteral(".mp4") };
    clip.camera = QStringLiteral("TOLM");
    clip.format = ClipFormat::Mp4Pair;
    return clip;
}

DemoClip aviClip(const QString& folder, const QString& file, ClipFormat format)
{
    DemoClip clip;
    clip.folder = folder;
    clip.files = QStringList { file };
    clip.camera = QStringLiteral("DUAL");
    clip.format = format;
    clip.gRate = 20;
    return clip;
}

DemoClip kelClip(const QString& folder, const QString& prefix, const QString& stamp, bool audio)
{
    DemoClip clip
        = aviClip(folder, prefix + stamp + QStringLiteral(".avi"), ClipFormat::AviTwoStreams);
    clip.camera = QStringLiteral("WENNA");
    clip.gRate = 10;
    clip.chunkFamily = ChunkFamily::Kel;
    clip.audio = audio;
    clip.chunkTag = audio ? "03tx" : "02tx";
    return clip;
}

// The drive: consecutive continuous pairs from departure, then one clip of
// every driving format, each starting where the previous one ended.
void planDrive(const DemoOptions& options, DemoTimeline& timeline, QVector<DemoClip>& clips)
{
    const int length = options.clipSeconds;
    double at = 0;
    const auto next = [&](DemoClip clip) {
        clip.start = at;
        clip.seconds = length;
        at += length;
        clips.push_back(clip);
    };
    for (int i = 0; i < options.continuousClips; ++i) {
        DemoClip clip = mp4Pair(QStringLiteral("cont_rec"), timeStamp(timeline, at),
            QStringLiteral("_F"), QStringLiteral("_R"));
        clip.subtitleStyle = i % 2 == 0 ? SubtitleStyle::Gsensor : SubtitleStyle::GsensorCar;
        clip.hevc = i == options.continuousClips - 1; // the camera's newer H.265 mode
        next(clip);
    }
    next(kelClip(
        QStringLiteral("cont_rec"), QStringLiteral("Rec_"), timeStamp(timeline, at), false));

    DemoClip tail = aviClip(QStringLiteral("cont_rec"),
        timeStamp(timeline, at) + QStringLiteral("_T.avi"), ClipFormat::AviOneStream);
    tail.audio = true;
    tail.gRate = 10; // one text line per tenth of a second
    next(tail);

    DemoClip manual = aviClip(QStringLiteral("manual_rec"),
        timeStamp(timeline, at) + QStringLiteral("_M.avi"), ClipFormat::AviTwoStreams);
    manual.audio = true;
    manual.chunkTag = "03tx";
    manual.gPrefixedRmc = true;
    next(manual);

    // A hard stop and a knock from behind, then a pothole, then another knock.
    const double eventStart = at;
    timeline.addImpact({ at + length * 0.4, 330, true });
    DemoClip event = mp4Pair(QStringLiteral("evt_rec"), timeStamp(timeline, at),
        QStringLiteral("_F"), QStringLiteral("_R"));
    next(event);
    timeline.addImpact({ at + length * 0.5, 200, false });
    DemoClip pothole = mp4Pair(QStringLiteral("evt_rec"), timeStamp(timeline, at),
        QStringLiteral("_F_BC"), QStringLiteral("_R_BC"));
    pothole.subtitleStyle = SubtitleStyle::GsensorScaled;
    next(pothole);
    timeline.addImpact({ at + length * 0.3, 260, true });
    next(kelClip(
        QStringLiteral("evt_rec"), QStringLiteral("Event_"), timeStamp(timeline, at), false));
    next(kelClip(
        QStringLiteral("manual_rec"), QStringLiteral("Manual_"), timeStamp(timeline, at), true));

    // The camera's own export of the knock, without telemetry.
    DemoClip saved = aviClip(QStringLiteral("Saved_Videos"), QString(), ClipFormat::Mp4Plain);
    saved.files = QStringList { QStringLiteral("SAVED_") + timeStamp(timeline, eventStart)
        + QStringLiteral(".mp4") };
    saved.start = eventStart;
    saved.camera = QStringLiteral("TOLM");
    saved.seconds = length;
    clips.push_back(saved);
}

// Parked at the destination: motion and knock recordings and a time-lapse.
void planParking(const DemoOptions& options, DemoTimeline& timeline, QVector<DemoClip>& clips)
{
    const int length = options.clipSeconds;
    double at = std::max(timeline.driveSeconds(), clips.back().start + length) + 1800;

    DemoClip motion = aviClip(QStringLiteral("motion_rec"),
        timeStamp(timeline, at) + QStringLiteral("_D.avi"), ClipFormat::AviTwoStreams);
    motion.start = at;
    motion.seconds = length;
    motion.fixFromSecond = std::min(6, length / 2); // the receiver wakes with the camera
    clips.push_back(motion);

    at += 2 * length + 600;
    timeline.addImpact({ at + length * 0.5, 240, false });
    DemoClip park = kelClip(
        QStringLiteral("parking_rec"), QStringLiteral("Park_"), timeStamp(timeline, at), false);
    park.start = at;
    park.seconds = length;
    clips.push_back(park);

    at += length + 900;
    DemoClip lapse = aviClip(QStringLiteral("motion_timelapse_rec"),
        timeStamp(timeline, at) + QStringLiteral("_TL.mov"), ClipFormat::QuickTime);
    lapse.camera = QStringLiteral("TOLM");
    lapse.gRate = 10;
    lapse.start = at;
    lapse.seconds = length;
    lapse.timeScale = 30; // plays thirty times faster than it was filmed
    clips.push_back(lapse);
}

} // namespace

QString timeStamp(const DemoTimeline& timeline, double seconds)
{
    return timeline.localTimeAt(seconds).toString(QStringLiteral("yyyyMMdd_HHmmss"));
}

QVector<DemoClip> plan(const DemoOptions& options, DemoTimeline& timeline)
{
    QVector<DemoClip> clips;
    planDrive(options, timeline, clips);
    planParking(options, timeline, clips);
    return clips;
}

} // namespace DemoClipPlan
