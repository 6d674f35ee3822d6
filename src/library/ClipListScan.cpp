#include "library/ClipListScan.h"

#include "library/ClipFolders.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

namespace {

class Scanner {
public:
    explicit Scanner(bool recursive)
        : m_recursive(recursive)
    {
    }

    void scanFolder(const QString& folder)
    {
        const QString canonical = QFileInfo(folder).canonicalFilePath();
        if (canonical.isEmpty() || m_open.contains(canonical))
            return;
        m_open.insert(canonical);
        // Without QDir::Hidden and QDir::System, hidden entries and special
        // files (pipes, sockets, broken links) are left out.
        QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot);
        while (it.hasNext()) {
            it.next();
            const QFileInfo info = it.fileInfo();
            if (info.isDir()) {
                if (m_recursive)
                    scanFolder(info.filePath());
            } else if (info.exists() && ClipFolders::isClipExtension(info.suffix().toLower())) {
                QString path = info.filePath();
                m_clips.append({ QUrl::fromLocalFile(path), std::move(path), info.fileName() });
            }
        }
        m_open.remove(canonical);
    }

    QList<ClipListScan::Entry> takeClips() { return std::move(m_clips); }

private:
    bool m_recursive;
    QSet<QString> m_open; // folders being listed, to stop at link cycles
    QList<ClipListScan::Entry> m_clips;
};

} // namespace

namespace ClipListScan {

QList<Entry> scan(const QString& folder, bool recursive)
{
    if (folder.isEmpty())
        return {};
    Scanner scanner(recursive);
    scanner.scanFolder(folder);
    return scanner.takeClips();
}

} // namespace ClipListScan
