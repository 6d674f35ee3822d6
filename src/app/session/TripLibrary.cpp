#include "app/session/TripLibrary.h"

#include "trips/CardTrips.h"

#include <QThread>

TripLibrary::TripLibrary(QObject* parent)
    : QObject(parent)
{
}

TripLibrary::~TripLibrary()
{
    if (m_thread) {
        m_cancel->store(true);
        m_thread->wait();
        delete m_thread;
    }
}

void TripLibrary::setFolder(const QString& folder)
{
    if (folder == m_folder)
        return;
    m_folder = folder;
    m_waiting.clear();
    invalidate();
}

void TripLibrary::invalidate()
{
    ++m_serial; // what a read under way brings back is dropped
    if (m_cancel)
        m_cancel->store(true);
    m_trips.clear();
    m_loaded = false;
    m_wanted = false;
    emit tripsChanged();
    if (!m_waiting.isEmpty())
        load();
}

void TripLibrary::load()
{
    if (m_loaded || m_wanted)
        return;
    m_wanted = true;
    if (!m_thread)
        startThread();
    emit tripsChanged();
}

void TripLibrary::whenLoaded(std::function<void()> done)
{
    if (m_loaded) {
        done();
        return;
    }
    m_waiting.append(std::move(done));
    load();
}

void TripLibrary::loadNow()
{
    if (m_loaded)
        return;
    finish(++m_serial, m_folder.isEmpty() ? QVector<Trip>() : CardTrips::read(m_folder));
}

void TripLibrary::startThread()
{
    const quint64 serial = m_serial;
    const QString folder = m_folder;
    auto cancel = std::make_shared<std::atomic_bool>(false);
    m_cancel = cancel;
    m_thread = QThread::create([this, serial, folder, cancel] {
        QVector<Trip> trips;
        if (!folder.isEmpty())
            trips = CardTrips::read(folder, RouteTrips::kMaxGapMsecs, cancel.get());
        if (cancel->load())
            return;
        // The library waits for this thread before it goes, so it is there.
        QMetaObject::invokeMethod(
            this, [this, serial, trips] { finish(serial, trips); }, Qt::QueuedConnection);
    });
    connect(m_thread, &QThread::finished, this, &TripLibrary::threadDone);
    m_thread->start();
}

void TripLibrary::threadDone()
{
    delete m_thread;
    m_thread = nullptr;
    m_cancel.reset();
    // The folder changed while reading: read the new one if it is wanted.
    if (m_wanted && !m_loaded)
        startThread();
}

void TripLibrary::finish(quint64 serial, const QVector<Trip>& trips)
{
    if (serial != m_serial)
        return;
    m_trips = trips;
    m_loaded = true;
    m_wanted = false;
    emit tripsChanged();
    const QList<std::function<void()>> waiting = std::exchange(m_waiting, {});
    for (const std::function<void()>& done : waiting)
        done();
}
