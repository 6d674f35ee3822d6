// The cameras' AVI clips: telemetry chunks between the video frames (general
// and Kel family) and the "ETKLP1" text block after the video data.

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace TelemetryTestFiles;

namespace {

constexpr float kLat = 37.3874588f; // 37°23.2475'
constexpr float kLng = 126.973503f; // 126°58.41'

QByteArray rmc(const QByteArray& status, const QByteArray& ns, const QByteArray& ew,
    const QByteArray& knots, const QByteArray& prefix = "$GPRMC")
{
    return RiffAviBuilder::rmc(status, "3723.2475", ns, "12658.4100", ew, knots, prefix);
}
const QByteArray kFix = rmc("A", "N", "E", "10.0");

// `seconds` seconds of `perSecond` G records (x = record number in the
// second) with odd-sized video frames between them, each closed by `sentence`.
RiffAviBuilder clip(int seconds, int perSecond, const QByteArray& sentence)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    for (int s = 0; s < seconds; ++s) {
        avi.beginList("rec ");
        for (int i = 0; i < perSecond; ++i)
            avi.gRecord(uint8_t(128 - i), 128, 128, i % 2 ? "02tx" : "03tx").videoFrame(101 + i);
        avi.sentence(sentence).endList();
    }
    return avi;
}

} // namespace

TEST(AviChunkParser, RmcSentenceEndsTheSecondWithItsFix)
{
    const struct {
        QByteArray sentence;
        Sample last; // sample 9 of the second: x = 51 of 60
    } cases[] = {
        { kFix, { 51, 0, 0, kLat, kLng, 19 } },
        { rmc("A", "S", "W", "10.0"), { 51, 0, 0, -kLat, -kLng, 19 } },
        // 0.27 knots are 0.5 km/h: rounded up; 0.26 rounds down.
        { rmc("A", "N", "E", "0.27", "G$GPRMC"), { 51, 0, 0, kLat, kLng, 1 } },
        { rmc("A", "N", "E", "0.26"), { 51, 0, 0, kLat, kLng, 0 } },
        { rmc("V", "N", "E", "10.0"), { 51, 0, 0, 0, 0, 0 } },
        // Seven fields, too short to hold a speed: no fix, but the second still ends.
        { "$GPRMC,120000.00,A,3723.2475,N,12658.4100,E", { 51, 0, 0, 0, 0, 0 } },
    };
    for (const auto& c : cases) {
        const auto data = loadGeneral(clip(1, 60, c.sentence).bytes());
        EXPECT_EQ(gxValues(*data), std::vector<int>({ 0, 3, 9, 15, 21, 27, 33, 39, 45, 51 }));
        EXPECT_EQ(samples(*data).at(9), c.last) << c.sentence.constData();
        EXPECT_EQ(data->gpsDataCount(), c.last.lat == 0 ? 0 : 10);
    }
    // Not an RMC sentence this camera writes: ignored, the second never ends.
    EXPECT_EQ(
        loadGeneral(clip(1, 60, rmc("A", "N", "E", "1", "$GNRMC")).bytes())->clipDataCount(), 0);
}

TEST(AviChunkParser, ChunksBetweenTheSeconds)
{
    RiffAviBuilder avi = clip(1, 10, rmc("A", "N", "E", "5"));
    avi.gRecord(0x80, 0x00, 0xFF).secondEnd(); // centred on 128; a 'T' drops the position
    avi.beginList("rec ").beginList("rec ").chunk("02tx", "X ignored record");
    avi.chunk("01wb", QByteArray(7, 'a')).gRecord(120, 128, 128); // odd size: a pad byte follows
    avi.chunk("02tx", "$GPGGA,120000.00,3723.2475,N,12658.4100,E,1,08,0.9,545.4,M,,,,");
    avi.endList().chunk("JUNK", QByteArray(33, 'M')).chunk("02tx", "MM"); // short: zeros follow
    avi.endList().chunk("idx1", QByteArray(16, '\0'));
    avi.gRecord(127, 128, 128); // a partial second: closed with the last values
    const std::vector<Sample> read = samples(*loadGeneral(avi.bytes()));
    ASSERT_EQ(read.size(), 30u);
    EXPECT_EQ(read[9], Sample({ 9, 0, 0, kLat, kLng, 9 }));
    EXPECT_EQ(read[10], Sample({ 0, 128, -127, 0, 0, 0 }));
    EXPECT_EQ(read[20], Sample({ 8, 0, 0, 0, 0, 0 }));
    EXPECT_EQ(read[25], Sample({ 51, 128, 128, 0, 0, 0 }));
    EXPECT_EQ(read[29], Sample({ 1, 0, 0, 0, 0, 0 }));
    // A lone partial second is not shown.
    EXPECT_EQ(
        loadGeneral(RiffAviBuilder().aviHeaders().gRecord(1, 1, 1).bytes())->clipDataCount(), 0);
}

TEST(KelChunkParser, ScaledGRecordsWaitForTheNextSentence)
{
    for (const uint8_t flags : { 0x11, 0x01, 0x10, 0x12 }) { // flags 5 and 6
        const auto data = loadKel(RiffAviBuilder()
                                      .aviHeaders()
                                      .kelGRecord(127, 128, 228, 1, flags >> 4, flags & 0xF)
                                      .sentence(kFix)
                                      .bytes());
        EXPECT_EQ(samples(*data),
            std::vector<Sample>(flags == 0x11 ? 10 : 0, { -10, 0, 1000, kLat, kLng, 19 }))
            << int(flags);
    }
    RiffAviBuilder avi;
    avi.aviHeaders()
        .kelGRecord(128, 128, 128, 0, 1, 1)
        .chunk("02tx", "M\x80\x80"); // short: no flags
    // 90 samples with 'T' records, which mean nothing here: the first 60 wait
    // for the sentence, the rest are dropped.
    for (int i = 0; i < 90; ++i) {
        avi.kelGRecord(uint8_t(128 + i % 100), 128, 128);
        if (i % 30 == 29)
            avi.secondEnd();
    }
    avi.sentence(rmc("A", "S", "W", "1.0", "G$GPRMC"));
    avi.kelGRecord(130, 128, 128); // after the last sentence: closed with it
    const auto data = loadKel(avi.bytes());
    std::vector<int> expected { 0, 30, 90, 150, 210, 270, 330, 390, 450, 510 };
    expected.insert(expected.end(), 10, 20);
    EXPECT_EQ(gxValues(*data), expected);
    EXPECT_EQ(samples(*data).at(19), Sample({ 20, 0, 0, -kLat, -kLng, 2 }));
    EXPECT_EQ(data->gpsDataCount(), 20);
    // Without any sentence nothing is shown; general 'M' records lack the flags.
    EXPECT_EQ(loadKel(RiffAviBuilder().aviHeaders().kelGRecord(1, 1, 1).secondEnd().bytes())
                  ->clipDataCount(),
        0);
    EXPECT_EQ(loadKel(clip(1, 10, kFix).bytes())->clipDataCount(), 0);
}

TEST(AviTailParser, ReadsSevenFieldLinesAtEveryLineBreak)
{
    const auto data = loadGeneral(TailBlockBuilder()
                                      .line("12,37.5,127.0,88,10,-20,128")
                                      .line("13,37.5,127.0,88,10,-20") // six fields
                                      .line("14,37.5,127.0,88,10,-20,128,1") // eight fields
                                      .line("15,0,0,0,1,2,3") // stored, no position
                                      .line("16,-33.25,-70.5,120,70000,-70000,-1")
                                      .line("17,nan,0,0,0,0,0") // NaN counts as a position
                                      .bytes());
    const std::vector<Sample> read = samples(*data);
    ASSERT_EQ(read.size(), 4u);
    EXPECT_EQ(read[0], Sample({ 10, -20, 128, 37.5f, 127.0f, 88 }));
    EXPECT_EQ(read[1], Sample({ 1, 2, 3, 0.0f, 0.0f, 0 }));
    EXPECT_EQ(read[2], Sample({ 4464, -4464, -1, -33.25f, -70.5f, 120 })); // G's low 16 bits
    EXPECT_TRUE(std::isnan(read[3].lat));
    EXPECT_EQ(data->gpsDataCount(), 3);
    // CR LF yields an empty line in between, which is skipped like any other.
    for (const char* separator :
        { "\r\n", "\n", "\r", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xC2\x85", "\v", "\f", "\n\n\n" }) {
        TailBlockBuilder tail;
        tail.lineEnd(separator).sample(0, "1.5", "2.5", 0, 0, 0, 0).sample(1, "1", "2", 1, 1, 0, 0);
        EXPECT_EQ(gxValues(*loadGeneral(tail.bytes())), std::vector<int>({ 0, 1 }))
            << QByteArray(separator).toHex().constData();
    }
}

TEST(AviTailParser, LooksForTheMarkerOnlyInTheLastWindow)
{
    const QByteArray line = "1,37.5,127.5,50,1,2,3\n"; // 22 bytes
    const struct {
        int length;
        int markerFromEnd;
        int count;
    } cases[] = {
        { 40000, 34000, 0 }, // outside the window: the video fails to decode
        { 40000, 33007, 0 }, { 40000, 33006, 1 }, // the window's first position
        { 40000, 28, 1 }, { 33006, 33006, 1 },
        { 33005, 30000, 0 }, // shorter than the window: no search at all
    };
    for (const auto& c : cases) {
        const QByteArray bytes = TailBlockBuilder::videoLikeBytes(c.length - c.markerFromEnd, 11)
            + "ETKLP1" + line + QByteArray(c.markerFromEnd - 28, '\n');
        EXPECT_EQ(loadGeneral(bytes)->clipDataCount(), c.count)
            << c.length << " " << c.markerFromEnd;
    }
    // Without a marker a text file is read whole from byte 6, also when a
    // marker ends it (the last six bytes are never searched) ...
    const auto data = loadGeneral("HEADER1,2.5,3.5,4,5,6,7\n9,0,0,0,8,8,8\n");
    EXPECT_EQ(gxValues(*data), std::vector<int>({ 5, 8 }));
    EXPECT_EQ(data->gpsDataCount(), 1);
    EXPECT_EQ(
        gxValues(*loadGeneral("HEADER1,2.5,3.5,4,5,6,7\n" + QByteArray(33000, '\n') + "ETKLP1")),
        std::vector<int>({ 5 }));
    // ... and invalid UTF-8 anywhere in the block means no lines at all.
    for (const char* bad : { "\xC0\xAF", "\xED\xA0\x80" })
        EXPECT_EQ(loadGeneral(TailBlockBuilder().sample(1, "1", "2", 3, 4, 5, 6).line(bad).bytes())
                      ->clipDataCount(),
            0);
}
