// The "ETKLP1" text block after an AVI's video data.

#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace TelemetryTestFiles;

namespace {

// A file of `length` bytes: video-like bytes, then "ETKLP1" `markerFromEnd`
// bytes before the end, followed by `line` and line breaks up to the end.
QByteArray fileWithMarker(int length, int markerFromEnd, const QByteArray& line)
{
    const QByteArray text = line + QByteArray(markerFromEnd - 6 - line.size(), '\n');
    return TailBlockBuilder::videoLikeBytes(length - markerFromEnd, 11) + "ETKLP1" + text;
}

} // namespace

TEST(AviTailParser, ReadsSevenFieldLines)
{
    const auto data = loadGeneral(TailBlockBuilder()
                                      .line("12,37.5,127.0,88,10,-20,128")
                                      .line("13,37.5,127.0,88,10,-20") // six fields
                                      .line("14,37.5,127.0,88,10,-20,128,1") // eight fields
                                      .line("15,0,0,0,1,2,3") // stored, no position
                                      .line("16,-33.25,-70.5,120,70000,-70000,-1")
                                      .bytes());
    const std::vector<Sample> expected {
        { 10, -20, 128, 37.5f, 127.0f, 88 }, { 1, 2, 3, 0.0f, 0.0f, 0 },
        { 4464, -4464, -1, -33.25f, -70.5f, 120 }, // G keeps the low 16 bits
    };
    EXPECT_EQ(samples(*data), expected);
    EXPECT_EQ(data->gpsDataCount(), 2);
}

TEST(AviTailParser, SplitsLinesAtEveryLineBreak)
{
    // CR LF yields an empty line in between, which is skipped like any other.
    const QByteArray separators[]
        = { "\r\n", "\n", "\r", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xC2\x85", "\v", "\f", "\n\n\n" };
    for (const QByteArray& separator : separators) {
        TailBlockBuilder tail;
        tail.lineEnd(separator);
        for (int i = 0; i < 5; ++i)
            tail.sample(i, "1.5", "2.5", i, i, 0, 0);
        const auto data = loadGeneral(tail.bytes());
        EXPECT_EQ(gxValues(*data), std::vector<int>({ 0, 1, 2, 3, 4 }))
            << separator.toHex().constData();
    }
}

TEST(AviTailParser, StopsAtCapacity)
{
    TailBlockBuilder tail;
    for (int i = 0; i < 700; ++i)
        tail.sample(i, "1", "2", 3, i, 0, 0);
    const auto data = loadGeneral(tail.bytes());
    EXPECT_EQ(data->clipDataCount(), 650);
    EXPECT_EQ(data->gpsDataCount(), 650);
    EXPECT_EQ(data->getGx(649), 649);
}

TEST(AviTailParser, LooksForTheMarkerOnlyInTheLastWindow)
{
    const QByteArray line = "1,37.5,127.5,50,1,2,3\n";
    const struct {
        int length;
        int markerFromEnd;
        int expected;
    } cases[] = {
        { 40000, 34000, 0 }, // outside the window: the video fails to decode
        { 40000, 33007, 0 }, { 40000, 33006, 1 }, // the window's first position
        { 40000, 7 + 22, 1 }, { 33006, 33006, 1 },
        { 33005, 30000, 0 }, // shorter than the window: no search at all
    };
    for (const auto& c : cases) {
        const auto data = loadGeneral(fileWithMarker(c.length, c.markerFromEnd, line));
        EXPECT_EQ(data->clipDataCount(), c.expected) << c.length << " " << c.markerFromEnd;
    }
}

TEST(AviTailParser, WithoutMarkerDecodesFromOffsetSix)
{
    // A small text file is offered whole (from byte 6) and read as lines.
    const auto data = loadGeneral("HEADER1,2.5,3.5,4,5,6,7\n9,0,0,0,8,8,8\n");
    EXPECT_EQ(gxValues(*data), std::vector<int>({ 5, 8 }));
    EXPECT_EQ(data->gpsDataCount(), 1);
    // Invalid UTF-8 anywhere in the block means no lines at all.
    EXPECT_EQ(
        loadGeneral(TailBlockBuilder().sample(1, "1", "2", 3, 4, 5, 6).line("\xC0\xAF").bytes())
            ->clipDataCount(),
        0);
    EXPECT_EQ(
        loadGeneral(TailBlockBuilder().sample(1, "1", "2", 3, 4, 5, 6).line("\xED\xA0\x80").bytes())
            ->clipDataCount(),
        0);
}

TEST(AviTailParser, NotANumberCountsAsAPosition)
{
    const auto data
        = loadGeneral(TailBlockBuilder().line("1,nan,0,0,0,0,0").line("2,abc,0,0,0,0,0").bytes());
    ASSERT_EQ(data->clipDataCount(), 2);
    EXPECT_TRUE(std::isnan(data->getGpsLat(0)));
    EXPECT_EQ(data->getGpsLat(1), 0.0f);
    EXPECT_EQ(data->gpsDataCount(), 1);
}

TEST(AviTailParser, TinyFilesYieldNothing)
{
    TavroClipData data;
    data.setGpsDataCount(7);
    for (const QByteArray& bytes :
        { QByteArray(), QByteArray("E"), QByteArray("ETKLP"), QByteArray("ETKLP1") }) {
        EXPECT_EQ(data.getAllDataFromFileTail(writeClip("tiny.avi", bytes)), 0u);
        EXPECT_EQ(data.gpsDataCount(), 0);
    }
}
