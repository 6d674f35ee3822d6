#pragma once

#include <QWidget>

class ImageButton;

// The control bar of full-screen playback: play/pause, one frame back and
// forward, and leaving full screen, at the bottom centre of the video area
// (which fills the screen then). It is a widget of that area, drawn over the
// picture by the area's video scene, not a window of its own: on Wayland a
// client cannot place a window of its own.
class FullScreenControlWindow : public QWidget {
    Q_OBJECT
public:
    explicit FullScreenControlWindow(QWidget* parent = nullptr);

    void applyLanguageSettings();
    void setPlayPauseImage(const QString& imageName);
    // Shows the bar at the bottom centre of its parent, above its siblings.
    void showOverParent();

    ImageButton* playPauseButton() const { return m_playPauseButton; }
    ImageButton* rewindButton() const { return m_rewindButton; }
    ImageButton* fastForwardButton() const { return m_fastForwardButton; }
    ImageButton* exitButton() const { return m_exitButton; }

signals:
    void keyPressed(int key, Qt::KeyboardModifiers modifiers);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeAtBottomCentre();

    ImageButton* m_playPauseButton = nullptr;
    ImageButton* m_rewindButton = nullptr;
    ImageButton* m_fastForwardButton = nullptr;
    ImageButton* m_exitButton = nullptr;
};
