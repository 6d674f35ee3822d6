// The main window's coordinator: card identification and its model text,
// re-identification on mount and unmount, the chosen folder, double-clicks,
// and copies, stills and prints of the clip in the large view.
#include "CardBuilder.h"
#include "CardTreeBuilder.h"
#include "FakeVolumeSource.h"
#include "FfmpegClipBuilder.h"
#include "RecordingAlertSink.h"
#include "RecordingProcessRunner.h"
#include "RecordingSessionView.h"
#include "ScriptedPlayerView.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeWatcher.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerLanguage.h"
#include "library/ClipLibrary.h"
#include "library/Utils.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

QByteArray setupNamed(const QByteArray& name)
{
    return SetupCfgBuilder(432).sizeWord(432).productName(name).bytes();
}

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
        m_card.setupCfg(setupNamed("Orlo"));
        CardTreeBuilder tree(m_card.root());
        m_front = tree.add(QStringLiteral("cont_rec/0101_F.mp4"), "front bytes");
        m_rear = tree.add(QStringLiteral("cont_rec/0101_R.mp4"), "rear bytes");
        tree.add(QStringLiteral("evt_rec/0102.avi"), "avi bytes");
    }

    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

    ClipLibrary& library() { return m_controller->library(); }
    PlaybackSession& session() { return m_controller->session(); }

    QTemporaryDir m_dir;
    CardBuilder m_card;
    QString m_front;
    QString m_rear;
    RecordingProcessRunner m_runner;
    RecordingAlertSink m_alerts;
    ScriptedPlayerView m_big;
    ScriptedPlayerView m_small;
    RecordingSessionView m_view;
    std::unique_ptr<MainWindowController> m_controller;
};

} // namespace

TEST_F(MainWindowControllerTest, IdentifiedCardListsItsClipsAndEnablesSettings)
{
    writeCard();
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(m_card.root(), true, true);
    ScopedVolumeSource scope(volumes);
    QSignalSpy spy(m_controller.get(), &MainWindowController::modelInfoChanged);

    m_controller->showMainWindow();
    const qint64 type = TolmSettingManager::SharedTolmSettingManager()->modelType();
    ASSERT_GE(type, 0);
    const QString name = TolmSettingManager::modelNameList().at(type);
    EXPECT_EQ(m_controller->modelText(), name);
    EXPECT_TRUE(m_controller->isSettingsButtonEnabled());
    ASSERT_FALSE(spy.isEmpty());
    EXPECT_EQ(spy.last().at(0).toString(), name);
    EXPECT_TRUE(spy.last().at(1).toBool());
    EXPECT_EQ(library().numberOfRows(), 3);
    EXPECT_EQ(library().selectedRow(), 0);
    EXPECT_EQ(library().videoFileFilterGroupA(), 0);
    // The window starts with the controls off and nothing playing.
    EXPECT_FALSE(m_view.videoControlsEnabled);
    EXPECT_EQ(m_view.muteImage, QStringLiteral("volume1"));
    EXPECT_EQ(m_view.speed, 0);
    EXPECT_TRUE(session().currentVideoUrl().isEmpty());
}

TEST_F(MainWindowControllerTest, UnknownCardEmptiesTheListUntilACardIsMounted)
{
    writeCard();
    auto volumes = std::make_shared<FakeVolumeSource>();
    ScopedVolumeSource scope(volumes);
    const QString mountInfo = m_dir.filePath(QStringLiteral("mountinfo"));
    TestFiles::write(mountInfo, "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n");
    VolumeWatcher watcher(mountInfo);
    watcher.rescan();
    m_controller->attachVolumeWatcher(watcher);

    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(m_card.root()));
    ASSERT_EQ(library().numberOfRows(), 3); // a folder chosen by hand

    m_controller->updateModelInfo();
    EXPECT_EQ(library().numberOfRows(), 0);
    EXPECT_TRUE(library().selectedDirText().isEmpty());
    EXPECT_FALSE(m_controller->isSettingsButtonEnabled());
    EXPECT_EQ(m_controller->modelText(),
        TavroLanguages::SharedTavroLanguages().localized(LocalizationKeys::kUnknown));

    // The card is inserted: the watcher's mount re-identifies it.
    volumes->add(m_card.root(), true, true);
    TestFiles::write(mountInfo,
        "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "40 22 8:17 / "
            + m_card.root().toUtf8() + " rw - vfat /dev/sdb1 rw\n");
    watcher.rescan();
    EXPECT_EQ(library().numberOfRows(), 3);
    EXPECT_TRUE(m_controller->isSettingsButtonEnabled());

    // Cancelling the folder dialog changes nothing.
    m_controller->selectFolderButtonTouched(QUrl());
    EXPECT_EQ(library().numberOfRows(), 3);
}

TEST_F(MainWindowControllerTest, OnlyACardComingOrGoingTouchesTheListAndThePlayingClip)
{
    writeCard();
    const QString cardDevice = QStringLiteral("/dev/sdb1");
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(QStringLiteral("/"), true, false, {}, QStringLiteral("/dev/sda1"));
    volumes->add(m_card.root(), true, true, {}, cardDevice);
    ScopedVolumeSource scope(volumes);
    const QString mountInfo = m_dir.filePath(QStringLiteral("mountinfo"));
    QByteArray table = "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                       "40 22 8:17 / "
        + m_card.root().toUtf8() + " rw - vfat /dev/sdb1 rw\n";
    TestFiles::write(mountInfo, table);
    VolumeWatcher watcher(mountInfo);
    m_controller->attachVolumeWatcher(watcher);
    m_controller->updateModelInfo();
    ASSERT_EQ(library().numberOfRows(), 3);
    m_controller->videoFileListDoubleClicked(1);
    settle();
    const QUrl playing = session().currentVideoUrl();
    ASSERT_FALSE(playing.isEmpty());
    QSignalSpy identified(m_controller.get(), &MainWindowController::modelInfoChanged);

    const auto mount = [&](const QByteArray& line) {
        table += line;
        TestFiles::write(mountInfo, table);
        watcher.rescan();
    };
    const auto unmount = [&](const QByteArray& line) {
        table.replace(line, "");
        TestFiles::write(mountInfo, table);
        watcher.rescan();
    };
    const auto untouched = [&](const char* what) {
        EXPECT_TRUE(identified.isEmpty()) << what;
        EXPECT_EQ(library().numberOfRows(), 3) << what;
        EXPECT_EQ(library().selectedRow(), 1) << what;
        EXPECT_EQ(session().currentVideoUrl(), playing) << what;
    };

    // A network share, a container's file system, a bind mount of the card.
    const QByteArray share = "50 22 0:50 / /mnt/share rw - nfs4 server:/x rw\n";
    volumes->add(QStringLiteral("/mnt/share"), false, false, {}, QStringLiteral("server:/x"));
    mount(share);
    untouched("share mounted");
    const QByteArray overlay = "51 22 0:51 / /var/lib/containers/o rw - overlay overlay rw\n";
    volumes->add(
        QStringLiteral("/var/lib/containers/o"), true, false, {}, QStringLiteral("overlay"));
    mount(overlay);
    untouched("container mounted");
    const QByteArray bind = "52 22 8:17 / /srv/card-bind rw - vfat /dev/sdb1 rw\n";
    volumes->add(QStringLiteral("/srv/card-bind"), true, true, {}, cardDevice);
    mount(bind);
    untouched("bind mount of the card");
    volumes->remove(QStringLiteral("/srv/card-bind"));
    unmount(bind);
    untouched("bind mount gone");
    volumes->remove(QStringLiteral("/mnt/share"));
    unmount(share);
    untouched("share gone");

    // A folder chosen by hand is not emptied when the card goes.
    CardTreeBuilder other(m_dir.filePath(QStringLiteral("other")));
    other.add(QStringLiteral("mine.mp4"), "bytes");
    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(other.root()));
    ASSERT_EQ(library().numberOfRows(), 1);
    volumes->remove(m_card.root());
    unmount("40 22 8:17 / " + m_card.root().toUtf8() + " rw - vfat /dev/sdb1 rw\n");
    EXPECT_EQ(identified.size(), 1) << "the card's removal re-identifies";
    EXPECT_FALSE(m_controller->isSettingsButtonEnabled());
    EXPECT_EQ(library().numberOfRows(), 1);

    // The card comes back: its clips are listed again.
    volumes->add(m_card.root(), true, true, {}, cardDevice);
    mount("40 22 8:17 / " + m_card.root().toUtf8() + " rw - vfat /dev/sdb1 rw\n");
    EXPECT_EQ(library().numberOfRows(), 3);
    EXPECT_TRUE(m_controller->isSettingsButtonEnabled());
}

TEST_F(MainWindowControllerTest, DoubleClickSelectsAndPlaysTheRow)
{
    writeCard();
    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(m_card.root()));
    ASSERT_EQ(library().numberOfRows(), 3);
    m_controller->videoFileListDoubleClicked(1);
    settle();
    EXPECT_EQ(library().selectedRow(), 1);
    EXPECT_EQ(session().currentVideoUrl(), library().row(1).url);
    EXPECT_FALSE(session().isVideoPaused());
    m_controller->videoFileListDoubleClicked(7); // no such row
    EXPECT_EQ(session().currentVideoUrl(), library().row(1).url);
}

TEST_F(MainWindowControllerTest, SaveACopyOfTheClipInTheLargeView)
{
    writeCard();
    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(m_card.root()));
    int row = -1;
    for (int i = 0; i < library().numberOfRows(); ++i)
        if (library().row(i).path == m_front)
            row = i;
    ASSERT_GE(row, 0);
    m_controller->videoFileListDoubleClicked(row);
    settle();
    EXPECT_EQ(m_controller->saveFileSourceUrl(), QUrl::fromLocalFile(m_front));

    session().toggleVideoSwithButtonTouched(); // the rear camera is now large
    EXPECT_EQ(m_controller->saveFileSourceUrl(), QUrl::fromLocalFile(m_rear));
    const QString copy = m_dir.filePath(QStringLiteral("copy.mp4"));
    EXPECT_TRUE(m_controller->saveFileButtonTouched(copy));
    EXPECT_EQ(TestFiles::read(copy), QByteArray("rear bytes"));

    // An overwrite the user confirmed replaces the file.
    session().toggleVideoSwithButtonTouched();
    EXPECT_TRUE(m_controller->saveFileButtonTouched(copy));
    EXPECT_EQ(TestFiles::read(copy), QByteArray("front bytes"));
    EXPECT_TRUE(m_alerts.requests().isEmpty());
    // A copy that cannot be written says so, and the old file stays.
    EXPECT_FALSE(m_controller->saveFileButtonTouched(m_dir.filePath("no-such-folder/copy.mp4")));
    ASSERT_EQ(m_alerts.requests().size(), 1);
    EXPECT_EQ(
        m_alerts.requests().at(0).messageKey, QString::fromUtf8(LocalizationKeys::kSaveFailed));
    // In the background: the event loop goes on, the outcome comes back.
    QSignalSpy saved(m_controller.get(), &MainWindowController::fileSaved);
    const QString later = m_dir.filePath(QStringLiteral("later.mp4"));
    m_controller->saveFileInBackground(later);
    ASSERT_TRUE(saved.wait(5000));
    EXPECT_TRUE(saved.at(0).at(0).toBool());
    EXPECT_EQ(TestFiles::read(later), QByteArray("front bytes"));

    library().setSelectedRow(-1);
    EXPECT_TRUE(m_controller->saveFileSourceUrl().isEmpty());
    EXPECT_FALSE(m_controller->saveFileButtonTouched(m_dir.filePath(QStringLiteral("none.mp4"))));
}

TEST_F(MainWindowControllerTest, StillImageAsPngAndForPrinting)
{
    writeCard();
    m_controller->selectFolderButtonTouched(QUrl::fromLocalFile(m_card.root()));
    const QString still = m_dir.filePath(QStringLiteral("still.png"));
    EXPECT_FALSE(m_controller->saveSnapshot(still)); // no clip, no picture
    EXPECT_TRUE(m_controller->printButtonTouched().isNull());

    int row = -1;
    for (int i = 0; i < library().numberOfRows(); ++i)
        if (library().row(i).path == m_front)
            row = i;
    ASSERT_GE(row, 0);
    m_controller->videoFileListDoubleClicked(row);
    settle();
    QImage picture(8, 6, QImage::Format_RGB32);
    picture.fill(Qt::red);
    m_big.setSnapshotImage(picture);
    m_big.setCurrentTime(2.0);
    settle(); // the player lands there later

    EXPECT_EQ(m_controller->snapshotButtonTouched(), QStringLiteral("0101_F_2000.png"));
    EXPECT_TRUE(session().isVideoPaused());
    ASSERT_TRUE(m_controller->saveSnapshot(still));
    EXPECT_TRUE(TestFiles::read(still).startsWith("\x89PNG"));
    const QImage saved(still);
    EXPECT_EQ(saved.size(), QSize(8, 6));
    EXPECT_EQ(saved.pixelColor(3, 3), QColor(Qt::red));
    // A still that cannot be written is reported (as the one without a picture was).
    EXPECT_FALSE(m_controller->saveSnapshot(m_dir.filePath(QStringLiteral("missing/dir/x.png"))));
    ASSERT_EQ(m_alerts.requests().size(), 2);
    EXPECT_EQ(m_alerts.requests().at(1).titleKey, QString::fromUtf8(LocalizationKeys::kSaveStill));

    session().playVideo();
    const QImage printed = m_controller->printButtonTouched();
    EXPECT_TRUE(session().isVideoPaused());
    EXPECT_EQ(printed.size(), QSize(8, 6));
}

TEST_F(MainWindowControllerTest, LanguageSwitchReappliesTheTextsAndTheModelText)
{
    QSettings().clear();
    ViewerLanguage::initializeLanguageSetting();
    QSignalSpy texts(m_controller.get(), &MainWindowController::applyLanguageSettingsRequested);
    QSignalSpy model(m_controller.get(), &MainWindowController::modelInfoChanged);

    m_controller->viewerLanguage().languageChangeToFrench();
    EXPECT_TRUE(texts.isEmpty()); // re-titled after the notification, not inside it
    settle();
    EXPECT_EQ(texts.size(), 1);
    ASSERT_EQ(model.size(), 1);
    const QString unknownInFrench
        = TavroLanguages::SharedTavroLanguages().localized(LocalizationKeys::kUnknown);
    EXPECT_EQ(model.last().at(0).toString(), unknownInFrench);
    EXPECT_EQ(unknownInFrench,
        TavroLanguages::SharedTavroLanguages().localizedIn(
            QStringLiteral("fr"), QStringLiteral("unknown")));

    m_controller->viewerLanguage().languageChangeToFrench(); // the language in use: nothing
    settle();
    EXPECT_EQ(texts.size(), 1);
    m_controller->viewerLanguage().languageChangeToEnglish();
    settle();
    EXPECT_EQ(texts.size(), 2);
    QSettings().clear();
}

// A clip that takes long to prepare: the window is told to show it busy after
// a moment, the event loop runs on meanwhile, the user may give up on it, and
// quitting ends ffmpeg at once without leaving a file in the cache.
TEST(MainWindowControllerSlowClipTest, PreparationRunsAsideCanBeCancelledAndEndsOnQuit)
{
    if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
        GTEST_SKIP() << "ffmpeg is not installed";
    QTemporaryDir dir;
    const QString slow = dir.filePath(QStringLiteral("slow-ffmpeg"));
    TestFiles::write(slow, "#!/bin/sh\nexec ffmpeg -re \"$@\"\n");
    QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    CardTreeBuilder card(dir.filePath(QStringLiteral("card")));
    const QString clip = card.path(QStringLiteral("cont_rec/slow_F.mp4"));
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(clip, FfmpegClipBuilder::telemetrySrt(20, 0)));
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
    EXPECT_TRUE(controller->session().currentVideoUrl().isEmpty());
    // The window goes on (timers fire, events are handled) and shows it busy.
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { ++ticks; });
    ticker.start(20);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return view.events.contains(QStringLiteral("busy")); }, 2000));
    EXPECT_GE(ticks, 10);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !cacheFiles().isEmpty(); }, 15000));

    // Cancel: nothing plays, nothing is said, ffmpeg's partial file goes.
    controller->session().cancelPreparation();
    EXPECT_EQ(view.events.last(), QStringLiteral("idle"));
    EXPECT_FALSE(controller->session().isPreparing());
    ASSERT_TRUE(QTest::qWaitFor([&] { return cacheFiles().isEmpty(); }, 1000))
        << qPrintable(cacheFiles().join(u' '));
    EXPECT_TRUE(alerts.requests().isEmpty());
    EXPECT_TRUE(big.fileName().isEmpty());

    // Again, and quit in the middle: ffmpeg ends within a second.
    controller->videoFileListDoubleClicked(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !cacheFiles().isEmpty(); }, 15000));
    QElapsedTimer quitting;
    quitting.start();
    controller.reset();
    EXPECT_LT(quitting.elapsed(), 1000);
    EXPECT_TRUE(cacheFiles().isEmpty()) << qPrintable(cacheFiles().join(u' '));
    Utils::SetFFMPEGPath(QString());
}
