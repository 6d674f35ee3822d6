#pragma once

#include <QPointF>
#include <QString>
#include <QVector>

class TavroClipData;

// A place on the seek slider worth pointing at: while a trip plays, where a
// clip begins or an event mark; on a clip or a trip, the in and out marks of
// the span to export. Its tooltip tells the time.
struct SeekMark {
    enum class Kind { ClipStart, Impact, EventClip, ManualClip, SpanIn, SpanOut };
    double seconds = 0;
    Kind kind = Kind::ClipStart;
    QString toolTip;
};

// Everything the playback session shows, as the main window carries it out.
// The session holds no widgets: the window implements this interface over
// its controls, and tests record the calls. Image names are the artwork's
// names ("pause1", "play_1", "volume1", "volume2", "shock_gage1", "earth2").
class SessionView {
public:
    virtual ~SessionView() = default;

    // Time text "mm:ss/mm:ss" and the seek slider, both in seconds.
    virtual void setPlayTimeText(const QString& text) = 0;
    virtual void setSeekMaximum(double seconds) = 0;
    virtual void setSeekValue(double seconds) = 0;
    // The clip boundaries and event marks of the trip playing (none for a
    // clip), and the in and out marks where set.
    virtual void setSeekMarks(const QVector<SeekMark>& marks) = 0;

    // The G read-outs ("%.3f") and the position read-outs ("%.4f").
    virtual void setSensorTexts(const QString& gx, const QString& gy, const QString& gz,
        const QString& lat, const QString& lng)
        = 0;
    // Speed in km/h; the speedometer converts to the unit the user chose.
    virtual void setSpeedometerSpeed(int kmh) = 0;
    // The G-sensor graph draws the clip's record.
    virtual void setGraphClipData(const TavroClipData& clipData) = 0;

    // The map page: the clip's route, the current position, and whether the
    // cover image ("mapview_cover.png") stands in for the map.
    virtual void addMapRoute(const TavroClipData& clipData) = 0;
    // A whole trip's route, points as (longitude, latitude).
    virtual void addMapRoutePoints(const QVector<QPointF>& route) = 0;
    virtual void moveMapToLat(float lat, float lng) = 0;
    virtual void setMapCovered(bool covered) = 0;

    // The GPS indicator next to the map.
    virtual void setGpsIndicatorVisible(bool visible) = 0;
    // The blinking indicators: "shock_gage1"/"shock_gage2" and "earth1"/"earth2".
    virtual void setIndicatorImages(const QString& shockImage, const QString& earthImage) = 0;
    // Each player view's cover image is shown while that view has no movie.
    virtual void setMovieCoversVisible(bool bigCoverVisible, bool smallCoverVisible) = 0;

    // Play/pause buttons of the main and the full-screen control window:
    // "pause1" while playing, "play_1" while paused.
    virtual void setPlayPauseImage(const QString& imageName) = 0;
    // Mute button: "volume2" when muted, "volume1" otherwise.
    virtual void setMuteImage(const QString& imageName) = 0;
    // The volume slider's position (0.0 to 1.0) and whether it can be moved.
    virtual void setVolumeSliderValue(float volume) = 0;
    virtual void setVolumeSliderEnabled(bool enabled) = 0;

    // Every control that needs a clip (snapshot, print, play/pause, stop, seek
    // slider, swap, both player views, mute, volume slider, flip, full screen,
    // zoom reset/out/in, next, previous, frame steps) enabled or disabled
    // together; the shock, earth and GPS indicators and the speedometer shown
    // or hidden with them.
    virtual void setVideoControlsEnabled(bool enabled) = 0;
    // The swap button alone: enabled only for a clip with a rear camera.
    virtual void setSwapButtonEnabled(bool enabled) = 0;

    // Zoom of the large view (1.0 to 5.0); apply it after the current event.
    virtual void changeVideoScale(double scale) = 0;
    // A zoomed large view can be dragged with the mouse.
    virtual void enterScrollMode(bool enabled) = 0;

    // Full screen with the large (smallView false) or the small player view on
    // the main window's screen, with its control window; the window keeps the
    // map's visibility to restore it on leaving.
    virtual void showFullScreenMovie(bool smallView) = 0;
    virtual void hideFullScreenMovie() = 0;

    // A clip is being converted (synchronously): show that the window is busy.
    virtual void setBusy(bool busy) = 0;

    // Ctrl+M, Ctrl+Q / Ctrl+W.
    virtual void minimizeWindow() = 0;
    virtual void quitApplication() = 0;
};
