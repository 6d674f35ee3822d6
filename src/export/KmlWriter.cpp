// KML 2.2: a timed gx:Track per trip, or a plain LineString without times.
#include "export/RouteWriters.h"

#include <QStringList>
#include <QXmlStreamWriter>

namespace RouteWriters {

namespace {

constexpr auto kKmlNamespace = "http://www.opengis.net/kml/2.2";
constexpr auto kGxNamespace = "http://www.google.com/kml/ext/2.2";

QVector<const RouteSample*> positions(const RouteTrip& trip)
{
    QVector<const RouteSample*> points;
    for (const ClipTimeline* clip : trip.clips) {
        for (const RouteSample& sample : clip->samples) {
            if (sample.hasFix)
                points.append(&sample);
        }
    }
    return points;
}

void writeTrack(QXmlStreamWriter& xml, const QVector<const RouteSample*>& points)
{
    // All times first, then the coordinates in the same order.
    xml.writeStartElement(kGxNamespace, QStringLiteral("Track"));
    for (const RouteSample* point : points)
        xml.writeTextElement(kKmlNamespace, QStringLiteral("when"), utcText(point->utcMsecs));
    for (const RouteSample* point : points) {
        xml.writeTextElement(kGxNamespace, QStringLiteral("coord"),
            QStringList { degreesText(point->lng), degreesText(point->lat), QStringLiteral("0") }
                .join(u' '));
    }
    xml.writeEndElement();
}

void writeLine(QXmlStreamWriter& xml, const QVector<const RouteSample*>& points)
{
    QStringList tuples;
    tuples.reserve(points.size());
    for (const RouteSample* point : points)
        tuples.append(
            QStringList { degreesText(point->lng), degreesText(point->lat), QStringLiteral("0") }
                .join(u','));
    xml.writeStartElement(QStringLiteral("LineString"));
    xml.writeTextElement(QStringLiteral("tessellate"), QStringLiteral("1"));
    xml.writeTextElement(QStringLiteral("coordinates"), tuples.join(u' '));
    xml.writeEndElement();
}

void writeStyle(QXmlStreamWriter& xml)
{
    xml.writeStartElement(QStringLiteral("Style"));
    xml.writeAttribute(QStringLiteral("id"), QStringLiteral("route"));
    xml.writeStartElement(QStringLiteral("LineStyle"));
    xml.writeTextElement(QStringLiteral("color"), QStringLiteral("ff0000ff")); // red, aabbggrr
    xml.writeTextElement(QStringLiteral("width"), QStringLiteral("4"));
    xml.writeEndElement();
    xml.writeEndElement();
}

} // namespace

bool writeKml(const QVector<RouteTrip>& trips, QIODevice& out)
{
    QXmlStreamWriter xml(&out);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    xml.writeDefaultNamespace(kKmlNamespace);
    xml.writeNamespace(kGxNamespace, QStringLiteral("gx"));
    xml.writeStartElement(kKmlNamespace, QStringLiteral("kml"));
    xml.writeStartElement(QStringLiteral("Document"));
    xml.writeTextElement(QStringLiteral("name"), QStringLiteral("Tavro Viewer"));
    writeStyle(xml);
    for (const RouteTrip& trip : trips) {
        const QVector<const RouteSample*> points = positions(trip);
        if (points.isEmpty())
            continue;
        xml.writeStartElement(QStringLiteral("Placemark"));
        xml.writeTextElement(QStringLiteral("name"), tripName(trip));
        xml.writeTextElement(QStringLiteral("styleUrl"), QStringLiteral("#route"));
        if (trip.hasTimes())
            writeTrack(xml, points);
        else
            writeLine(xml, points);
        xml.writeEndElement();
        if (xml.hasError())
            return false;
    }
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError();
}

} // namespace RouteWriters
