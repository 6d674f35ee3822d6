// Taking material out of the viewer: a copy of a clip, a still image of the
// large view as PNG, and the still the window prints.
#include "app/session/MainWindowController.h"

#include "app/session/PlaybackSession.h"
#include "library/ClipLibrary.h"
#include "player/PlayerView.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

QUrl MainWindowController::saveFileSourceUrl() const
{
    const int row = m_library->selectedRow();
    if (row < 0 || row >= m_library->numberOfRows())
        return {};
    return m_library->takeBigVideoURL(row, m_session->isVideoSwitched());
}

bool MainWindowController::saveFileButtonTouched(const QString& destinationPath)
{
    const QUrl source = saveFileSourceUrl();
    if (source.isEmpty() || destinationPath.isEmpty())
        return false;
    // The card's own file; an existing destination is not overwritten.
    return QFile::copy(source.toLocalFile(), destinationPath);
}

QString MainWindowController::snapshotButtonTouched()
{
    m_session->pauseVideo();
    const qint64 ms = qint64(m_bigMovieView.currentTime() * 1000.0);
    QUrl clip = saveFileSourceUrl();
    if (clip.isEmpty())
        clip = m_session->currentVideoUrl();
    const QString name = QFileInfo(clip.toLocalFile()).completeBaseName();
    return QStringLiteral("%1_%2.png").arg(name).arg(ms);
}

bool MainWindowController::saveSnapshot(const QString& path)
{
    const QImage image = m_bigMovieView.snapshot();
    if (image.isNull() || path.isEmpty())
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (!image.save(&file, "PNG")) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

QImage MainWindowController::printButtonTouched()
{
    m_session->pauseVideo();
    return m_bigMovieView.snapshot();
}
