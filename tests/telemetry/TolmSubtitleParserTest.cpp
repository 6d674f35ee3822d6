// The SubRip text extracted from a Tolm-family MP4's subtitle track.

#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include <gtest/gtest.h>

using namespace TelemetryTestFiles;

namespace {

const QByteArray kFixA = SubtitleBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0");
const QByteArray kFixV = SubtitleBuilder::rmc("V", "3723.2475", "N", "12658.4100", "E", "10.0");

std::unique_ptr<TavroClipData> loadSubtitle(const SubtitleBuilder& builder)
{
    return loadGeneral(builder.bytes(), QStringLiteral("clip.srt"));
}

// The G sample that one payload (with nothing else in the file) turns into.
std::vector<int> gOf(const QByteArray& payload)
{
    const auto data = loadSubtitle(SubtitleBuilder().block(payload));
    if (data->clipDataCount() != 1)
        return {};
    return { data->getGx(0), data->getGy(0), data->getGz(0) };
}

} // namespace

TEST(TolmSubtitleParser, GsensorZIsCutByItsFourthCharacter)
{
    const struct {
        QByteArray payload;
        std::vector<int> g;
    } cases[] = {
        { "gsensor,10,-20,-128", { 10, -20, -12 } },
        { "gsensor,10,-20,99", { 10, -20, 99 } },
        { "gsensor,10,-20,12ab", { 10, -20, 1 } },
        { "gsensor,10,-20,1234", { 10, -20, 123 } },
        { "gsensor,10,-20,128", { 10, -20, 128 } },
        { "gsensor, 7 ,x,-5", { 7, 0, -5 } },
        { "gsensor,1,2\n,3", { 1, 2, 3 } }, // payload lines are joined with blanks
        { "gsensor,1,2", {} }, // too few fields
        { "Gsensor,1,2,3", {} }, // keywords are exact
        { "dummy,1,2,3", {} },
    };
    for (const auto& c : cases)
        EXPECT_EQ(gOf(c.payload), c.g) << c.payload.constData();
}

TEST(TolmSubtitleParser, GsensoriIsScaledAndClamped)
{
    const struct {
        QByteArray payload;
        std::vector<int> g;
    } cases[] = {
        { "gsensori,1,256,256,-256,128", { 128, -128, 64 } },
        { "gsensori,1,256,2000,0,0", { 512, 0, 0 } },
        { "gsensori,1,256,0,-3000,0", { 0, -512, 0 } },
        { "gsensori,1,256,1,1,1234", { 1, 1, 62 } }, // leadcut: "123"
        { "gsensori,1,256,1,1,-256z", { 1, 1, -12 } }, // leadcut: "-25"
        { "gsensori,1,256,1,1,12ab", { 1, 1, 6 } }, // leadcut: "12a"
        { "gsensori,2,512,256,0,0", { 128, 0, 0 } },
        { "gsensori,256,1,256,256,256", { 0, 0, 0 } }, // quotient 0
        { "gsensori,0,256,256,256,256", { 0, 0, 0 } }, // no scale at all
        { "gsensori,-1,256,256,0,0", { -128, 0, 0 } },
        { "gsensori,1,256,256,256", {} }, // too few fields
    };
    for (const auto& c : cases)
        EXPECT_EQ(gOf(c.payload), c.g) << c.payload.constData();
}

TEST(TolmSubtitleParser, RmcSentenceEndsTheSecond)
{
    const auto valid = loadSubtitle(SubtitleBuilder().gsensorBlocks(25).block(kFixA));
    ASSERT_EQ(valid->clipDataCount(), 10);
    EXPECT_EQ(samples(*valid)[0], Sample({ 0, -20, 128, 37.3874588f, 126.973503f, 19 }));
    EXPECT_EQ(gxValues(*valid), std::vector<int>({ 0, 2, 4, 7, 9, 12, 14, 17, 19, 22 }));
    EXPECT_EQ(valid->gpsDataCount(), 10);

    const auto noFix = loadSubtitle(SubtitleBuilder().gsensorBlocks(25).block(kFixV));
    EXPECT_EQ(noFix->clipDataCount(), 10);
    EXPECT_EQ(noFix->gpsDataCount(), 0);
    EXPECT_EQ(noFix->getGpsSpeed(0), 0);

    const auto southWest = loadSubtitle(SubtitleBuilder().gsensorBlocks(3).block(
        SubtitleBuilder::rmc("A", "3723.2475", "S", "12658.4100", "W", "10.0", "GNRMC")));
    EXPECT_EQ(southWest->getGpsLat(0), -37.3874588f);
    EXPECT_EQ(southWest->getGpsLng(0), -126.973503f);

    // Six fields: the missing hemisphere reads as empty (not "E": negative),
    // the missing speed as 0.
    const auto shortRmc = loadSubtitle(
        SubtitleBuilder().gsensorBlocks(3).block("GPRMC,1,A,3723.2475,N,12658.4100"));
    EXPECT_EQ(shortRmc->getGpsLng(0), -126.973503f);
    EXPECT_EQ(shortRmc->getGpsSpeed(0), 0);
    EXPECT_EQ(loadSubtitle(SubtitleBuilder().gsensorBlocks(3).block("GPRMC,1,A,3723.2475,N"))
                  ->clipDataCount(),
        3);
    EXPECT_EQ(loadSubtitle(SubtitleBuilder().gsensorBlocks(3).block("$GPRMC,1,A,3723.2475,N,1,E,1"))
                  ->gpsDataCount(),
        0);
}

TEST(TolmSubtitleParser, SecondWithoutGRepeatsTheBuffersFirstSlot)
{
    // At the start the slot holds zeros.
    const auto atStart = loadSubtitle(SubtitleBuilder().block(kFixA).gsensorBlocks(3, 5));
    EXPECT_EQ(gxValues(*atStart),
        std::vector<int>({ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 5, 5, 5, 6, 6, 6, 7, 7, 7 }));
    EXPECT_EQ(atStart->gpsDataCount(), 20);

    // Later it holds the first sample of the last second that had one.
    const auto later
        = loadSubtitle(SubtitleBuilder().gsensorBlocks(2, 40).block(kFixA).block(kFixV));
    EXPECT_EQ(gxValues(*later),
        std::vector<int>(
            { 40, 40, 40, 40, 40, 41, 41, 41, 41, 41, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40 }));
    EXPECT_EQ(later->gpsDataCount(), 10);
}

TEST(TolmSubtitleParser, CarRepeatsTheLastSample)
{
    const auto data = loadSubtitle(SubtitleBuilder()
                                       .block("CAR,9,8,-7")
                                       .block(kFixA)
                                       .block("gsensor,1,2,3")
                                       .block("CAR,50,50,50")
                                       .block("CAR")
                                       .block(kFixA)
                                       .block("CAR")); // short, nothing before it in its second
    EXPECT_EQ(gxValues(*data),
        std::vector<int>({ 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0,
            0, 0, 0, 0, 0, 0 }));
    EXPECT_EQ(data->getGz(0), -7);
}

TEST(TolmSubtitleParser, SemicolonJoinsTwoFieldLists)
{
    // The RMC part after a "gsensor" record is only extra fields.
    const auto plain = loadSubtitle(SubtitleBuilder().block("gsensor,1,2,3;" + kFixA));
    EXPECT_EQ(plain->clipDataCount(), 1);
    EXPECT_EQ(plain->gpsDataCount(), 0);

    // After "gsensori" it is read as the second's sentence.
    const auto scaled
        = loadSubtitle(SubtitleBuilder().block("gsensori,1,256,256,0,0;" + kFixA + ";dropped"));
    ASSERT_EQ(scaled->clipDataCount(), 10);
    EXPECT_EQ(samples(*scaled)[9], Sample({ 128, 0, 0, 37.3874588f, 126.973503f, 19 }));
    EXPECT_EQ(scaled->gpsDataCount(), 10);

    // Without the knots field (13 fields) the speed reads as 0.
    const auto noKnots = loadSubtitle(
        SubtitleBuilder().block("gsensori,1,256,256,0,0;GPRMC,1,A,3723.2475,N,12658.4100,E"));
    ASSERT_EQ(noKnots->clipDataCount(), 10);
    EXPECT_EQ(noKnots->getGpsSpeed(0), 0);
    EXPECT_EQ(noKnots->gpsDataCount(), 10);
}

TEST(TolmSubtitleParser, FileWithoutGpsKeepsOneSamplePerRecord)
{
    const auto data = loadSubtitle(SubtitleBuilder().gsensorBlocks(25));
    EXPECT_EQ(data->clipDataCount(), 25);
    EXPECT_EQ(data->getGx(24), 24);
    EXPECT_EQ(data->gpsDataCount(), 0);
}

TEST(TolmSubtitleParser, FullClipAndCapacity)
{
    SubtitleBuilder builder;
    for (int s = 0; s < 70; ++s)
        builder.gsensorBlocks(10, s).block(kFixA);
    const auto data = loadSubtitle(builder);
    EXPECT_EQ(data->clipDataCount(), 650);
    EXPECT_EQ(data->gpsDataCount(), 650);
    EXPECT_EQ(data->getGx(649), 64 + 9);
}

TEST(TolmSubtitleParser, UnreadableTextYieldsNothing)
{
    const QByteArray good = SubtitleBuilder().gsensorBlocks(3).bytes();
    EXPECT_EQ(loadGeneral("", "empty.srt")->clipDataCount(), 0);
    EXPECT_EQ(loadGeneral("\n\n \n", "blank.srt")->clipDataCount(), 0);
    EXPECT_EQ(loadGeneral(good + "\xFF", "bad.srt")->clipDataCount(), 0);
    EXPECT_EQ(loadGeneral("\xEF\xBB\xBF" + good, "bom.srt")->clipDataCount(), 3);
    // CR LF blocks never end ("\n\n" is looked for), so the first payload runs to the end.
    QByteArray crlf = good;
    crlf.replace("\n", "\r\n");
    EXPECT_EQ(loadGeneral(crlf, "crlf.srt")->clipDataCount(), 1);
}
