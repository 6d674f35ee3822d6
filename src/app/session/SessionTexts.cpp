#include "app/session/SessionTexts.h"

#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "trips/Trip.h"

#include <QDateTime>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

// Truncates toward zero to a 32-bit integer; values out of range (or NaN)
// give 0 rather than undefined behaviour.
int32_t truncated(double value)
{
    if (!std::isfinite(value) || value >= double(std::numeric_limits<int32_t>::max())
        || value <= double(std::numeric_limits<int32_t>::min()))
        return 0;
    return int32_t(value);
}

constexpr double kMilesPerKm = 0.621371;

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

// The localised text with its "%1" filled in; the value alone where the
// text has no place for it (no table for the language).
QString withValue(const char* key, const QString& value)
{
    const QString text = localized(key);
    return text.contains(QLatin1String("%1")) ? text.arg(value) : value;
}

QString durationText(double seconds)
{
    const int32_t whole = truncated(seconds);
    if (whole >= 3600)
        return QString::asprintf("%d:%02d:%02d", whole / 3600, whole / 60 % 60, whole % 60);
    return QString::asprintf("%d:%02d", whole / 60, whole % 60);
}

QDateTime localTime(int64_t utcMsecs)
{
    return QDateTime::fromMSecsSinceEpoch(utcMsecs, Qt::UTC).toLocalTime();
}

} // namespace

namespace SessionTexts {

QString playTimeText(double time, double duration)
{
    return QString::asprintf("%02d:%02d/%02d:%02d", truncated(time / 60.0), truncated(time) % 60,
        truncated(duration / 60.0), truncated(duration) % 60);
}

QString gText(float g)
{
    return QString::asprintf("%.3f", double(g));
}

QString coordinateText(float degrees)
{
    return QString::asprintf("%.4f", double(degrees));
}

QString tripMarkText(const QString& what, int64_t utcMsecs, double position)
{
    const QString clock = QDateTime::fromMSecsSinceEpoch(utcMsecs, Qt::UTC)
                              .toLocalTime()
                              .toString(QStringLiteral("HH:mm:ss"));
    return QStringLiteral("%1\n%2 · %3")
        .arg(what, clock,
            QString::asprintf("%02d:%02d", truncated(position / 60.0), truncated(position) % 60));
}

QString tripRowText(const Trip& trip, bool miles)
{
    const QDateTime start = localTime(trip.startUtc);
    const QDateTime end = localTime(trip.endUtc);
    const QString first
        = QStringLiteral("%1  %2–%3  %4")
              .arg(start.toString(QStringLiteral("yyyy-MM-dd")),
                  start.toString(QStringLiteral("HH:mm")), end.toString(QStringLiteral("HH:mm")),
                  durationText(trip.duration()));
    const double factor = miles ? kMilesPerKm : 1.0;
    QStringList facts { QStringLiteral("%1 %2").arg(
        QString::number(trip.distanceKm * factor, 'f', 1),
        miles ? QStringLiteral("mi") : QStringLiteral("km")) };
    if (trip.maxSpeedKmh) {
        const QString speed
            = QStringLiteral("%1 %2").arg(QString::number(std::lround(*trip.maxSpeedKmh * factor)),
                miles ? QStringLiteral("mph") : QStringLiteral("km/h"));
        facts << withValue(LocalizationKeys::kTripTopSpeed, speed);
    }
    facts << withValue(LocalizationKeys::kTripImpacts, QString::number(trip.impactCount()));
    facts << withValue(LocalizationKeys::kTripEvents, QString::number(trip.events.size()));
    return first + u'\n' + facts.join(QStringLiteral(" · "));
}

} // namespace SessionTexts
