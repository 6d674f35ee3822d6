#pragma once

#include <QList>
#include <QString>
#include <QUrl>

// Lists the clip files of one folder for the clip library.
namespace ClipListScan {

// One clip found, with the parts of it the library filters and sorts by.
struct Entry {
    QUrl url;
    QString path; // local path
    QString name; // file name
};

// Clips (extension "avi", "mp4" or "mov" in any case) directly in the folder,
// with the clips of every subfolder spliced in at the subfolder's place when
// `recursive` is set. Entries come in the file system's own order; hidden
// entries, special files and unreadable folders contribute nothing. A folder
// reached again through a symbolic link is not entered twice.
QList<Entry> scan(const QString& folder, bool recursive);

} // namespace ClipListScan
