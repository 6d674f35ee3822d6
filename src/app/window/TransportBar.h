#pragma once

#include <QWidget>

class ImageButton;
class QLabel;
class SeekSlider;

// The transport row under the video: the seek slider with the time text, and
// the buttons previous/next clip, frame back/forward, play/pause, stop, mute
// with the volume slider, swap, flip, zoom out/reset/in, full screen, still
// snapshot, print and save copy. Every button has a localised tooltip.
class TransportBar : public QWidget {
    Q_OBJECT
public:
    explicit TransportBar(QWidget* parent = nullptr);

    void applyLanguageSettings();
    // Shows "pause1" (playing) or "play_1" (paused); the tooltip follows.
    void setPlayPauseImage(const QString& imageName);
    // Shows "volume2" (muted) or "volume1"; the tooltip follows.
    void setMuteImage(const QString& imageName);
    // The controls that need a clip, together.
    void setVideoControlsEnabled(bool enabled);

    SeekSlider* seekTimeSldierView = nullptr;
    QLabel* playTimeTextField = nullptr;
    SeekSlider* volumeSliderView = nullptr;
    ImageButton* playPrevFileButton = nullptr;
    ImageButton* rewindButton = nullptr;
    ImageButton* playPauseButton = nullptr;
    ImageButton* stopButton = nullptr;
    ImageButton* fastForwardButton = nullptr;
    ImageButton* playNextFileButton = nullptr;
    ImageButton* muteButton = nullptr;
    ImageButton* videoSwitchButton = nullptr;
    ImageButton* videoRotateButton = nullptr;
    ImageButton* videoScaleDownButton = nullptr;
    ImageButton* resetVideoScaleButton = nullptr;
    ImageButton* videoScaleUpButton = nullptr;
    ImageButton* fullscreenButton = nullptr;
    ImageButton* snapshotButton = nullptr;
    ImageButton* printButton = nullptr;
    ImageButton* saveFileButton = nullptr;

private:
    ImageButton* addButton(const char* objectName, const char* imageName);
};
