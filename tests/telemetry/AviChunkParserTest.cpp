// Telemetry chunks interleaved with the video of an AVI clip.

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"

#include <gtest/gtest.h>

using namespace TelemetryTestFiles;

namespace {

const QByteArray kLat = "3723.2475";
const QByteArray kLng = "12658.4100";

// An AVI whose movie list holds `seconds` seconds, each of `perSecond` G
// records (x = record number within the second) and the given closing chunk,
// with odd-sized video frames between them.
RiffAviBuilder clip(int seconds, int perSecond, const QByteArray& closing)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    for (int s = 0; s < seconds; ++s) {
        avi.beginList("rec ");
        for (int i = 0; i < perSecond; ++i) {
            avi.gRecord(static_cast<uint8_t>(128 - i), 128, 128, i % 2 ? "02tx" : "03tx");
            avi.videoFrame(101 + i, s * 100 + i);
        }
        if (closing.isEmpty())
            avi.secondEnd();
        else
            avi.sentence(closing);
        avi.endList();
    }
    return avi;
}

} // namespace

TEST(AviChunkParser, GRecordIsCentredOn128)
{
    const auto data
        = loadGeneral(RiffAviBuilder().aviHeaders().gRecord(0x80, 0x00, 0xFF).secondEnd().bytes());
    ASSERT_EQ(data->clipDataCount(), 10);
    for (const Sample& s : samples(*data))
        EXPECT_EQ(s, Sample({ 0, 128, -127, 0.0f, 0.0f, 0 }));
    EXPECT_EQ(data->gpsDataCount(), 0);
}

TEST(AviChunkParser, RmcSentenceEndsTheSecondWithItsFix)
{
    const struct {
        QByteArray sentence;
        float lat;
        float lng;
        int speed;
        int gpsCount;
    } cases[] = {
        { RiffAviBuilder::rmc("A", kLat, "N", kLng, "E", "10.0"), 37.3874588f, 126.973503f, 19,
            10 },
        { RiffAviBuilder::rmc("A", kLat, "S", kLng, "W", "10.0"), -37.3874588f, -126.973503f, 19,
            10 },
        { RiffAviBuilder::rmc("A", kLat, "N", kLng, "E", "0.26", "G$GPRMC"), 37.3874588f,
            126.973503f, 0, 10 },
        { RiffAviBuilder::rmc("V", kLat, "N", kLng, "E", "10.0"), 0.0f, 0.0f, 0, 0 },
        { RiffAviBuilder::rmc("A", kLat, "N", kLng, "E", "10.0", "$GNRMC"), 0.0f, 0.0f, 0, 0 },
        // Too short to hold a speed: no fix, but the second still ends.
        { "$GPRMC,120000.00,A,3723.2475,N,12658.4100,E", 0.0f, 0.0f, 0, 0 },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.sentence.constData());
        const auto data = loadGeneral(clip(1, 60, c.sentence).bytes());
        if (c.sentence.startsWith("$GNRMC")) {
            // Not an RMC sentence this camera writes: ignored, the second never ends.
            EXPECT_EQ(data->clipDataCount(), 0);
            continue;
        }
        ASSERT_EQ(data->clipDataCount(), 10);
        EXPECT_EQ(gxValues(*data), std::vector<int>({ 0, 3, 9, 15, 21, 27, 33, 39, 45, 51 }));
        EXPECT_EQ(data->getGpsLat(9), c.lat);
        EXPECT_EQ(data->getGpsLng(9), c.lng);
        EXPECT_EQ(data->getGpsSpeed(0), c.speed);
        EXPECT_EQ(data->gpsDataCount(), c.gpsCount);
    }
}

TEST(AviChunkParser, SecondEndWithoutGpsResetsThePosition)
{
    RiffAviBuilder avi = clip(1, 10, RiffAviBuilder::rmc("A", kLat, "N", kLng, "E", "5"));
    avi.gRecord(128, 128, 128).secondEnd(); // a second without GPS
    avi.gRecord(127, 128, 128); // a partial second: closed with the last values
    const auto data = loadGeneral(avi.bytes());
    ASSERT_EQ(data->clipDataCount(), 30);
    EXPECT_EQ(data->getGpsSpeed(9), 9);
    EXPECT_EQ(data->getGpsLat(10), 0.0f);
    EXPECT_EQ(data->getGpsLat(20), 0.0f);
    EXPECT_EQ(data->getGx(29), 1);
    EXPECT_EQ(data->gpsDataCount(), 10);
}

TEST(AviChunkParser, LonePartialSecondIsNotShown)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    for (int i = 0; i < 5; ++i)
        avi.gRecord(100, 100, 100);
    EXPECT_EQ(loadGeneral(avi.bytes())->clipDataCount(), 0);
}

TEST(AviChunkParser, WalksNestedListsOddSizesAndSkipsOtherRecords)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    avi.beginList("rec ").beginList("rec ").beginList("rec ");
    avi.chunk("02tx", "X ignored record");
    avi.chunk("01wb", QByteArray(7, 'a')); // odd: a pad byte follows
    avi.gRecord(120, 128, 128);
    avi.chunk("02tx", "$GPGGA,120000.00,3723.2475,N,12658.4100,E,1,08,0.9,545.4,M,,,,");
    avi.endList().endList();
    avi.chunk("JUNK", QByteArray(33, 'M'));
    avi.chunk("02tx", "MM"); // short G record: missing bytes read as 0
    avi.endList();
    avi.chunk("idx1", QByteArray(16, '\0'));
    avi.secondEnd();
    const auto data = loadGeneral(avi.bytes());
    EXPECT_EQ(gxValues(*data), std::vector<int>({ 8, 8, 8, 8, 8, 51, 51, 51, 51, 51 }));
    EXPECT_EQ(data->getGy(9), 128);
}

TEST(AviChunkParser, StopsAtCapacity)
{
    const auto data
        = loadGeneral(clip(70, 10, RiffAviBuilder::rmc("A", kLat, "N", kLng, "E", "1")).bytes());
    EXPECT_EQ(data->clipDataCount(), 650);
    EXPECT_EQ(data->gpsDataCount(), 650);
}
