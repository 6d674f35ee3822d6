#include "trips/CardTrips.h"

#include "library/ClipListScan.h"
#include "library/ClipNaming.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

namespace CardTrips {

namespace {

TripClip::Source sourceOf(QLatin1StringView folder)
{
    if (folder == QLatin1String("cont_rec"))
        return TripClip::Source::Continuous;
    if (folder == QLatin1String("evt_rec"))
        return TripClip::Source::Event;
    if (folder == QLatin1String("manual_rec"))
        return TripClip::Source::Manual;
    if (folder == QLatin1String("motion_rec"))
        return TripClip::Source::Motion;
    if (folder == QLatin1String("parking_rec"))
        return TripClip::Source::Parking;
    return TripClip::Source::Other;
}

struct Found {
    ClipListScan::Entry entry;
    TripClip::Source source;
    QString url;
};

QVector<Found> findClips(const QString& folder)
{
    QVector<Found> found;
    const QString root = QFileInfo(folder).absoluteFilePath();
    for (const QLatin1StringView name : kTripFolders) {
        if (!QFileInfo(root + u'/' + name).isDir())
            continue;
        for (ClipListScan::Entry& entry : ClipListScan::scanFolders(root, { name })) {
            QString url = ClipNaming::absoluteUrlString(entry.url);
            found.append({ std::move(entry), sourceOf(name), std::move(url) });
        }
    }
    if (!found.isEmpty())
        return found;
    for (ClipListScan::Entry& entry : ClipListScan::scan(root, false)) {
        QString url = ClipNaming::absoluteUrlString(entry.url);
        found.append({ std::move(entry), TripClip::Source::Other, std::move(url) });
    }
    return found;
}

// A clip without telemetry whose rear partner has some takes the rear's.
void takeRearTelemetry(Loaded& loaded, const std::atomic_bool* cancel)
{
    for (qsizetype i = 0; i < loaded.clips.size(); ++i) {
        ClipTimeline& timeline = loaded.timelines[i];
        const QString& rear = loaded.clips[i].rear;
        if (!timeline.samples.isEmpty() || rear.isEmpty() || (cancel && cancel->load()))
            continue;
        ClipTimeline fromRear = ClipTelemetryLoad::load(rear);
        if (fromRear.samples.isEmpty())
            continue;
        if (timeline.media.isKnown())
            fromRear.media = timeline.media; // the front camera's video is played
        timeline = std::move(fromRear);
    }
}

} // namespace

QVector<CardClip> scan(const QString& folder)
{
    const QVector<Found> found = findClips(folder);
    QHash<QString, qsizetype> byUrl;
    for (qsizetype i = 0; i < found.size(); ++i)
        byUrl.insert(found[i].url, i);
    // In a pair the front's URL string is the smaller ("F" sorts before "R").
    QHash<qsizetype, qsizetype> rearOf;
    QSet<qsizetype> rears;
    for (qsizetype i = 0; i < found.size(); ++i) {
        const QString partner = ClipNaming::conversionPartnerString(QUrl(found[i].url));
        const qsizetype front = partner.isEmpty() ? -1 : byUrl.value(partner, -1);
        if (front >= 0 && front != i && partner < found[i].url && !rearOf.contains(front)) {
            rearOf.insert(front, i);
            rears.insert(i);
        }
    }
    QVector<CardClip> clips;
    for (qsizetype i = 0; i < found.size(); ++i) {
        if (rears.contains(i))
            continue;
        const qsizetype rear = rearOf.value(i, -1);
        clips.append({ found[i].entry.path, rear >= 0 ? found[rear].entry.path : QString(),
            found[i].source });
    }
    return clips;
}

Loaded load(const QString& folder, const std::atomic_bool* cancel,
    const ClipTelemetryLoad::Progress& progress)
{
    Loaded loaded;
    loaded.clips = scan(folder);
    QStringList paths;
    for (const CardClip& clip : std::as_const(loaded.clips))
        paths << clip.path;
    loaded.timelines = ClipTelemetryLoad::loadAll(paths, cancel, progress);
    takeRearTelemetry(loaded, cancel);
    return loaded;
}

QVector<RouteTrip> routeTrips(Loaded& loaded, int64_t maxGapMsecs)
{
    RouteTrips::alignCameraClock(loaded.timelines);
    return RouteTrips::plan(loaded.timelines, maxGapMsecs);
}

QVector<Trip> trips(Loaded& loaded, int64_t maxGapMsecs)
{
    QVector<Trip> drives;
    for (const RouteTrip& planned : routeTrips(loaded, maxGapMsecs)) {
        if (planned.startUtc() == kNoUtcMsecs)
            continue;
        QVector<TripClip> clips;
        for (const ClipTimeline* timeline : planned.clips) {
            const qsizetype index = timeline - loaded.timelines.constData();
            const CardClip& card = loaded.clips[index];
            TripClip clip;
            clip.path = card.path;
            clip.rear = card.rear;
            clip.source = card.source;
            clip.telemetry = std::make_shared<const ClipTimeline>(*timeline);
            clips.append(std::move(clip));
        }
        drives.append(Trip::fromClips(std::move(clips)));
    }
    return drives;
}

std::optional<Trip> clipTrip(const QString& path)
{
    const QUrl url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    const QString partner = ClipNaming::conversionPartnerString(url);
    const QString partnerPath = partner.isEmpty() ? QString() : QUrl(partner).toLocalFile();
    CardClip clip { url.toLocalFile(), {}, TripClip::Source::Other };
    if (!partnerPath.isEmpty() && QFileInfo(partnerPath).isFile()) {
        // In a pair the front's URL string is the smaller ("F" sorts before "R").
        clip.rear = partnerPath;
        if (partner < ClipNaming::absoluteUrlString(url))
            std::swap(clip.path, clip.rear);
    }
    Loaded loaded;
    loaded.clips = { clip };
    loaded.timelines = { ClipTelemetryLoad::load(clip.path) };
    takeRearTelemetry(loaded, nullptr);
    QVector<Trip> found = trips(loaded);
    if (found.isEmpty())
        return std::nullopt;
    return std::move(found.first());
}

QVector<Trip> read(const QString& folder, int64_t maxGapMsecs, const std::atomic_bool* cancel,
    const ClipTelemetryLoad::Progress& progress)
{
    Loaded loaded = load(folder, cancel, progress);
    return trips(loaded, maxGapMsecs);
}

} // namespace CardTrips
