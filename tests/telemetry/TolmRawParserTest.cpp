// Tolm-family text records after "02tx"/"03tx" tags anywhere in a clip.

#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include <gtest/gtest.h>

using namespace TelemetryTestFiles;

namespace {

const QByteArray kFixA = SubtitleBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0");

// Bytes of a literal, zero bytes included.
template <size_t N> QByteArray bin(const char (&text)[N])
{
    return QByteArray(text, N - 1);
}

} // namespace

TEST(TolmRawParser, FindsRecordsAmongOtherBytes)
{
    RawTextBuilder raw;
    raw.filler(5000);
    for (int s = 0; s < 3; ++s) {
        for (int i = 0; i < 12; ++i)
            raw.record(
                   "gsensor," + QByteArray::number(s * 100 + i) + ",1,2", i % 2 ? "02tx" : "03tx")
                .filler(300);
        raw.record(kFixA, "03tx").filler(77);
    }
    const auto data = loadGeneral(raw.bytes(), "clip.mp4");
    ASSERT_EQ(data->clipDataCount(), 30);
    EXPECT_EQ(samples(*data)[10], Sample({ 100, 1, 2, 37.3874588f, 126.973503f, 19 }));
    EXPECT_EQ(gxValues(*data)[19], 111);
    EXPECT_EQ(data->gpsDataCount(), 30);
}

TEST(TolmRawParser, TextFollowsTheTagAfterOneByteAndZeros)
{
    const struct {
        QByteArray bytes;
        std::vector<int> gx;
    } cases[] = {
        { bin("02txA\0\0\0\0gsensor,5,0,0\0"), { 5 } },
        { bin("03txAgsensor,6,0,0\0"), { 6 } },
        { bin("02tx\0\0gsensor,7,0,0"), { 7 } }, // text runs to the end
        { bin("02tx\x10gsensor,8,0,0\0"
              "02tx\x01gsensor,9,0,0\0"),
            { 8, 9 } },
        { bin("01tx\0gsensor,5,0,0\0"), {} },
        { bin("02tX\0gsensor,5,0,0\0"), {} },
        { bin("02tx\0\xFFgsensor,5,0,0\0"), {} }, // not UTF-8
        { bin("02tx\0gsensor,5,0,0;GPRMC\0"), { 5 } }, // no ";" handling here
        { bin("02tx\0CAR,1,2,3\0"
              "02tx\0dummy\0"),
            {} }, // subtitle-only records
        { bin("02tx\0\0\0\0"), {} },
    };
    for (const auto& c : cases) {
        const auto data = loadGeneral(c.bytes, "clip.bin");
        EXPECT_EQ(gxValues(*data), c.gx) << c.bytes.toHex().constData();
    }
}

TEST(TolmRawParser, TextIsAtMost119Bytes)
{
    // A field past byte 119 of the text is cut off: the speed is lost.
    const QByteArray longFix
        = "GPRMC,1,A,3723.2475,N,12658.4100,E," + QByteArray(100, ' ') + "10.0";
    RawTextBuilder raw;
    raw.record("gsensor,1,2,3").record(longFix);
    const auto data = loadGeneral(raw.bytes(), "clip.bin");
    ASSERT_EQ(data->clipDataCount(), 10);
    EXPECT_EQ(data->getGpsLat(0), 37.3874588f);
    EXPECT_EQ(data->getGpsSpeed(0), 0);
    // A text without a zero byte still lets the scan find the next tag.
    RawTextBuilder unterminated;
    unterminated.append(bin("02tx\0\0\0\0gsensor,1,2,3,") + QByteArray(200, 'a'))
        .record("gsensor,4,5,6");
    EXPECT_EQ(gxValues(*loadGeneral(unterminated.bytes(), "clip.bin")), std::vector<int>({ 1, 4 }));
}

TEST(TolmRawParser, SentenceWithoutGAppendsNothing)
{
    RawTextBuilder raw;
    raw.record(kFixA).record("gsensor,1,2,3").record(kFixA).record(kFixA).record("gsensor,4,5,6");
    const auto data = loadGeneral(raw.bytes(), "clip.bin");
    std::vector<int> expected(10, 1);
    expected.insert(expected.end(), 10, 4);
    EXPECT_EQ(gxValues(*data), expected);

    // G samples that no sentence closes, in a clip that has GPS: nothing.
    RawTextBuilder unclosed;
    unclosed.record(kFixA).record("gsensor,1,2,3").record("gsensor,4,5,6");
    const auto none = loadGeneral(unclosed.bytes(), "clip.bin");
    EXPECT_EQ(none->clipDataCount(), 0);
    EXPECT_EQ(none->gpsDataCount(), 0);
}

TEST(TolmRawParser, GsensoriCarriesNoSentenceHere)
{
    RawTextBuilder raw;
    raw.record("gsensori,1,256,256,-256,128," + kFixA);
    const auto data = loadGeneral(raw.bytes(), "clip.bin");
    ASSERT_EQ(data->clipDataCount(), 1);
    EXPECT_EQ(samples(*data)[0], Sample({ 128, -128, 64, 0.0f, 0.0f, 0 }));
}

TEST(TolmRawParser, StopsAtCapacity)
{
    RawTextBuilder raw;
    for (int i = 0; i < 700; ++i)
        raw.record("gsensor," + QByteArray::number(i) + ",0,0").filler(3);
    const auto data = loadGeneral(raw.bytes(), "clip.bin");
    EXPECT_EQ(data->clipDataCount(), 650);
    EXPECT_EQ(data->getGx(649), 649);
}
