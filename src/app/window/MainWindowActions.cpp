// Dialogs of the main window: choosing a folder, saving a copy of a clip or a
// still, printing a still, the settings button and the About box.
#include "app/window/MainWindow.h"

#include "TavroVersion.h"
#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/session/SettingsRouter.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>

namespace {

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

// The user's own folder of that kind when it exists, else the home folder;
// never the card the clip came from.
QString saveFolder(QStandardPaths::StandardLocation location)
{
    const QString folder = QStandardPaths::writableLocation(location);
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

// A save panel titled and confirmed "저장", cancelled "취소", that may create
// folders, with the name proposed. Empty when the user cancels.
QString askSavePath(
    QWidget* parent, const QString& proposedName, QStandardPaths::StandardLocation location)
{
    QFileDialog dialog(parent);
    // The modes first: setting them re-titles the panel with Qt's own texts.
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setWindowTitle(localized(LocalizationKeys::kSave));
    dialog.setLabelText(QFileDialog::Accept, localized(LocalizationKeys::kSave));
    dialog.setLabelText(QFileDialog::Reject, localized(LocalizationKeys::kCancel));
    dialog.setDirectory(saveFolder(location));
    dialog.selectFile(proposedName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constLast();
}

} // namespace

void MainWindow::selectFolderButtonTouched()
{
    QFileDialog dialog(this);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setWindowTitle(localized(LocalizationKeys::kOpen));
    dialog.setLabelText(QFileDialog::Accept, localized(LocalizationKeys::kOpen));
    dialog.setLabelText(QFileDialog::Reject, localized(LocalizationKeys::kCancel));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedUrls().isEmpty())
        return;
    m_controller->selectFolderButtonTouched(dialog.selectedUrls().constLast());
}

void MainWindow::saveFileButtonTouched()
{
    const QUrl source = m_controller->saveFileSourceUrl();
    if (source.isEmpty())
        return;
    const QString path = askSavePath(
        this, QFileInfo(source.toLocalFile()).fileName(), QStandardPaths::MoviesLocation);
    // Copied off the GUI thread; a failure comes back as an alert.
    if (!path.isEmpty())
        m_controller->saveFileInBackground(path);
}

void MainWindow::snapshotButtonTouched()
{
    const QString name = m_controller->snapshotButtonTouched();
    const QString path = askSavePath(this, name, QStandardPaths::PicturesLocation);
    // The frame is decoded and written off the GUI thread.
    if (!path.isEmpty())
        m_controller->saveSnapshotInBackground(path);
}

void MainWindow::printButtonTouched()
{
    const QImage image = m_controller->printButtonTouched();
    if (image.isNull())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    printImage(printer, image);
}

void MainWindow::printImage(QPrinter& printer, const QImage& image)
{
    printer.setPageOrientation(QPageLayout::Landscape);
    QPainter painter(&printer);
    if (!painter.isActive())
        return;
    // Fit to the page in both directions, centred.
    const QRect page = painter.viewport();
    QSize size = image.size().scaled(page.size(), Qt::KeepAspectRatio);
    QRect target(QPoint(0, 0), size);
    target.moveCenter(page.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
}

void MainWindow::settingButtonTouched()
{
    // The router pauses the clip first.
    m_settingsRouter->settingButtonTouched();
    emit settingsRequested();
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, localized(LocalizationKeys::kMenuAbout),
        QStringLiteral("<h3>Tavro Viewer</h3><p>Ver %1</p><p>%2</p>")
            .arg(Tavro::versionString().toHtmlEscaped(),
                localized(LocalizationKeys::kAboutText).toHtmlEscaped()));
}
