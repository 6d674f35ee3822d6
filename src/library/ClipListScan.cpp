#include "library/ClipListScan.h"

#include "library/ClipFolders.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

namespace {

class Scanner {
public:
    // Links never lead outside `root`.
    explicit Scanner(const QString& root)
        : m_root(QFileInfo(root).canonicalFilePath())
    {
    }

    void scanFolder(const QString& folder, bool recursive)
    {
        const QString canonical = QFileInfo(folder).canonicalFilePath();
        // Each real folder once: link cycles and fans of links cost nothing.
        if (canonical.isEmpty() || !isInside(canonical) || m_visited.contains(canonical))
            return;
        m_visited.insert(canonical);
        // Without QDir::Hidden and QDir::System, hidden entries and special
        // files (pipes, sockets, devices, broken links) are left out.
        QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot);
        while (it.hasNext()) {
            it.next();
            const QFileInfo info = it.fileInfo();
            if (info.isSymLink() && !isInside(info.canonicalFilePath()))
                continue;
            if (info.isDir()) {
                if (recursive)
                    scanFolder(info.filePath(), true);
            } else if (ClipListScan::isRegularFile(info)
                && ClipFolders::isClipExtension(info.suffix().toLower())) {
                QString path = info.filePath();
                m_clips.append({ QUrl::fromLocalFile(path), std::move(path), info.fileName() });
            }
        }
    }

    QList<ClipListScan::Entry> takeClips() { return std::move(m_clips); }

private:
    bool isInside(const QString& canonical) const
    {
        if (canonical.isEmpty() || m_root.isEmpty())
            return false;
        if (m_root == QLatin1String("/"))
            return true;
        return canonical == m_root
            || (canonical.startsWith(m_root) && canonical.at(m_root.size()) == u'/');
    }

    QString m_root;
    QSet<QString> m_visited; // canonical folders already listed
    QList<ClipListScan::Entry> m_clips;
};

} // namespace

namespace ClipListScan {

QList<Entry> scan(const QString& folder, bool recursive)
{
    if (folder.isEmpty())
        return {};
    Scanner scanner(folder);
    scanner.scanFolder(folder, recursive);
    return scanner.takeClips();
}

QList<Entry> scanCard(const QString& folder)
{
    if (folder.isEmpty())
        return {};
    Scanner scanner(folder);
    // The top level is listed (and so never entered again through a link
    // from below), then each card folder with its subfolders.
    scanner.scanFolder(folder, false);
    for (const QLatin1StringView name : ClipFolders::kCardFolders)
        scanner.scanFolder(folder + u'/' + name, true);
    return scanner.takeClips();
}

QList<Entry> scanFolders(const QString& folder, const QList<QLatin1StringView>& names)
{
    if (folder.isEmpty())
        return {};
    Scanner scanner(folder);
    for (const QLatin1StringView name : names)
        scanner.scanFolder(folder + u'/' + name, true);
    return scanner.takeClips();
}

bool isRegularFile(const QFileInfo& info)
{
    // isFile() holds for regular files (or links to them) only.
    return info.isFile();
}

} // namespace ClipListScan
