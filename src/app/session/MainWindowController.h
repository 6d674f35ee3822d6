#pragma once

#include "app/session/CardMountFilter.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class AlertSink;
class QThread;
class ClipConverter;
class ClipLibrary;
class PlaybackSession;
class PlayerView;
class ProcessRunner;
class SessionView;
class SpeedUnit;
class TripLibrary;
class ViewerLanguage;
class VolumeWatcher;

// The coordinator the main window talks to. It owns the clip list, the
// playback session, the clip converter and the preference controllers (speed
// unit, viewer language) and ties them together: card identification and its
// model text, the folder the user chose, double-clicks in the list, and the
// ways to take material out of the viewer (a copy of a clip, a still image,
// printing). It holds no widgets: dialogs, menus and printing are the
// window's; the window passes their results in.
class MainWindowController : public QObject {
    Q_OBJECT
public:
    struct Options {
        // Runs ffmpeg; the real QProcess runner when null.
        ProcessRunner* processRunner = nullptr;
        // The conversion cache's working folder; the viewer's own when empty.
        QString workingDirectory;
        // Where alerts go; AlertSink::shared() when null.
        AlertSink* alertSink = nullptr;
    };

    // The player views and the view must outlive the controller.
    MainWindowController(PlayerView& bigMovieView, PlayerView& smallMovieView, SessionView& view,
        Options options, QObject* parent = nullptr);
    MainWindowController(PlayerView& bigMovieView, PlayerView& smallMovieView, SessionView& view,
        QObject* parent = nullptr);
    ~MainWindowController() override;

    ClipLibrary& library() const { return *m_library; }
    // The trips of the folder the list shows.
    TripLibrary& trips() const { return *m_trips; }
    PlaybackSession& session() const { return *m_session; }
    ClipConverter& converter() const { return *m_converter; }
    SpeedUnit& speedUnit() const { return *m_speedUnit; }
    ViewerLanguage& viewerLanguage() const { return *m_viewerLanguage; }

    // Once the window is built: the session's initial state (controls
    // disabled, not muted, speedometer 0, covers), the texts
    // (applyLanguageSettingsRequested), card identification (updateModelInfo)
    // and the "all" filter.
    void showMainWindow();

    // Re-identifies the card when the watcher reports the arrival or removal
    // of a card volume (also on TavroNotifier's volume notifications, which
    // are always watched); other mount-table changes leave the clip list, the
    // selection and the playing clip alone. A folder chosen by hand stays
    // listed when a card goes.
    void attachVolumeWatcher(VolumeWatcher& watcher);

    // Identifies the card (TolmSettingManager::loadVersionInfo over the volume
    // source installed with Utils::setVolumeSource). An identified card lists
    // its clips and enables the settings button; an unknown one empties the
    // list and disables it. Emits modelInfoChanged.
    void updateModelInfo();
    // The model name, or the localised "unknown" when there is none.
    QString modelText() const;
    bool isSettingsButtonEnabled() const { return m_settingsButtonEnabled; }

    // The window asks the viewer language to be applied: it re-titles its
    // controls when applyLanguageSettingsRequested fires; the model text
    // follows through modelInfoChanged.
    void applyLanguageSettings();

    // The folder the user chose in the folder dialog; an empty URL (the user
    // cancelled) changes nothing.
    void selectFolderButtonTouched(const QUrl& folderUrl);
    // Double-click on a row: selects and plays it.
    void videoFileListDoubleClicked(int row);
    // Stops the current clip and loads the row's clip.
    void playVideoWithIdx(int row);
    // Deletes the selected clip (no confirmation); false when nothing changed.
    bool removeFileButtonTouched();
    // Plays trip `index` (numbered as `tavro trips` numbers them) of the
    // folder listed, once its trips are read; nothing for a trip that is not
    // there. Emits tripPlayed with the index it plays.
    void playTrip(int index);

    // --- taking material out
    // The clip a copy is made of: the selected row's clip shown in the large
    // view (the rear partner when the cameras are swapped); while a trip
    // plays, the trip's clip shown; empty without a valid selection. Its file
    // name is the name to propose.
    QUrl saveFileSourceUrl() const;
    // Copies that clip (the card's file, not a converted one) to the chosen
    // path, replacing a file the user agreed to overwrite in one step (a
    // failed copy leaves it as it was). False on failure, with the alert
    // "저장하지 못했습니다.".
    bool saveFileButtonTouched(const QString& destinationPath);
    // The same on a worker thread: the window goes on while a large clip is
    // copied; fileSaved tells the outcome (after the alert, on failure).
    void saveFileInBackground(const QString& destinationPath);
    bool isSaving() const { return !m_savingThreads.isEmpty(); }
    // Writes the image as PNG atomically; safe on any thread.
    static bool writePng(const QImage& image, const QString& path);
    // Copies `source` over `destination` atomically; safe on any thread.
    static bool copyFileAtomically(const QString& source, const QString& destination);
    // Pauses playback and proposes "<clip name>_<ms>.png" for a still of the
    // large view at its current time.
    QString snapshotButtonTouched();
    // Writes the large view's still as PNG, atomically; false on failure or
    // without a picture, with the alert "저장하지 못했습니다.".
    bool saveSnapshot(const QString& path);
    // The same with the frame decoded and written on a worker thread;
    // stillSaved tells the outcome (after the alert, on failure).
    void saveSnapshotInBackground(const QString& path);
    // Pauses playback and returns the large view's still for the window to
    // print (landscape, fit to the page); null without a picture.
    QImage printButtonTouched();

signals:
    void modelInfoChanged(const QString& modelText, bool settingsButtonEnabled);
    void fileSaved(bool saved);
    void stillSaved(bool saved);
    void applyLanguageSettingsRequested();
    void tripPlayed(int index);

private:
    void volumeMountHandler(const QString& rootPath);
    void volumeUnmountHandler(const QString& rootPath);
    // Identifies the card; lists its clips (or empties the list) unless
    // `keepList` is set.
    void identifyCard(bool keepList);
    void showSaveFailedAlert(const char* titleKey);
    // Runs `work` on a thread of its own; `done` gets its outcome on this one.
    void runAside(std::function<bool()> work, std::function<void(bool)> done);

    PlayerView& m_bigMovieView;
    SessionView& m_view;
    std::unique_ptr<ProcessRunner> m_ownedRunner;
    std::unique_ptr<ClipConverter> m_converter;
    ClipLibrary* m_library = nullptr; // child QObject
    TripLibrary* m_trips = nullptr; // child QObject
    PlaybackSession* m_session = nullptr; // child QObject
    SpeedUnit* m_speedUnit = nullptr; // child QObject
    ViewerLanguage* m_viewerLanguage = nullptr; // child QObject
    QString m_modelName;
    bool m_settingsButtonEnabled = false;
    bool m_folderChosenByHand = false;
    AlertSink* m_alerts = nullptr;
    QList<QThread*> m_savingThreads;
    CardMountFilter m_mounts;
};
