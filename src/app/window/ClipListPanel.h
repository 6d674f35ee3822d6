#pragma once

#include <QList>
#include <QWidget>

class ClipLibrary;
class ImageButton;
class QLabel;
class QLineEdit;
class QListWidget;
class QStackedWidget;
class TripLibrary;

// The clip list beside the video: the five filter buttons (all, continuous,
// motion, event, manual), one column of file names (clips the camera exported
// into "Saved_Videos" in magenta), the folder's path and the buttons to open
// another folder and to delete the selected clip. It shows the library's rows
// and passes the user's choices back; it decides nothing itself.
//
// Beside the filters, the Trips button shows the folder's drives instead of
// its clips: one row per trip with its date, start and end time, duration,
// distance, top speed, impacts and event marks. A double-click plays it.
class ClipListPanel : public QWidget {
    Q_OBJECT
public:
    explicit ClipListPanel(QWidget* parent = nullptr);

    // Shows `library`'s rows and sends the filter buttons and the selection to it.
    void setLibrary(ClipLibrary* library);
    // Shows `trips`' rows behind the Trips button (read when first shown).
    void setTripLibrary(TripLibrary* trips);
    void applyLanguageSettings();
    // The trips view instead of the clips (true), or back.
    void showTrips(bool shown);
    bool isShowingTrips() const { return m_showingTrips; }
    // Marks the trip playing (the row alone, scrolled into view).
    void selectTrip(int index);
    // Writes the trip rows again (after a change of language or speed unit).
    void reloadTripRows();

    QListWidget* fileListTableView() const { return m_table; }
    const QList<ImageButton*>& filterButtons() const { return m_filterButtons; }
    ImageButton* removeFileButton() const { return m_removeFileButton; }
    ImageButton* selectFolderButton() const { return m_selectFolderButton; }
    ImageButton* tripsButton() const { return m_tripsButton; }
    QListWidget* tripListView() const { return m_tripTable; }
    QLineEdit* selectedDirTextField() const { return m_selectedDirTextField; }

signals:
    void rowDoubleClicked(int row);
    void tripDoubleClicked(int index);
    void selectFolderButtonTouched();
    void removeFileButtonTouched();
    // The delete and save-copy actions are possible (the list has rows).
    void canRemoveOrSaveChanged(bool enabled);

private:
    void reloadRows();
    void showFilterButtons(int group, int pressedIndex);
    void selectRow(int row);

    ClipLibrary* m_library = nullptr;
    TripLibrary* m_trips = nullptr;
    QList<ImageButton*> m_filterButtons;
    ImageButton* m_tripsButton = nullptr;
    bool m_showingTrips = false;
    QStackedWidget* m_lists = nullptr;
    QListWidget* m_table = nullptr;
    QListWidget* m_tripTable = nullptr;
    QLineEdit* m_selectedDirTextField = nullptr;
    ImageButton* m_selectFolderButton = nullptr;
    ImageButton* m_removeFileButton = nullptr;
};
