#pragma once

#include <QList>
#include <QWidget>

class ClipLibrary;
class ImageButton;
class QLabel;
class QLineEdit;
class QListWidget;

// The clip list beside the video: the five filter buttons (all, continuous,
// motion, event, manual), one column of file names (clips the camera exported
// into "Saved_Videos" in magenta), the folder's path and the buttons to open
// another folder and to delete the selected clip. It shows the library's rows
// and passes the user's choices back; it decides nothing itself.
class ClipListPanel : public QWidget {
    Q_OBJECT
public:
    explicit ClipListPanel(QWidget* parent = nullptr);

    // Shows `library`'s rows and sends the filter buttons and the selection to it.
    void setLibrary(ClipLibrary* library);
    void applyLanguageSettings();

    QListWidget* fileListTableView() const { return m_table; }
    const QList<ImageButton*>& filterButtons() const { return m_filterButtons; }
    ImageButton* removeFileButton() const { return m_removeFileButton; }
    ImageButton* selectFolderButton() const { return m_selectFolderButton; }
    QLineEdit* selectedDirTextField() const { return m_selectedDirTextField; }

signals:
    void rowDoubleClicked(int row);
    void selectFolderButtonTouched();
    void removeFileButtonTouched();
    // The delete and save-copy actions are possible (the list has rows).
    void canRemoveOrSaveChanged(bool enabled);

private:
    void reloadRows();
    void showFilterButtons(int group, int pressedIndex);
    void selectRow(int row);

    ClipLibrary* m_library = nullptr;
    QList<ImageButton*> m_filterButtons;
    QListWidget* m_table = nullptr;
    QLineEdit* m_selectedDirTextField = nullptr;
    ImageButton* m_selectFolderButton = nullptr;
    ImageButton* m_removeFileButton = nullptr;
};
