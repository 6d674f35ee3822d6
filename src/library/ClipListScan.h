#pragma once

#include <QFileInfo>
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
// entries and unreadable folders contribute nothing. Only regular files are
// clips: pipes, sockets and devices are never listed (nor opened). Symbolic
// links are followed only where they stay inside the folder, and no real
// folder is listed twice, however many links lead to it.
QList<Entry> scan(const QString& folder, bool recursive);

// The clips of a card (or any chosen folder): those at its top level, then
// those of each card folder ("cont_rec", ... "Saved_Videos") with its
// subfolders, under the same rules, confined to `folder`; a real folder that
// several of them lead to is listed once.
QList<Entry> scanCard(const QString& folder);

// The clips of the named folders of a card (each with its subfolders), in
// that order, under the same rules, confined to `folder`.
QList<Entry> scanFolders(const QString& folder, const QList<QLatin1StringView>& names);

// What may be read as a clip: a regular file, or a link to one. Pipes,
// sockets and devices never are; opening one can wait for a writer that
// never comes, or read without end.
bool isRegularFile(const QFileInfo& info);

} // namespace ClipListScan
