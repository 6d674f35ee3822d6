#pragma once

#include "app/session/VideoExportController.h"

#include <QDialog>

class PlaybackSession;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;

// The window's side of File ▸ Export video: the range (the clip shown, the
// whole trip, the span between the marks), the picture (front, rear, side by
// side, picture in picture) and the overlay; the save dialog; a progress bar
// with Cancel while the cut runs; at the end the file's place with a button
// that opens its folder.
class VideoExportDialog : public QDialog {
    Q_OBJECT
public:
    VideoExportDialog(QWidget* window, const PlaybackSession& session);
    ~VideoExportDialog() override;

    // Shows the choices for what the session shows now (or the export that
    // runs). Does nothing when nothing is loaded.
    void exportVideo();

    VideoExportController& controller() const { return *m_controller; }
    // The choices as set.
    VideoExportController::Choice choice() const;

public slots:
    // Closing while a cut runs cancels it.
    void reject() override;

private:
    void build();
    void applyTexts();
    void startClicked();
    void setRunning(bool running);
    void showOutcome(const VideoExportController::Outcome& outcome);
    QString askForFile();

    const PlaybackSession& m_session;
    VideoExportController* m_controller;
    VideoExportController::Scope m_scope;
    QString m_lastFolder;
    QLabel* m_rangeCaption = nullptr;
    QButtonGroup* m_ranges = nullptr;
    QList<QRadioButton*> m_rangeButtons; // in the order of Range
    QLabel* m_pictureCaption = nullptr;
    QComboBox* m_picture = nullptr; // in the order of Picture
    QCheckBox* m_overlay = nullptr;
    QLabel* m_progressText = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_start = nullptr;
};
