#pragma once

#include "export/ClipTimeline.h"
#include "export/RouteWriters.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

// Hand-made telemetry for the export tests, and gpsbabel to read documents back.
namespace ExportTestSupport {

QString scratchPath(const QString& name);

// One second of camera telemetry: ten "gsensor" blocks and its RMC sentence.
struct Second {
    QByteArray time = "120000.00"; // hhmmss.ss
    QByteArray date = "010124"; // ddmmyy
    QByteArray status = "A";
    QByteArray lat = "3723.2475";
    QByteArray ns = "N";
    QByteArray lng = "12658.4100";
    QByteArray ew = "E";
    QByteArray knots = "10.0";
};
QByteArray subtitleText(const QVector<Second>& seconds);

// The timeline of a clip named `clipName` whose subtitle track holds `srt`
// (read through the subtitle loader, as the viewer reads MP4 telemetry).
ClipTimeline timelineFromSubtitles(const QString& clipName, const QByteArray& srt);

// A timeline written sample by sample.
RouteSample sample(double lat, double lng, int64_t utc = kNoUtcMsecs, int speed = 36);
ClipTimeline handMade(const QString& file, const QVector<RouteSample>& samples);

QByteArray render(RouteFormat format, const QVector<RouteTrip>& trips);

// gpsbabel's reading of a document: every track point.
struct BabelPoint {
    double lat = 0;
    double lng = 0;
    QString date;
    QString time;
};
bool haveGpsbabel();
std::optional<QVector<BabelPoint>> gpsbabelPoints(
    const QString& format, const QByteArray& document);

// The text of every element of that local name, in document order.
QStringList elementTexts(const QByteArray& xml, const QString& name);
// Attribute values of every element of that name.
QStringList attributeValues(
    const QByteArray& xml, const QString& element, const QString& attribute);

} // namespace ExportTestSupport
