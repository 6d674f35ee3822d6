#include "RecordingSessionView.h"

#include "telemetry/TavroClipData.h"

void RecordingSessionView::setSensorTexts(
    const QString& gx, const QString& gy, const QString& gz, const QString& lat, const QString& lng)
{
    sensorTexts = QStringList { gx, gy, gz, lat, lng };
    ++sensorUpdates;
}

void RecordingSessionView::setGraphClipData(const TavroClipData& clipData)
{
    graphClipDataCount = clipData.clipDataCount();
}

void RecordingSessionView::addMapRoute(const TavroClipData& clipData)
{
    routeGpsCount = clipData.gpsDataCount();
    ++routesAdded;
}

void RecordingSessionView::setIndicatorImages(const QString& shock, const QString& earth)
{
    shockImage = shock;
    earthImage = earth;
}

void RecordingSessionView::setMovieCoversVisible(bool big, bool small)
{
    bigCoverVisible = big;
    smallCoverVisible = small;
}

void RecordingSessionView::showFullScreenMovie(bool smallView)
{
    events << (smallView ? QStringLiteral("fullScreen small") : QStringLiteral("fullScreen big"));
}
