// The Tolm family's text records: after "02tx"/"03tx" tags anywhere in a clip,
// and in the SubRip text extracted from an MP4's subtitle track; the number
// and UTF-8 rules they are read with.

#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include "telemetry/TelemetryText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace TelemetryTestFiles;

namespace {

constexpr float kLat = 37.3874588f;
constexpr float kLng = 126.973503f;
const QByteArray kFixA = SubtitleBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0");
const QByteArray kFixV = SubtitleBuilder::rmc("V", "3723.2475", "N", "12658.4100", "E", "10.0");

// Bytes of a literal, zero bytes included.
template <size_t N> QByteArray bin(const char (&text)[N])
{
    return QByteArray(text, N - 1);
}

// `count` "gsensor,i,-20,128" blocks and then the block `last` (none when empty).
QByteArray srt(int count, const QByteArray& last)
{
    SubtitleBuilder builder;
    builder.gsensorBlocks(count);
    return (last.isEmpty() ? builder : builder.block(last)).bytes();
}

std::unique_ptr<TavroClipData> loadSrt(const QByteArray& bytes)
{
    return loadGeneral(bytes, QStringLiteral("clip.srt"));
}

} // namespace

TEST(TolmRawParser, TextFollowsTheTagAfterOneByteAndZeros)
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
    EXPECT_EQ(samples(*data).at(10), Sample({ 100, 1, 2, kLat, kLng, 19 }));
    EXPECT_EQ(samples(*data).at(19).x, 111);
    EXPECT_EQ(data->gpsDataCount(), 30);

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
        // G samples that no sentence closes, in a clip that has GPS: nothing.
        { bin("02tx\0GPRMC,1,A,1.0,N,1.0,E,1\0"
              "02tx\0gsensor,1,2,3\0"),
            {} },
        // "gsensori" carries no sentence here: one sample, no fix.
        { bin("02tx\0gsensori,1,256,256,-256,128,") + kFixA, { 128 } },
    };
    for (const auto& c : cases)
        EXPECT_EQ(gxValues(*loadGeneral(c.bytes, "clip.bin")), c.gx) << c.bytes.toHex().constData();
}

TEST(TolmRawParser, TextIsAtMost119Bytes)
{
    // 19 knots are 35 km/h; cut after the "1" they are 2.
    const QByteArray prefix = "GPRMC,1,A,3723.2475,N,12658.4100,E,";
    for (const auto& [spaces, speed] : { std::pair { 82, 35 }, std::pair { 83, 2 } }) {
        RawTextBuilder raw;
        raw.record("gsensor,1,2,3").record(prefix + QByteArray(spaces, ' ') + "19");
        EXPECT_EQ(samples(*loadGeneral(raw.bytes(), "clip.bin")).at(9),
            Sample({ 1, 2, 3, kLat, kLng, speed }));
    }
    // A text without a zero byte still lets the scan find the next tag; a
    // sentence without G samples appends nothing.
    RawTextBuilder raw;
    raw.append(bin("02tx\0\0\0\0gsensor,1,2,3,") + QByteArray(200, 'a')).record("gsensor,4,5,6");
    raw.record(kFixA).record(kFixA).record("gsensor,7,8,9");
    std::vector<int> expected { 1, 1, 1, 1, 1, 4, 4, 4, 4, 4 };
    expected.insert(expected.end(), 10, 7);
    EXPECT_EQ(gxValues(*loadGeneral(raw.bytes(), "clip.bin")), expected);
}

TEST(TolmSubtitleParser, GSampleOfEachRecordKind)
{
    const struct {
        QByteArray payload;
        std::vector<int> g;
    } cases[] = {
        // "gsensor": z is cut by its fourth character.
        { "gsensor,10,-20,-128", { 10, -20, -12 } }, { "gsensor,10,-20,999", { 10, -20, 999 } },
        { "gsensor,10,-20,12ab", { 10, -20, 1 } }, { "gsensor,10,-20,1234", { 10, -20, 123 } },
        { "gsensor, 7 ,x,-5", { 7, 0, -5 } },
        { "gsensor,1,2\n,3", { 1, 2, 3 } }, // payload lines are joined with blanks
        { "gsensor,1,2", {} }, // too few fields
        { "Gsensor,1,2,3", {} }, // keywords are exact
        // "gsensori": counts times 128 over s2/s1, rounded half up, within 4 g.
        { "gsensori,1,256,256,-256,128", { 128, -128, 64 } },
        { "gsensori,1,256,3,-3,-1", { 2, -1, 0 } }, // 1.5, -1.5 and -0.5 round up
        { "gsensori,1,256,1024,-3000,0", { 512, -512, 0 } },
        { "gsensori,1,256,1,1,1234", { 1, 1, 62 } }, // leadcut: "123"
        { "gsensori,1,256,1,1,-256z", { 1, 1, -12 } }, // leadcut: "-25"
        { "gsensori,1,256,1,1,12ab", { 1, 1, 6 } }, // leadcut: "12a"
        { "gsensori,1,256,1,1,999", { 1, 1, 500 } }, // three characters stay
        { "gsensori,2,512,256,0,0", { 128, 0, 0 } },
        { "gsensori,256,1,256,256,256", { 0, 0, 0 } }, // quotient 0
        { "gsensori,0,256,256,256,256", { 0, 0, 0 } }, // no scale at all
        { "gsensori,-1,256,256,0,0", { -128, 0, 0 } },
        { "gsensori,1,256,256,256", {} }, // too few fields
    };
    for (const auto& c : cases) {
        const auto data = loadSrt(srt(0, c.payload));
        const std::vector<int> g = data->clipDataCount() == 1
            ? std::vector<int> { data->getGx(0), data->getGy(0), data->getGz(0) }
            : std::vector<int> {};
        EXPECT_EQ(g, c.g) << c.payload.constData();
    }
}

TEST(TolmSubtitleParser, SentenceEndsTheSecond)
{
    const struct {
        QByteArray srt;
        int count;
        int gps;
        Sample last;
    } cases[] = {
        { srt(25, kFixA), 10, 10, { 22, -20, 128, kLat, kLng, 19 } },
        { srt(25, kFixV), 10, 0, { 22, -20, 128, 0, 0, 0 } },
        { srt(3, SubtitleBuilder::rmc("A", "3723.2475", "S", "12658.4100", "W", "10.0", "GNRMC")),
            10, 10, { 2, -20, 128, -kLat, -kLng, 19 } },
        // Six fields: the missing hemisphere reads as empty (not "E": negative),
        // the missing speed as 0. Five fields or another keyword are no sentence.
        { srt(3, "GPRMC,1,A,3723.2475,N,12658.4100"), 10, 10, { 2, -20, 128, kLat, -kLng, 0 } },
        { srt(3, "GPRMC,1,A,3723.2475,N"), 3, 0, { 2, -20, 128, 0, 0, 0 } },
        { srt(3, "$GPRMC,1,A,3723.2475,N,1,E,1"), 3, 0, { 2, -20, 128, 0, 0, 0 } },
        { srt(25, ""), 25, 0, { 24, -20, 128, 0, 0, 0 } }, // no GPS: one sample per record
        // After ";" a "gsensori" record carries the second's sentence (13
        // fields: without the knots), a "gsensor" record only extra fields.
        { srt(0, "gsensori,1,256,256,0,0;" + kFixA + ";dropped"), 10, 10,
            { 128, 0, 0, kLat, kLng, 19 } },
        { srt(0, "gsensori,1,256,256,0,0;GPRMC,1,A,3723.2475,N,12658.4100,E"), 10, 10,
            { 128, 0, 0, kLat, kLng, 0 } },
        { srt(0, "gsensori,1,256,256,0,0;GPRMC,1,A,3723.2475,N,12658.4100"), 1, 0,
            { 128, 0, 0, 0, 0, 0 } },
        { srt(0, "gsensor,1,2,3;" + kFixA), 1, 0, { 1, 2, 3, 0, 0, 0 } },
    };
    for (const auto& c : cases) {
        const auto data = loadSrt(c.srt);
        EXPECT_EQ(samples(*data).size(), size_t(c.count)) << c.srt.constData();
        EXPECT_EQ(samples(*data).back(), c.last) << c.srt.constData();
        EXPECT_EQ(data->gpsDataCount(), c.gps) << c.srt.constData();
    }
}

TEST(TolmSubtitleParser, SecondWithoutGRepeatsTheBuffersFirstSlotAndCarTheLastSample)
{
    const auto gxRuns = [](std::initializer_list<std::pair<int, int>> runs) {
        std::vector<int> gx;
        for (const auto& [value, count] : runs)
            gx.insert(gx.end(), count, value);
        return gx;
    };
    // At the start the slot holds zeros; later the first sample of the last
    // second that had one.
    EXPECT_EQ(gxValues(*loadSrt(SubtitleBuilder().block(kFixA).gsensorBlocks(3, 5).bytes())),
        gxRuns({ { 0, 10 }, { 5, 4 }, { 6, 3 }, { 7, 3 } }));
    EXPECT_EQ(gxValues(*loadSrt(
                  SubtitleBuilder().gsensorBlocks(2, 40).block(kFixA).block(kFixV).bytes())),
        gxRuns({ { 40, 5 }, { 41, 5 }, { 40, 10 } }));
    const auto car = loadSrt(SubtitleBuilder()
                                 .block("CAR,9,8,-7")
                                 .block(kFixA)
                                 .block("gsensor,1,2,3")
                                 .block("CAR,50,50,50")
                                 .block("CAR")
                                 .block(kFixA)
                                 .block("CAR") // short, nothing before it in its second
                                 .bytes());
    EXPECT_EQ(gxValues(*car), gxRuns({ { 9, 10 }, { 1, 10 }, { 0, 10 } }));
    EXPECT_EQ(car->getGz(0), -7);
    // Unreadable text is nothing; a byte order mark is skipped; CR LF blocks
    // never end ("\n\n" is looked for), so the first payload runs to the end.
    const QByteArray good = srt(3, "");
    for (const auto& [bytes, count] :
        { std::pair { QByteArray(), 0 }, std::pair { QByteArray("\n\n \n"), 0 },
            std::pair { good + "\xFF", 0 }, std::pair { "\xEF\xBB\xBF" + good, 3 },
            std::pair { QByteArray(good).replace("\n", "\r\n"), 1 } })
        EXPECT_EQ(loadSrt(bytes)->clipDataCount(), count) << bytes.constData();
}

TEST(TelemetryText, NumbersAreReadFromTheStartOfTheField)
{
    const int32_t max = std::numeric_limits<int32_t>::max();
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        QByteArray text;
        int32_t integer;
        float real;
    } cases[] = {
        { " \t-7.5x", -7, -7.5f },
        { "\xC2\xA0\xE3\x80\x80"
          "8",
            8, 8.0f }, // no-break and ideographic spaces
        { "2147483648", max, 2147483648.0f },
        { "99999999999999999999", max, 1e20f },
        { "-1e39", -1, -inf },
        { "1e-50", 1, 0.0f },
        { "1" + QByteArray(400, '0') + "e-", max, inf },
        { "+-1", 0, 0.0f },
        { "", 0, 0.0f },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(TelemetryText::intValue(c.text), c.integer) << c.text.constData();
        EXPECT_EQ(TelemetryText::floatValue(c.text), c.real) << c.text.constData();
    }
    EXPECT_TRUE(std::isnan(TelemetryText::floatValue("nan")));
}

TEST(TelemetryText, Utf8AndWhiteSpace)
{
    // The first and last lead and continuation bytes of each sequence length.
    for (const char* valid : { "abcdefgh\xC3\xA9", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80",
             "\xED\x9F\xBF", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF" })
        EXPECT_TRUE(TelemetryText::isValidUtf8(valid)) << valid;
    for (const char* invalid : { "\x80", "\xC1\xBF", "\xC2", "\xC2\x7F", "\xC2\xC0", "\xE0\x9F\xBF",
             "\xED\xA0\x80", "\xE2\x82", "\xE2\x82\x7F", "\xE2\x82\xC0", "\xF0\x8F\xBF\xBF",
             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "abcdefgh\xFF" })
        EXPECT_FALSE(TelemetryText::isValidUtf8(invalid)) << invalid;
    // Every blank of the camera's reader is trimmed, nothing else is.
    EXPECT_EQ(TelemetryText::trimmed("\t \xC2\xA0\xE1\x9A\x80\xE2\x80\x80\xE2\x80\x8A\xE2\x80\xAF"
                                     "a b\xE2\x81\x9F\xE3\x80\x80\xC2\x85\v\r\n"),
        QByteArrayView("a b"));
    EXPECT_EQ(TelemetryText::trimmed("\xE2\x80\x8B"
                                     "a\xE2\x80\x7F"),
        QByteArrayView("\xE2\x80\x8B"
                       "a\xE2\x80\x7F"));
}
