// A clip file that shrinks while it is read (the card pulled out, the file cut
// short by a copy): the reader survives, and nothing read from the vanished
// part is kept.

#include "TelemetryTestFiles.h"
#include "TelemetryTextBuilders.h"

#include "telemetry/AviChunkParser.h"
#include "telemetry/AviTailParser.h"
#include "telemetry/ClipFileBytes.h"
#include "telemetry/KelChunkParser.h"
#include "telemetry/TolmRawParser.h"
#include "telemetry/TolmSubtitleParser.h"

#include <QFile>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include <unistd.h>

using namespace TelemetryTestFiles;

namespace {

// Several MiB of video, then a telemetry tail of 300 samples.
QByteArray longTailClip()
{
    TailBlockBuilder tail(8 << 20);
    for (int n = 0; n < 300; ++n)
        tail.sample(n, "3723.2475", "12658.4100", 40, n, -n, 128);
    return tail.bytes();
}

TEST(TruncatedMapping, EveryParserOverAFileCutUnderTheMappingSurvivesAndSaysSo)
{
    const QByteArray bytes = longTailClip();
    const QString path = writeClip(QStringLiteral("cut.avi"), bytes);
    ASSERT_EQ(loadGeneral(bytes)->clipDataCount(), 300);

    const TolmRawParser raw;
    const AviTailParser tail;
    const AviChunkParser chunks;
    const KelChunkParser kel;
    const TolmSubtitleParser subtitle;
    for (const TelemetryParser* parser :
        std::initializer_list<const TelemetryParser*> { &raw, &tail, &chunks, &kel, &subtitle }) {
        writeClip(QStringLiteral("cut.avi"), bytes);
        ClipFileBytes file(path);
        ASSERT_TRUE(file.isOpen());
        ASSERT_EQ(file.bytes().size(), bytes.size());
        EXPECT_TRUE(file.isIntact());
        // The card goes: only the first page is left of the file.
        ASSERT_EQ(::truncate(QFile::encodeName(path).constData(), 4096), 0);
        TavroClipData record;
        const int count = parser->parse(file.bytes(), record); // SIGBUS without the guard
        EXPECT_GE(count, 0);
        EXPECT_EQ(file.bytes().back(), '\0') << "the vanished part reads as zeros";
        EXPECT_FALSE(file.isIntact());
    }
}

TEST(TruncatedMapping, LoaderRacingATruncationKeepsAllOrNothing)
{
    const QByteArray bytes = longTailClip();
    const QString path = writeClip(QStringLiteral("race.avi"), bytes);
    for (int round = 0; round < 20; ++round) {
        writeClip(QStringLiteral("race.avi"), bytes);
        std::atomic<bool> go { false };
        std::thread cutter([&] {
            while (!go.load()) { }
            usleep(useconds_t(round * 150));
            ::truncate(QFile::encodeName(path).constData(), 1000);
        });
        TavroClipData record;
        go = true;
        record.loadVideoFileCilpDataFromFilePath(path);
        cutter.join();
        const int count = record.clipDataCount();
        // Which of the two won the race is chance; half a record never comes out.
        EXPECT_TRUE(count == 0 || count == 300) << count;
    }
}

} // namespace
