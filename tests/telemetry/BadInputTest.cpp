// Broken, truncated and hostile files: every loader and parser answers with a
// count within the record's capacity and never crashes or hangs, also when
// the file shrinks while it is read (the card pulled out).

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include "telemetry/AviTailParser.h"
#include "telemetry/ClipFileBytes.h"

#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

using namespace TelemetryTestFiles;

namespace {

// Runs the file through both loaders under both kinds of name and through
// every single parser, and checks that each answer is a valid record.
void expectSaneEverywhere(const QByteArray& bytes, const std::string& what)
{
    SCOPED_TRACE(what);
    const QString path = writeClip("bad.avi", bytes);
    const QByteArray utf8 = path.toUtf8();
    TavroClipData data;
    data.loadVideoFileCilpDataFromFilePath(path);
    EXPECT_LE(data.gpsDataCount(), data.clipDataCount());
    const int general = data.clipDataCount();
    data.loadVideoFileCilpDataFromFilePath_Kel(path);
    EXPECT_LE(data.gpsDataCount(), data.clipDataCount());
    for (const int count : { general, data.clipDataCount(), int(data.getAllDataFromFileTail(path)),
             data.getAllDataFromFile(utf8.constData()), data.getTolmAllDataFromSrtFile(path),
             data.getTolmAllDataFromFile(path), data.getAllDataFromFile_Kel(utf8.constData()) }) {
        EXPECT_GE(count, 0);
        EXPECT_LE(count, 650);
    }
}

} // namespace

TEST(BadInput, TinyTruncatedAndOversizedFiles)
{
    for (int size = 0; size <= 12; ++size)
        expectSaneEverywhere(
            QByteArray("RIFF\x04\0\0\0AVI ", 12).left(size), "prefix " + std::to_string(size));
    RiffAviBuilder good;
    good.aviHeaders();
    for (int i = 0; i < 33; ++i) {
        good.gRecord(100, 120, 140).kelGRecord(1, 2, 3).videoFrame(33, i);
        if (i % 11 == 10)
            good.sentence(RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0"));
    }
    const QByteArray avi = good.bytes();
    ASSERT_EQ(loadGeneral(avi)->clipDataCount(), 30);
    ASSERT_EQ(loadKel(avi)->clipDataCount(), 30);
    for (qsizetype size = 0; size < avi.size(); size += 7) {
        EXPECT_LE(loadGeneral(avi.left(size))->clipDataCount(), 30) << size;
        EXPECT_LE(loadKel(avi.left(size))->clipDataCount(), 30) << size;
    }
    for (const uint32_t size : { 0xFFFFFFFFu, 0xFFFFFFFEu, 0x80000000u, 1000u, 5u }) {
        for (const char* code : { "02tx", "LIST", "00dc" }) {
            RiffAviBuilder bad;
            bad.aviHeaders().gRecord(1, 2, 3).chunkHeader(code, size).gRecord(4, 5, 6);
            expectSaneEverywhere(bad.bytes() + "M", code + std::to_string(size));
        }
    }
    // A telemetry chunk claiming more than is left gets what is there.
    RiffAviBuilder claims;
    claims.aviHeaders().gRecord(128, 128, 128).secondEnd();
    EXPECT_EQ(
        loadGeneral(claims.bytes() + QByteArray("03tx\xFF\xFF\xFF\x7FT", 9))->clipDataCount(), 10);
}

TEST(BadInput, DeepListNestingAndOddText)
{
    RiffAviBuilder avi;
    for (int i = 0; i < 20000; ++i)
        avi.beginList("rec ");
    avi.gRecord(120, 128, 128).secondEnd();
    const QByteArray bytes = avi.bytes();
    expectSaneEverywhere(bytes, "nested lists");
    EXPECT_EQ(loadGeneral(bytes)->clipDataCount(), 10);
    // Lists whose declared sizes are nonsense are walked the same way.
    QByteArray broken = bytes;
    for (qsizetype pos = broken.indexOf("LIST"); pos >= 0; pos = broken.indexOf("LIST", pos + 1))
        qToLittleEndian<quint32>(0xFFFFFFF0u, broken.data() + pos + 4);
    EXPECT_EQ(loadGeneral(broken)->clipDataCount(), 10);

    // Text that is not quite what the cameras write.
    const QByteArray good
        = SubtitleBuilder().gsensorBlocks(12).block("GPRMC,1,A,1,N,2,E,3").bytes();
    for (const QByteArray& text :
        { good + "\xF4\x90\x80\x80", QByteArray(good).replace("gsensor", "gs\xE9nsor"),
            QByteArray(5000, ','), QByteArray(" --> ").repeated(1000),
            QByteArray("1\n0 --> 1\nGPRMC,1,A,99999999999999.9,N,-99999999999.9,E,1e38\n\n"),
            QByteArray(
                "1\n-->\n-->\n\n\n-->gsensori,1,-2147483648,2147483647,-2147483648,99999\n\n"),
            QByteArray("1\n2\ngsensori,-1,-2147483648,1,1,1\n\n"),
            TailBlockBuilder()
                .line(QByteArray(30000, ','))
                .line("1,1e39,-1e39,9999999999,1,1,1")
                .bytes() })
        expectSaneEverywhere(text, text.left(40).toStdString());
}

TEST(BadInput, SourcesThatCannotBeMappedEnd)
{
    // An endless device is read up to a bound; a pipe without a writer ends at once.
    const QString fifo = scratchPath("nobody-writes.avi");
    QFile::remove(fifo);
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    for (const QString& path : { QStringLiteral("/dev/zero"), fifo }) {
        TavroClipData data;
        data.loadVideoFileCilpDataFromFilePath(path);
        EXPECT_EQ(data.clipDataCount(), 0) << path.toStdString();
    }
}

TEST(TruncatedMapping, AFileCutWhileItIsReadSurvivesAndKeepsAllOrNothing)
{
    // Several MiB of video, then a telemetry tail of 300 samples.
    TailBlockBuilder tail(8 << 20);
    for (int n = 0; n < 300; ++n)
        tail.sample(n, "3723.2475", "12658.4100", 40, n, -n, 128);
    const QByteArray bytes = tail.bytes();
    const QString path = writeClip(QStringLiteral("cut.avi"), bytes);
    ASSERT_EQ(loadGeneral(bytes)->clipDataCount(), 300);
    ClipFileBytes file(path);
    ASSERT_EQ(file.bytes().size(), bytes.size());
    EXPECT_TRUE(file.isIntact());
    // The card goes: only the first page is left of the file.
    ASSERT_EQ(::truncate(QFile::encodeName(path).constData(), 4096), 0);
    TavroClipData record;
    EXPECT_EQ(AviTailParser().parse(file.bytes(), record), 0); // SIGBUS without the guard
    EXPECT_EQ(file.bytes().back(), '\0') << "the vanished part reads as zeros";
    EXPECT_FALSE(file.isIntact());

    for (int round = 0; round < 20; ++round) {
        writeClip(QStringLiteral("cut.avi"), bytes);
        std::atomic<bool> go { false };
        std::thread cutter([&] {
            while (!go.load()) { }
            usleep(useconds_t(round * 150));
            ::truncate(QFile::encodeName(path).constData(), 1000);
        });
        go = true;
        record.loadVideoFileCilpDataFromFilePath(path);
        cutter.join();
        // Which of the two won the race is chance; half a record never comes out.
        EXPECT_TRUE(record.clipDataCount() == 0 || record.clipDataCount() == 300)
            << record.clipDataCount();
    }
}
