#pragma once

#include "app/session/SessionView.h"

#include <QMainWindow>

#include <memory>

class ClipListPanel;
class FullScreenControlWindow;
class HeaderBar;
class MainWindowController;
class PlaybackSession;
class QAction;
class QActionGroup;
class QMenu;
class QPrinter;
class SettingsPageOpener;
class SettingsRouter;
class QProgressDialog;
class TelemetryPanel;
class TransportBar;
class VideoArea;

// The viewer's main window: header, video area with the two player views,
// clip list, transport row and telemetry row, and the menus. It shows what
// the coordinator (MainWindowController) and its playback session tell it
// through SessionView, and passes every click, key and menu choice back to
// them; it makes no playback decisions itself.
class MainWindow : public QMainWindow, public SessionView {
    Q_OBJECT
public:
    static constexpr int kMinimumWidth = 1280;
    static constexpr int kMinimumHeight = 800;

    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    // Shows the window and finishes setting it up in the start-up order: the
    // map page, the texts in the viewer's language, the card's model and
    // clips, the "all" filter, the controls disabled until a clip plays.
    void showMainWindow();
    // Re-titles every control, menu and tooltip in the viewer's language.
    void applyLanguageSettings();

    MainWindowController& controller() const { return *m_controller; }
    PlaybackSession& session() const;
    HeaderBar* headerBar() const { return m_header; }
    VideoArea* videoArea() const { return m_videoArea; }
    ClipListPanel* clipListPanel() const { return m_clipList; }
    TransportBar* transportBar() const { return m_transport; }
    TelemetryPanel* telemetryPanel() const { return m_telemetry; }
    FullScreenControlWindow* fullScreenControlWindow() const { return m_fullScreenControl; }
    // Which settings page the settings button opens, and the pages it opens.
    SettingsRouter& settingsRouter() const { return *m_settingsRouter; }

    // The folder chooser, the save panels and printing.
    void selectFolderButtonTouched();
    void saveFileButtonTouched();
    void snapshotButtonTouched();
    void printButtonTouched();
    // Opens the settings page the card calls for (card choice, model choice
    // or the model's editor) as a modal page over this window.
    void settingButtonTouched();
    void showAbout();
    // Draws the still on the printer's page: landscape, scaled to fit.
    static void printImage(QPrinter& printer, const QImage& image);

    // --- SessionView
    void setPlayTimeText(const QString& text) override;
    void setSeekMaximum(double seconds) override;
    void setSeekValue(double seconds) override;
    void setSeekMarks(const QVector<SeekMark>& marks) override;
    void setSensorTexts(const QString& gx, const QString& gy, const QString& gz, const QString& lat,
        const QString& lng) override;
    void setSpeedometerSpeed(int kmh) override;
    void setGraphClipData(const TavroClipData& clipData) override;
    void addMapRoute(const TavroClipData& clipData) override;
    void addMapRoutePoints(const QVector<QPointF>& route) override;
    void moveMapToLat(float lat, float lng) override;
    void setMapCovered(bool covered) override;
    void setGpsIndicatorVisible(bool visible) override;
    void setIndicatorImages(const QString& shockImage, const QString& earthImage) override;
    void setMovieCoversVisible(bool bigCoverVisible, bool smallCoverVisible) override;
    void setPlayPauseImage(const QString& imageName) override;
    void setMuteImage(const QString& imageName) override;
    void setVolumeSliderValue(float volume) override;
    void setVolumeSliderEnabled(bool enabled) override;
    void setVideoControlsEnabled(bool enabled) override;
    void setSwapButtonEnabled(bool enabled) override;
    void changeVideoScale(double scale) override;
    void enterScrollMode(bool enabled) override;
    void showFullScreenMovie(bool smallView) override;
    void hideFullScreenMovie() override;
    void setBusy(bool busy) override;
    void minimizeWindow() override;
    void quitApplication() override;

signals:
    // The settings button was pressed (the settings editors open from here).
    void settingsRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void connectClipList();
    void connectTransport();
    void connectFullScreenControls();
    void connectController();
    void buildMenus();
    void buildFileMenu();
    void buildExportRouteMenu();
    void buildViewMenu();
    void buildLanguageMenu();
    void buildSpeedUnitMenu();
    void applyMenuTexts();
    void updateModelInfo(const QString& modelText, bool settingsButtonEnabled);
    void updateActionStates();

    HeaderBar* m_header = nullptr;
    VideoArea* m_videoArea = nullptr;
    ClipListPanel* m_clipList = nullptr;
    TransportBar* m_transport = nullptr;
    TelemetryPanel* m_telemetry = nullptr;
    FullScreenControlWindow* m_fullScreenControl = nullptr;
    std::unique_ptr<MainWindowController> m_controller;
    std::unique_ptr<SettingsPageOpener> m_settingsOpener;
    std::unique_ptr<SettingsRouter> m_settingsRouter;

    struct Menus;
    std::unique_ptr<Menus> m_menus;

    bool m_mapHiddenOnFullScreen = true;
    bool m_wasMaximized = false;
    // How long a window manager may take to make the window full screen.
    static constexpr int kWindowManagerGraceMs = 250;
    QRect m_geometryBeforeFullScreen;
    bool m_tookScreenItself = false;
    bool m_busy = false;
    // Shown while a clip takes long to prepare; its Cancel drops the clip.
    QProgressDialog* m_preparingDialog = nullptr;
    bool m_canRemoveOrSave = false;
};
