#pragma once

#include <QList>
#include <QString>
#include <QUrl>

// Lists the clip files of one folder for the clip library.
namespace ClipListScan {

// Clips (extension "avi", "mp4" or "mov" in any case) directly in the folder,
// with the clips of every subfolder spliced in at the subfolder's place when
// `recursive` is set. Entries come in the file system's own order; hidden
// entries, special files and unreadable folders contribute nothing. A folder
// reached again through a symbolic link is not entered twice.
QList<QUrl> scan(const QString& folder, bool recursive);

} // namespace ClipListScan
