#include "display/MapScripts.h"

#include "telemetry/TavroClipData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUrlQuery>

#include <cstdint>

namespace MapScripts {

QString moveToScript(float lat, float lng)
{
    // asprintf formats in the C locale whatever the user's locale is.
    return QString::asprintf(
        "MapMoveToAuto(%f,%f,-1)", static_cast<double>(lng), static_cast<double>(lat));
}

QString offlineTextScript(const QString& text)
{
    // A JSON array of one string is a valid script literal once the brackets go.
    const QByteArray array = QJsonDocument(QJsonArray { text }).toJson(QJsonDocument::Compact);
    return QStringLiteral("setOfflineText(%1)")
        .arg(QString::fromUtf8(array.mid(1, array.size() - 2)));
}

QString routeScript(const TavroClipData& clipData)
{
    QString text = QStringLiteral("addPolyLine('");
    float previousLng = 0.0f;
    float previousLat = 0.0f;
    bool first = true;
    // The count is taken as unsigned. Every index from the capacity on reads
    // the same out-of-range point, which the duplicate test drops, so stopping
    // one past the capacity gives the text the full unsigned walk would.
    const uint32_t count = static_cast<uint32_t>(clipData.gpsDataCount());
    const uint32_t last = std::min<uint32_t>(count, TavroClipData::kCapacity + 1);
    for (uint32_t i = 0; i < last; ++i) {
        const float lng = clipData.getGpsLng(static_cast<int>(i));
        const float lat = clipData.getGpsLat(static_cast<int>(i));
        if (lng == previousLng && lat == previousLat)
            continue;
        if (!first)
            text += QLatin1Char('|');
        text += QString::asprintf("%f,%f", static_cast<double>(lng), static_cast<double>(lat));
        previousLng = lng;
        previousLat = lat;
        first = false;
    }
    text += QStringLiteral("', 'red', 4, 0.5)");
    return text;
}

QString routeScript(const QVector<QPointF>& points)
{
    QStringList pairs;
    pairs.reserve(points.size());
    for (const QPointF& point : points)
        pairs << QString::asprintf("%f,%f", point.x(), point.y());
    return QStringLiteral("addPolyLine('%1', 'red', 4, 0.5)").arg(pairs.join(u'|'));
}

QUrl pageUrl(const QString& tileUrl)
{
    QUrl url(QString::fromLatin1(kMapPageUrl));
    if (!tileUrl.isEmpty() && tileUrl != QLatin1String(kDefaultTileUrl)) {
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("tiles"), tileUrl);
        url.setQuery(query);
    }
    return url;
}

} // namespace MapScripts
