#pragma once

#include <QWidget>

class ImageButton;

// The small floating control window of full-screen playback: play/pause, one
// frame back and forward, and leaving full screen. It stays at the bottom
// centre of the screen that shows the movie.
class FullScreenControlWindow : public QWidget {
    Q_OBJECT
public:
    explicit FullScreenControlWindow(QWidget* parent = nullptr);

    void applyLanguageSettings();
    void setPlayPauseImage(const QString& imageName);
    // Shows the window at the bottom centre of `screenGeometry`.
    void showOn(const QRect& screenGeometry);

    ImageButton* playPauseButton() const { return m_playPauseButton; }
    ImageButton* rewindButton() const { return m_rewindButton; }
    ImageButton* fastForwardButton() const { return m_fastForwardButton; }
    ImageButton* exitButton() const { return m_exitButton; }

signals:
    void keyPressed(int key, Qt::KeyboardModifiers modifiers);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    ImageButton* m_playPauseButton = nullptr;
    ImageButton* m_rewindButton = nullptr;
    ImageButton* m_fastForwardButton = nullptr;
    ImageButton* m_exitButton = nullptr;
};
