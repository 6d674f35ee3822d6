#include "TelemetryScripts.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace TelemetryScripts {

namespace {

// ddmm.mmmm (or dddmm.mmmm) and the hemisphere letter.
QString nmeaCoordinate(double degrees, int degreeDigits, char positive, char negative)
{
    const qint64 tenThousandthMinutes = std::llround(std::fabs(degrees) * 60.0 * 10000.0);
    const qint64 whole = tenThousandthMinutes / 600000;
    const double minutes = double(tenThousandthMinutes % 600000) / 10000.0;
    return QStringLiteral("%1%2,%3")
        .arg(whole, degreeDigits, 10, QLatin1Char('0'))
        .arg(minutes, 7, 'f', 4, QLatin1Char('0'))
        .arg(QLatin1Char(degrees < 0 ? negative : positive));
}

QString srtTime(qint64 ms)
{
    return QStringLiteral("%1:%2:%3,%4")
        .arg(ms / 3600000, 2, 10, QLatin1Char('0'))
        .arg(ms / 60000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms % 1000, 3, 10, QLatin1Char('0'));
}

struct TimedText {
    double t;
    QString text;
};

// SubRip blocks, one per record, each shown until just before the next so
// that no two overlap.
QByteArray srtFromEvents(QVector<TimedText> events)
{
    std::stable_sort(events.begin(), events.end(),
        [](const TimedText& a, const TimedText& b) { return a.t < b.t; });
    QString out;
    for (qsizetype i = 0; i < events.size(); ++i) {
        const qint64 start = std::llround(events[i].t * 1000.0);
        qint64 end = start + 40;
        if (i + 1 < events.size())
            end = std::min(end, std::llround(events[i + 1].t * 1000.0));
        end = std::max(end, start + 1);
        out += QStringLiteral("%1\n%2 --> %3\n%4\n\n")
                   .arg(i + 1)
                   .arg(srtTime(start), srtTime(end), events[i].text);
    }
    return out.toUtf8();
}

// The G-sensor records of these cameras read at most three characters of z.
int shortZ(int z)
{
    return std::clamp(z, -99, 999);
}

QString gsensorFields(const GReading& g)
{
    return QStringLiteral("%1,%2,%3").arg(g.x).arg(g.y).arg(shortZ(g.z));
}

// Device counts of a sensor with 256 counts per g: "gsensori,1,256,cx,cy,cz".
QString scaledRecord(const GReading& g)
{
    return QStringLiteral("gsensori,1,256,%1,%2,%3").arg(g.x * 2).arg(g.y * 2).arg(shortZ(g.z * 2));
}

quint8 centredByte(int value)
{
    return quint8(128 - std::clamp(value, -127, 128));
}
quint8 kelByte(int value)
{
    return quint8(std::clamp<long>(std::lround((value + 1280) / 10.0), 0, 255));
}

QByteArray le32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

} // namespace

QString rmcSentence(const GpsReading& fix, const QString& talker, bool dollar)
{
    const QString time = fix.utc.toString(QStringLiteral("HHmmss")) + QStringLiteral(".00");
    const QString date = fix.utc.toString(QStringLiteral("ddMMyy"));
    QString body;
    if (fix.valid) {
        body = QStringLiteral("%1,%2,A,%3,%4,%5,%6,%7,,,A")
                   .arg(talker, time, nmeaCoordinate(fix.lat, 2, 'N', 'S'),
                       nmeaCoordinate(fix.lng, 3, 'E', 'W'))
                   .arg(fix.knots, 0, 'f', 1)
                   .arg(fix.courseDeg, 0, 'f', 1)
                   .arg(date);
    } else {
        body = QStringLiteral("%1,%2,V,,,,,,,%3,,,N").arg(talker, time, date);
    }
    if (!dollar)
        return body;
    quint8 sum = 0;
    for (const QChar c : body)
        sum ^= quint8(c.unicode());
    return QStringLiteral("$%1*%2").arg(body).arg(sum, 2, 16, QLatin1Char('0')).toUpper();
}

QByteArray subtitleScript(const ClipTelemetry& clip, SubtitleStyle style)
{
    QVector<TimedText> events;
    const QString talker
        = style == SubtitleStyle::Gsensor ? QStringLiteral("GPRMC") : QStringLiteral("GNRMC");
    for (const GpsReading& fix : clip.fixes) {
        const int second = int(std::floor(fix.t));
        const QVector<GReading> readings = clip.readingsOfSecond(second);
        for (qsizetype k = 0; k < readings.size(); ++k) {
            const GReading& g = readings[k];
            if (style == SubtitleStyle::GsensorScaled) {
                QString text = scaledRecord(g);
                if (k + 1 == readings.size())
                    text += QLatin1Char(';') + rmcSentence(fix, talker, false);
                events.push_back({ g.t, text });
                continue;
            }
            events.push_back({ g.t, QStringLiteral("gsensor,") + gsensorFields(g) });
            if (style == SubtitleStyle::GsensorCar && k % 5 == 4)
                events.push_back(
                    { g.t + 0.3 / clip.gRate, QStringLiteral("CAR,") + gsensorFields(g) });
        }
        if (style != SubtitleStyle::GsensorScaled)
            events.push_back({ fix.t, rmcSentence(fix, talker, false) });
    }
    return srtFromEvents(events);
}

QVector<TimedChunk> aviChunks(
    const ClipTelemetry& clip, const QByteArray& fourcc, bool gPrefixedRmc)
{
    QVector<TimedChunk> chunks;
    for (const GpsReading& fix : clip.fixes) {
        for (const GReading& g : clip.readingsOfSecond(int(std::floor(fix.t)))) {
            QByteArray record("M");
            record.append(char(centredByte(g.x)))
                .append(char(centredByte(g.y)))
                .append(char(centredByte(g.z)));
            chunks.push_back({ g.t, fourcc, record });
        }
        if (!fix.valid) {
            chunks.push_back({ fix.t, fourcc, QByteArray("T") });
            continue;
        }
        QByteArray sentence = rmcSentence(fix, QStringLiteral("GPRMC"), true).toLatin1();
        if (gPrefixedRmc)
            sentence.prepend('G');
        chunks.push_back({ fix.t, fourcc, sentence });
    }
    return chunks;
}

QVector<TimedChunk> kelChunks(const ClipTelemetry& clip, const QByteArray& fourcc)
{
    QVector<TimedChunk> chunks;
    for (const GpsReading& fix : clip.fixes) {
        for (const GReading& g : clip.readingsOfSecond(int(std::floor(fix.t)))) {
            QByteArray record("M");
            record.append(char(kelByte(g.x))).append(char(kelByte(g.y))).append(char(kelByte(g.z)));
            record.append("\x01\x01\x01\x00", 4);
            chunks.push_back({ g.t, fourcc, record });
        }
        chunks.push_back(
            { fix.t, fourcc, rmcSentence(fix, QStringLiteral("GPRMC"), true).toLatin1() });
    }
    return chunks;
}

QByteArray tailBlock(const ClipTelemetry& clip)
{
    QByteArray text("ETKLP1");
    int n = 0;
    for (const GpsReading& fix : clip.fixes) {
        const int kmh = fix.valid ? int(std::lround(fix.knots * 1.852)) : 0;
        for (const GReading& g : clip.readingsOfSecond(int(std::floor(fix.t)))) {
            text += QStringLiteral("%1,%2,%3,%4,%5,%6,%7\n")
                        .arg(n++)
                        .arg(fix.valid ? fix.lat : 0.0, 0, 'f', 6)
                        .arg(fix.valid ? fix.lng : 0.0, 0, 'f', 6)
                        .arg(kmh)
                        .arg(g.x)
                        .arg(g.y)
                        .arg(g.z)
                        .toLatin1();
        }
    }
    return text;
}

QByteArray rawRecords(const ClipTelemetry& clip)
{
    QByteArray out;
    const auto append = [&out](const QString& text) {
        const QByteArray bytes = text.toLatin1() + '\0';
        out += QByteArray("02tx") + le32(quint32(bytes.size())) + bytes;
    };
    for (const GpsReading& fix : clip.fixes) {
        for (const GReading& g : clip.readingsOfSecond(int(std::floor(fix.t))))
            append(QStringLiteral("gsensor,") + gsensorFields(g));
        append(rmcSentence(fix, QStringLiteral("GPRMC"), false));
    }
    return out;
}

} // namespace TelemetryScripts
