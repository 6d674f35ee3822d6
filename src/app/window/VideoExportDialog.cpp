#include "app/window/VideoExportDialog.h"

#include "app/session/PlaybackSession.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QUrl>
#include <QVBoxLayout>

#include <cmath>

namespace {

using Range = VideoExportController::Range;
using Picture = VideoExportController::Picture;

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

// The progress bar counts tenths of a second.
int tenths(double seconds)
{
    return int(std::lround(seconds * 10.0));
}

QString startFolder()
{
    for (const auto location : { QStandardPaths::MoviesLocation, QStandardPaths::HomeLocation }) {
        const QString folder = QStandardPaths::writableLocation(location);
        if (QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

} // namespace

VideoExportDialog::VideoExportDialog(QWidget* window, const PlaybackSession& session)
    : QDialog(window)
    , m_session(session)
    , m_controller(new VideoExportController(this))
{
    setObjectName(QStringLiteral("videoExportDialog"));
    setWindowModality(Qt::WindowModal);
    build();
    connect(m_controller, &VideoExportController::progressChanged, this,
        [this](double done, double total) {
            m_progress->setMaximum(std::max(1, tenths(total)));
            m_progress->setValue(tenths(done));
        });
    connect(m_controller, &VideoExportController::finished, this, &VideoExportDialog::showOutcome);
}

VideoExportDialog::~VideoExportDialog() = default;

void VideoExportDialog::build()
{
    m_rangeCaption = new QLabel(this);
    m_ranges = new QButtonGroup(this);
    auto* rangeBox = new QVBoxLayout;
    for (const Range range : { Range::CurrentClip, Range::WholeTrip, Range::Marked }) {
        auto* button = new QRadioButton(this);
        button->setObjectName(QStringLiteral("videoExportRange%1").arg(int(range)));
        m_ranges->addButton(button, int(range));
        m_rangeButtons.append(button);
        rangeBox->addWidget(button);
    }
    m_pictureCaption = new QLabel(this);
    m_picture = new QComboBox(this);
    m_picture->setObjectName(QStringLiteral("videoExportPicture"));
    m_overlay = new QCheckBox(this);
    m_overlay->setObjectName(QStringLiteral("videoExportOverlay"));

    auto* form = new QFormLayout;
    form->addRow(m_rangeCaption, rangeBox);
    form->addRow(m_pictureCaption, m_picture);
    form->addRow(QString(), m_overlay);

    m_progressText = new QLabel(this);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("videoExportProgress"));
    // Cancel first, then the confirming button, as on every page of the viewer.
    auto* buttons = new QHBoxLayout;
    m_cancel = new QPushButton(this);
    m_start = new QPushButton(this);
    buttons->addStretch(1);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_start);
    m_start->setObjectName(QStringLiteral("videoExportStart"));
    m_cancel->setObjectName(QStringLiteral("videoExportCancel"));
    m_start->setDefault(true);
    connect(m_start, &QPushButton::clicked, this, &VideoExportDialog::startClicked);
    connect(m_cancel, &QPushButton::clicked, this, &VideoExportDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addSpacing(8);
    layout->addWidget(m_progressText);
    layout->addWidget(m_progress);
    layout->addLayout(buttons);
    setMinimumWidth(520);
    applyTexts();
    setRunning(false);
}

void VideoExportDialog::applyTexts()
{
    using namespace LocalizationKeys;
    setWindowTitle(localized(kExportVideoTitle));
    m_rangeCaption->setText(localized(kExportVideoRange));
    m_rangeButtons[int(Range::CurrentClip)]->setText(localized(kExportVideoCurrentClip));
    m_rangeButtons[int(Range::WholeTrip)]->setText(localized(kExportVideoWholeTrip));
    m_rangeButtons[int(Range::Marked)]->setText(localized(kExportVideoMarked));
    m_pictureCaption->setText(localized(kExportVideoCamera));
    const int picture = std::max(0, m_picture->currentIndex());
    m_picture->clear();
    m_picture->addItems({ localized(kExportVideoFront), localized(kExportVideoRear),
        localized(kExportVideoSide), localized(kExportVideoPip) });
    m_picture->setCurrentIndex(picture);
    m_overlay->setText(localized(kExportVideoOverlay));
    m_progressText->setText(localized(kExportVideoProgress));
    m_cancel->setText(localized(kCancel));
    m_start->setText(localized(kExportVideoStart));
}

void VideoExportDialog::exportVideo()
{
    if (!m_controller->isRunning()) {
        m_scope = VideoExportController::scopeOf(m_session);
        if (m_scope.isEmpty())
            return;
        // The marked span when there is one, else the trip, else the clip.
        const QList<Range> offered = VideoExportController::ranges(m_scope);
        m_rangeButtons[int(offered.constLast())]->setChecked(true);
        applyTexts();
        setRunning(false);
    }
    open();
    raise();
    activateWindow();
}

VideoExportController::Choice VideoExportDialog::choice() const
{
    VideoExportController::Choice choice;
    choice.range = Range(std::max(0, m_ranges->checkedId()));
    choice.picture = Picture(std::max(0, m_picture->currentIndex()));
    choice.overlay = m_overlay->isChecked();
    return choice;
}

QString VideoExportDialog::askForFile()
{
    QFileDialog dialog(this);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setWindowTitle(localized(LocalizationKeys::kExportVideoTitle));
    dialog.setLabelText(QFileDialog::Accept, localized(LocalizationKeys::kSave));
    dialog.setLabelText(QFileDialog::Reject, localized(LocalizationKeys::kCancel));
    dialog.setNameFilter(localized(LocalizationKeys::kExportVideoFileType));
    dialog.setDirectory(m_lastFolder.isEmpty() ? startFolder() : m_lastFolder);
    dialog.selectFile(VideoExportController::proposedName(m_scope, choice()));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString path = VideoExportController::pathWithSuffix(dialog.selectedFiles().constLast());
    m_lastFolder = QFileInfo(path).absolutePath();
    return path;
}

void VideoExportDialog::startClicked()
{
    if (m_controller->isRunning())
        return;
    const QString path = askForFile();
    if (path.isEmpty())
        return;
    m_progress->setRange(0, 1);
    m_progress->setValue(0);
    if (m_controller->start(m_scope, choice(), path))
        setRunning(true);
}

void VideoExportDialog::setRunning(bool running)
{
    const QList<Range> offered = VideoExportController::ranges(m_scope);
    for (const Range range : { Range::CurrentClip, Range::WholeTrip, Range::Marked })
        m_rangeButtons[int(range)]->setEnabled(!running && offered.contains(range));
    m_picture->setEnabled(!running);
    m_overlay->setEnabled(!running);
    m_start->setEnabled(!running);
    m_progressText->setVisible(running);
    m_progress->setVisible(running);
}

void VideoExportDialog::reject()
{
    if (m_controller->isRunning()) {
        // The dialog stays until ffmpeg has ended and the partial file is gone.
        m_controller->cancel();
        return;
    }
    QDialog::reject();
}

void VideoExportDialog::showOutcome(const VideoExportController::Outcome& outcome)
{
    setRunning(false);
    if (outcome.cancelled)
        return;
    const VideoCut::Result& result = outcome.result;
    using Status = VideoCut::Result::Status;
    if (result.ok()) {
        accept();
        auto* box = new QMessageBox(QMessageBox::Information,
            localized(LocalizationKeys::kExportVideoTitle),
            localized(LocalizationKeys::kExportVideoDone)
                .arg(QDir::toNativeSeparators(result.output)),
            QMessageBox::NoButton, parentWidget());
        box->setObjectName(QStringLiteral("videoExportDone"));
        QPushButton* open = box->addButton(
            localized(LocalizationKeys::kExportVideoOpenFolder), QMessageBox::ActionRole);
        open->setObjectName(QStringLiteral("videoExportOpenFolder"));
        box->addButton(localized(LocalizationKeys::kConfirm), QMessageBox::AcceptRole);
        const QString folder = QFileInfo(result.output).absolutePath();
        connect(open, &QPushButton::clicked, box,
            [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setWindowModality(Qt::WindowModal);
        box->open();
        return;
    }
    const char* message = LocalizationKeys::kExportVideoFailed;
    if (result.status == Status::NothingRecorded)
        message = LocalizationKeys::kExportVideoNothing;
    else if (result.status == Status::CannotWrite)
        message = LocalizationKeys::kExportVideoCannotWrite;
    auto* box = new QMessageBox(QMessageBox::Warning,
        localized(LocalizationKeys::kExportVideoTitle), localized(message), QMessageBox::Ok, this);
    box->setObjectName(QStringLiteral("videoExportFailed"));
    box->setDetailedText(result.message);
    box->button(QMessageBox::Ok)->setText(localized(LocalizationKeys::kConfirm));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->open();
}
