#pragma once

#include "trips/Trip.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <atomic>
#include <functional>
#include <memory>

class QThread;

// The trips of the folder the clip list shows, as `tavro trips` lists them
// (CardTrips). Reading them means reading every clip's telemetry, so it is
// done only when asked and on a worker thread (all cores); the window goes on
// meanwhile. A new folder drops what was read and stops a read under way.
class TripLibrary : public QObject {
    Q_OBJECT
public:
    explicit TripLibrary(QObject* parent = nullptr);
    ~TripLibrary() override;

    // The folder whose trips are read from now on; the same folder again
    // keeps what was read.
    void setFolder(const QString& folder);
    QString folder() const { return m_folder; }
    // Forgets the trips (the folder's clips changed); the next load reads again.
    void invalidate();

    // Starts reading unless the trips are read or being read.
    void load();
    // Calls `done` once the trips are read (at once when they are); a new
    // folder before that drops the call.
    void whenLoaded(std::function<void()> done);
    // Reads the trips inside the call (tests, scripts).
    void loadNow();

    bool isLoaded() const { return m_loaded; }
    bool isLoading() const { return m_wanted && !m_loaded; }
    const QVector<Trip>& trips() const { return m_trips; }

signals:
    // Reading started, ended, or the trips were dropped.
    void tripsChanged();

private:
    void startThread();
    void threadDone();
    void finish(quint64 serial, const QVector<Trip>& trips);

    QString m_folder;
    QVector<Trip> m_trips;
    bool m_loaded = false;
    bool m_wanted = false;
    quint64 m_serial = 0;
    QThread* m_thread = nullptr;
    std::shared_ptr<std::atomic_bool> m_cancel;
    QList<std::function<void()>> m_waiting;
};
