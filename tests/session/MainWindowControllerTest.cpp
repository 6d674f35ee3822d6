// The main window's coordinator: card identification on mount and unmount,
// the chosen folder, double-clicks, copies, stills and prints of the clip in
// the large view, and a slow conversion given up.
#include "CardBuilder.h"
#include "DriveClip.h"
#include "FakeVolumeSource.h"
#include "FfmpegClipBuilder.h"
#include "SessionFixture.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include "app/session/MainWindowController.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeWatcher.h"
#include "i18n/LocalizationKeys.h"
#include "library/Utils.h"

#include <QDirIterator>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class MainWindowControllerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        Utils::SetFFMPEGPath(QStringLiteral("/usr/bin/ffmpeg-under-test"));
        m_big.setAutoPrepareDuration(60.0);
        m_small.setAutoPrepareDuration(60.0);
        MainWindowController::Options options;
        options.processRunner = &m_runner;
        options.workingDirectory = m_dir.filePath(QStringLiteral("work"));
        options.alertSink = &m_alerts;
        m_controller = std::make_unique<MainWindowController>(m_big, m_small, m_view, options);
    }
    void TearDown() override
    {
        m_controller.reset();
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        Utils::SetFFMPEGPath(QString());
    }

    // An identified card with a front/rear .mp4 pair and one .avi clip.
    void writeCard()
    {
        m_card.setupCfg(SetupCfgBuilder(432).sizeWord(432).productName("Orlo").bytes());
        CardTreeBuilder tree(m_card.root());
        m_front = tree.add(QStringLiteral("cont_rec/0101_F.mp4"), "front bytes");
        tree.add(QStringLiteral("cont_rec/0101_R.mp4"), "rear bytes");
        tree.add(QStringLiteral("evt_rec/0102.avi"), "avi bytes");
    }

    ClipLibrary& library() { return m_controller->library(); }
    PlaybackSession& session() { return m_controller->session(); }

    QTemporaryDir m_dir;
    CardBuilder m_card;
    QString m_front;
    RecordingProcessRunner m_runner;
    RecordingAlertSink m_alerts;
    ScriptedPlayerView m_big;
    ScriptedPlayerView m_small;
    RecordingSessionView m_view;
    std::unique_ptr<MainWindowController> m_controller;
};

} // namespace

TEST_F(MainWindowControllerTest, OnlyACardComingOrGoingIdentifiesAndTouchesTheList)
{
    writeCard();
    const QByteArray system = "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n";
    const QByteArray cardLine
        = "40 22 8:17 / " + m_card.root().toUtf8() + " rw - vfat /dev/sdb1 rw\n";
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(QStringLiteral("/"), true, false, {}, QStringLiteral("/dev/sda1"));
    ScopedVolumeSource scope(volumes);
    const QString mountInfo = m_dir.filePath(QStringLiteral("mountinfo"));
    TestFiles::write(mountInfo, system);
    VolumeWatcher watcher(mountInfo);
    watcher.rescan();
    m_controller->attachVolumeWatcher(watcher);
    const auto mountTable = [&](const QByteArray& lines) {
        TestFiles::write(mountInfo, system + lines);
        watcher.rescan();
    };
    QSignalSpy identified(m_controller.get(), &MainWindowController::modelInfoChanged);
    // No card (the viewer's window test has its empty state): a folder chosen
    // by hand lists its clips.
    m_controller->showMainWindow();
    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(m_card.root()));
    ASSERT_EQ(library().numberOfRows(), 3);
    m_controller->selectFolderButtonTouched(QUrl()); // the dialog cancelled: nothing changes
    EXPECT_EQ(library().numberOfRows(), 3);
    m_controller->updateModelInfo();
    EXPECT_EQ(library().numberOfRows(), 0);
    EXPECT_TRUE(library().selectedDirText().isEmpty());

    // The card's mount identifies it by its setup.cfg.
    volumes->add(m_card.root(), true, true, {}, QStringLiteral("/dev/sdb1"));
    mountTable(cardLine);
    EXPECT_EQ(m_controller->modelText(), QStringLiteral("Orlo"));
    EXPECT_TRUE(m_controller->isSettingsButtonEnabled());
    EXPECT_EQ(identified.last(), (QVariantList { QStringLiteral("Orlo"), true }));
    ASSERT_EQ(library().numberOfRows(), 3);
    EXPECT_EQ(library().selectedRow(), 0);
    m_controller->videoFileListDoubleClicked(1);
    settle();
    const QUrl playing = session().currentVideoUrl();
    ASSERT_EQ(playing, library().row(1).url);
    identified.clear();
    // A bind mount of the card's device comes and goes without a word (the
    // watcher's own test leaves out shares and containers).
    volumes->add(QStringLiteral("/srv/card-bind"), true, true, {}, QStringLiteral("/dev/sdb1"));
    mountTable(cardLine + "52 22 8:17 / /srv/card-bind rw - vfat /dev/sdb1 rw\n");
    volumes->remove(QStringLiteral("/srv/card-bind"));
    mountTable(cardLine);
    EXPECT_TRUE(identified.isEmpty());
    EXPECT_EQ(library().selectedRow(), 1);
    EXPECT_EQ(session().currentVideoUrl(), playing);

    // A folder chosen by hand is not emptied when the card goes; the card's
    // return lists its clips again.
    CardTreeBuilder other(m_dir.filePath(QStringLiteral("other")));
    other.add(QStringLiteral("mine.mp4"), "bytes");
    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(other.root()));
    volumes->remove(m_card.root());
    mountTable({});
    EXPECT_EQ(identified.size(), 1) << "the card's removal re-identifies";
    EXPECT_FALSE(m_controller->isSettingsButtonEnabled());
    EXPECT_EQ(library().numberOfRows(), 1);
    volumes->add(m_card.root(), true, true, {}, QStringLiteral("/dev/sdb1"));
    mountTable(cardLine);
    EXPECT_EQ(library().numberOfRows(), 3);
    EXPECT_TRUE(m_controller->isSettingsButtonEnabled());
}

TEST_F(MainWindowControllerTest, CopiesStillsAndPrintsOfTheClipInTheLargeView)
{
    writeCard();
    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(m_card.root()));
    const QString still = m_dir.filePath(QStringLiteral("still.png"));
    EXPECT_FALSE(m_controller->saveSnapshot(still)); // no clip, no picture
    EXPECT_TRUE(m_controller->printButtonTouched().isNull());
    library().setSelectedRow(-1);
    EXPECT_TRUE(m_controller->saveFileSourceUrl().isEmpty());
    EXPECT_FALSE(m_controller->saveFileButtonTouched(m_dir.filePath(QStringLiteral("none.mp4"))));
    m_controller->videoFileListDoubleClicked(1);
    m_controller->videoFileListDoubleClicked(7); // no such row
    settle();
    EXPECT_EQ(session().currentVideoUrl(), library().row(1).url);
    m_controller->videoFileListDoubleClicked(0);
    settle();
    EXPECT_FALSE(session().isVideoPaused());
    EXPECT_EQ(m_controller->saveFileSourceUrl(), QUrl::fromLocalFile(m_front));

    session().toggleVideoSwithButtonTouched(); // the rear camera is now large
    const QString copy = m_dir.filePath(QStringLiteral("copy.mp4"));
    EXPECT_TRUE(m_controller->saveFileButtonTouched(copy));
    EXPECT_EQ(TestFiles::read(copy), QByteArray("rear bytes"));
    session().toggleVideoSwithButtonTouched(); // an overwrite the user confirmed
    EXPECT_TRUE(m_controller->saveFileButtonTouched(copy));
    EXPECT_EQ(TestFiles::read(copy), QByteArray("front bytes"));
    // In the background: the event loop goes on, the outcome comes back.
    QSignalSpy saved(m_controller.get(), &MainWindowController::fileSaved);
    m_controller->saveFileInBackground(m_dir.filePath(QStringLiteral("later.mp4")));
    ASSERT_TRUE(saved.wait(5000));
    EXPECT_EQ(saved.at(0).at(0), true);
    EXPECT_EQ(TestFiles::read(m_dir.filePath(QStringLiteral("later.mp4"))), "front bytes");

    QImage picture(8, 6, QImage::Format_RGB32);
    picture.fill(Qt::red);
    m_big.setSnapshotImage(picture);
    m_big.setCurrentTime(2.0);
    settle(); // the player lands there later
    EXPECT_EQ(m_controller->snapshotButtonTouched(), QStringLiteral("0101_F_2000.png"));
    EXPECT_TRUE(session().isVideoPaused());
    ASSERT_TRUE(m_controller->saveSnapshot(still)); // the viewer's test reads a real still
    session().playVideo();
    EXPECT_EQ(m_controller->printButtonTouched().size(), QSize(8, 6));
    EXPECT_TRUE(session().isVideoPaused());

    // Failures are said once each; the old file stays.
    EXPECT_FALSE(m_controller->saveFileButtonTouched(m_dir.filePath("no-such-folder/copy.mp4")));
    EXPECT_FALSE(m_controller->saveSnapshot(m_dir.filePath(QStringLiteral("missing/dir/x.png"))));
    const QList<AlertRequest>& said = m_alerts.requests();
    ASSERT_EQ(said.size(), 3);
    EXPECT_EQ(said[0].titleKey, QString::fromUtf8(LocalizationKeys::kSaveStill));
    EXPECT_EQ(said[1].messageKey, QString::fromUtf8(LocalizationKeys::kSaveFailed));
    EXPECT_EQ(said[2].titleKey, QString::fromUtf8(LocalizationKeys::kSaveStill));
    EXPECT_EQ(TestFiles::read(copy), QByteArray("front bytes"));
}

// A clip that takes long to prepare: the window shows it busy after a moment,
// the event loop runs on meanwhile, and the user may give up on it.
TEST(MainWindowControllerSlowClipTest, PreparationRunsAsideAndCanBeCancelled)
{
    if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
        GTEST_SKIP() << "ffmpeg is not installed";
    QTemporaryDir dir;
    const QString slow = dir.filePath(QStringLiteral("slow-ffmpeg"));
    TestFiles::write(slow, "#!/bin/sh\nexec ffmpeg -re \"$@\"\n");
    QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    CardTreeBuilder card(dir.filePath(QStringLiteral("card")));
    const QString clip = card.path(QStringLiteral("cont_rec/slow_F.mp4"));
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(clip, DriveClip::telemetrySrt(20, 0)));
    Utils::SetFFMPEGPath(slow);
    const QString work = dir.filePath(QStringLiteral("work"));
    ScriptedPlayerView big, small;
    RecordingSessionView view;
    RecordingAlertSink alerts;
    MainWindowController::Options options;
    options.workingDirectory = work; // the real runner
    options.alertSink = &alerts;
    auto controller = std::make_unique<MainWindowController>(big, small, view, options);
    controller->session().setPreparesInBackground(true);
    controller->selectFolderButtonTouched(QUrl::fromLocalFile(card.root()));
    const auto cacheFiles = [&] {
        QStringList files;
        QDirIterator it(work, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
            files << it.next();
        return files;
    };

    controller->videoFileListDoubleClicked(0);
    EXPECT_TRUE(controller->session().isPreparing());
    // Preparing runs aside (the call has returned); the window shows it busy.
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return view.events.contains(QStringLiteral("busy")); }, 2000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !cacheFiles().isEmpty(); }, 15000));

    // Cancel: nothing plays, nothing is said, ffmpeg's partial file goes.
    controller->session().cancelPreparation();
    EXPECT_EQ(view.events.last(), QStringLiteral("idle"));
    EXPECT_FALSE(controller->session().isPreparing());
    ASSERT_TRUE(QTest::qWaitFor([&] { return cacheFiles().isEmpty(); }, 1000))
        << qPrintable(cacheFiles().join(u' '));
    EXPECT_TRUE(alerts.requests().isEmpty());
    EXPECT_TRUE(big.fileName().isEmpty());

    Utils::SetFFMPEGPath(QString());
}
