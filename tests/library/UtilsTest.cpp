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
    QByteArray nonAscii = bytesWith(200, 112, "MJPG");
    nonAscii[127] = char(0x80);
    const std::pair<QByteArray, int> cases[] {
        { bytesWith(200, 112, "H264"), 0 },
        { bytesWith(200, 112, "h264"), 0 },
        { bytesWith(200, 112, "AVC1"), 1 },
        { bytesWith(200, 112, "avc1"), 1 },
        { bytesWith(200, 112, "ISO4HVC1"), 2 },
        { bytesWith(200, 112, "ISO4HVC"), 3 }, // a name must be there whole
        { bytesWith(200, 112, "MJPG"), 3 },
        { bytesWith(200, 16, "iso4hvc1iso6mp41"), 2 }, // the brands when the handler has none
        { bytesWith(200, 16, "avc1isom"), 1 },
        { bytesWith(200, 4, "ftypisom").replace(16, 16, "isomiso2avc1mp41"), 3 },
        { bytesWith(200, 112, "AVC1").replace(16, 8, "iso4hvc1"), 1 }, // the handler wins
        // A byte that is not ASCII (the 16th of the handler) leaves no text,
        // and no text matches the first name, "H264".
        { nonAscii, 0 },
        { bytesWith(116, 112, "H264"), 0 }, // the file ends right after the name
        { bytesWith(115, 112, "H264"), 3 }, // the file ends inside it
        { QByteArray(10, 'x'), 3 },
        { QByteArray(), 3 },
    };
    QTemporaryDir dir;
    int i = 0;
    for (const auto& [bytes, type] : cases) {
        const QString path = dir.filePath(QString::number(i++));
        TestFiles::write(path, bytes);
        EXPECT_EQ(Utils::GetAviType(path), type) << i - 1;
    }
    EXPECT_EQ(Utils::GetAviType(dir.filePath("absent.avi")), 0); // no text either
}

TEST(UtilsTest, StreamCountsFromTheReport)
{
    const struct {
        const char* report;
        int video;
        int audio;
    } cases[] {
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
        { "", 0, 0 },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Utils::GetVideoStreamCountFromVideoInfo(QString::fromUtf8(c.report)), c.video)
            << c.report;
        EXPECT_EQ(Utils::GetAudioStreamCountFromVideoInfo(QString::fromUtf8(c.report)), c.audio)
            << c.report;
    }
}

TEST(UtilsTest, ChildProcessesAreReadToTheEnd)
{
    QtProcessRunner runner;
    EXPECT_EQ(Utils::DoTaskWithLaunchPath("/bin/sh",
                  { "-c", QStringLiteral("echo out; echo err >&2; echo \"$0\" ünï") }, runner),
        QStringLiteral("out\nerr\n/bin/sh ünï\n"));
    // A program reading standard input sees its end at once instead of waiting.
    EXPECT_EQ(Utils::DoTaskWithLaunchPath("/bin/cat", {}, runner), QString());
    EXPECT_EQ(Utils::DoTaskWithLaunchPath("/no/such/program", {}, runner), QString());
    EXPECT_EQ(Utils::DoTaskWithLaunchPath(QString(), {}, runner), QString());
    // Output much larger than a pipe buffer is read to its end.
    EXPECT_EQ(Utils::DoTaskWithLaunchPath(
                  "/bin/sh", { "-c", "head -c 1000000 /dev/zero | tr '\\0' x" }, runner)
                  .size(),
        1000000);
}

TEST(UtilsTest, FfmpegPathWorkingFolderAndFileHelpers)
{
    const QByteArray saved = qgetenv("TAVRO_FFMPEG");
    qputenv("TAVRO_FFMPEG", "/opt/ff/ffmpeg");
    EXPECT_EQ(Utils::GetFFMPEGPath(), QStringLiteral("/opt/ff/ffmpeg"));
    Utils::SetFFMPEGPath("/x/ffmpeg");
    EXPECT_EQ(Utils::GetFFMPEGPath(), QStringLiteral("/x/ffmpeg"));
    Utils::SetFFMPEGPath(QString());
    qunsetenv("TAVRO_FFMPEG");
    EXPECT_EQ(Utils::GetFFMPEGPath(), QStandardPaths::findExecutable("ffmpeg"));
    if (!saved.isEmpty())
        qputenv("TAVRO_FFMPEG", saved);

    // The working folder is made on demand and removed at quit; other caches
    // beside it (the map's tiles) survive the clean-up.
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    const QString working = Utils::GetWorkingDirectoryPath();
    EXPECT_EQ(working, cache + "/work");
    TestFiles::write(working + "/temp_video/a_1/a_f.mov", "x");
    TestFiles::write(cache + "/map/tile", "x");
    Utils::RemoveWorkingDirectory();
    EXPECT_FALSE(QDir(working).exists());
    EXPECT_TRUE(QFile::remove(cache + "/map/tile"));
    EXPECT_EQ(Utils::GetWorkingDirectoryPath(), working);
    EXPECT_TRUE(QDir(working).exists());
    Utils::RemoveWorkingDirectory();

    // An empty path names no folder (never the current one); a link standing
    // in for the folder goes, what it leads to stays.
    QTemporaryDir dir;
    const QString here = QDir::currentPath();
    Utils::RemoveDirectory(QString());
    EXPECT_TRUE(QDir(here).exists());
    TestFiles::write(dir.filePath("precious/keep.txt"), "keep");
    ASSERT_TRUE(QFile::link(dir.filePath("precious"), dir.filePath("work")));
    Utils::RemoveDirectory(dir.filePath("work"));
    EXPECT_FALSE(QFileInfo(dir.filePath("work")).isSymLink());
    EXPECT_EQ(TestFiles::read(dir.filePath("precious/keep.txt")), QByteArray("keep"));
    Utils::RemoveDirectory(dir.filePath("precious"));
    EXPECT_FALSE(QDir(dir.filePath("precious")).exists());

    const QString tool = dir.filePath("tool");
    TestFiles::write(tool, "#!/bin/sh\n");
    Utils::EnableFileExcutableMode(tool);
    EXPECT_EQ(QFile::permissions(tool).toInt() & 0x0777, 0x0777);
    EXPECT_TRUE(Utils::CheckError(QString()));
    EXPECT_FALSE(Utils::CheckError(QStringLiteral("No such file")));
}

} // namespace
