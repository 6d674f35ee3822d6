// The clip list: which files of a card are listed, how the filter buttons
// select among them, the order of the rows, deletion and the big-view clip.
#include "CardTreeBuilder.h"

#include "library/ClipLibrary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// A card with every recording folder, clips at the top level and in a folder
// of another name, nested folders, hidden and foreign files.
const QStringList kCardFiles {
    "top_A.avi",
    "TOP_b.Mp4",
    "top_c.MOV",
    "notes.txt",
    "top.mkv",
    ".hidden.mp4",
    "other/ignored_F.mp4",
    "DCIM/ignored.avi",
    "cont_rec/20240101_100000_F.mp4",
    "cont_rec/20240101_100000_R.mp4",
    "cont_rec/sub/deep/C2.AVI",
    "cont_rec/.hid/H.mp4",
    "motion_rec/M1.avi",
    "evt_rec/E1_F.mp4",
    "evt_rec/E1_R.mp4",
    "evt_rec/E2.mkv",
    "manual_rec/Man1.mov",
    "parking_rec/P1.avi",
    "motion_timelapse_rec/T1.mp4",
    "Saved_Videos/S2.mp4",
    "Saved_Videos/s1.avi",
};

// Rows of filter "all", in displayed order.
const QStringList kAllRows {
    "Saved_Videos/S2.mp4",
    "Saved_Videos/s1.avi",
    "cont_rec/20240101_100000_F.mp4",
    "cont_rec/20240101_100000_R.mp4",
    "cont_rec/sub/deep/C2.AVI",
    "evt_rec/E1_F.mp4",
    "evt_rec/E1_R.mp4",
    "motion_rec/M1.avi",
    "manual_rec/Man1.mov",
    "parking_rec/P1.avi",
    "motion_timelapse_rec/T1.mp4",
    "TOP_b.Mp4",
    "top_A.avi",
    "top_c.MOV",
};

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

    QStringList rowsOf(int filter)
    {
        m_library.setVideoFileFilter(filter);
        return relative(m_library.filteredVideoFileList());
    }

    QTemporaryDir m_dir;
    std::unique_ptr<CardTreeBuilder> m_card;
    ClipLibrary m_library;
};

TEST_F(ClipLibraryTest, ListsTopLevelAndCardFoldersInFolderOrder)
{
    m_card->addAll(kCardFiles);
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    const QStringList all = relative(m_library.allVideoFileList());
    QStringList expected = kAllRows;
    QStringList sortedAll = all;
    expected.sort();
    sortedAll.sort();
    EXPECT_EQ(sortedAll, expected);

    // The scan runs top level first, then the seven folders in the camera's order.
    const QStringList order { "cont_rec/", "motion_rec/", "evt_rec/", "manual_rec/", "parking_rec/",
        "motion_timelapse_rec/", "Saved_Videos/" };
    int last = -1;
    for (const QString& path : all) {
        int rank = -1;
        for (int i = 0; i < order.size(); ++i) {
            if (path.startsWith(order[i]))
                rank = i;
        }
        EXPECT_GE(rank, last) << qPrintable(path);
        last = rank;
    }
    EXPECT_EQ(m_library.selectedDirText(), m_card->root());
    EXPECT_EQ(m_library.selectedRow(), 0);
    EXPECT_TRUE(m_library.canRemoveOrSave());
}

TEST_F(ClipLibraryTest, FilterButtonsSelectFoldersByPathSubstring)
{
    m_card->addAll(kCardFiles);
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    EXPECT_EQ(rowsOf(0), kAllRows);
    EXPECT_EQ(rowsOf(1),
        (QStringList { "cont_rec/20240101_100000_F.mp4", "cont_rec/20240101_100000_R.mp4",
            "cont_rec/sub/deep/C2.AVI" }));
    EXPECT_EQ(rowsOf(2), (QStringList { "motion_rec/M1.avi", "motion_timelapse_rec/T1.mp4" }));
    EXPECT_EQ(
        rowsOf(3), (QStringList { "evt_rec/E1_F.mp4", "evt_rec/E1_R.mp4", "parking_rec/P1.avi" }));
    EXPECT_EQ(rowsOf(4), (QStringList { "manual_rec/Man1.mov" }));
    // Any other index has no folder key: every clip passes.
    EXPECT_EQ(rowsOf(7), kAllRows);
    EXPECT_EQ(rowsOf(-1), kAllRows);
}

TEST_F(ClipLibraryTest, ChosenFolderPathTakesPartInTheFilter)
{
    // The filter tests the whole path, so a chosen folder named like a card
    // folder lets every clip through that filter.
    CardTreeBuilder card(m_dir.filePath("my_evt_rec_copy"));
    card.addAll({ "top.avi", "cont_rec/c.mp4", "manual_rec/m.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(card.root()));
    m_library.setVideoFileFilter(3);
    EXPECT_EQ(m_library.numberOfRows(), 3);
    m_library.setVideoFileFilter(1);
    EXPECT_EQ(m_library.numberOfRows(), 1);
}

TEST_F(ClipLibraryTest, FolderWithoutCardLayoutListsOnlyItsTopLevel)
{
    m_card->addAll({ "a.mp4", "b.AVI", "x/c.mp4", "cont_rec_old/d.mp4", "Cont_Rec/e.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    EXPECT_EQ(rowsOf(0), (QStringList { "a.mp4", "b.AVI" }));
}

TEST_F(ClipLibraryTest, OrderPutsSavedVideosFirstThenPlainNameOrder)
{
    m_card->addAll({ "cont_rec/a.mp4", "cont_rec/B.mp4", "evt_rec/A.mp4", "Saved_Videos/z.mp4",
        "cont_rec/clip_R.mp4", "evt_rec/clip_F.mp4", "cont_rec/_x.mp4", "cont_rec/10.mp4",
        "cont_rec/9.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    EXPECT_EQ(rowsOf(0),
        (QStringList { "Saved_Videos/z.mp4", "cont_rec/10.mp4", "cont_rec/9.mp4", "evt_rec/A.mp4",
            "cont_rec/B.mp4", "cont_rec/_x.mp4", "cont_rec/a.mp4", "evt_rec/clip_F.mp4",
            "cont_rec/clip_R.mp4" }));
}

TEST_F(ClipLibraryTest, SavedVideosOnlyInThatFolderAreShownAsSaved)
{
    m_card->addAll({ "Saved_Videos/a.mp4", "Saved_Videos/deep/b.mp4", "cont_rec/c.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    ASSERT_EQ(m_library.numberOfRows(), 3);
    // Both clips below Saved_Videos sort first; only the one directly in it is shown as saved.
    const QList<ClipLibrary::Row> rows = m_library.rows();
    EXPECT_EQ(rows[0].name, "a.mp4");
    EXPECT_TRUE(rows[0].saved);
    EXPECT_EQ(rows[1].name, "b.mp4");
    EXPECT_FALSE(rows[1].saved);
    EXPECT_EQ(rows[2].name, "c.mp4");
    EXPECT_FALSE(rows[2].saved);
    EXPECT_EQ(rows[2].path, m_card->path("cont_rec/c.mp4"));
}

TEST_F(ClipLibraryTest, MissingOrUnreadableFoldersGiveNoClips)
{
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_dir.filePath("absent")));
    EXPECT_EQ(m_library.numberOfRows(), 0);
    EXPECT_FALSE(m_library.canRemoveOrSave());
    EXPECT_TRUE(ClipLibrary::getVideoFilesInDirectoryUrl(QUrl(), true).isEmpty());

    m_card->addAll({ "a.mp4", "cont_rec/locked/b.mp4", "evt_rec/c.mp4" });
    if (geteuid() != 0) {
        // An unreadable folder contributes nothing; the others still list.
        QFile::setPermissions(m_card->path("cont_rec/locked"), QFile::Permissions());
        m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
        EXPECT_EQ(rowsOf(0), (QStringList { "a.mp4", "evt_rec/c.mp4" }));
        QFile::setPermissions(m_card->path("cont_rec/locked"),
            QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    // A link cycle inside a card folder neither hangs nor repeats clips.
    ASSERT_TRUE(QFile::link(m_card->path("cont_rec"), m_card->path("cont_rec/loop")));
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    EXPECT_EQ(rowsOf(0), (QStringList { "a.mp4", "cont_rec/locked/b.mp4", "evt_rec/c.mp4" }));
}

TEST_F(ClipLibraryTest, HostileFoldersListRegularFilesInsideTheFolderOnce)
{
    m_card->addAll({ "cont_rec/a.mp4", "evt_rec/e.mp4", "deep/L16/deep.mp4",
        "manual_rec/-odd 'name' \"x\" %d\nline.mp4" });
    QTemporaryDir outside;
    ASSERT_TRUE(QDir().mkpath(outside.filePath("clips")));
    QFile(outside.filePath("clips/outside.mp4")).open(QIODevice::WriteOnly);
    // A pipe and a socket named like clips: never listed, never opened.
    ASSERT_EQ(mkfifo(QFile::encodeName(m_card->path("cont_rec/pipe.mp4")).constData(), 0600), 0);
    const int sock = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray socketPath = QFile::encodeName(m_card->path("cont_rec/socket.mp4"));
    ASSERT_LT(size_t(socketPath.size()), sizeof(address.sun_path));
    std::memcpy(address.sun_path, socketPath.constData(), size_t(socketPath.size()));
    ASSERT_EQ(::bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    // Links that lead out of the card: to the root of everything, to another
    // folder, to a clip elsewhere.
    ASSERT_TRUE(QFile::link("/", m_card->path("cont_rec/root")));
    ASSERT_TRUE(QFile::link(outside.filePath("clips"), m_card->path("evt_rec/elsewhere")));
    ASSERT_TRUE(QFile::link(outside.filePath("clips/outside.mp4"), m_card->path("evt_rec/x.mp4")));
    // A fan of links: 16 levels of two links each to the next level, 2^16
    // ways to reach the one clip at the bottom.
    for (int level = 0; level < 16; ++level) {
        const QString here = m_card->path(QStringLiteral("deep/L%1").arg(level));
        const QString next = m_card->path(QStringLiteral("deep/L%1").arg(level + 1));
        ASSERT_TRUE(QDir().mkpath(here));
        ASSERT_TRUE(QFile::link(next, here + "/a"));
        ASSERT_TRUE(QFile::link(next, here + "/b"));
    }
    ASSERT_TRUE(QFile::link(m_card->path("deep/L0"), m_card->path("cont_rec/fan")));
    // A link to a clip inside the card is a clip like any other.
    ASSERT_TRUE(QFile::link(m_card->path("cont_rec/a.mp4"), m_card->path("evt_rec/same.mp4")));

    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    QStringList rows = rowsOf(0);
    ASSERT_EQ(rows.size(), 5) << qPrintable(rows.join(", "));
    // Quotes, blanks, "%", a leading "-" and a newline are a name like any other.
    EXPECT_TRUE(rows.contains("manual_rec/-odd 'name' \"x\" %d\nline.mp4"));
    EXPECT_EQ(rows.filter("deep.mp4").size(), 1);
    EXPECT_TRUE(rows.contains("cont_rec/a.mp4"));
    EXPECT_TRUE(rows.contains("evt_rec/e.mp4"));
    EXPECT_TRUE(rows.contains("evt_rec/same.mp4"));
    // Scanning cont_rec alone, the fan leads out of the chosen folder.
    EXPECT_EQ(relative(ClipLibrary::getVideoFilesInDirectoryUrl(
                  QUrl::fromLocalFile(m_card->path("cont_rec")), true)),
        QStringList { "cont_rec/a.mp4" });
    ::close(sock);
}

TEST_F(ClipLibraryTest, FilterButtonsOfGroupASetTheIndex)
{
    m_card->addAll({ "cont_rec/c.mp4", "evt_rec/e.mp4", "parking_rec/p.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    QObject all, continuous, motion, event, manual, stranger;
    m_library.setFilterButtons({ &all, &continuous, &motion, &event, &manual });
    int reloads = 0;
    QObject::connect(&m_library, &ClipLibrary::rowsReloaded, [&reloads] { ++reloads; });

    m_library.videoFileFilterTouched(&event);
    EXPECT_EQ(m_library.videoFileFilterGroupA(), 3);
    EXPECT_EQ(relative(m_library.filteredVideoFileList()),
        (QStringList { "evt_rec/e.mp4", "parking_rec/p.mp4" }));
    // A button of no group changes nothing but the table is reloaded.
    EXPECT_FALSE(m_library.setVideoFileFilterWithButton(&stranger));
    m_library.videoFileFilterTouched(&stranger);
    EXPECT_EQ(m_library.videoFileFilterGroupA(), 3);
    EXPECT_EQ(m_library.videoFileFilterGroupB(), 0);
    EXPECT_EQ(reloads, 2);
    m_library.videoFileFilterTouched(&all);
    EXPECT_EQ(m_library.numberOfRows(), 3);
}

TEST_F(ClipLibraryTest, DeletingMovesTheFileToTheTrashAndDropsTheRowOnly)
{
    // The desktop trash (this test binary's own, under Qt's test mode).
    const QString trash
        = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Trash/files";
    const auto trashed = [&trash](const QStringList& before) {
        QStringList added = QDir(trash).entryList({ "e_?.mp4*" }, QDir::Files);
        for (const QString& old : before)
            added.removeOne(old);
        return added;
    };
    const QStringList before = trashed({});
    const QString front = m_card->add("evt_rec/e_F.mp4");
    const QString rear = m_card->add("evt_rec/e_R.mp4");
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    m_library.setSelectedRow(0);
    EXPECT_TRUE(m_library.removeFileButtonTouched());
    EXPECT_FALSE(QFile::exists(front));
    ASSERT_EQ(trashed(before).size(), 1) << "nothing is lost: the clip is in the trash";
    EXPECT_TRUE(QFile::exists(rear)); // the partner stays
    EXPECT_EQ(relative(m_library.allVideoFileList()), (QStringList { "evt_rec/e_R.mp4" }));
    EXPECT_EQ(m_library.selectedRow(), 0);

    // The file vanished behind the viewer's back: the removal fails, the lists stay.
    m_library.setSelectedRow(0);
    ASSERT_TRUE(QFile::remove(rear));
    EXPECT_FALSE(m_library.removeFileButtonTouched());
    EXPECT_EQ(m_library.numberOfRows(), 1);

    // Deleting the only row leaves an empty table with delete and save disabled.
    m_card->add("evt_rec/e_R.mp4");
    EXPECT_TRUE(m_library.removeFileButtonTouched());
    EXPECT_EQ(m_library.numberOfRows(), 0);
    EXPECT_FALSE(m_library.canRemoveOrSave());
    m_library.setSelectedRow(0);
    EXPECT_FALSE(m_library.removeFileButtonTouched());
    for (const QString& name : trashed(before)) {
        QFile::remove(trash + "/" + name);
        QFile::remove(trash + "/../info/" + name + ".trashinfo");
    }
}

TEST_F(ClipLibraryTest, BigVideoIsThePartnerNextToTheRowWhenSwapped)
{
    m_card->addAll({ "evt_rec/a_F.mp4", "evt_rec/a_R.mp4", "evt_rec/b_F.mp4", "evt_rec/b_R.mp4",
        "evt_rec/c_F.avi", "evt_rec/c_R.avi", "evt_rec/d.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    const QStringList rows = relative(m_library.filteredVideoFileList());
    ASSERT_EQ(rows,
        (QStringList { "evt_rec/a_F.mp4", "evt_rec/a_R.mp4", "evt_rec/b_F.mp4", "evt_rec/b_R.mp4",
            "evt_rec/c_F.avi", "evt_rec/c_R.avi", "evt_rec/d.mp4" }));
    auto big = [this](int row, bool switched) {
        const QUrl url = m_library.takeBigVideoURL(row, switched);
        return url.isEmpty() ? QString() : QDir(m_card->root()).relativeFilePath(url.toLocalFile());
    };
    const QList<int> swappedTargets { 1, 0, 3, 2, 4, 5, 6 };
    for (int row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(big(row, false), rows[row]) << row;
        EXPECT_EQ(big(row, true), rows[swappedTargets[row]]) << row;
    }
    EXPECT_EQ(big(7, true), QString());
    EXPECT_EQ(big(-1, false), QString());
}

TEST_F(ClipLibraryTest, ClearingEmptiesTheList)
{
    m_card->addAll({ "a.mp4" });
    m_library.refreshVideoFileListWithURL(QUrl::fromLocalFile(m_card->root()));
    ASSERT_EQ(m_library.numberOfRows(), 1);
    m_library.clearVideoFileList();
    EXPECT_EQ(m_library.numberOfRows(), 0);
    EXPECT_TRUE(m_library.allVideoFileList().isEmpty());
    EXPECT_EQ(m_library.selectedDirText(), QString());
}

} // namespace
