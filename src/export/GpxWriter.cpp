// GPX 1.1 with the Garmin track-point extension for the speed.
#include "export/RouteWriters.h"

#include <QXmlStreamWriter>

namespace RouteWriters {

namespace {

constexpr auto kGpxNamespace = "http://www.topografix.com/GPX/1/1";
constexpr auto kTrackPointNamespace = "http://www.garmin.com/xmlschemas/TrackPointExtension/v2";
constexpr auto kSchemaLocation = "http://www.topografix.com/GPX/1/1 "
                                 "http://www.topografix.com/GPX/1/1/gpx.xsd "
                                 "http://www.garmin.com/xmlschemas/TrackPointExtension/v2 "
                                 "http://www.garmin.com/xmlschemas/TrackPointExtensionv2.xsd";

void writePoint(QXmlStreamWriter& xml, const RouteSample& sample)
{
    xml.writeStartElement(QStringLiteral("trkpt"));
    xml.writeAttribute(QStringLiteral("lat"), degreesText(sample.lat));
    xml.writeAttribute(QStringLiteral("lon"), degreesText(sample.lng));
    if (sample.utcMsecs != kNoUtcMsecs)
        xml.writeTextElement(QStringLiteral("time"), utcText(sample.utcMsecs));
    xml.writeStartElement(QStringLiteral("extensions"));
    xml.writeStartElement(kTrackPointNamespace, QStringLiteral("TrackPointExtension"));
    xml.writeTextElement(kTrackPointNamespace, QStringLiteral("speed"),
        QString::number(sample.speedKmh / 3.6, 'f', 2)); // m/s
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndElement();
}

} // namespace

bool writeGpx(const QVector<RouteTrip>& trips, QIODevice& out)
{
    QXmlStreamWriter xml(&out);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    xml.writeDefaultNamespace(kGpxNamespace);
    xml.writeNamespace(kTrackPointNamespace, QStringLiteral("gpxtpx"));
    xml.writeNamespace(
        QStringLiteral("http://www.w3.org/2001/XMLSchema-instance"), QStringLiteral("xsi"));
    xml.writeStartElement(kGpxNamespace, QStringLiteral("gpx"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    xml.writeAttribute(QStringLiteral("creator"), QStringLiteral("Tavro Viewer"));
    xml.writeAttribute(QStringLiteral("http://www.w3.org/2001/XMLSchema-instance"),
        QStringLiteral("schemaLocation"), kSchemaLocation);
    for (const RouteTrip& trip : trips) {
        if (trip.fixCount() == 0)
            continue;
        xml.writeStartElement(QStringLiteral("trk"));
        xml.writeTextElement(QStringLiteral("name"), tripName(trip));
        for (const ClipTimeline* clip : trip.clips) {
            if (clip->fixCount() == 0)
                continue;
            xml.writeStartElement(QStringLiteral("trkseg"));
            for (const RouteSample& sample : clip->samples) {
                if (sample.hasFix)
                    writePoint(xml, sample);
            }
            xml.writeEndElement();
        }
        xml.writeEndElement();
        if (xml.hasError())
            return false;
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError();
}

} // namespace RouteWriters
