#pragma once

#include "app/session/SessionView.h"
#include "telemetry/TavroClipData.h"

#include <QList>
#include <QPair>
#include <QStringList>

#include <ostream>

// Readable QStrings in test failure messages.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

// Keeps what the playback session last showed, and the calls that matter for
// order (map moves, busy, full screen, minimize, quit), for tests that run
// the session without widgets.
class RecordingSessionView final : public SessionView {
public:
    void setPlayTimeText(const QString& text) override { playTimeText = text; }
    void setSeekMaximum(double seconds) override { seekMaximum = seconds; }
    void setSeekValue(double seconds) override { seekValue = seconds; }
    void setSeekMarks(const QVector<SeekMark>& marks) override { seekMarks = marks; }
    void setSensorTexts(const QString& gx, const QString& gy, const QString& gz, const QString& lat,
        const QString& lng) override
    {
        sensorTexts = QStringList { gx, gy, gz, lat, lng };
        ++sensorUpdates;
    }
    void setSpeedometerSpeed(int kmh) override { speed = kmh; }
    void setGraphClipData(const TavroClipData& data) override { graphCount = data.clipDataCount(); }
    void addMapRoute(const TavroClipData& data) override { routes << data.gpsDataCount(); }
    void addMapRoutePoints(const QVector<QPointF>& route) override { routePoints = route; }
    void moveMapToLat(float lat, float lng) override { mapMoves.append({ lat, lng }); }
    void setMapCovered(bool covered) override { mapCovered = covered; }
    void setGpsIndicatorVisible(bool visible) override { gpsIndicatorVisible = visible; }
    void setIndicatorImages(const QString&, const QString&) override { }
    void setMovieCoversVisible(bool big, bool small) override { covers = { big, small }; }
    void setPlayPauseImage(const QString& name) override { playPauseImage = name; }
    void setMuteImage(const QString& name) override { muteImage = name; }
    void setVolumeSliderValue(float volume) override { volumeSliderValue = volume; }
    void setVolumeSliderEnabled(bool enabled) override { volumeSliderEnabled = enabled; }
    void setVideoControlsEnabled(bool enabled) override { videoControlsEnabled = enabled; }
    void setSwapButtonEnabled(bool enabled) override { swapButtonEnabled = enabled; }
    void changeVideoScale(double scale) override { videoScale = scale; }
    void enterScrollMode(bool) override { }
    void showFullScreenMovie(bool small) override { events << (small ? "full small" : "full big"); }
    void hideFullScreenMovie() override { events << QStringLiteral("hideFullScreen"); }
    void setBusy(bool busy) override { events << (busy ? "busy" : "idle"); }
    void minimizeWindow() override { events << QStringLiteral("minimize"); }
    void quitApplication() override { events << QStringLiteral("quit"); }

    // "gx gy gz lat lng" as shown, e.g. "0.500 -1.000 1.000 37.5000 127.0000".
    QString sensorText() const { return sensorTexts.join(QLatin1Char(' ')); }

    QString playTimeText;
    double seekMaximum = -1.0;
    double seekValue = -1.0;
    QVector<SeekMark> seekMarks;
    QVector<QPointF> routePoints; // the last trip route sent to the map
    QStringList sensorTexts;
    int sensorUpdates = 0;
    int speed = -1;
    int graphCount = -1; // samples of the record the graph got
    QList<int> routes; // GPS samples of each route sent to the map
    QList<QPair<float, float>> mapMoves;
    bool mapCovered = false;
    bool gpsIndicatorVisible = false;
    QPair<bool, bool> covers { true, true }; // over the big and the small view
    QString playPauseImage;
    QString muteImage;
    float volumeSliderValue = -1.0f;
    bool volumeSliderEnabled = true;
    bool videoControlsEnabled = false;
    bool swapButtonEnabled = false;
    double videoScale = 0.0;
    QStringList events;
};
