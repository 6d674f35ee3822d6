// Telemetry chunks of the Kel camera family's AVI clips.

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include <gtest/gtest.h>

using namespace TelemetryTestFiles;

namespace {

const QByteArray kFix = RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0");

} // namespace

TEST(KelChunkParser, GRecordIsScaledByTenAndNeedsItsFlags)
{
    const struct {
        uint8_t flags[3];
        int expectedCount;
    } cases[] = {
        { { 1, 1, 1 }, 10 },
        { { 1, 0, 1 }, 0 },
        { { 0, 1, 1 }, 0 },
        { { 1, 1, 2 }, 0 },
    };
    for (const auto& c : cases) {
        const QByteArray bytes = RiffAviBuilder()
                                     .aviHeaders()
                                     .kelGRecord(128, 128, 228, c.flags[0], c.flags[1], c.flags[2])
                                     .sentence(kFix)
                                     .bytes();
        const auto data = loadKel(bytes);
        ASSERT_EQ(data->clipDataCount(), c.expectedCount);
        if (c.expectedCount) {
            EXPECT_EQ(samples(*data)[9], Sample({ 0, 0, 1000, 37.3874588f, 126.973503f, 19 }));
        }
    }
    // A short record reads missing bytes as 0, so its flags are not set.
    EXPECT_EQ(
        loadKel(RiffAviBuilder().aviHeaders().chunk("02tx", "M\x80\x80").sentence(kFix).bytes())
            ->clipDataCount(),
        0);
}

TEST(KelChunkParser, SamplesWaitForTheNextSentence)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    // Three seconds of 30 samples without GPS and with 'T' records, which mean
    // nothing here: the first 60 samples wait, the rest are dropped.
    for (int i = 0; i < 90; ++i) {
        avi.kelGRecord(static_cast<uint8_t>(128 + i % 100), 128, 128);
        if (i % 30 == 29)
            avi.secondEnd();
    }
    avi.sentence(RiffAviBuilder::rmc("A", "3723.2475", "S", "12658.4100", "W", "1.0", "G$GPRMC"));
    avi.kelGRecord(130, 128, 128); // after the last sentence: closed with it
    const auto data = loadKel(avi.bytes());
    ASSERT_EQ(data->clipDataCount(), 20);
    std::vector<int> expected { 0, 30, 90, 150, 210, 270, 330, 390, 450, 510 };
    expected.insert(expected.end(), 10, 20);
    EXPECT_EQ(gxValues(*data), expected);
    EXPECT_EQ(data->getGpsLat(19), -37.3874588f);
    EXPECT_EQ(data->getGpsLng(19), -126.973503f);
    EXPECT_EQ(data->getGpsSpeed(19), 2);
    EXPECT_EQ(data->gpsDataCount(), 20);
}

TEST(KelChunkParser, ClipWithoutSentencesHasNoSamples)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    for (int i = 0; i < 30; ++i)
        avi.kelGRecord(128, 128, 128).secondEnd();
    EXPECT_EQ(loadKel(avi.bytes())->clipDataCount(), 0);
}

TEST(KelChunkParser, KelLoaderTriesNoOtherFormat)
{
    const QByteArray tail = TailBlockBuilder().sample(1, "1", "2", 3, 4, 5, 6).bytes();
    EXPECT_EQ(loadGeneral(tail, "Rec_1.avi")->clipDataCount(), 1);
    EXPECT_EQ(loadKel(tail, "Rec_1.avi")->clipDataCount(), 0);
    // General 'M' records are not Kel records (their flag bytes are missing).
    const QByteArray general
        = RiffAviBuilder().aviHeaders().gRecord(100, 100, 100).sentence(kFix).bytes();
    EXPECT_EQ(loadGeneral(general)->clipDataCount(), 10);
    EXPECT_EQ(loadKel(general)->clipDataCount(), 0);
}

TEST(KelChunkParser, StopsAtCapacity)
{
    RiffAviBuilder avi;
    avi.aviHeaders();
    for (int s = 0; s < 70; ++s) {
        for (int i = 0; i < 12; ++i)
            avi.kelGRecord(128, 128, 128);
        avi.sentence(kFix);
    }
    const auto data = loadKel(avi.bytes());
    EXPECT_EQ(data->clipDataCount(), 650);
    EXPECT_EQ(data->gpsDataCount(), 650);
}
