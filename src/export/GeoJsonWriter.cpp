// GeoJSON (RFC 7946): a FeatureCollection, one Feature per clip with positions.
#include "export/RouteWriters.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace RouteWriters {

namespace {

// Seven decimals (about a centimetre), so the document does not carry the
// float noise of the record's single-precision degrees.
double rounded(double value, double scale)
{
    return std::round(value * scale) / scale;
}

QJsonValue timeValue(int64_t utcMsecs)
{
    return utcMsecs == kNoUtcMsecs ? QJsonValue() : QJsonValue(utcText(utcMsecs));
}

QJsonObject geometry(const ClipTimeline& clip)
{
    QJsonArray coordinates;
    for (const RouteSample& sample : clip.samples) {
        if (sample.hasFix)
            coordinates.append(QJsonArray { rounded(sample.lng, 1e7), rounded(sample.lat, 1e7) });
    }
    // A line needs two positions; a clip with one fix is a point.
    if (coordinates.size() == 1)
        return QJsonObject { { "type", "Point" }, { "coordinates", coordinates.first() } };
    return QJsonObject { { "type", "LineString" }, { "coordinates", coordinates } };
}

QJsonObject feature(const ClipTimeline& clip, int tripIndex)
{
    const QJsonObject properties {
        { "file", clip.file },
        { "name", QFileInfo(clip.file).fileName() },
        { "trip", tripIndex + 1 },
        { "start", timeValue(clip.startUtc()) },
        { "end", timeValue(clip.endUtc()) },
        { "maxSpeedKmh", clip.maxSpeedKmh() },
        { "peakG", rounded(clip.peakG(), 1e3) },
    };
    return QJsonObject {
        { "type", "Feature" },
        { "geometry", geometry(clip) },
        { "properties", properties },
    };
}

} // namespace

bool writeGeoJson(const QVector<RouteTrip>& trips, QIODevice& out)
{
    QJsonArray features;
    for (int t = 0; t < trips.size(); ++t) {
        for (const ClipTimeline* clip : trips[t].clips) {
            if (clip->fixCount() > 0)
                features.append(feature(*clip, t));
        }
    }
    const QJsonObject collection { { "type", "FeatureCollection" }, { "features", features } };
    const QByteArray text = QJsonDocument(collection).toJson(QJsonDocument::Compact);
    return out.write(text) == text.size() && out.write("\n", 1) == 1;
}

} // namespace RouteWriters
