// The seed corpora under fuzz/corpus/: every fuzz target has its folder of a
// few small files, and its parser accepts at least one of them (a corpus the
// parser rejects teaches the fuzzer nothing).
#include "config/CameraLanguages.h"
#include "config/KelSettingManager.h"
#include "config/SetupRecordCodec.h"
#include "config/TimeDatFile.h"
#include "settings/format/MountTable.h"
#include "telemetry/AviChunkParser.h"
#include "telemetry/AviTailParser.h"
#include "telemetry/KelChunkParser.h"
#include "telemetry/Mp4TextTrackParser.h"
#include "telemetry/TavroClipData.h"
#include "telemetry/TolmRawParser.h"
#include "telemetry/TolmSubtitleParser.h"

#include <QDir>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>

namespace {

template <typename Parser> qsizetype samples(const QByteArray& bytes)
{
    const auto record = std::make_unique<TavroClipData>();
    return Parser().parse(QByteArrayView(bytes), *record);
}

qsizetype kelLines(const QByteArray& bytes)
{
    return KelSettingManager::linesFromText(bytes).size() - 2;
}

} // namespace

TEST(FuzzSeeds, EveryTargetHasSmallSeedsItsParserAccepts)
{
    // How much of a seed each target's parser took (> 0: accepted).
    const std::map<QString, std::function<qsizetype(const QByteArray&)>> parsers {
        { "fuzz_telemetry_chunk", samples<AviChunkParser> },
        { "fuzz_telemetry_kel", samples<KelChunkParser> },
        { "fuzz_telemetry_raw", samples<TolmRawParser> },
        { "fuzz_telemetry_subtitle", samples<TolmSubtitleParser> },
        { "fuzz_export_roundtrip", samples<TolmSubtitleParser> },
        { "fuzz_telemetry_tail", samples<AviTailParser> },
        { "fuzz_telemetry_mp4_text", samples<Mp4TextTrackParser> },
        { "fuzz_config_timedat",
            [](const QByteArray& b) { return qsizetype(TimeDatFile::parse(b).has_value()); } },
        { "fuzz_config_verdat",
            [](const QByteArray& b) { return CameraLanguages::parseVerDat(b).size(); } },
        { "fuzz_settings_mountinfo",
            [](const QByteArray& b) { return MountTable::parse(b).size(); } },
        { "fuzz_config_record",
            [](const QByteArray& b) {
                SetupValues values; // the first byte is the field count + 8
                return qsizetype(
                    !b.isEmpty() && SetupRecordCodec::decode(b.mid(1), int(b[0]) - 8, values));
            } },
        { "fuzz_config_blackbox", kelLines }, { "fuzz_settings_kel_page", kelLines }
    };
    const QDir fuzz(QStringLiteral(TAVRO_SOURCE_DIR "/fuzz"));
    const QStringList targets
        = fuzz.entryList({ QStringLiteral("fuzz_*.cpp") }).replaceInStrings(".cpp", "");
    ASSERT_GE(targets.size(), 16);
    qint64 total = 0;
    for (const QString& target : targets) {
        // A few KB; the text block after a clip sits behind 33006 bytes of
        // video, and the MP4 needs a real (tiny) video track.
        const qint64 limit = target == "fuzz_telemetry_tail" ? 40000
            : target == "fuzz_telemetry_mp4_text"            ? 16384
                                                             : 4096;
        const QFileInfoList seeds
            = QDir(fuzz.filePath("corpus/" + target)).entryInfoList(QDir::Files);
        EXPECT_GE(seeds.size(), 1) << qPrintable(target);
        qsizetype best = 0;
        for (const QFileInfo& seed : seeds) {
            EXPECT_LE(seed.size(), limit) << qPrintable(seed.filePath());
            total += seed.size();
            QFile file(seed.filePath());
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            if (const auto parser = parsers.find(target); parser != parsers.end())
                best = std::max(best, parser->second(file.readAll()));
        }
        if (parsers.count(target)) {
            EXPECT_GT(best, 0) << qPrintable(target);
        }
    }
    EXPECT_LT(total, 512 * 1024);
    for (const auto& [target, parser] : parsers)
        EXPECT_TRUE(targets.contains(target)) << qPrintable(target);
}
