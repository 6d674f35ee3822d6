// The clip list: which files of a card are listed, how the filter buttons
// select among them, the order of the rows, deletion and the big-view clip.
#include "CardTreeBuilder.h"

#include "library/ClipLibrary.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

#include <sys/stat.h>

namespace {

class ClipLibraryTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_card = std::make_unique<CardTreeBuilder>(m_dir.filePath("card"));
    }
    QStringList relative(const QList<QUrl>& urls) const
    {
        QStringList result;
        for (const QUrl& url : urls)
            result << QDir(m_card->root()).relativeFilePath(url.toLocalFile());
        return result;
    }
    // Lists the card and returns the rows of the filter.
    QStringList rowsOf(int filter, bool refresh = false)
    {
        if (refresh)
            m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
        m_library.setVideoFileFilter(filter);
        return relative(m_library.filteredVideoFileList());
    }

    QTemporaryDir m_dir;
    std::unique_ptr<CardTreeBuilder> m_card;
    ClipLibrary m_library;
};

TEST_F(ClipLibraryTest, CardFoldersFiltersAndOrder)
{
    // Every recording folder, clips at the top level and in a folder of
    // another name, nested folders, hidden and foreign files.
    m_card->addAll({ "top_A.avi", "TOP_b.Mp4", "top_c.MOV", "notes.txt", "top.mkv", ".hidden.mp4",
        "other/ignored_F.mp4", "DCIM/ignored.avi", "cont_rec/20240101_100000_F.mp4",
        "cont_rec/20240101_100000_R.mp4", "cont_rec/sub/deep/C2.AVI", "cont_rec/.hid/H.mp4",
        "motion_rec/M1.avi", "evt_rec/E1_F.mp4", "evt_rec/E1_R.mp4", "evt_rec/E2.mkv",
        "manual_rec/Man1.mov", "parking_rec/P1.avi", "motion_timelapse_rec/T1.mp4",
        "Saved_Videos/S2.mp4", "Saved_Videos/s1.avi" });
    // Saved videos first, then by name code unit by code unit.
    const QStringList all { "Saved_Videos/S2.mp4", "Saved_Videos/s1.avi",
        "cont_rec/20240101_100000_F.mp4", "cont_rec/20240101_100000_R.mp4",
        "cont_rec/sub/deep/C2.AVI", "evt_rec/E1_F.mp4", "evt_rec/E1_R.mp4", "motion_rec/M1.avi",
        "manual_rec/Man1.mov", "parking_rec/P1.avi", "motion_timelapse_rec/T1.mp4", "TOP_b.Mp4",
        "top_A.avi", "top_c.MOV" };
    EXPECT_EQ(rowsOf(0, true), all);
    // The scan runs top level first, then the seven folders in the camera's order.
    const QStringList order { "cont_rec/", "motion_rec/", "evt_rec/", "manual_rec/", "parking_rec/",
        "motion_timelapse_rec/", "Saved_Videos/" };
    QList<qsizetype> ranks;
    for (const QString& path : relative(m_library.allVideoFileList())) {
        const auto folder = std::find_if(
            order.begin(), order.end(), [&](const QString& name) { return path.startsWith(name); });
        ranks << (path.contains('/') ? folder - order.begin() + 1 : 0);
    }
    EXPECT_TRUE(std::is_sorted(ranks.begin(), ranks.end()));
    EXPECT_EQ(m_library.selectedDirText(), m_card->root());
    EXPECT_EQ(rowsOf(1), all.filter("cont_rec/"));
    EXPECT_EQ(rowsOf(2), (QStringList { "motion_rec/M1.avi", "motion_timelapse_rec/T1.mp4" }));
    EXPECT_EQ(
        rowsOf(3), (QStringList { "evt_rec/E1_F.mp4", "evt_rec/E1_R.mp4", "parking_rec/P1.avi" }));
    EXPECT_EQ(rowsOf(4), QStringList { "manual_rec/Man1.mov" });
    EXPECT_EQ(rowsOf(5), all); // any other index has no folder key: every clip passes
    EXPECT_EQ(rowsOf(-1), all);
    // The filter tests the whole path: a chosen folder named like a card
    // folder lets every clip through that filter.
    CardTreeBuilder named(m_dir.filePath("my_evt_rec_copy"));
    named.addAll({ "top.avi", "cont_rec/c.mp4", "manual_rec/m.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(named.root()));
    EXPECT_EQ(m_library.numberOfRows(), 3);
    m_library.setVideoFileFilter(1);
    EXPECT_EQ(m_library.numberOfRows(), 1);
    m_library.clearVideoFileList();
    EXPECT_TRUE(m_library.allVideoFileList().isEmpty());
    EXPECT_EQ(m_library.selectedDirText(), QString());
}

TEST_F(ClipLibraryTest, OrderNamesAndSavedRows)
{
    m_card->addAll({ "cont_rec/a.mp4", "cont_rec/B.mp4", "evt_rec/A.mp4", "Saved_Videos/z.mp4",
        "Saved_Videos/deep/y.mp4", "cont_rec/clip_R.mp4", "evt_rec/clip_F.mp4", "cont_rec/_x.mp4",
        "cont_rec/10.mp4", "cont_rec/9.mp4" });
    EXPECT_EQ(rowsOf(0, true),
        (QStringList { "Saved_Videos/deep/y.mp4", "Saved_Videos/z.mp4", "cont_rec/10.mp4",
            "cont_rec/9.mp4", "evt_rec/A.mp4", "cont_rec/B.mp4", "cont_rec/_x.mp4",
            "cont_rec/a.mp4", "evt_rec/clip_F.mp4", "cont_rec/clip_R.mp4" }));
    // Both clips below Saved_Videos sort first; only the one directly in it is shown as saved.
    const QList<ClipLibrary::Row> rows = m_library.rows();
    EXPECT_EQ(rows[0].name, "y.mp4");
    EXPECT_FALSE(rows[0].saved);
    EXPECT_TRUE(rows[1].saved);
    EXPECT_FALSE(rows[2].saved);
    EXPECT_EQ(rows[2].path, m_card->path("cont_rec/10.mp4"));
    EXPECT_EQ(rows[9].partner, QUrl::fromLocalFile(m_card->path("cont_rec/clip_F.mp4")).toString());
    // A folder without the card's layout lists only its top level.
    CardTreeBuilder plain(m_dir.filePath("plain"));
    plain.addAll({ "a.mp4", "b.AVI", "x/c.mp4", "cont_rec_old/d.mp4", "Cont_Rec/e.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(plain.root()));
    EXPECT_EQ(m_library.numberOfRows(), 2);
}

TEST_F(ClipLibraryTest, MissingUnreadableAndHostileFolders)
{
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_dir.filePath("absent")));
    EXPECT_EQ(m_library.numberOfRows(), 0);
    EXPECT_FALSE(m_library.canRemoveOrSave());
    EXPECT_TRUE(ClipLibrary::getVideoFilesInDirectoryUrl(QUrl(), true).isEmpty());
    m_card->addAll({ "cont_rec/a.mp4", "cont_rec/locked/b.mp4", "evt_rec/e.mp4",
        "deep/L16/deep.mp4", "manual_rec/-odd 'name' \"x\" %d\nline.mp4" });
    if (geteuid() != 0) {
        // An unreadable folder contributes nothing; the others still list.
        QFile::setPermissions(m_card->path("cont_rec/locked"), QFile::Permissions());
        EXPECT_EQ(rowsOf(0, true).size(), 3);
        QFile::setPermissions(m_card->path("cont_rec/locked"),
            QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QTemporaryDir outside;
    QFile(outside.filePath("outside.mp4")).open(QIODevice::WriteOnly);
    // A pipe named like a clip: never listed, never opened.
    ASSERT_EQ(mkfifo(QFile::encodeName(m_card->path("cont_rec/pipe.mp4")).constData(), 0600), 0);
    // Links that lead out of the card (to the root of everything, to another
    // folder, to a clip elsewhere) and a link cycle.
    ASSERT_TRUE(QFile::link("/", m_card->path("cont_rec/root")));
    ASSERT_TRUE(QFile::link(outside.path(), m_card->path("evt_rec/elsewhere")));
    ASSERT_TRUE(QFile::link(outside.filePath("outside.mp4"), m_card->path("evt_rec/x.mp4")));
    ASSERT_TRUE(QFile::link(m_card->path("cont_rec"), m_card->path("cont_rec/loop")));
    // A fan of links: 16 levels of two links each to the next level, 2^16
    // ways to reach the one clip at the bottom.
    for (int level = 0; level < 16; ++level) {
        const QString here = m_card->path(QStringLiteral("deep/L%1").arg(level));
        const QString next = m_card->path(QStringLiteral("deep/L%1").arg(level + 1));
        ASSERT_TRUE(QDir().mkpath(here));
        ASSERT_TRUE(QFile::link(next, here + "/a") && QFile::link(next, here + "/b"));
    }
    ASSERT_TRUE(QFile::link(m_card->path("deep/L0"), m_card->path("cont_rec/fan")));
    // A link to a clip inside the card is a clip like any other.
    ASSERT_TRUE(QFile::link(m_card->path("cont_rec/a.mp4"), m_card->path("evt_rec/same.mp4")));
    // Quotes, blanks, "%", a leading "-" and a newline are a name like any
    // other; the clip at the end of the fan is listed once, by some way there.
    QStringList rows = rowsOf(0, true);
    ASSERT_EQ(rows.size(), 6) << qPrintable(rows.join(", "));
    EXPECT_TRUE(rows.takeAt(3).endsWith("/deep.mp4"));
    EXPECT_EQ(rows,
        (QStringList { "manual_rec/-odd 'name' \"x\" %d\nline.mp4", "cont_rec/a.mp4",
            "cont_rec/locked/b.mp4", "evt_rec/e.mp4", "evt_rec/same.mp4" }));
    // Scanning cont_rec alone, the fan leads out of the chosen folder.
    rows = relative(ClipLibrary::getVideoFilesInDirectoryUrl(
        QUrl::fromLocalFile(m_card->path("cont_rec")), true));
    rows.sort();
    EXPECT_EQ(rows, (QStringList { "cont_rec/a.mp4", "cont_rec/locked/b.mp4" }));
}

TEST_F(ClipLibraryTest, FilterButtonsSelectAndRowsAreDeletedToTheTrash)
{
    m_card->addAll({ "cont_rec/c.mp4", "evt_rec/e_F.mp4", "evt_rec/e_R.mp4", "parking_rec/p.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    QObject all, continuous, motion, event, manual, stranger;
    m_library.setFilterButtons({ &all, &continuous, &motion, &event, &manual });
    int reloads = 0;
    QObject::connect(&m_library, &ClipLibrary::rowsReloaded, [&reloads] { ++reloads; });
    m_library.videoFileFilterTouched(&event);
    EXPECT_EQ(m_library.videoFileFilterGroupA(), 3);
    // A button of no group changes nothing, but the table is reloaded.
    EXPECT_FALSE(m_library.setVideoFileFilterWithButton(&stranger));
    m_library.videoFileFilterTouched(&stranger);
    EXPECT_EQ(m_library.videoFileFilterGroupA(), 3);
    EXPECT_EQ(reloads, 2);
    EXPECT_EQ(relative(m_library.filteredVideoFileList()),
        (QStringList { "evt_rec/e_F.mp4", "evt_rec/e_R.mp4", "parking_rec/p.mp4" }));

    // The desktop trash (this test binary's own, under Qt's test mode).
    const QString trash
        = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Trash/files";
    const QStringList before = QDir(trash).entryList({ "e_?.mp4*" }, QDir::Files);
    m_library.setSelectedRow(0);
    EXPECT_TRUE(m_library.removeFileButtonTouched());
    EXPECT_FALSE(QFile::exists(m_card->path("evt_rec/e_F.mp4")));
    const QStringList after = QDir(trash).entryList({ "e_?.mp4*" }, QDir::Files);
    EXPECT_EQ(after.size(), before.size() + 1) << "nothing is lost: the clip is in the trash";
    EXPECT_EQ(relative(m_library.allVideoFileList()),
        (QStringList { "cont_rec/c.mp4", "evt_rec/e_R.mp4", "parking_rec/p.mp4" }));
    EXPECT_EQ(m_library.selectedRow(), 0); // the partner stays, now in row 0
    // The file vanished behind the viewer's back: the removal fails, the lists stay.
    ASSERT_TRUE(QFile::remove(m_card->path("evt_rec/e_R.mp4")));
    EXPECT_FALSE(m_library.removeFileButtonTouched());
    EXPECT_EQ(m_library.numberOfRows(), 2);
    m_library.setSelectedRow(1);
    EXPECT_TRUE(m_library.removeFileButtonTouched()); // the last row: nothing selected after
    EXPECT_EQ(m_library.selectedRow(), -1);
    m_library.setSelectedRow(2);
    EXPECT_FALSE(m_library.removeFileButtonTouched());
    for (const QString& name : QDir(trash).entryList({ "e_?.mp4*", "p.mp4*" }, QDir::Files)) {
        if (!before.contains(name)) {
            QFile::remove(trash + "/" + name);
            QFile::remove(trash + "/../info/" + name + ".trashinfo");
        }
    }
}

TEST_F(ClipLibraryTest, BigVideoIsThePartnerNextToTheRowWhenSwapped)
{
    m_card->addAll({ "evt_rec/a_F.mp4", "evt_rec/a_R.mp4", "evt_rec/b_F.mp4", "evt_rec/b_R.mp4",
        "evt_rec/c_F.avi", "evt_rec/c_R.avi", "evt_rec/d.mp4" });
    const QStringList rows = rowsOf(0, true);
    ASSERT_EQ(rows.size(), 7);
    const int swappedTargets[] = { 1, 0, 3, 2, 4, 5, 6 };
    for (int row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(relative({ m_library.takeBigVideoURL(row, false) }), QStringList { rows[row] });
        EXPECT_EQ(relative({ m_library.takeBigVideoURL(row, true) }),
            QStringList { rows[swappedTargets[row]] })
            << row;
    }
    EXPECT_TRUE(m_library.takeBigVideoURL(7, true).isEmpty());
    EXPECT_TRUE(m_library.takeBigVideoURL(-1, false).isEmpty());
}

} // namespace
