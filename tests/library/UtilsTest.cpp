// The helpers behind the conversion: codec type of a file, stream counts in
// ffmpeg's report, running a child process, the working folder.
#include "TestFiles.h"

#include "library/QtProcessRunner.h"
#include "library/Utils.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

// `size` zero bytes with `text` written at `offset`.
QByteArray bytesWith(int size, int offset, const QByteArray& text)
{
    QByteArray bytes(size, '\0');
    bytes.replace(offset, text.size(), text);
    return bytes.left(size);
}

TEST(UtilsTest, AviTypeFromTheHandlerOrTheBrands)
{
    struct Case {
        const char* what;
        QByteArray bytes;
        int type;
    };
    QByteArray nonAscii = bytesWith(200, 112, "MJPG");
    nonAscii[120] = char(0xC3);
    QByteArray mp4 = bytesWith(200, 4, "ftypisom");
    mp4.replace(16, 16, "isomiso2avc1mp41");
    const Case cases[] {
        { "AVI handler H264", bytesWith(200, 112, "H264"), 0 },
        { "AVI handler h264", bytesWith(200, 112, "h264"), 0 },
        { "AVI handler AVC1", bytesWith(200, 112, "AVC1"), 1 },
        { "AVI handler avc1", bytesWith(200, 112, "avc1"), 1 },
        { "AVI handler iso4hvc1", bytesWith(200, 112, "ISO4HVC1"), 2 },
        { "AVI handler MJPG", bytesWith(200, 112, "MJPG"), 3 },
        { "brands iso4hvc1", bytesWith(200, 16, "iso4hvc1iso6mp41"), 2 },
        { "brands avc1", bytesWith(200, 16, "avc1isom"), 1 },
        { "ordinary MP4 brands", mp4, 3 },
        // The handler wins over the brands.
        { "handler and brands", bytesWith(200, 112, "AVC1").replace(16, 8, "iso4hvc1"), 1 },
        // A byte that is not ASCII leaves no text, and no text matches "H264"
        // (an ASCII "MJPG" handler would give 3).
        { "non-ASCII handler", nonAscii, 0 },
        { "file ends inside the handler", bytesWith(114, 112, "H264"), 3 },
        { "short file", QByteArray(10, 'x'), 3 },
        { "empty file", QByteArray(), 3 },
    };
    QTemporaryDir dir;
    for (const Case& c : cases) {
        const QString path = dir.filePath(QString::fromUtf8(c.what) + ".bin");
        TestFiles::write(path, c.bytes);
        EXPECT_EQ(Utils::GetAviType(path), c.type) << c.what;
    }
    // A file that cannot be opened gives no text either.
    EXPECT_EQ(Utils::GetAviType(dir.filePath("absent.avi")), 0);
}

TEST(UtilsTest, StreamCountsFromTheReport)
{
    struct Case {
        const char* report;
        int video;
        int audio;
    };
    const Case cases[] {
        { "  Stream #0:0: Video: h264 (H264 / 0x34363248)\n  Stream #0:1: Video: h264\n"
          "  Stream #0:2: Audio: pcm_s16le\n",
            2, 1 },
        { "  Stream #0:0[0x1](und): Video: h264 (avc1 / 0x31637661)\n"
          "  Stream #0:1[0x2](und): Subtitle: mov_text (tx3g / 0x67337874)\n",
            1, 0 },
        { "  stream #0:0(eng): VIDEO: hevc\n  STREAM #0:1: audio: aac\n", 1, 1 },
        // The name must follow on the same line.
        { "  Stream #0:0:\n Video: h264\n", 0, 0 },
        { "Stream #0:0 Video\n", 0, 0 },
        // The expressions run on to the first ": Video" or ": Audio" of the
        // line, so one line may count for both (a fuzzer's find).
        { "I  Stream #0:2: Audiom#0:1: Video:\n", 1, 1 },
        { "/no/such/file.avi: No such file or directory\n", 0, 0 },
        { "", 0, 0 },
    };
    for (const Case& c : cases) {
        const QString report = QString::fromUtf8(c.report);
        EXPECT_EQ(Utils::GetVideoStreamCountFromVideoInfo(report), c.video) << c.report;
        EXPECT_EQ(Utils::GetAudioStreamCountFromVideoInfo(report), c.audio) << c.report;
    }
}

TEST(UtilsTest, ChildProcessOutputIsMergedAndStdinIsEmpty)
{
    QtProcessRunner runner;
    const QString merged = Utils::DoTaskWithLaunchPath(QStringLiteral("/bin/sh"),
        { QStringLiteral("-c"), QStringLiteral("echo out; echo err >&2; echo \"$0\" ünï") },
        runner);
    EXPECT_EQ(merged, QStringLiteral("out\nerr\n/bin/sh ünï\n"));
    // A program reading standard input sees its end at once instead of waiting.
    EXPECT_EQ(Utils::DoTaskWithLaunchPath(QStringLiteral("/bin/cat"), {}, runner), QString());
    EXPECT_EQ(
        Utils::DoTaskWithLaunchPath(QStringLiteral("/no/such/program"), {}, runner), QString());
    EXPECT_EQ(Utils::DoTaskWithLaunchPath(QString(), {}, runner), QString());
    // Output much larger than a pipe buffer is read to its end.
    const QString big = Utils::DoTaskWithLaunchPath(QStringLiteral("/bin/sh"),
        { QStringLiteral("-c"), QStringLiteral("head -c 1000000 /dev/zero | tr '\\0' x") }, runner);
    EXPECT_EQ(big.size(), 1000000);
}

TEST(UtilsTest, CancelKillsTheRunningChild)
{
    QTemporaryDir dir;
    const QString pidFile = dir.filePath("pid");
    QtProcessRunner runner;
    QByteArray output;
    std::thread worker([&] {
        output = runner.run(QStringLiteral("/bin/sh"),
            { QStringLiteral("-c"),
                QStringLiteral("echo started; echo $$ > '%1'; exec sleep 30").arg(pidFile) });
    });
    // Cancel from this thread once the child is running.
    while (TestFiles::read(pidFile).trimmed().isEmpty())
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    runner.cancel();
    worker.join();
    EXPECT_EQ(output, QByteArray("started\n"));
    const QByteArray pid = TestFiles::read(pidFile).trimmed();
    EXPECT_FALSE(QFile::exists("/proc/" + QString::fromLatin1(pid))) << pid.constData();
    // Cancelled: later runs start nothing until the runner is reset.
    EXPECT_EQ(runner.run(QStringLiteral("/bin/echo"), { QStringLiteral("x") }), QByteArray());
    runner.resetCancel();
    EXPECT_EQ(runner.run(QStringLiteral("/bin/echo"), { QStringLiteral("x") }), QByteArray("x\n"));
}

TEST(UtilsTest, FfmpegPathOverrides)
{
    const QByteArray saved = qgetenv("TAVRO_FFMPEG");
    qputenv("TAVRO_FFMPEG", "/opt/ff/ffmpeg");
    EXPECT_EQ(Utils::GetFFMPEGPath(), QStringLiteral("/opt/ff/ffmpeg"));
    Utils::SetFFMPEGPath(QStringLiteral("/x/ffmpeg"));
    EXPECT_EQ(Utils::GetFFMPEGPath(), QStringLiteral("/x/ffmpeg"));
    Utils::SetFFMPEGPath(QString());
    qunsetenv("TAVRO_FFMPEG");
    EXPECT_EQ(Utils::GetFFMPEGPath(), QStandardPaths::findExecutable(QStringLiteral("ffmpeg")));
    if (!saved.isEmpty())
        qputenv("TAVRO_FFMPEG", saved);
}

TEST(UtilsTest, WorkingFolderIsCreatedAndRemoved)
{
    const QString working = Utils::GetWorkingDirectoryPath();
    ASSERT_FALSE(working.isEmpty());
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    EXPECT_EQ(working, cache + "/work");
    TestFiles::write(working + "/temp_video/a_1/a_f.mov", "x");
    // Other caches beside the working folder (the map's tiles) survive the clean-up.
    TestFiles::write(cache + "/map/tile", "x");
    Utils::RemoveWorkingDirectory();
    EXPECT_FALSE(QDir(working).exists());
    EXPECT_TRUE(QFile::exists(cache + "/map/tile"));
    QFile::remove(cache + "/map/tile");
    EXPECT_EQ(Utils::GetWorkingDirectoryPath(), working);
    EXPECT_TRUE(QDir(working).exists());
    Utils::RemoveWorkingDirectory();
}

TEST(UtilsTest, FileHelpers)
{
    QTemporaryDir dir;
    TestFiles::write(dir.filePath("tree/a/b.txt"), "b");
    Utils::RemoveDirectory(dir.filePath("tree"));
    EXPECT_FALSE(QDir(dir.filePath("tree")).exists());
    // An empty path names no folder (and never the current one).
    const QString here = QDir::currentPath();
    Utils::RemoveDirectory(QString());
    EXPECT_TRUE(QDir(here).exists());
    // A link standing in for the folder goes; what it leads to stays.
    TestFiles::write(dir.filePath("precious/keep.txt"), "keep");
    ASSERT_TRUE(QFile::link(dir.filePath("precious"), dir.filePath("work")));
    Utils::RemoveDirectory(dir.filePath("work"));
    EXPECT_FALSE(QFileInfo(dir.filePath("work")).isSymLink());
    EXPECT_EQ(TestFiles::read(dir.filePath("precious/keep.txt")), QByteArray("keep"));

    const QString tool = dir.filePath("tool");
    TestFiles::write(tool, "#!/bin/sh\n");
    Utils::EnableFileExcutableMode(tool);
    EXPECT_EQ(QFile::permissions(tool).toInt() & 0x0777, 0x0777);
    EXPECT_TRUE(Utils::CheckError(QString()));
    EXPECT_FALSE(Utils::CheckError(QStringLiteral("No such file")));
}

} // namespace
