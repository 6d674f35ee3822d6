#pragma once

#include "export/RouteExport.h"

#include <QObject>
#include <QStringList>

#include <atomic>
#include <memory>

class ClipLibrary;
class QThread;

// File ▸ Export route: reads the chosen clips' telemetry off the window's
// thread (on every core), writes the document atomically and reports back.
// Holds no widgets: the window asks for the file, shows progress and the
// outcome.
class RouteExportController : public QObject {
    Q_OBJECT
public:
    explicit RouteExportController(QObject* parent = nullptr);
    ~RouteExportController() override; // cancels and waits for a running export

    // The clips of an export: the selected row's clip, or every row of the
    // list (the rows as shown, filter applied). Empty when there is none.
    static QStringList clipsToExport(const ClipLibrary& library, bool everyClip);
    // The file types of the save dialog, in this order, and the format of each.
    static QList<RouteFormat> dialogFormats();
    // The chosen path with the format's suffix added when it has none.
    static QString pathWithSuffix(const QString& path, RouteFormat format);

    // Starts an export; false (nothing started) while one is running or
    // without clips. Every clip of the list is grouped into trips.
    bool start(const QStringList& clips, RouteFormat format, bool asTrips, const QString& path);
    void cancel();
    bool isRunning() const { return m_thread != nullptr; }

signals:
    void progressChanged(int done, int total);
    void finished(const RouteExport::Result& result);

private:
    void onThreadFinished();

    QThread* m_thread = nullptr;
    std::atomic_bool m_cancel = false;
    std::shared_ptr<RouteExport::Result> m_result;
};
