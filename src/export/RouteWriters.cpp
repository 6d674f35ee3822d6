#include "export/RouteWriters.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

namespace RouteWriters {

QString formatName(RouteFormat format)
{
    switch (format) {
    case RouteFormat::Gpx:
        return QStringLiteral("gpx");
    case RouteFormat::Kml:
        return QStringLiteral("kml");
    case RouteFormat::GeoJson:
        return QStringLiteral("geojson");
    case RouteFormat::Csv:
        break;
    }
    return QStringLiteral("csv");
}

std::optional<RouteFormat> formatFromName(const QString& name)
{
    for (const RouteFormat format :
        { RouteFormat::Gpx, RouteFormat::Kml, RouteFormat::GeoJson, RouteFormat::Csv }) {
        if (name.compare(formatName(format), Qt::CaseInsensitive) == 0)
            return format;
    }
    return std::nullopt;
}

bool hasContent(RouteFormat format, const QVector<RouteTrip>& trips)
{
    return std::any_of(trips.cbegin(), trips.cend(), [format](const RouteTrip& trip) {
        return format == RouteFormat::Csv ? trip.sampleCount() > 0 : trip.fixCount() > 0;
    });
}

bool write(RouteFormat format, const QVector<RouteTrip>& trips, QIODevice& out)
{
    switch (format) {
    case RouteFormat::Gpx:
        return writeGpx(trips, out);
    case RouteFormat::Kml:
        return writeKml(trips, out);
    case RouteFormat::GeoJson:
        return writeGeoJson(trips, out);
    case RouteFormat::Csv:
        break;
    }
    return writeCsv(trips, out);
}

QString utcText(int64_t utcMsecs)
{
    if (utcMsecs == kNoUtcMsecs)
        return {};
    return QDateTime::fromMSecsSinceEpoch(utcMsecs, Qt::UTC).toString(Qt::ISODateWithMs);
}

QString degreesText(double degrees)
{
    return QString::number(degrees, 'f', 7);
}

QString tripName(const RouteTrip& trip)
{
    if (trip.clips.isEmpty())
        return {};
    const QString first = QFileInfo(trip.clips.constFirst()->file).fileName();
    if (trip.clips.size() == 1)
        return first;
    return first + QStringLiteral(" … ") + QFileInfo(trip.clips.constLast()->file).fileName();
}

} // namespace RouteWriters
