// A table of every sample, for spreadsheets: one row per tenth of a second.
#include "export/RouteWriters.h"

namespace RouteWriters {

namespace {

QByteArray csvField(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    if (!bytes.contains(',') && !bytes.contains('"') && !bytes.contains('\n')
        && !bytes.contains('\r'))
        return bytes;
    bytes.replace('"', "\"\"");
    return '"' + bytes + '"';
}

} // namespace

bool writeCsv(const QVector<RouteTrip>& trips, QIODevice& out)
{
    if (out.write("file,utc,t,gx,gy,gz,lat,lng,speed_kmh\n") < 0)
        return false;
    QByteArray row;
    for (const RouteTrip& trip : trips) {
        for (const ClipTimeline* clip : trip.clips) {
            const QByteArray file = csvField(clip->file);
            for (const RouteSample& s : clip->samples) {
                // A sample without a fix has empty coordinates, not 0,0.
                const QByteArrayList fields {
                    file,
                    utcText(s.utcMsecs).toLatin1(),
                    QByteArray::number(s.t, 'f', 1),
                    QByteArray::number(s.gx),
                    QByteArray::number(s.gy),
                    QByteArray::number(s.gz),
                    s.hasFix ? degreesText(s.lat).toLatin1() : QByteArray(),
                    s.hasFix ? degreesText(s.lng).toLatin1() : QByteArray(),
                    QByteArray::number(s.speedKmh),
                };
                row = fields.join(',');
                row += '\n';
                if (out.write(row) != row.size())
                    return false;
            }
        }
    }
    return true;
}

} // namespace RouteWriters
