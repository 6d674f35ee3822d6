// The record's accessors and sentinels, the coordinate conversion, the
// ten-per-second distribution, reloading, and the loaders' choice of parser.

#include "RiffAviBuilder.h"
#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include <gtest/gtest.h>

using namespace TelemetryTestFiles;

namespace {

// A tail-block clip of `count` samples whose gx is gxBase + i and latitude 10 + i.
QByteArray tailClip(int count, int gxBase = 1000)
{
    TailBlockBuilder tail;
    for (int i = 0; i < count; ++i)
        tail.sample(i, QByteArray::number(10 + i), "20.5", i, gxBase + i, -i, 128);
    return tail.bytes();
}

void expectSentinels(const TavroClipData& data, std::initializer_list<int> indices)
{
    for (const int index : indices) {
        Sample s;
        data.getClipDataWithIndex(index, s.x, s.y, s.z, s.lat, s.lng, s.speed);
        EXPECT_EQ(s, Sample({ -512, -512, -512, 512.0f, 512.0f, 1024 })) << index;
        EXPECT_EQ(data.sampleUtcMsecs(index), kNoUtcMsecs) << index;
    }
}

} // namespace

TEST(ClipDataRecord, ReadsAreBoundedByCountAndCapacityAcrossReloads)
{
    TavroClipData data;
    expectSentinels(data, { 0, 649, 650, -1 });
    data.loadVideoFileCilpDataFromFilePath(writeClip("long.avi", tailClip(650)));
    ASSERT_EQ(data.clipDataCount(), 650);
    EXPECT_EQ(samples(data)[649], Sample({ 1649, -649, 128, 659.0f, 20.5f, 649 }));
    expectSentinels(data, { 650, -1, -2147483647 - 1 });
    // A short clip after a long one: reloading clears 650 bytes of each array
    // (325 G entries, 162 and a half float entries); what lies past that is
    // the long clip's, hidden by the count.
    data.loadVideoFileCilpDataFromFilePath(writeClip("short.avi", tailClip(10, 2000)));
    EXPECT_EQ(gxValues(data).back(), 2009);
    expectSentinels(data, { 10, 325, 649 });
    data.setClipDataCount(100000); // even past the capacity, index 650 stays closed
    expectSentinels(data, { 650 });
    EXPECT_EQ(data.getGx(324), 0);
    EXPECT_EQ(data.getGx(649), 1649);
    EXPECT_EQ(data.getGpsLat(161), 0.0f);
    EXPECT_EQ(data.getGpsLat(163), 173.0f);
    EXPECT_EQ(data.getGpsSpeed(161), 0);
    EXPECT_EQ(data.getGpsSpeed(163), 163);
}

TEST(ClipDataRecord, CalStringConvertsNmeaCoordinates)
{
    const std::pair<const char*, int32_t> cases[] = {
        { "3723.2475", 37387460 }, // 37 + 23.2475 / 60 in single precision
        { "12658.4100", 126973504 },
        { "0005.5", 91666 },
        { "05.5", 91666 }, // no degrees before the minutes
        { "", 0 },
        { "12", 0 }, // no point
        { "5.5", 0 }, // point at position 1
        { ".5", 0 },
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(TavroClipData::cal_string(QByteArrayView(text)), expected) << text;
        EXPECT_EQ(TavroClipData::cal_string(QString::fromLatin1(text)), expected) << text;
    }
}

TEST(ClipDataRecord, EachSecondBecomesTenSamples)
{
    const std::pair<int, std::vector<int>> cases[] = {
        { 1, { 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 } }, { 3, { 0, 0, 0, 0, 1, 1, 1, 2, 2, 2 } },
        { 7, { 0, 0, 1, 2, 2, 3, 4, 4, 5, 6 } }, { 10, { 0, 1, 2, 3, 4, 5, 6, 7, 8, 9 } },
        { 11, { 0, 1, 2, 3, 4, 5, 7, 8, 9, 10 } }, // raw 6 shares raw 5's tenth
        { 12, { 0, 1, 2, 3, 5, 6, 7, 8, 9, 11 } }, { 30, { 0, 2, 5, 8, 11, 14, 17, 20, 23, 26 } },
        { 61, { 0, 3, 9, 15, 21, 27, 33, 39, 45, 51 } }, // the 61st is dropped
    };
    for (const auto& [rawCount, rawIndices] : cases) {
        RiffAviBuilder avi;
        avi.aviHeaders();
        for (int i = 0; i < rawCount; ++i)
            avi.gRecord(uint8_t(128 - i), 128, 128);
        EXPECT_EQ(gxValues(*loadGeneral(avi.secondEnd().bytes())), rawIndices) << rawCount;
    }
}

TEST(ClipDataRecord, EveryReaderStopsAtTheRecordsCapacity)
{
    const QByteArray fix = RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "1");
    RiffAviBuilder chunks, kel;
    SubtitleBuilder subtitles;
    RawTextBuilder raw;
    chunks.aviHeaders();
    kel.aviHeaders();
    for (int s = 0; s < 70; ++s) {
        chunks.gRecord(uint8_t(128 - s), 128, 128).sentence(fix);
        kel.kelGRecord(128, 128, 128).sentence(fix);
        subtitles.gsensorBlocks(10, s).block(fix.mid(1));
        for (int i = 0; i < 10; ++i)
            raw.record("gsensor," + QByteArray::number(s * 10 + i) + ",0,0");
    }
    const std::pair<std::unique_ptr<TavroClipData>, int> loaded[] = {
        { loadGeneral(tailClip(700, 0)), 649 }, { loadGeneral(chunks.bytes()), 64 },
        { loadKel(kel.bytes()), 0 }, { loadGeneral(subtitles.bytes(), "a.srt"), 64 + 9 },
        { loadGeneral(raw.bytes(), "a.bin"), 649 }, // no GPS: one long second
    };
    for (const auto& [data, lastGx] : loaded)
        EXPECT_EQ(gxValues(*data).at(649), lastGx);
    EXPECT_EQ(loaded[2].first->gpsDataCount(), 650);
}

TEST(ClipDataRecord, LoadersChooseTheirParsers)
{
    const QByteArray subtitle = SubtitleBuilder().gsensorBlocks(3).bytes();
    // Only a file named exactly ".srt" is read as subtitles.
    EXPECT_EQ(loadGeneral(subtitle, "clip.srt")->clipDataCount(), 3);
    EXPECT_EQ(loadGeneral(subtitle, "clip.SRT")->clipDataCount(), 0);
    // Text records anywhere in the bytes win over a tail block ...
    RawTextBuilder raw;
    raw.filler(200).record("gsensor,7,7,7").filler(50).record("gsensor,7,7,7");
    EXPECT_EQ(loadGeneral(raw.bytes() + tailClip(20))->clipDataCount(), 2);
    // ... a tail block wins over the chunk stream it follows ...
    RiffAviBuilder avi;
    avi.aviHeaders().gRecord(128, 128, 128).secondEnd().videoFrame(40000);
    EXPECT_EQ(loadGeneral(avi.bytes())->clipDataCount(), 10);
    EXPECT_EQ(samples(*loadGeneral(avi.bytes() + "ETKLP1" + "1,1.5,2.5,3,4,5,6\r\n")),
        std::vector<Sample>({ { 4, 5, 6, 1.5f, 2.5f, 3 } }));
    // ... the Kel loader reads nothing but its chunks, and a missing file is 0.
    EXPECT_EQ(loadKel(tailClip(5), "Rec_1.avi")->clipDataCount(), 0);
    TavroClipData data;
    data.loadVideoFileCilpDataFromFilePath(scratchPath("no-such-clip.avi"));
    EXPECT_EQ(data.clipDataCount(), 0);
    // The single-parser entry points read their own format only, and leave
    // clipDataCount to the loader: until it is set, nothing reads.
    const QString aviPath = writeClip("entry.avi", avi.bytes());
    EXPECT_EQ(data.getAllDataFromFile(aviPath.toUtf8().constData()), 10);
    EXPECT_EQ(data.getAllDataFromFile_Kel(aviPath.toUtf8().constData()), 0);
    EXPECT_EQ(data.getAllDataFromFileTail(aviPath), 0u);
    EXPECT_EQ(data.getTolmAllDataFromFile(aviPath), 0);
    EXPECT_EQ(data.getTolmAllDataFromSrtFile(writeClip("entry.srt", subtitle)), 3);
    EXPECT_EQ(data.getGz(0), -512);
    data.setClipDataCount(3);
    EXPECT_EQ(data.getGz(0), 128);
}
