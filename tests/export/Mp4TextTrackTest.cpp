// The MP4 text-track reader: on movies written box by box (every form of the
// sample size and offset tables), on one that ffmpeg wrote, and on broken files.
#include "ExportTestSupport.h"

#include "FfmpegClipBuilder.h"
#include "TestFiles.h"

#include "telemetry/Mp4TextTrack.h"
#include "telemetry/Mp4TextTrackParser.h"
#include "telemetry/TavroClipData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace ExportTestSupport;

namespace {

QByteArray be(quint64 value, int width)
{
    QByteArray bytes(width, '\0');
    for (int i = width - 1; i >= 0; --i, value >>= 8)
        bytes[i] = char(value & 0xFF);
    return bytes;
}

QByteArray box(const QByteArray& type, const QByteArray& payload)
{
    return be(quint64(payload.size()) + 8, 4) + type + payload;
}

// A movie whose text track holds "g1", "g22" and "g333" in one chunk after
// an mdat header of 8 bytes (16 when `large`), with the sample sizes in
// `sizes` (an stsz or stz2 box) and the chunk offset in an stco or co64.
QByteArray movie(const QByteArray& sizes, bool wide = false, bool large = false,
    const QByteArray& handler = "sbtl")
{
    const QByteArray samples = be(2, 2) + "g1" + be(3, 2) + "g22" + be(4, 2) + "g333";
    const QByteArray mdat
        = large ? be(1, 4) + "mdat" + be(samples.size() + 16, 8) + samples : box("mdat", samples);
    const QByteArray offsets = be(0, 4) + be(1, 4) + be(large ? 16 : 8, wide ? 8 : 4);
    const QByteArray stsc = be(0, 4) + be(1, 4) + be(1, 4) + be(3, 4) + be(1, 4);
    const QByteArray stbl
        = box("stbl", sizes + box(wide ? "co64" : "stco", offsets) + box("stsc", stsc));
    const QByteArray hdlr = box("hdlr", be(0, 8) + handler + QByteArray(12, '\0'));
    return mdat + box("moov", box("trak", box("mdia", hdlr + box("minf", stbl))));
}

QByteArray stsz(quint32 uniform, const QByteArray& table)
{
    return box("stsz", be(0, 4) + be(uniform, 4) + be(3, 4) + table);
}

QByteArray stz2(int bits, const QByteArray& table)
{
    return box("stz2", be(0, 4) + be(quint64(bits), 4) + be(3, 4) + table);
}

std::optional<QList<QByteArray>> texts(const QByteArray& bytes)
{
    QList<QByteArray> seen;
    if (!Mp4TextTrack::forEachSample(bytes, [&](QByteArrayView text) {
            seen << text.toByteArray();
            return true;
        }))
        return std::nullopt;
    return seen;
}

} // namespace

TEST(Mp4TextTrack, SamplesThroughEveryFormOfTheTables)
{
    const QList<QByteArray> all { "g1", "g22", "g333" };
    const QByteArray sizes32 = be(4, 4) + be(5, 4) + be(6, 4);
    const struct {
        QByteArray bytes;
        std::optional<QList<QByteArray>> texts;
    } cases[] = {
        { movie(stsz(0, sizes32)), all },
        { movie(stsz(0, sizes32), true, true), all }, // 64-bit offsets and box size
        { movie(stz2(16, be(4, 2) + be(5, 2) + be(6, 2))), all },
        { movie(stz2(8, "\x04\x05\x06")), all },
        { movie(stz2(4, "\x45\x60")), all },
        // One size for all: a length past its sample is cut to it.
        { movie(stsz(4, {})), QList<QByteArray> { "g1", "g2", QByteArray("\x04g", 2) } },
        { movie(stsz(0, sizes32), false, false, "text"), all }, // QuickTime text
        { movie(stsz(0, sizes32), false, false, "vide"), std::nullopt }, // no text track
        { movie(stz2(12, QByteArray("\x45\x60\0", 3))), std::nullopt }, // no such field size
        { movie(stsz(0, be(4, 4) + be(5, 4))), std::nullopt }, // fewer sizes than samples
        { movie(stz2(4, "\x45")), std::nullopt },
    };
    for (const auto& c : cases)
        EXPECT_EQ(texts(c.bytes), c.texts) << c.bytes.toHex().constData();
    // A box of size 0 runs to the end of the file; a box of 8 bytes may end it.
    QByteArray open = movie(stsz(0, sizes32));
    open.replace(open.indexOf("moov") - 4, 4, be(0, 4));
    EXPECT_EQ(texts(open), all);
    EXPECT_TRUE(Mp4TextTrack::isMovie(box("free", {}) + box("moov", {})));
    EXPECT_FALSE(Mp4TextTrack::isMovie(box("moov", {}).chopped(1)));
    EXPECT_FALSE(Mp4TextTrack::isMovie(be(0xffffff00, 4) + "moov" + QByteArray(64, '\0')));
    EXPECT_FALSE(Mp4TextTrack::isMovie("not really a clip, just text that goes on for a while"));
}

TEST(Mp4TextTrack, TrackOfAMovieMadeByFfmpeg)
{
    // Its samples against ffmpeg's own extraction: `tavro telemetry --loader
    // native` on every clip of the demo card.
    if (!TestFiles::haveTool("ffmpeg"))
        GTEST_SKIP() << "ffmpeg is not installed";
    QVector<Second> seconds(4);
    for (int i = 0; i < seconds.size(); ++i)
        seconds[i].time = QByteArray::number(120000 + i) + ".00";
    seconds[2].status = "V";
    const QString mp4 = scratchPath("drive_F.mp4");
    ASSERT_TRUE(
        FfmpegClipBuilder::makeSubtitledMp4(mp4, QString::fromLatin1(subtitleText(seconds))))
        << FfmpegClipBuilder::lastLog().toStdString();
    const auto viaTrack = std::make_unique<TavroClipData>();
    viaTrack->loadMp4TextTrack(mp4);
    EXPECT_EQ(viaTrack->clipDataCount(), 40);
    EXPECT_EQ(viaTrack->gpsDataCount(), 30);
    // The telemetry as its samples' texts, in track order (the muxer fills
    // gaps between subtitles with empty samples).
    const QByteArray bytes = TestFiles::read(mp4);
    const auto track = texts(bytes);
    ASSERT_TRUE(track.has_value());
    EXPECT_EQ(
        std::count_if(track->begin(), track->end(),
            [](const QByteArray& t) { return t.startsWith("gsensor,") || t.startsWith("GPRMC,"); }),
        44);
    EXPECT_EQ(track->size() - track->count(QByteArray()), 44);
    // Cut anywhere, the file yields at most what the whole one does, and never crashes.
    const auto record = std::make_unique<TavroClipData>();
    for (qsizetype cut = 0; cut < bytes.size(); cut += std::max<qsizetype>(1, bytes.size() / 97))
        EXPECT_LE(Mp4TextTrackParser().parse(QByteArrayView(bytes).first(cut), *record), 40);
    // One sample that is not UTF-8 (the last one here) refuses the whole track.
    QByteArray bad = bytes;
    bad[bad.lastIndexOf("gsensor,")] = '\xff';
    EXPECT_EQ(Mp4TextTrackParser().parse(bad, *record), 0);
}
