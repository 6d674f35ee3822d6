// The seed corpora under fuzz/corpus/: every fuzz target has its folder of
// small files, the generator writes the same files, and the seeds are inputs
// the parsers accept (a seed the parser rejects teaches the fuzzer nothing).
#include "FuzzSeeds.h"

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
#include <QDirIterator>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>

namespace {

const QString kSource = QStringLiteral(TAVRO_SOURCE_DIR);

// Seeds stay a few KB; the text block needs a clip longer than its search
// window and the MP4 a real (tiny) video track.
qsizetype sizeLimit(const QString& target)
{
    if (target == QLatin1String("fuzz_telemetry_tail"))
        return 40000;
    if (target == QLatin1String("fuzz_telemetry_mp4_text"))
        return 16384;
    return 4096;
}

QStringList fuzzTargets()
{
    QStringList targets;
    for (const QString& file : QDir(kSource + QStringLiteral("/fuzz"))
                                   .entryList({ QStringLiteral("fuzz_*.cpp") }, QDir::Files))
        targets.append(file.chopped(4));
    return targets;
}

template <typename Parser> int samples(const QByteArray& bytes)
{
    const auto record = std::make_unique<TavroClipData>();
    return Parser().parse(QByteArrayView(bytes), *record);
}

} // namespace

TEST(FuzzSeeds, EveryTargetHasASmallCommittedCorpus)
{
    const QStringList targets = fuzzTargets();
    ASSERT_GE(targets.size(), 15);
    qint64 total = 0;
    for (const QString& target : targets) {
        QDir corpus(kSource + QStringLiteral("/fuzz/corpus/") + target);
        const QFileInfoList files = corpus.entryInfoList(QDir::Files);
        EXPECT_GE(files.size(), 1) << qPrintable(target);
        for (const QFileInfo& file : files) {
            EXPECT_LE(file.size(), sizeLimit(target)) << qPrintable(file.filePath());
            total += file.size();
        }
    }
    EXPECT_LT(total, 512 * 1024);
}

TEST(FuzzSeeds, GeneratorWritesOneFolderPerTarget)
{
    QTemporaryDir scratch;
    QTemporaryDir out;
    const QList<FuzzSeed> seeds = FuzzSeeds::allSeeds(scratch.path());
    ASSERT_EQ(FuzzSeeds::writeSeeds(seeds, out.path()), seeds.size());
    QStringList written = QDir(out.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QStringList targets = fuzzTargets();
    if (!written.contains(QStringLiteral("fuzz_telemetry_mp4_text")))
        targets.removeAll(QStringLiteral("fuzz_telemetry_mp4_text")); // no ffmpeg here
    EXPECT_EQ(written, targets);
    // Writing again replaces a folder's old seeds instead of adding to them.
    QFile stale(out.path() + QStringLiteral("/fuzz_config_timedat/stale"));
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.close();
    ASSERT_EQ(FuzzSeeds::writeSeeds(seeds, out.path()), seeds.size());
    EXPECT_FALSE(stale.exists());
}

TEST(FuzzSeeds, SeedsAreInputsTheParsersAccept)
{
    QTemporaryDir scratch;
    // For each target, how much of a seed its parser took (> 0 = accepted).
    const std::map<QString, std::function<qsizetype(const QByteArray&)>> accepted {
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
                SetupValues values;
                return qsizetype(SetupRecordCodec::decode(b.mid(1), int(b[0]) - 8, values));
            } },
        { "fuzz_settings_kel_page",
            [](const QByteArray& b) { return KelSettingManager::linesFromText(b).size() - 2; } },
    };
    std::map<QString, int> best;
    for (const FuzzSeed& seed : FuzzSeeds::allSeeds(scratch.path())) {
        EXPECT_FALSE(seed.bytes.isEmpty()) << qPrintable(seed.target + u'/' + seed.name);
        EXPECT_LE(seed.bytes.size(), sizeLimit(seed.target)) << qPrintable(seed.name);
        const auto parser = accepted.find(seed.target);
        if (parser != accepted.end())
            best[seed.target] = std::max<int>(best[seed.target], int(parser->second(seed.bytes)));
    }
    for (const auto& [target, parser] : accepted) {
        if (target == QLatin1String("fuzz_telemetry_mp4_text") && !best.count(target))
            continue; // no ffmpeg to make the clip
        EXPECT_GT(best[target], 0) << qPrintable(target);
    }
}
