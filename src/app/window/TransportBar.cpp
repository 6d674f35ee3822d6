#include "app/window/TransportBar.h"

#include "app/window/ImageButton.h"
#include "app/window/SeekSlider.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "style/TavroStyle.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

QFrame* separator(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFixedSize(1, 22);
    line->setStyleSheet(TavroStyle::withPalette(QStringLiteral("background: @separator;")));
    return line;
}

} // namespace

TransportBar::TransportBar(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("transportBar"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 6, 10, 6);
    layout->setSpacing(4);

    auto* seekRow = new QHBoxLayout;
    seekTimeSldierView = new SeekSlider(this);
    seekTimeSldierView->setObjectName(QStringLiteral("seekTimeSldierView"));
    seekTimeSldierView->setMinimumHeight(22); // room for a trip's marks above the groove
    playTimeTextField = new QLabel(QStringLiteral("00:00/00:00"), this);
    playTimeTextField->setObjectName(QStringLiteral("playTimeTextField"));
    playTimeTextField->setFont(TavroStyle::tabularFont());
    playTimeTextField->setMinimumWidth(
        playTimeTextField->fontMetrics().horizontalAdvance(QStringLiteral("000:00/000:00")) + 8);
    playTimeTextField->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    seekRow->addWidget(seekTimeSldierView, 1);
    seekRow->addWidget(playTimeTextField);
    layout->addLayout(seekRow);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(2);
    layout->addLayout(buttons);
    auto add = [&](const char* name, const char* image) {
        ImageButton* button = addButton(name, image);
        buttons->addWidget(button);
        return button;
    };
    playPrevFileButton = add("playPrevFileButton", "prev_file");
    rewindButton = add("rewindButton", "frame_back");
    playPauseButton = add("playPauseButton", "play_1");
    stopButton = add("stopButton", "stop");
    fastForwardButton = add("fastForwardButton", "frame_forward");
    playNextFileButton = add("playNextFileButton", "next_file");
    buttons->addSpacing(8);
    buttons->addWidget(separator(this));
    buttons->addSpacing(8);
    muteButton = add("muteButton", "volume1");
    volumeSliderView = new SeekSlider(this);
    volumeSliderView->setObjectName(QStringLiteral("volumeSliderView"));
    volumeSliderView->setRange(0, 100);
    volumeSliderView->setValue(100);
    volumeSliderView->setFixedWidth(110);
    buttons->addWidget(volumeSliderView);
    buttons->addSpacing(8);
    buttons->addWidget(separator(this));
    buttons->addSpacing(8);
    videoSwitchButton = add("videoSwitchButton", "swap");
    videoRotateButton = add("videoRotateButton", "flip");
    buttons->addSpacing(8);
    videoScaleDownButton = add("videoScaleDownButton", "zoom_out");
    resetVideoScaleButton = add("resetVideoScaleButton", "zoom_reset");
    videoScaleUpButton = add("videoScaleUpButton", "zoom_in");
    buttons->addSpacing(8);
    fullscreenButton = add("fullscreenButton", "fullscreen");
    buttons->addStretch(1);
    snapshotButton = add("snapshotButton", "snapshot");
    printButton = add("printButton", "print");
    saveFileButton = add("saveFileButton", "save_copy");
    saveFileButton->setEnabled(false);
    applyLanguageSettings();
}

ImageButton* TransportBar::addButton(const char* objectName, const char* imageName)
{
    auto* button = new ImageButton(QLatin1String(imageName), this);
    button->setObjectName(QLatin1String(objectName));
    return button;
}

void TransportBar::applyLanguageSettings()
{
    using namespace LocalizationKeys;
    seekTimeSldierView->setToolTip(localized(kSeekPosition));
    playTimeTextField->setToolTip(localized(kTime));
    volumeSliderView->setToolTip(localized(kVolume));
    playPrevFileButton->setToolTip(localized(kPreviousClip));
    rewindButton->setToolTip(localized(kPreviousFrame));
    stopButton->setToolTip(localized(kStop));
    fastForwardButton->setToolTip(localized(kNextFrame));
    playNextFileButton->setToolTip(localized(kNextClip));
    videoSwitchButton->setToolTip(localized(kSwapCameras));
    videoRotateButton->setToolTip(localized(kFlipVideo));
    videoScaleDownButton->setToolTip(localized(kZoomOut));
    resetVideoScaleButton->setToolTip(localized(kActualSize));
    videoScaleUpButton->setToolTip(localized(kZoomIn));
    fullscreenButton->setToolTip(localized(kFullScreen));
    snapshotButton->setToolTip(localized(kSaveStill));
    printButton->setToolTip(localized(kPrintStill));
    saveFileButton->setToolTip(localized(kSaveClipCopy));
    setPlayPauseImage(playPauseButton->imageName());
    setMuteImage(muteButton->imageName());
}

void TransportBar::setPlayPauseImage(const QString& imageName)
{
    playPauseButton->setImageName(imageName);
    const bool playing = imageName == QLatin1String("pause1");
    playPauseButton->setToolTip(
        localized(playing ? LocalizationKeys::kPause : LocalizationKeys::kPlay));
}

void TransportBar::setMuteImage(const QString& imageName)
{
    muteButton->setImageName(imageName);
    const bool muted = imageName == QLatin1String("volume2");
    muteButton->setToolTip(localized(muted ? LocalizationKeys::kUnmute : LocalizationKeys::kMute));
}

void TransportBar::setVideoControlsEnabled(bool enabled)
{
    for (QWidget* control :
        std::initializer_list<QWidget*> { snapshotButton, printButton, playPauseButton, stopButton,
            seekTimeSldierView, videoSwitchButton, muteButton, volumeSliderView, videoRotateButton,
            fullscreenButton, resetVideoScaleButton, videoScaleDownButton, videoScaleUpButton,
            playNextFileButton, playPrevFileButton, fastForwardButton, rewindButton })
        control->setEnabled(enabled);
}
