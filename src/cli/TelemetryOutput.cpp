#include "cli/TelemetryOutput.h"

#include "telemetry/TavroClipData.h"

#include <cmath>

namespace TelemetryOutput {

namespace {

QString jsonString(const QString& text)
{
    QString quoted = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"':
            quoted += QLatin1String("\\\"");
            break;
        case '\\':
            quoted += QLatin1String("\\\\");
            break;
        case '\n':
            quoted += QLatin1String("\\n");
            break;
        case '\r':
            quoted += QLatin1String("\\r");
            break;
        case '\t':
            quoted += QLatin1String("\\t");
            break;
        default:
            if (c.unicode() < 0x20)
                quoted += QString::asprintf("\\u%04x", c.unicode());
            else
                quoted += c;
        }
    }
    return quoted + u'"';
}

QString csvField(const QString& text)
{
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n')
        && !text.contains(u'\r'))
        return text;
    QString escaped = text;
    escaped.replace(u'"', QLatin1String("\"\""));
    return u'"' + escaped + u'"';
}

} // namespace

QString coordinateText(float value, bool forJson)
{
    // JSON has no NaN or infinity; a tail block may carry them.
    if (forJson && !std::isfinite(value))
        return QStringLiteral("null");
    return QString::asprintf("%.9g", static_cast<double>(value));
}

void writeJson(
    QTextStream& out, const QString& file, const QString& loader, const TavroClipData& data)
{
    out << "{\"file\":" << jsonString(file) << ",\"loader\":" << jsonString(loader)
        << ",\"clipDataCount\":" << data.clipDataCount()
        << ",\"gpsDataCount\":" << data.gpsDataCount() << ",\"samples\":[";
    for (int i = 0; i < data.clipDataCount(); ++i) {
        int x = 0, y = 0, z = 0, speed = 0;
        float lat = 0.0f, lng = 0.0f;
        data.getClipDataWithIndex(i, x, y, z, lat, lng, speed);
        out << (i ? ",[" : "[") << x << ',' << y << ',' << z << ',' << coordinateText(lat, true)
            << ',' << coordinateText(lng, true) << ',' << speed << ']';
    }
    out << "]}\n";
}

QString csvHeader()
{
    return QStringLiteral("file,time,gx,gy,gz,lat,lng,speed");
}

void writeCsvRows(QTextStream& out, const QString& file, const TavroClipData& data)
{
    const QString name = csvField(file);
    for (int i = 0; i < data.clipDataCount(); ++i) {
        int x = 0, y = 0, z = 0, speed = 0;
        float lat = 0.0f, lng = 0.0f;
        data.getClipDataWithIndex(i, x, y, z, lat, lng, speed);
        out << name << ',' << i / 10 << '.' << i % 10 << ',' << x << ',' << y << ',' << z << ','
            << coordinateText(lat, false) << ',' << coordinateText(lng, false) << ',' << speed
            << '\n';
    }
}

} // namespace TelemetryOutput
