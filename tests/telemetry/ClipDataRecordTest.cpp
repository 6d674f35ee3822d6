// The record's accessors and sentinels, the coordinate conversion, the
// ten-per-second distribution, reloading, and the general loader's order.

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include "telemetry/TavroClipData.h"

#include <gtest/gtest.h>

using namespace TelemetryTestFiles;

namespace {

// A tail-block clip of `count` samples whose gx is 1000 + i and latitude 10 + i.
QByteArray tailClip(int count, int gxBase = 1000)
{
    TailBlockBuilder tail;
    for (int i = 0; i < count; ++i)
        tail.sample(i, QByteArray::number(10 + i), "20.5", i, gxBase + i, -i, 128);
    return tail.bytes();
}

void expectSentinels(const TavroClipData& data, int index)
{
    SCOPED_TRACE(index);
    EXPECT_EQ(data.getGx(index), -512);
    EXPECT_EQ(data.getGy(index), -512);
    EXPECT_EQ(data.getGz(index), -512);
    EXPECT_EQ(data.getGpsLat(index), 512.0f);
    EXPECT_EQ(data.getGpsLng(index), 512.0f);
    EXPECT_EQ(data.getGpsSpeed(index), 1024);
    int x = 0, y = 0, z = 0, speed = 0;
    float lat = 0, lng = 0;
    data.getClipDataWithIndex(index, x, y, z, lat, lng, speed);
    EXPECT_EQ(
        Sample({ x, y, z, lat, lng, speed }), Sample({ -512, -512, -512, 512.0f, 512.0f, 1024 }));
}

// One second of `n` raw 'M' records whose x is the raw index, closed by 'T'.
std::vector<int> distributedRawIndices(int n)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    for (int i = 0; i < n; ++i)
        avi.gRecord(static_cast<uint8_t>(128 - i), 128, 128);
    avi.secondEnd();
    return gxValues(*loadGeneral(avi.bytes()));
}

} // namespace

TEST(ClipDataRecord, EmptyRecordAnswersSentinels)
{
    const auto data = std::make_unique<TavroClipData>();
    EXPECT_EQ(data->clipDataCount(), 0);
    for (const int index : { 0, 1, 649, 650, -1 })
        expectSentinels(*data, index);
}

TEST(ClipDataRecord, ReadsAreBoundedByCountAndCapacity)
{
    const auto data = loadGeneral(tailClip(649));
    ASSERT_EQ(data->clipDataCount(), 649);
    EXPECT_EQ(data->getGx(648), 1648);
    EXPECT_EQ(data->getGpsLat(648), 658.0f);
    for (const int index : { 649, 650, -1, -2147483647 - 1 })
        expectSentinels(*data, index);

    // Even a count set past the capacity never opens index 650.
    data->setClipDataCount(100000);
    EXPECT_EQ(data->getGx(648), 1648);
    expectSentinels(*data, 650);
}

TEST(ClipDataRecord, NegativeGIsSignExtended)
{
    const auto data = loadGeneral(tailClip(3, -300));
    ASSERT_EQ(data->clipDataCount(), 3);
    EXPECT_EQ(data->getGx(0), -300);
    EXPECT_EQ(data->getGy(2), -2);
}

TEST(ClipDataRecord, CalStringConvertsNmeaCoordinates)
{
    const struct {
        const char* text;
        int32_t expected;
    } cases[] = {
        { "3723.2475", 37387460 }, // 37 + 23.2475 / 60 in single precision
        { "12658.4100", 126973504 },
        { "0005.5", 91666 },
        { "05.5", 91666 }, // no degrees before the minutes
        { "", 0 },
        { "12", 0 }, // no point
        { "5.5", 0 }, // point at position 1
        { ".5", 0 },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(TavroClipData::cal_string(QByteArrayView(c.text)), c.expected) << c.text;
        EXPECT_EQ(TavroClipData::cal_string(QString::fromLatin1(c.text)), c.expected) << c.text;
    }
}

TEST(ClipDataRecord, EachSecondBecomesTenSamples)
{
    const struct {
        int rawCount;
        std::vector<int> rawIndices;
    } cases[] = {
        { 1, { 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 } }, { 3, { 0, 0, 0, 0, 1, 1, 1, 2, 2, 2 } },
        { 7, { 0, 0, 1, 2, 2, 3, 4, 4, 5, 6 } }, { 10, { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9 } },
        { 11, { 0, 1, 2, 3, 4, 5, 7, 8, 9, 10 } }, // raw 6 shares raw 5's tenth
        { 12, { 0, 1, 2, 3, 5, 6, 7, 8, 9, 11 } }, { 30, { 0, 2, 5, 8, 11, 14, 17, 20, 23, 26 } },
        { 60, { 0, 3, 9, 15, 21, 27, 33, 39, 45, 51 } },
        { 61, { 0, 3, 9, 15, 21, 27, 33, 39, 45, 51 } }, // the 61st is dropped
    };
    for (const auto& c : cases)
        EXPECT_EQ(distributedRawIndices(c.rawCount), c.rawIndices) << c.rawCount << " raw samples";
}

TEST(ClipDataRecord, ShortClipAfterLongKeepsOldEntriesHidden)
{
    const auto data = std::make_unique<TavroClipData>();
    data->loadVideoFileCilpDataFromFilePath(writeClip("long.avi", tailClip(650)));
    ASSERT_EQ(data->clipDataCount(), 650);
    data->loadVideoFileCilpDataFromFilePath(writeClip("short.avi", tailClip(10, 2000)));
    ASSERT_EQ(data->clipDataCount(), 10);
    EXPECT_EQ(data->getGx(9), 2009);
    for (const int index : { 10, 324, 325, 649 })
        expectSentinels(*data, index);

    // Reloading clears 650 bytes of each array: 325 G entries, 162 and a half
    // float entries. What lies past that is the long clip's, unread.
    data->setClipDataCount(650);
    EXPECT_EQ(data->getGx(324), 0);
    EXPECT_EQ(data->getGx(325), 1325);
    EXPECT_EQ(data->getGx(649), 1649);
    EXPECT_EQ(data->getGpsLat(161), 0.0f);
    EXPECT_EQ(data->getGpsLat(163), 173.0f);
    EXPECT_EQ(data->getGpsSpeed(161), 0);
    EXPECT_EQ(data->getGpsSpeed(163), 163);
}

TEST(ClipDataRecord, GeneralLoaderTriesFormatsInOrder)
{
    const QByteArray subtitle = SubtitleBuilder().gsensorBlocks(3).bytes();
    // Only a file named exactly ".srt" is read as subtitles.
    EXPECT_EQ(loadGeneral(subtitle, "clip.srt")->clipDataCount(), 3);
    EXPECT_EQ(loadGeneral(subtitle, "clip.SRT")->clipDataCount(), 0);
    EXPECT_EQ(loadGeneral(subtitle, "clip.avi")->clipDataCount(), 0);

    // Text records anywhere in the bytes win over a tail block ...
    RawTextBuilder raw;
    raw.filler(200);
    for (int i = 0; i < 4; ++i)
        raw.record("gsensor,7,7,7").filler(50);
    const QByteArray tail = tailClip(20);
    EXPECT_EQ(loadGeneral(raw.bytes() + tail)->clipDataCount(), 4);
    // ... a tail block wins over the chunk stream it follows ...
    RiffAviBuilder avi;
    avi.aviHeaders().gRecord(128, 128, 128).secondEnd().videoFrame(40000);
    EXPECT_EQ(loadGeneral(avi.bytes())->clipDataCount(), 10);
    const auto both = loadGeneral(avi.bytes() + "ETKLP1" + "1,1.5,2.5,3,4,5,6\r\n");
    EXPECT_EQ(both->clipDataCount(), 1);
    EXPECT_EQ(both->getGx(0), 4);
    // ... and a missing file is 0 from every parser.
    const auto missing = std::make_unique<TavroClipData>();
    missing->loadVideoFileCilpDataFromFilePath(scratchPath("no-such-clip.avi"));
    EXPECT_EQ(missing->clipDataCount(), 0);
    EXPECT_EQ(missing->gpsDataCount(), 0);
}

TEST(ClipDataRecord, SingleParserEntryPointsReadTheirFormat)
{
    TavroClipData data;
    const QString avi = writeClip(
        "entry.avi", RiffAviBuilder().aviHeaders().gRecord(100, 128, 128).secondEnd().bytes());
    EXPECT_EQ(data.getAllDataFromFile(avi.toUtf8().constData()), 10);
    EXPECT_EQ(data.getAllDataFromFileTail(avi), 0u);
    EXPECT_EQ(data.getTolmAllDataFromFile(avi), 0);
    const QString srt = writeClip("entry.srt", SubtitleBuilder().gsensorBlocks(4).bytes());
    EXPECT_EQ(data.getTolmAllDataFromSrtFile(srt), 4);
    const QString tail = writeClip("entry-tail.avi", tailClip(5));
    EXPECT_EQ(data.getAllDataFromFileTail(tail), 5u);
    const QString kel = writeClip("Rec_entry.avi",
        RiffAviBuilder()
            .aviHeaders()
            .kelGRecord(128, 128, 129)
            .sentence(RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "0"))
            .bytes());
    EXPECT_EQ(data.getAllDataFromFile_Kel(kel.toUtf8().constData()), 10);
    // The parsers leave clipDataCount to the loader: until it is set, nothing reads.
    EXPECT_EQ(data.getGz(0), -512);
    data.setClipDataCount(10);
    EXPECT_EQ(data.getGz(0), 10);
}
