#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include "library/ClipListScan.h"

// The list of recorded clips shown in the main window: scans a chosen folder
// (normally the card's root) in the camera's folder layout, keeps every clip
// found and the filtered, sorted rows, deletes a clip on request and tells
// which clip of a front/rear pair is in the large view.
//
// Holds no widgets. The main window shows the rows, forwards the filter
// buttons and the selection, and reloads its table on rowsReloaded().
class ClipLibrary : public QObject {
    Q_OBJECT
public:
    // One row as the table shows it.
    struct Row {
        QUrl url;
        QString name; // the text of the row: the file name
        QString path; // local path
        QString partner; // partner string, empty when the clip has none
        bool saved = false; // exported by the camera (shown in magenta)
    };

    // Images of a pressed and an unpressed filter button.
    static constexpr const char* kPressedFilterImage = "sorting_btn_60_2";
    static constexpr const char* kNormalFilterImage = "sorting_btn_60_1";

    explicit ClipLibrary(QObject* parent = nullptr);

    // Clips directly in the folder (and, recursively, in its subfolders when
    // enableRecursive is set), in the order the file system lists them.
    // Hidden entries are skipped; an unreadable folder gives no clips.
    static QList<QUrl> getVideoFilesInDirectoryUrl(const QUrl& directoryUrl, bool enableRecursive);

    void refreshVideoFileListWithURL(const QUrl& directoryUrl);
    void refreshVideoFileList();
    // Empties the list when no card is identified; the folder text becomes empty.
    void clearVideoFileList();

    // The filter buttons: group A in the order all, continuous, motion,
    // event, manual. Group B is empty in the shipped layout and stays inert.
    void setFilterButtons(
        const QList<const QObject*>& groupA, const QList<const QObject*>& groupB = {});
    // A filter button was pressed: set the filter, re-filter, reload.
    void videoFileFilterTouched(const QObject* button);
    // Sets the index of the button's group; false when the button is in no group.
    bool setVideoFileFilterWithButton(const QObject* button);
    // Sets the group A index directly (0 to 4), re-filters and reloads.
    void setVideoFileFilter(int groupAIndex);
    void applyVideoFileFilter();

    QUrl selectedVideoDirectoryUrl() const { return m_selectedVideoDirectoryUrl; }
    QString selectedDirText() const { return m_selectedDirText; }
    const QList<QUrl>& allVideoFileList() const { return m_allVideoFileList; }
    const QList<QUrl>& filteredVideoFileList() const { return m_filteredVideoFileList; }
    int videoFileFilterGroupA() const { return m_videoFileFilterGroupA; }
    int videoFileFilterGroupB() const { return m_videoFileFilterGroupB; }

    int numberOfRows() const { return int(m_filteredVideoFileList.size()); }
    Row row(int index) const;
    QList<Row> rows() const;
    // The delete and save buttons are enabled exactly while there are rows.
    bool canRemoveOrSave() const { return !m_filteredVideoFileList.isEmpty(); }
    // A clip lying directly in a "Saved_Videos" folder (shown in magenta).
    static bool isSavedVideo(const QUrl& url);

    int selectedRow() const { return m_selectedRow; }
    void setSelectedRow(int row);

    // Moves the selected clip's file to the desktop trash at once (no
    // confirmation; deleted outright only where no trash is possible); on
    // success it leaves both lists. A failure changes nothing. The partner is kept.
    bool removeFileButtonTouched();
    // Moves a clip to the desktop trash, or deletes it where the volume
    // allows no trash; false when the file is still there (or was not).
    static bool moveClipToTrash(const QString& path);

    // The clip shown in the large view for the row: the row itself, or its
    // .mp4 partner next to it when the cameras are swapped.
    QUrl takeBigVideoURL(int index, bool isVideoSwitched) const;

signals:
    void selectedDirTextChanged(const QString& text);
    void filterButtonsChanged(int group, int pressedIndex); // group 0 = A, 1 = B
    void rowsReloaded();
    void rowSelected(int row); // selection only; it never starts playback

private:
    void reloadRows();
    void setSelectedDirText(const QString& text);

    QUrl m_selectedVideoDirectoryUrl;
    QString m_selectedDirText;
    void appendClips(QList<ClipListScan::Entry> clips);

    QList<QUrl> m_allVideoFileList;
    QList<ClipListScan::Entry> m_allEntries; // m_allVideoFileList with path and name
    QList<QUrl> m_filteredVideoFileList;
    int m_videoFileFilterGroupA = 0;
    int m_videoFileFilterGroupB = 0;
    QList<const QObject*> m_groupAButtons;
    QList<const QObject*> m_groupBButtons;
    int m_selectedRow = -1;
};
