// Taking material out of the viewer: a copy of a clip, a still image of the
// large view as PNG, and the still the window prints.
#include "app/session/MainWindowController.h"

#include "app/session/PlaybackSession.h"
#include "config/AlertSink.h"
#include "i18n/LocalizationKeys.h"
#include "library/ClipLibrary.h"
#include "player/PlayerView.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QThread>

#include <memory>

QUrl MainWindowController::saveFileSourceUrl() const
{
    // While a trip plays: the clip shown, of the camera in the large view.
    if (const Trip* trip = m_session->currentTrip()) {
        const int shown = m_session->currentTripClip();
        if (shown < 0)
            return {};
        const TripClip& clip = trip->clips[shown];
        const bool rear = m_session->isVideoSwitched() && !clip.rear.isEmpty();
        return QUrl::fromLocalFile(rear ? clip.rear : clip.path);
    }
    const int row = m_library->selectedRow();
    if (row < 0 || row >= m_library->numberOfRows())
        return {};
    return m_library->takeBigVideoURL(row, m_session->isVideoSwitched());
}

bool MainWindowController::copyFileAtomically(const QString& source, const QString& destination)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    // Written beside the destination and renamed over it at the end: a file
    // the user chose to overwrite is replaced whole or not at all.
    QSaveFile out(destination);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    constexpr qint64 kBlock = qint64(1) << 20;
    QByteArray block(kBlock, Qt::Uninitialized);
    while (true) {
        const qint64 got = in.read(block.data(), kBlock);
        if (got < 0) {
            out.cancelWriting();
            return false;
        }
        if (got == 0)
            break;
        if (out.write(block.constData(), got) != got) {
            out.cancelWriting();
            return false;
        }
    }
    return out.commit();
}

bool MainWindowController::saveFileButtonTouched(const QString& destinationPath)
{
    const QUrl source = saveFileSourceUrl();
    if (source.isEmpty() || destinationPath.isEmpty())
        return false;
    // The card's own file, never a converted one.
    if (copyFileAtomically(source.toLocalFile(), destinationPath))
        return true;
    showSaveFailedAlert(LocalizationKeys::kSaveClipCopy);
    return false;
}

void MainWindowController::saveFileInBackground(const QString& destinationPath)
{
    const QUrl source = saveFileSourceUrl();
    if (source.isEmpty() || destinationPath.isEmpty())
        return;
    runAside([from = source.toLocalFile(),
                 destinationPath] { return copyFileAtomically(from, destinationPath); },
        [this](bool saved) {
            if (!saved)
                showSaveFailedAlert(LocalizationKeys::kSaveClipCopy);
            emit fileSaved(saved);
        });
}

void MainWindowController::runAside(std::function<bool()> work, std::function<void(bool)> done)
{
    auto outcome = std::make_shared<bool>(false);
    QThread* thread = QThread::create([work = std::move(work), outcome] { *outcome = work(); });
    m_savingThreads.append(thread);
    connect(thread, &QThread::finished, this, [this, thread, outcome, done = std::move(done)] {
        m_savingThreads.removeOne(thread);
        thread->deleteLater();
        done(*outcome);
    });
    thread->start();
}

void MainWindowController::showSaveFailedAlert(const char* titleKey)
{
    AlertRequest request;
    request.titleKey = QString::fromUtf8(titleKey);
    request.messageKey = QString::fromUtf8(LocalizationKeys::kSaveFailed);
    request.style = 0;
    m_alerts->showAlert(request);
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

bool MainWindowController::writePng(const QImage& image, const QString& path)
{
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

bool MainWindowController::saveSnapshot(const QString& path)
{
    if (path.isEmpty())
        return false;
    if (writePng(m_bigMovieView.snapshot(), path))
        return true;
    showSaveFailedAlert(LocalizationKeys::kSaveStill);
    return false;
}

void MainWindowController::saveSnapshotInBackground(const QString& path)
{
    if (path.isEmpty())
        return;
    runAside([grab = m_bigMovieView.snapshotJob(), path] { return writePng(grab(), path); },
        [this](bool saved) {
            if (!saved)
                showSaveFailedAlert(LocalizationKeys::kSaveStill);
            emit stillSaved(saved);
        });
}

QImage MainWindowController::printButtonTouched()
{
    m_session->pauseVideo();
    return m_bigMovieView.snapshot();
}
