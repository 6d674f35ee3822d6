#pragma once

#include <QObject>

class ClipLibrary;
class QProgressDialog;
class QWidget;
class RouteExportController;

// The window's side of File ▸ Export route: the save dialog with the four
// file types, a progress dialog with Cancel while the clips are read, and the
// message when the clips hold no positions or the file cannot be written.
class RouteExportDialog : public QObject {
    Q_OBJECT
public:
    RouteExportDialog(QWidget* window, const ClipLibrary& library);
    ~RouteExportDialog() override;

    // Asks for a file and starts the export of the selected clip, or of every
    // clip in the list as trips. Does nothing while an export runs.
    void exportRoute(bool everyClip);

    RouteExportController& controller() const { return *m_controller; }

private:
    void showOutcome(int status);

    QWidget* m_window;
    const ClipLibrary& m_library;
    RouteExportController* m_controller;
    QProgressDialog* m_progress = nullptr;
};
