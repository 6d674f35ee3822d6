#include "app/window/RouteExportDialog.h"

#include "app/session/RouteExportController.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "library/ClipLibrary.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressDialog>
#include <QStandardPaths>

namespace {

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

QString filterText(RouteFormat format)
{
    using namespace LocalizationKeys;
    switch (format) {
    case RouteFormat::Gpx:
        return localized(kExportRouteGpx);
    case RouteFormat::Kml:
        return localized(kExportRouteKml);
    case RouteFormat::GeoJson:
        return localized(kExportRouteGeoJson);
    case RouteFormat::Csv:
        break;
    }
    return localized(kExportRouteCsv);
}

// A name for the document: the clip's (or the first clip's) name.
QString proposedName(const QStringList& clips, RouteFormat format)
{
    return QFileInfo(clips.constFirst()).completeBaseName() + u'.'
        + RouteWriters::formatName(format);
}

} // namespace

RouteExportDialog::RouteExportDialog(QWidget* window, const ClipLibrary& library)
    : QObject(window)
    , m_window(window)
    , m_library(library)
    , m_controller(new RouteExportController(this))
{
    connect(
        m_controller, &RouteExportController::progressChanged, this, [this](int done, int total) {
            if (!m_progress)
                return;
            m_progress->setMaximum(total);
            m_progress->setValue(done);
        });
    connect(m_controller, &RouteExportController::finished, this,
        [this](const RouteExport::Result& result) { showOutcome(int(result.status)); });
}

RouteExportDialog::~RouteExportDialog() = default;

void RouteExportDialog::exportRoute(bool everyClip)
{
    if (m_controller->isRunning())
        return;
    const QStringList clips = RouteExportController::clipsToExport(m_library, everyClip);
    if (clips.isEmpty())
        return;
    const QList<RouteFormat> formats = RouteExportController::dialogFormats();
    QStringList filters;
    for (const RouteFormat format : formats)
        filters << filterText(format);

    QFileDialog dialog(m_window);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setWindowTitle(localized(LocalizationKeys::kMenuExportRoute));
    dialog.setLabelText(QFileDialog::Accept, localized(LocalizationKeys::kSave));
    dialog.setLabelText(QFileDialog::Reject, localized(LocalizationKeys::kCancel));
    dialog.setNameFilters(filters);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    dialog.setDirectory(QFileInfo(documents).isDir() ? documents : QDir::homePath());
    dialog.selectFile(proposedName(clips, formats.first()));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        const RouteFormat format = formats.value(filters.indexOf(filter), RouteFormat::Gpx);
        dialog.selectFile(proposedName(clips, format));
    });
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const RouteFormat format
        = formats.value(filters.indexOf(dialog.selectedNameFilter()), RouteFormat::Gpx);
    const QString path
        = RouteExportController::pathWithSuffix(dialog.selectedFiles().constLast(), format);

    m_progress = new QProgressDialog(localized(LocalizationKeys::kExportRouteProgress),
        localized(LocalizationKeys::kCancel), 0, int(clips.size()), m_window);
    m_progress->setWindowTitle(localized(LocalizationKeys::kMenuExportRoute));
    m_progress->setWindowModality(Qt::WindowModal);
    m_progress->setMinimumDuration(400); // a single clip is done before it shows
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    connect(m_progress, &QProgressDialog::canceled, m_controller, &RouteExportController::cancel);
    m_progress->setValue(0);
    m_controller->start(clips, format, everyClip, path);
}

void RouteExportDialog::showOutcome(int status)
{
    if (m_progress) {
        m_progress->deleteLater();
        m_progress = nullptr;
    }
    using Status = RouteExport::Status;
    const char* message = nullptr;
    if (Status(status) == Status::NoContent)
        message = LocalizationKeys::kExportRouteNoPositions;
    else if (Status(status) == Status::WriteFailed)
        message = LocalizationKeys::kExportRouteFailed;
    if (!message)
        return;
    auto* box
        = new QMessageBox(QMessageBox::Information, localized(LocalizationKeys::kMenuExportRoute),
            localized(message), QMessageBox::Ok, m_window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->open();
}
