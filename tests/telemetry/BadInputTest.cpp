// Broken, truncated and hostile files: every loader and parser answers with a
// count within the record's capacity and never crashes or hangs.

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <random>

#include <sys/stat.h>

using namespace TelemetryTestFiles;

namespace {

// Runs the file through both loaders under both kinds of name and through
// every single parser, and checks that each answer is a valid record.
void expectSaneEverywhere(const QByteArray& bytes, const std::string& what)
{
    SCOPED_TRACE(what);
    for (const QString& name : { QStringLiteral("bad.avi"), QStringLiteral("bad.srt") }) {
        const QString path = writeClip(name, bytes);
        TavroClipData data;
        data.loadVideoFileCilpDataFromFilePath(path);
        EXPECT_GE(data.clipDataCount(), 0);
        EXPECT_LE(data.clipDataCount(), 650);
        EXPECT_LE(data.gpsDataCount(), data.clipDataCount());
        data.loadVideoFileCilpDataFromFilePath_Kel(path);
        EXPECT_GE(data.clipDataCount(), 0);
        EXPECT_LE(data.clipDataCount(), 650);
        EXPECT_LE(data.gpsDataCount(), data.clipDataCount());
        const QByteArray utf8 = path.toUtf8();
        for (const int count :
            { int(data.getAllDataFromFileTail(path)), data.getAllDataFromFile(utf8.constData()),
                data.getTolmAllDataFromSrtFile(path), data.getTolmAllDataFromFile(path),
                data.getAllDataFromFile_Kel(utf8.constData()) }) {
            EXPECT_GE(count, 0);
            EXPECT_LE(count, 650);
        }
    }
}

QByteArray randomBytes(int size, uint32_t seed)
{
    std::mt19937 generator(seed);
    QByteArray bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator());
    return bytes;
}

QByteArray goodAvi()
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    for (int s = 0; s < 3; ++s) {
        for (int i = 0; i < 11; ++i)
            avi.gRecord(100, 120, 140).kelGRecord(1, 2, 3).videoFrame(33, i);
        avi.sentence(RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0"));
    }
    return avi.bytes();
}

} // namespace

TEST(BadInput, EmptyAndTinyFiles)
{
    for (int size = 0; size <= 12; ++size)
        expectSaneEverywhere(
            QByteArray("RIFF\x04\0\0\0AVI ", 12).left(size), "prefix " + std::to_string(size));
    EXPECT_EQ(loadGeneral(QByteArray())->clipDataCount(), 0);
    EXPECT_EQ(loadKel(QByteArray())->clipDataCount(), 0);
}

TEST(BadInput, EveryTruncationOfAValidClip)
{
    const QByteArray avi = goodAvi();
    ASSERT_EQ(loadGeneral(avi)->clipDataCount(), 30);
    ASSERT_EQ(loadKel(avi)->clipDataCount(), 30);
    for (qsizetype size = 0; size < avi.size(); size += 7) {
        const auto general = loadGeneral(avi.left(size));
        EXPECT_LE(general->clipDataCount(), 30) << size;
        EXPECT_LE(loadKel(avi.left(size))->clipDataCount(), 30) << size;
    }
}

TEST(BadInput, DeclaredSizesPastTheEnd)
{
    for (const uint32_t size : { 0xFFFFFFFFu, 0xFFFFFFFEu, 0x80000000u, 1000u, 5u }) {
        for (const QByteArray& code :
            { QByteArray("02tx"), QByteArray("LIST"), QByteArray("00dc") }) {
            RiffAviBuilder avi;
            avi.aviHeaders().gRecord(1, 2, 3).chunkHeader(code, size).gRecord(4, 5, 6);
            expectSaneEverywhere(
                avi.bytes() + "M", code.toStdString() + " " + std::to_string(size));
        }
    }
    // A telemetry chunk claiming more than is left gets what is there.
    RiffAviBuilder avi;
    avi.aviHeaders().gRecord(128, 128, 128).secondEnd();
    const auto data = loadGeneral(avi.bytes()
        + QByteArray("03tx\xFF\xFF\xFF\x7F"
                     "T",
            9));
    EXPECT_EQ(data->clipDataCount(), 10);
}

TEST(BadInput, DeepListNesting)
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
}

TEST(BadInput, RandomBytes)
{
    for (uint32_t seed = 1; seed <= 12; ++seed) {
        QByteArray bytes = randomBytes(static_cast<int>(seed * 2999), seed);
        if (seed % 3 == 0)
            bytes.replace(0, 12, QByteArray("RIFF\0\0\0\0AVI ", 12));
        if (seed % 4 == 0)
            bytes.insert(static_cast<qsizetype>(seed * 100), "02tx\0gsensor,1,2");
        expectSaneEverywhere(bytes, "seed " + std::to_string(seed));
    }
}

TEST(BadInput, InvalidUtf8AndOddText)
{
    const QByteArray good = SubtitleBuilder()
                                .gsensorBlocks(12)
                                .block(SubtitleBuilder::rmc("A", "1.1", "N", "2.2", "E", "3"))
                                .bytes();
    const QByteArray cases[] = {
        good + "\xC3",
        good + "\xF4\x90\x80\x80",
        good + "\xED\xBF\xBF",
        QByteArray(good).replace("gsensor", "gs\xE9nsor"),
        QByteArray(5000, '\n'),
        QByteArray(5000, ','),
        QByteArray(" --> ").repeated(1000),
        "1\n00:00:00,000 --> 00:00:01,000\nGPRMC,1,A,99999999999999.9,N,-99999999999.9,E,1e38\n\n",
        "1\n-->\n-->\n\n\n-->gsensori,1,-2147483648,2147483647,-2147483648,99999\n\n",
        "1\n2\ngsensori,-1,-2147483648,1,1,1\n\n",
        TailBlockBuilder()
            .line(QByteArray(30000, ','))
            .line("1,1e39,-1e39,99999999999,1,1,1")
            .bytes(),
    };
    int i = 0;
    for (const QByteArray& bytes : cases)
        expectSaneEverywhere(bytes, "case " + std::to_string(i++));
    EXPECT_EQ(loadGeneral(good, "ok.srt")->clipDataCount(), 10);
    EXPECT_EQ(loadGeneral(cases[0], "bad.srt")->clipDataCount(), 0);
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
