#include "ExportTestSupport.h"

#include "TestFiles.h"

#include "telemetry/TavroClipData.h"

#include <QBuffer>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <memory>

namespace ExportTestSupport {

QString scratchPath(const QString& name)
{
    static QTemporaryDir dir;
    return dir.filePath(name);
}

QByteArray subtitleText(const QVector<Second>& seconds)
{
    QByteArray text;
    int counter = 0;
    const auto block = [&](const QByteArray& payload) {
        ++counter;
        text
            += QByteArray::number(counter) + "\n00:00:00,000 --> 00:00:00,100\n" + payload + "\n\n";
    };
    for (const Second& s : seconds) {
        for (int i = 0; i < 10; ++i)
            block("gsensor," + QByteArray::number(i) + ",-" + QByteArray::number(i) + ",128");
        block("GPRMC," + s.time + ',' + s.status + ',' + s.lat + ',' + s.ns + ',' + s.lng + ','
            + s.ew + ',' + s.knots + ",0.0," + s.date + ",,,A");
    }
    return text;
}

ClipTimeline timelineFromSubtitles(const QString& clipName, const QByteArray& srt)
{
    static int serial = 0;
    const QString path = scratchPath(QStringLiteral("track%1.srt").arg(++serial));
    TestFiles::write(path, srt);
    const auto record = std::make_unique<TavroClipData>();
    record->loadVideoFileCilpDataFromFilePath(path);
    return ClipTimeline::fromRecord(clipName, *record);
}

RouteSample sample(double lat, double lng, int64_t utc, int speed)
{
    RouteSample s;
    s.lat = lat;
    s.lng = lng;
    s.hasFix = lat != 0 || lng != 0;
    s.utcMsecs = utc;
    s.speedKmh = speed;
    s.gz = 128;
    return s;
}

ClipTimeline handMade(const QString& file, const QVector<RouteSample>& samples)
{
    ClipTimeline timeline;
    timeline.file = file;
    timeline.samples = samples;
    for (int i = 0; i < timeline.samples.size(); ++i)
        timeline.samples[i].t = i / 10.0;
    const bool timed = !samples.isEmpty() && samples.first().utcMsecs != kNoUtcMsecs;
    timeline.timeSource = timed ? ClipTimeline::TimeSource::Gps : ClipTimeline::TimeSource::None;
    return timeline;
}

QByteArray render(RouteFormat format, const QVector<RouteTrip>& trips)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!RouteWriters::write(format, trips, buffer))
        return {};
    return buffer.data();
}

bool haveGpsbabel()
{
    return TestFiles::haveTool(QStringLiteral("gpsbabel"));
}

std::optional<QVector<BabelPoint>> gpsbabelPoints(const QString& format, const QByteArray& document)
{
    static int serial = 0;
    const QString path = scratchPath(QStringLiteral("babel%1.%2").arg(++serial).arg(format));
    TestFiles::write(path, document);
    QProcess babel;
    babel.start(
        QStringLiteral("gpsbabel"), { "-t", "-i", format, "-f", path, "-o", "unicsv", "-F", "-" });
    if (!babel.waitForFinished(60000) || babel.exitCode() != 0)
        return std::nullopt;
    const QList<QByteArray> lines = babel.readAllStandardOutput().split('\n'); // never empty
    const QList<QByteArray> header = lines.first().trimmed().split(',');
    const qsizetype latColumn = header.indexOf("Latitude");
    const qsizetype lngColumn = header.indexOf("Longitude");
    const qsizetype dateColumn = header.indexOf("Date");
    const qsizetype timeColumn = header.indexOf("Time");
    QVector<BabelPoint> points;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QList<QByteArray> fields = lines[i].trimmed().split(',');
        if (fields.size() < header.size())
            continue;
        BabelPoint point;
        point.lat = fields[latColumn].toDouble();
        point.lng = fields[lngColumn].toDouble();
        if (dateColumn >= 0)
            point.date = QString::fromLatin1(fields[dateColumn]);
        if (timeColumn >= 0)
            point.time = QString::fromLatin1(fields[timeColumn]);
        points.append(point);
    }
    return points;
}

QStringList elementTexts(const QByteArray& xml, const QString& name)
{
    QStringList texts;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name)
            texts.append(reader.readElementText(QXmlStreamReader::IncludeChildElements));
    }
    return reader.hasError() ? QStringList { QStringLiteral("XML ERROR: ") + reader.errorString() }
                             : texts;
}

QStringList attributeValues(const QByteArray& xml, const QString& element, const QString& attribute)
{
    QStringList values;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == element)
            values.append(reader.attributes().value(attribute).toString());
    }
    return values;
}

} // namespace ExportTestSupport
