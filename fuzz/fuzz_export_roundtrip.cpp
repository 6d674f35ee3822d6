// Arbitrary subtitle telemetry through the parser, the clip timeline and every
// route writer, then read back: the GPX must hold one track point per fix,
// the GeoJSON one feature per clip with a fix, the CSV one row per sample.
#include "export/ClipTimeline.h"
#include "export/RouteWriters.h"
#include "telemetry/TavroClipData.h"
#include "telemetry/TolmSubtitleParser.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>

#include <cstdint>
#include <cstdlib>

namespace {

QByteArray render(RouteFormat format, const QVector<RouteTrip>& trips)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!RouteWriters::write(format, trips, buffer))
        std::abort();
    return buffer.data();
}

int countElements(const QByteArray& xml, QStringView name)
{
    QXmlStreamReader reader(xml);
    int count = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name)
            ++count;
    }
    if (reader.hasError())
        std::abort();
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static TavroClipData record;
    record.setClipDataCount(
        TolmSubtitleParser().parse(QByteArrayView(data, static_cast<qsizetype>(size)), record));
    const ClipTimeline clip
        = ClipTimeline::fromRecord(QStringLiteral("20240315_081502_F.mp4"), record);
    const QVector<RouteTrip> trips { RouteTrip { { &clip } } };
    const int fixes = clip.fixCount();

    if (countElements(render(RouteFormat::Gpx, trips), u"trkpt") != fixes)
        std::abort();
    if (countElements(render(RouteFormat::Kml, trips), u"Placemark") != (fixes > 0 ? 1 : 0))
        std::abort();
    QJsonParseError error;
    const QJsonDocument geo = QJsonDocument::fromJson(render(RouteFormat::GeoJson, trips), &error);
    if (error.error != QJsonParseError::NoError
        || geo.object()[QStringLiteral("features")].toArray().size() != (fixes > 0 ? 1 : 0))
        std::abort();
    if (render(RouteFormat::Csv, trips).count('\n') != clip.samples.size() + 1)
        std::abort();
    return 0;
}
