// What the playback session shows, carried out on the main window's controls.
#include "app/window/MainWindow.h"

#include "app/session/PlaybackSession.h"
#include "app/window/ClipListPanel.h"
#include "app/window/FullScreenControlWindow.h"
#include "app/window/HeaderBar.h"
#include "app/window/ImageButton.h"
#include "app/window/SeekSlider.h"
#include "app/window/TelemetryPanel.h"
#include "app/window/TransportBar.h"
#include "app/window/VideoArea.h"
#include "app/window/ZoomableMovieArea.h"
#include "display/GravityGraphView.h"
#include "display/MapController.h"
#include "display/SpeedMeterView.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "player/TavroAVView.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QPointer>
#include <QProgressDialog>
#include <QScreen>
#include <QSignalBlocker>
#include <QTimer>

#include <cmath>

void MainWindow::setPlayTimeText(const QString& text)
{
    m_transport->playTimeTextField->setText(text);
}

void MainWindow::setSeekMaximum(double seconds)
{
    m_transport->seekTimeSldierView->setMaximum(int(std::lround(seconds * 1000.0)));
}

void MainWindow::setSeekValue(double seconds)
{
    SeekSlider* slider = m_transport->seekTimeSldierView;
    // The user's hand wins while the slider is held.
    if (slider->isSliderDown())
        return;
    const QSignalBlocker blocker(slider);
    slider->setValue(int(std::lround(seconds * 1000.0)));
}

void MainWindow::setSeekMarks(const QVector<SeekMark>& marks)
{
    m_transport->seekTimeSldierView->setMarks(marks);
}

void MainWindow::setSensorTexts(
    const QString& gx, const QString& gy, const QString& gz, const QString& lat, const QString& lng)
{
    m_telemetry->setSensorTexts(gx, gy, gz, lat, lng);
}

void MainWindow::setSpeedometerSpeed(int kmh)
{
    m_telemetry->speedMeterView()->setSpeed(kmh);
}

void MainWindow::setGraphClipData(const TavroClipData& clipData)
{
    m_telemetry->gravityGraphView()->setClipData(&clipData);
}

void MainWindow::addMapRoute(const TavroClipData& clipData)
{
    m_telemetry->mapController()->addRoute(clipData);
}

void MainWindow::addMapRoutePoints(const QVector<QPointF>& route)
{
    m_telemetry->mapController()->addRoute(route);
}

void MainWindow::moveMapToLat(float lat, float lng)
{
    m_telemetry->mapController()->moveToLat(lat, lng);
}

void MainWindow::setMapCovered(bool covered)
{
    m_telemetry->setMapCovered(covered);
}

void MainWindow::setGpsIndicatorVisible(bool visible)
{
    m_telemetry->setGpsIndicatorVisible(visible);
}

void MainWindow::setIndicatorImages(const QString& shockImage, const QString& earthImage)
{
    m_telemetry->setIndicatorImages(shockImage, earthImage);
}

void MainWindow::setMovieCoversVisible(bool bigCoverVisible, bool smallCoverVisible)
{
    m_videoArea->setCoversVisible(bigCoverVisible, smallCoverVisible);
}

void MainWindow::setPlayPauseImage(const QString& imageName)
{
    m_transport->setPlayPauseImage(imageName);
    m_fullScreenControl->setPlayPauseImage(imageName);
}

void MainWindow::setMuteImage(const QString& imageName)
{
    m_transport->setMuteImage(imageName);
}

void MainWindow::setVolumeSliderValue(float volume)
{
    const QSignalBlocker blocker(m_transport->volumeSliderView);
    m_transport->volumeSliderView->setValue(int(std::lround(volume * 100.0f)));
}

void MainWindow::setVolumeSliderEnabled(bool enabled)
{
    m_transport->volumeSliderView->setEnabled(enabled);
}

void MainWindow::setVideoControlsEnabled(bool enabled)
{
    m_transport->setVideoControlsEnabled(enabled);
    // The views as widgets: they take the right click that asks for full screen.
    static_cast<QWidget*>(m_videoArea->bigMovieView())->setEnabled(enabled);
    static_cast<QWidget*>(m_videoArea->smallMovieView())->setEnabled(enabled);
    m_telemetry->setIndicatorsVisible(enabled);
    m_fullScreenControl->setEnabled(enabled);
    updateActionStates();
}

void MainWindow::setSwapButtonEnabled(bool enabled)
{
    m_transport->videoSwitchButton->setEnabled(enabled);
    updateActionStates();
}

void MainWindow::changeVideoScale(double scale)
{
    // Applied once the current event has been handled.
    QPointer<ZoomableMovieArea> area = m_videoArea->bigMovieArea();
    QTimer::singleShot(0, this, [area, scale] {
        if (!area)
            return;
        area->setScale(scale);
        area->setScrollMode(scale > 1.0);
    });
}

void MainWindow::enterScrollMode(bool enabled)
{
    m_videoArea->bigMovieArea()->setScrollMode(enabled);
}

void MainWindow::showFullScreenMovie(bool smallView)
{
    m_mapHiddenOnFullScreen = m_telemetry->isMapCovered();
    m_wasMaximized = isMaximized();
    m_header->hide();
    m_clipList->hide();
    m_transport->hide();
    m_telemetry->hide();
    menuBar()->hide();
    centralWidget()->layout()->setContentsMargins(0, 0, 0, 0);
    m_videoArea->setShown(smallView ? VideoArea::Shown::SmallOnly : VideoArea::Shown::BigOnly);
    m_geometryBeforeFullScreen = geometry();
    showFullScreen();
    m_fullScreenControl->showOverParent();
    // An X11 session without a window manager leaves the window as it was:
    // then it takes the screen itself (and gives it back on leaving).
    QTimer::singleShot(kWindowManagerGraceMs, this, [this] {
        const QScreen* screen = this->screen();
        if (!isFullScreen() || !screen || geometry() == screen->geometry())
            return;
        m_tookScreenItself = true;
        setGeometry(screen->geometry());
    });
}

void MainWindow::hideFullScreenMovie()
{
    m_fullScreenControl->hide();
    centralWidget()->layout()->setContentsMargins(8, 0, 8, 8);
    m_videoArea->setShown(VideoArea::Shown::Both);
    m_header->show();
    m_clipList->show();
    m_transport->show();
    m_telemetry->show();
    menuBar()->show();
    m_telemetry->setMapCovered(m_mapHiddenOnFullScreen);
    if (m_wasMaximized)
        showMaximized();
    else
        showNormal();
    if (m_tookScreenItself)
        setGeometry(m_geometryBeforeFullScreen);
    m_tookScreenItself = false;
}

void MainWindow::setBusy(bool busy)
{
    if (busy == m_busy)
        return;
    m_busy = busy;
    if (!busy) {
        if (m_preparingDialog)
            m_preparingDialog->hide();
        return;
    }
    // The clip is being prepared off the GUI thread: the window stays live,
    // and the user may give up on the clip.
    if (!m_preparingDialog) {
        m_preparingDialog = new QProgressDialog(this);
        m_preparingDialog->setObjectName(QStringLiteral("preparingDialog"));
        m_preparingDialog->setRange(0, 0);
        m_preparingDialog->setMinimumDuration(0);
        m_preparingDialog->setAutoClose(false);
        m_preparingDialog->setAutoReset(false);
        m_preparingDialog->setWindowModality(Qt::NonModal);
        connect(m_preparingDialog, &QProgressDialog::canceled, this,
            [this] { session().cancelPreparation(); });
    }
    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    m_preparingDialog->setLabelText(languages.localized(LocalizationKeys::kPreparingClip));
    m_preparingDialog->setCancelButtonText(languages.localized(LocalizationKeys::kCancel));
    m_preparingDialog->show();
}

void MainWindow::minimizeWindow()
{
    showMinimized();
}

void MainWindow::quitApplication()
{
    close();
}
