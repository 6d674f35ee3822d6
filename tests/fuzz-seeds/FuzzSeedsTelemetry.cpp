#include "FuzzSeeds.h"

#include "FfmpegClipBuilder.h"
#include "RiffAviBuilder.h"
#include "TelemetryTextBuilders.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

const QByteArray kFix = RiffAviBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0");
const QByteArray kNoFix = RiffAviBuilder::rmc("V", "", "", "", "", "");

QList<FuzzSeed> chunkSeeds()
{
    const QString t = QStringLiteral("fuzz_telemetry_chunk");
    RiffAviBuilder twoSeconds;
    twoSeconds.aviHeaders().videoFrame(301);
    for (int s = 0; s < 2; ++s) {
        for (int i = 0; i < 10; ++i)
            twoSeconds.gRecord(uint8_t(120 + i), 128, uint8_t(140 - i));
        twoSeconds.secondEnd().sentence(s ? kNoFix : kFix).videoFrame(97, uint32_t(s + 2));
    }
    RiffAviBuilder gngga;
    gngga.aviHeaders()
        .gRecord(1, 255, 128, "03tx")
        .secondEnd("02tx")
        .sentence(RiffAviBuilder::rmc("A", "5130.1234", "S", "00007.5000", "W", "55.5", "$GNRMC"));
    RiffAviBuilder cut;
    cut.aviHeaders().gRecord(128, 128, 128).secondEnd().chunkHeader("03tx", 4000);
    return { { t, QStringLiteral("two-seconds.avi"), twoSeconds.bytes() },
        { t, QStringLiteral("gnrmc-south-west.avi"), gngga.bytes() },
        { t, QStringLiteral("cut-chunk.avi"), cut.bytes() } };
}

QList<FuzzSeed> kelSeeds()
{
    const QString t = QStringLiteral("fuzz_telemetry_kel");
    RiffAviBuilder second;
    second.aviHeaders();
    for (int i = 0; i < 30; ++i)
        second.kelGRecord(uint8_t(128 + i), 128, 228);
    second.sentence(kFix).videoFrame(64);
    RiffAviBuilder flags;
    flags.aviHeaders().kelGRecord(128, 128, 228, 1, 0, 1).kelGRecord(0, 255, 1).sentence(kNoFix);
    RiffAviBuilder shortRecord;
    shortRecord.aviHeaders().chunk("02tx", "M\x80\x80").sentence(kFix);
    return { { t, QStringLiteral("one-second.avi"), second.bytes() },
        { t, QStringLiteral("flags-and-void-fix.avi"), flags.bytes() },
        { t, QStringLiteral("short-record.avi"), shortRecord.bytes() } };
}

QList<FuzzSeed> rawSeeds()
{
    const QString t = QStringLiteral("fuzz_telemetry_raw");
    const QByteArray fix = SubtitleBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0");
    RawTextBuilder raw;
    raw.filler(200);
    for (int i = 0; i < 10; ++i)
        raw.record("gsensor," + QByteArray::number(i * 7) + ",1,-2", i % 2 ? "02tx" : "03tx")
            .filler(31);
    raw.record(fix, "03tx").filler(40);
    RawTextBuilder unterminated;
    unterminated.record("gsensor,4,5,6").append("03tx\x40\x00\x00\x00GPRMC,1200");
    return { { t, QStringLiteral("one-second.bin"), raw.bytes() },
        { t, QStringLiteral("unterminated.bin"), unterminated.bytes() } };
}

QList<FuzzSeed> subtitleSeeds(const QString& target)
{
    SubtitleBuilder second;
    second.gsensorBlocks(10, -5).block(
        SubtitleBuilder::rmc("A", "3723.2475", "N", "12658.4100", "E", "10.0"));
    SubtitleBuilder twoSeconds;
    twoSeconds.gsensorBlocks(10)
        .block(SubtitleBuilder::rmc("A", "4807.0380", "N", "01131.0000", "E", "22.4"))
        .gsensorBlocks(10, 30)
        .block(SubtitleBuilder::rmc("V", "", "", "", "", ""))
        .gsensorBlocks(3, 60);
    SubtitleBuilder gnrmc;
    gnrmc.gsensorBlocks(2).block(
        SubtitleBuilder::rmc("A", "3351.0000", "S", "15112.0000", "W", "0.0", "GNRMC"));
    return { { target, QStringLiteral("one-second.srt"), second.bytes() },
        { target, QStringLiteral("two-seconds.srt"), twoSeconds.bytes() },
        { target, QStringLiteral("gnrmc.srt"), gnrmc.bytes() } };
}

QList<FuzzSeed> tailSeeds()
{
    const QString t = QStringLiteral("fuzz_telemetry_tail");
    // Shorter than the search window: the text starts right after the
    // marker's length, so small seeds reach the line reader.
    TailBlockBuilder small(0);
    for (int i = 0; i < 8; ++i)
        small.sample(i, "37.387458", "126.973503", 30 + i, i, -i, 1000);
    TailBlockBuilder lf(0);
    lf.lineEnd("\n").sample(0, "0", "0", 0, 0, 0, 0).sample(1, "-33.85", "151.2", 5, 9, 9, 9);
    // Long enough for the marker search at the end of a real clip.
    TailBlockBuilder clip(33100);
    clip.sample(0, "48.1173", "11.5167", 50, 1, 2, 3).line("not,a,sample");
    return { { t, QStringLiteral("block.txt"), small.bytes() },
        { t, QStringLiteral("lf-lines.txt"), lf.bytes() },
        { t, QStringLiteral("clip-tail.avi"), clip.bytes() } };
}

QList<FuzzSeed> mp4Seeds(const QString& scratchDir)
{
    const QString t = QStringLiteral("fuzz_telemetry_mp4_text");
    if (QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty())
        return {};
    QList<FuzzSeed> seeds;
    const QString path = QDir(scratchDir).filePath(QStringLiteral("seed_F.mp4"));
    if (FfmpegClipBuilder::makeSubtitledMp4(path, FfmpegClipBuilder::telemetrySrt(1, 3), 16)) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            seeds.append({ t, QStringLiteral("one-second.mp4"), file.readAll() });
    }
    return seeds;
}

QList<FuzzSeed> clipInfoSeeds()
{
    const QString t = QStringLiteral("fuzz_library_clip_info");
    RiffAviBuilder avi;
    avi.beginList("hdrl").chunk("avih", QByteArray(56, '\0'));
    avi.beginList("strl").chunk("strh", "vids" + QByteArray("H264") + QByteArray(48, '\0'));
    avi.endList().endList();
    const QByteArray mp4 = QByteArray::fromHex("0000001c66747970") + "isom" + QByteArray(4, '\0')
        + "iso4hvc1mp41" + QByteArray(16, '\0');
    const QByteArray report = "Input #0, avi, from '/card/20240315_081502_F.avi':\n"
                              "  Stream #0:0: Video: h264 (H264 / 0x34363248), yuv420p, 64x48\n"
                              "  Stream #0:1: Video: h264 (H264 / 0x34363248), yuv420p, 32x24\n"
                              "  Stream #0:2: Audio: pcm_s16le, 8000 Hz, mono\n";
    return { { t, QStringLiteral("avi-head.avi"), avi.bytes().left(256) },
        { t, QStringLiteral("mp4-head.mp4"), mp4 },
        { t, QStringLiteral("ffmpeg-report.txt"), report },
        { t, QStringLiteral("front-clip-name.txt"), "REC/20240315_081502_F.avi" } };
}

} // namespace

namespace FuzzSeeds {

QList<FuzzSeed> telemetrySeeds(const QString& scratchDir)
{
    QList<FuzzSeed> seeds;
    seeds << chunkSeeds() << kelSeeds() << rawSeeds()
          << subtitleSeeds(QStringLiteral("fuzz_telemetry_subtitle"))
          << subtitleSeeds(QStringLiteral("fuzz_export_roundtrip")) << tailSeeds()
          << mp4Seeds(scratchDir) << clipInfoSeeds();
    return seeds;
}

} // namespace FuzzSeeds
