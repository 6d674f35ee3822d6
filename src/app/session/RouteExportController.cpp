#include "app/session/RouteExportController.h"

#include "library/ClipLibrary.h"

#include <QFileInfo>
#include <QThread>

RouteExportController::RouteExportController(QObject* parent)
    : QObject(parent)
{
}

RouteExportController::~RouteExportController()
{
    if (m_thread) {
        m_cancel = true;
        m_thread->wait();
        delete m_thread;
    }
}

QStringList RouteExportController::clipsToExport(const ClipLibrary& library, bool everyClip)
{
    QStringList clips;
    if (everyClip) {
        for (const QUrl& url : library.filteredVideoFileList())
            clips << url.toLocalFile();
    } else if (library.selectedRow() >= 0 && library.selectedRow() < library.numberOfRows()) {
        clips << library.row(library.selectedRow()).path;
    }
    return clips;
}

QList<RouteFormat> RouteExportController::dialogFormats()
{
    return { RouteFormat::Gpx, RouteFormat::Kml, RouteFormat::GeoJson, RouteFormat::Csv };
}

QString RouteExportController::pathWithSuffix(const QString& path, RouteFormat format)
{
    const QString suffix = RouteWriters::formatName(format);
    if (QFileInfo(path).suffix().compare(suffix, Qt::CaseInsensitive) == 0)
        return path;
    return path + u'.' + suffix;
}

bool RouteExportController::start(
    const QStringList& clips, RouteFormat format, bool asTrips, const QString& path)
{
    if (m_thread || clips.isEmpty())
        return false;
    m_cancel = false;
    m_result = std::make_shared<RouteExport::Result>();
    const RouteExport::Request request { clips, format, asTrips };
    // The worker reports progress through queued calls: this object lives on the window's thread.
    const auto progress = [this](int done, int total) {
        QMetaObject::invokeMethod(
            this, [this, done, total] { emit progressChanged(done, total); }, Qt::QueuedConnection);
    };
    m_thread = QThread::create([this, request, path, progress, result = m_result] {
        *result = RouteExport::exportToFile(request, path, &m_cancel, progress);
    });
    connect(m_thread, &QThread::finished, this, &RouteExportController::onThreadFinished);
    m_thread->start();
    return true;
}

void RouteExportController::cancel()
{
    m_cancel = true;
}

void RouteExportController::onThreadFinished()
{
    QThread* thread = m_thread;
    m_thread = nullptr;
    thread->deleteLater();
    emit finished(*m_result);
}
