#include "cut/TelemetryOverlay.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace TelemetryOverlay {

namespace {

constexpr double kMilesPerKm = 0.621371;
constexpr double kSampleSeconds = 0.1;

// h:mm:ss.cc, the script's own time format (hundredths of a second).
QString assTime(double seconds)
{
    const qint64 cs = std::llround(std::max(0.0, seconds) * 100.0);
    return QString::asprintf(
        "%lld:%02lld:%02lld.%02lld", cs / 360000, cs / 6000 % 60, cs / 100 % 60, cs % 100);
}

QString header(QSize frame)
{
    // White on a half-transparent box, a monospaced face so the figures
    // stand still while they change.
    const int fontSize = std::max(10, frame.height() / 24);
    const int margin = std::max(2, frame.height() / 54);
    return QStringLiteral("[Script Info]\n"
                          "ScriptType: v4.00+\n"
                          "PlayResX: %1\n"
                          "PlayResY: %2\n"
                          "WrapStyle: 2\n"
                          "ScaledBorderAndShadow: yes\n\n"
                          "[V4+ Styles]\n"
                          "Format: Name, Fontname, Fontsize, PrimaryColour, SecondaryColour, "
                          "OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, "
                          "ScaleY, Spacing, Angle, BorderStyle, Outline, Shadow, Alignment, "
                          "MarginL, MarginR, MarginV, Encoding\n"
                          "Style: Telemetry,DejaVu Sans Mono,%3,&H00FFFFFF,&H00FFFFFF,&H60000000,"
                          "&H60000000,0,0,0,0,100,100,0,0,3,%4,0,7,%5,%5,%5,1\n\n"
                          "[Events]\n"
                          "Format: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, "
                          "Effect, Text\n")
        .arg(frame.width())
        .arg(frame.height())
        .arg(fontSize)
        .arg(std::max(1, fontSize / 5))
        .arg(margin);
}

} // namespace

QString sampleText(const RouteSample& sample, bool miles)
{
    QString clock;
    if (sample.utcMsecs != kNoUtcMsecs)
        clock = QDateTime::fromMSecsSinceEpoch(sample.utcMsecs, Qt::UTC)
                    .toLocalTime()
                    .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const QString unit = miles ? QStringLiteral("mph") : QStringLiteral("km/h");
    const QString speed = sample.hasFix
        ? QString::number(std::lround(sample.speedKmh * (miles ? kMilesPerKm : 1.0)))
        : QStringLiteral("--");
    const QString g = QString::asprintf(
        "G %+.2f %+.2f %+.2f", sample.gx / 128.0, sample.gy / 128.0, sample.gz / 128.0);
    QStringList parts;
    if (!clock.isEmpty())
        parts << clock;
    parts << QStringLiteral("%1 %2").arg(speed.rightJustified(3), unit) << g;
    return parts.join(QStringLiteral("  "));
}

QString assScript(
    const Trip& trip, const QVector<CutPlan::Segment>& segments, QSize frame, bool miles)
{
    QString script = header(frame);
    double base = 0; // where the segment starts in the output
    for (const CutPlan::Segment& segment : segments) {
        const QVector<RouteSample>& samples = trip.clips[segment.clip].telemetry->samples;
        const int first = std::max(0, int(std::floor(segment.inpoint / kSampleSeconds + 1e-6)));
        for (int k = first; k < samples.size(); ++k) {
            const double begin = std::max(k * kSampleSeconds, segment.inpoint);
            const double end = std::min((k + 1) * kSampleSeconds, segment.outpoint);
            if (begin >= segment.outpoint)
                break;
            if (end <= begin)
                continue;
            script += QStringLiteral("Dialogue: 0,%1,%2,Telemetry,,0,0,0,,%3\n")
                          .arg(assTime(base + begin - segment.inpoint),
                              assTime(base + end - segment.inpoint), sampleText(samples[k], miles));
        }
        base += segment.length();
    }
    return script;
}

} // namespace TelemetryOverlay
