#include "library/ClipLibrary.h"

#include "library/ClipFolders.h"
#include "library/ClipListScan.h"
#include "library/ClipNaming.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <vector>

namespace {

// Sort key of one row, computed once per refresh rather than per comparison.
struct SortEntry {
    bool saved;
    QString name;
    QUrl url;
};

// Clips the camera exported come first, then every clip by file name,
// compared code unit by code unit (so "B.mp4" sorts before "a.mp4").
bool sortsBefore(const SortEntry& a, const SortEntry& b)
{
    if (a.saved != b.saved)
        return a.saved;
    return QString::compare(a.name, b.name, Qt::CaseSensitive) < 0;
}

bool passesFilter(const QString& path, int filterIndex, QLatin1StringView key)
{
    if (key.isEmpty() || path.contains(key))
        return true;
    if (key == QLatin1StringView("motion_rec") && path.contains(ClipFolders::kMotionTimelapse))
        return true;
    return filterIndex == ClipFolders::kFilterEvent && path.contains(ClipFolders::kParking);
}

} // namespace

ClipLibrary::ClipLibrary(QObject* parent)
    : QObject(parent)
{
}

QList<QUrl> ClipLibrary::getVideoFilesInDirectoryUrl(const QUrl& directoryUrl, bool enableRecursive)
{
    QList<QUrl> urls;
    for (ClipListScan::Entry& entry :
        ClipListScan::scan(directoryUrl.toLocalFile(), enableRecursive))
        urls.append(std::move(entry.url));
    return urls;
}

void ClipLibrary::appendClips(QList<ClipListScan::Entry> clips)
{
    for (const ClipListScan::Entry& entry : std::as_const(clips))
        m_allVideoFileList.append(entry.url);
    m_allEntries.append(std::move(clips));
}

void ClipLibrary::refreshVideoFileListWithURL(const QUrl& directoryUrl)
{
    m_selectedVideoDirectoryUrl = directoryUrl;
    refreshVideoFileList();
}

void ClipLibrary::refreshVideoFileList()
{
    m_allVideoFileList.clear();
    m_allEntries.clear();
    const QString folder = m_selectedVideoDirectoryUrl.toLocalFile();
    setSelectedDirText(folder);
    if (!folder.isEmpty()) {
        // Clips at the top level, then each card folder with its subfolders.
        appendClips(ClipListScan::scanCard(folder));
    }
    applyVideoFileFilter();
    reloadRows();
    if (!m_filteredVideoFileList.isEmpty())
        setSelectedRow(0);
}

void ClipLibrary::clearVideoFileList()
{
    setSelectedDirText(QString());
    m_allVideoFileList.clear();
    m_allEntries.clear();
    applyVideoFileFilter();
    reloadRows();
}

void ClipLibrary::setFilterButtons(
    const QList<const QObject*>& groupA, const QList<const QObject*>& groupB)
{
    m_groupAButtons = groupA;
    m_groupBButtons = groupB;
}

void ClipLibrary::videoFileFilterTouched(const QObject* button)
{
    setVideoFileFilterWithButton(button);
    applyVideoFileFilter();
    reloadRows();
}

bool ClipLibrary::setVideoFileFilterWithButton(const QObject* button)
{
    if (const qsizetype index = m_groupAButtons.indexOf(button); index >= 0) {
        m_videoFileFilterGroupA = int(index);
        emit filterButtonsChanged(0, m_videoFileFilterGroupA);
        return true;
    }
    // The shipped layout has no group B buttons, so this branch never acts.
    if (const qsizetype index = m_groupBButtons.indexOf(button); index >= 0) {
        m_videoFileFilterGroupB = int(index);
        emit filterButtonsChanged(1, m_videoFileFilterGroupB);
        return true;
    }
    return false;
}

void ClipLibrary::setVideoFileFilter(int groupAIndex)
{
    m_videoFileFilterGroupA = groupAIndex;
    emit filterButtonsChanged(0, m_videoFileFilterGroupA);
    applyVideoFileFilter();
    reloadRows();
}

void ClipLibrary::applyVideoFileFilter()
{
    const int filterIndex = m_videoFileFilterGroupA;
    const QLatin1StringView key = ClipFolders::filterKey(filterIndex);
    std::vector<SortEntry> entries;
    entries.reserve(size_t(m_allEntries.size()));
    for (const ClipListScan::Entry& clip : std::as_const(m_allEntries)) {
        if (!passesFilter(clip.path, filterIndex, key))
            continue;
        // The URL string holds the path unchanged apart from percent-encoding,
        // which never touches "Saved_Videos"; testing the path is the same.
        const bool saved = clip.path.contains(ClipFolders::kSavedVideos);
        entries.push_back({ saved, clip.name, clip.url });
    }
    std::stable_sort(entries.begin(), entries.end(), sortsBefore);
    m_filteredVideoFileList.clear();
    m_filteredVideoFileList.reserve(qsizetype(entries.size()));
    for (SortEntry& entry : entries)
        m_filteredVideoFileList.append(std::move(entry.url));
}

ClipLibrary::Row ClipLibrary::row(int index) const
{
    if (index < 0 || index >= numberOfRows())
        return {};
    const QUrl& url = m_filteredVideoFileList.at(index);
    return { url, url.fileName(), url.toLocalFile(), ClipNaming::partnerString(url),
        isSavedVideo(url) };
}

QList<ClipLibrary::Row> ClipLibrary::rows() const
{
    QList<Row> result;
    result.reserve(numberOfRows());
    for (int i = 0; i < numberOfRows(); ++i)
        result.append(row(i));
    return result;
}

bool ClipLibrary::isSavedVideo(const QUrl& url)
{
    // The parent folder's URL ends in "Saved_Videos/".
    const QString parent = QFileInfo(url.toLocalFile()).path();
    return parent.endsWith(ClipFolders::kSavedVideos);
}

void ClipLibrary::setSelectedRow(int row)
{
    m_selectedRow = (row >= 0 && row < numberOfRows()) ? row : -1;
    emit rowSelected(m_selectedRow);
}

bool ClipLibrary::moveClipToTrash(const QString& path)
{
    // The desktop trash where the volume has one (or can have one); only a
    // file that cannot go there (no trash on that volume) is deleted outright.
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return false;
    // Without the user's data folder Qt would put its trash folders in the
    // current folder; the folder the desktop's trash lives in is made first.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    if (QFile::moveToTrash(path))
        return true;
    return QFile::remove(path);
}

bool ClipLibrary::removeFileButtonTouched()
{
    const int index = m_selectedRow;
    if (index < 0 || index >= numberOfRows())
        return false;
    const QUrl url = m_filteredVideoFileList.at(index);
    if (!moveClipToTrash(url.toLocalFile()))
        return false;
    m_filteredVideoFileList.removeAll(url);
    m_allVideoFileList.removeAll(url);
    m_allEntries.removeIf([&url](const ClipListScan::Entry& entry) { return entry.url == url; });
    reloadRows();
    return true;
}

QUrl ClipLibrary::takeBigVideoURL(int index, bool isVideoSwitched) const
{
    if (index < 0 || index >= numberOfRows())
        return {};
    const QUrl& clip = m_filteredVideoFileList.at(index);
    if (!isVideoSwitched)
        return clip;
    QUrl result = clip;
    if (index > 0 && ClipNaming::isMp4Partner(clip, m_filteredVideoFileList.at(index - 1)))
        result = m_filteredVideoFileList.at(index - 1);
    // The partner after the row wins over the one before it.
    if (index + 1 < numberOfRows()
        && ClipNaming::isMp4Partner(clip, m_filteredVideoFileList.at(index + 1)))
        result = m_filteredVideoFileList.at(index + 1);
    return result;
}

void ClipLibrary::reloadRows()
{
    if (m_selectedRow >= numberOfRows())
        m_selectedRow = -1;
    emit rowsReloaded();
}

void ClipLibrary::setSelectedDirText(const QString& text)
{
    m_selectedDirText = text;
    emit selectedDirTextChanged(text);
}
