// tavro trips DIR [--gap SECONDS]: the drives on a card, one JSON line each.
#include "cli/CliCommands.h"

#include "trips/CardTrips.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <optional>

namespace {

constexpr char kUsage[] = "usage: tavro trips DIR [--gap SECONDS]\n";

int usage(CliIo& io)
{
    io.err << kUsage;
    return CliExit::kUsage;
}

QString number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString text(const QString& value)
{
    // A JSON array of one string holds the string as JSON wants it.
    const QByteArray array = QJsonDocument(QJsonArray { value }).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QString time(int64_t utcMsecs)
{
    return text(QDateTime::fromMSecsSinceEpoch(utcMsecs, Qt::UTC)
                    .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz'Z'")));
}

QString clipsJson(const Trip& trip)
{
    QStringList clips;
    for (const TripClip& clip : trip.clips) {
        clips << QStringLiteral("{\"path\":%1,\"rear\":%2,\"offset\":%3,\"duration\":%4}")
                     .arg(text(clip.path),
                         clip.rear.isEmpty() ? QStringLiteral("null") : text(clip.rear),
                         number(clip.offset, 3), number(clip.duration, 3));
    }
    return u'[' + clips.join(u',') + u']';
}

QString eventsJson(const Trip& trip)
{
    QStringList events;
    for (const TripEvent& event : trip.events) {
        events << QStringLiteral("{\"offset\":%1,\"kind\":%2,\"peakG\":%3,\"clip\":%4}")
                      .arg(number(event.offset, 3), text(TripEvent::kindName(event.kind)),
                          event.peakG ? number(*event.peakG, 2) : QStringLiteral("null"),
                          text(trip.clips[event.clip].path));
    }
    return u'[' + events.join(u',') + u']';
}

QString tripJson(int index, const Trip& trip)
{
    return QStringLiteral("{\"trip\":%1,\"start\":%2,\"end\":%3,\"duration\":%4,"
                          "\"distanceKm\":%5,\"maxSpeedKmh\":%6,\"clips\":%7,\"events\":%8}")
        .arg(QString::number(index), time(trip.startUtc), time(trip.endUtc),
            number(trip.duration(), 3), number(trip.distanceKm, 3),
            trip.maxSpeedKmh ? number(*trip.maxSpeedKmh, 1) : QStringLiteral("null"),
            clipsJson(trip), eventsJson(trip));
}

std::optional<double> gapSeconds(const QString& value)
{
    bool ok = false;
    const double seconds = value.toDouble(&ok);
    if (!ok || !std::isfinite(seconds) || seconds < 0 || seconds > 1e9)
        return std::nullopt;
    return seconds;
}

} // namespace

int runTripsCommand(const QStringList& args, CliIo& io)
{
    QString folder;
    double gap = RouteTrips::kMaxGapMsecs / 1000.0;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (arg == QLatin1String("--gap") && i + 1 < args.size()) {
            const std::optional<double> seconds = gapSeconds(args[++i]);
            if (!seconds)
                return usage(io);
            gap = *seconds;
        } else if (arg.startsWith(u'-') || !folder.isEmpty()) {
            return usage(io);
        } else {
            folder = arg;
        }
    }
    if (folder.isEmpty())
        return usage(io);
    const QFileInfo info(folder);
    if (!info.isDir() || !info.isReadable() || !info.isExecutable()) {
        io.err << "tavro trips: cannot read folder " << folder << '\n';
        return CliExit::kFailure;
    }
    const QVector<Trip> trips
        = CardTrips::read(info.absoluteFilePath(), int64_t(std::llround(gap * 1000.0)));
    for (int i = 0; i < trips.size(); ++i)
        io.out << tripJson(i, trips[i]) << '\n';
    return CliExit::kOk;
}
