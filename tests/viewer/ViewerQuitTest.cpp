// Quitting the viewer by a signal while a clip is being converted: ffmpeg
// ends within a second and nothing of its output is left in the cache.
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "ViewerTestSupport.h"
#include "TestTiming.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

namespace {

// ffmpeg's files in the conversion cache under `cacheHome`.
QStringList conversionFiles(const QString& cacheHome)
{
    QStringList files;
    QDirIterator it(cacheHome, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (path.contains(QStringLiteral("/temp_video/")))
            files << path;
    }
    return files;
}

bool processAlive(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    // A zombie is an ended process its parent has not reaped yet.
    const QList<QByteArray> fields = status.readAll().split(' ');
    return fields.size() > 2 && fields[2] != "Z";
}

TEST(ViewerQuitTest, ASignalDuringAConversionEndsFfmpegAndLeavesNoPartialFile)
{
    if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
        GTEST_SKIP() << "ffmpeg is not installed";
    QTemporaryDir dir;
    const QString card = dir.filePath(QStringLiteral("card"));
    QDir().mkpath(card + QStringLiteral("/SETTING"));
    TestFiles::write(card + QStringLiteral("/SETTING/setup.cfg"),
        SetupCfgBuilder(432).sizeWord(432).productName("Tolm").version("1.02.17").bytes());
    ASSERT_TRUE(ViewerTestSupport::makeTelemetryClip(
        card + QStringLiteral("/cont_rec/20240315_081502_F.mp4"), 30, 160, 90, 0));
    // ffmpeg reading at the clip's own pace, noting its process id.
    const QString pids = dir.filePath(QStringLiteral("ffmpeg.pids"));
    const QString slow = dir.filePath(QStringLiteral("slow-ffmpeg"));
    TestFiles::write(
        slow, "#!/bin/sh\necho $$ >> '" + pids.toUtf8() + "'\nexec ffmpeg -re \"$@\"\n");
    QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    for (const int signal : { SIGTERM, SIGINT, SIGHUP }) {
        SCOPED_TRACE(signal);
        QFile::remove(pids);
        const QString cacheHome = dir.filePath(QStringLiteral("cache-%1").arg(signal));
        QProcess viewer;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TAVRO_FFMPEG"), slow);
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), cacheHome);
        environment.insert(
            QStringLiteral("XDG_CONFIG_HOME"), dir.filePath(QStringLiteral("config")));
        viewer.setProcessEnvironment(environment);
        viewer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        viewer.start(QStringLiteral(TAVRO_VIEWER_PATH),
            { QStringLiteral("--no-splash"), QStringLiteral("--card"), card,
                QStringLiteral("--play"), QStringLiteral("0") });
        ASSERT_TRUE(viewer.waitForStarted(10000));
        // Converting: ffmpeg runs and writes into the cache.
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return QFile::exists(pids) && !conversionFiles(cacheHome).isEmpty(); }, 60000));
        const qint64 ffmpeg = TestFiles::read(pids).trimmed().split('\n').last().toLongLong();
        ASSERT_GT(ffmpeg, 0);
        ASSERT_TRUE(processAlive(ffmpeg));

        QElapsedTimer stopping;
        stopping.start();
        ::kill(pid_t(viewer.processId()), signal);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !processAlive(ffmpeg); }, TestTiming::scaled(1000)))
            << "ffmpeg still runs " << stopping.elapsed() << " ms after the signal";
        ASSERT_TRUE(viewer.waitForFinished(20000));
        EXPECT_EQ(viewer.exitStatus(), QProcess::NormalExit);
        EXPECT_TRUE(conversionFiles(cacheHome).isEmpty())
            << qPrintable(conversionFiles(cacheHome).join(u' '));
    }
}

} // namespace
