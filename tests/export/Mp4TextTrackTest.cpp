// The MP4 text-track reader against ffmpeg's own subtitle extraction, and on
// broken files.
#include "ExportTestSupport.h"

#include "FfmpegClipBuilder.h"
#include "TestFiles.h"

#include "telemetry/Mp4TextTrack.h"
#include "telemetry/Mp4TextTrackParser.h"
#include "telemetry/TavroClipData.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <memory>

using namespace ExportTestSupport;

namespace {

struct Samples {
    int count = 0;
    int gps = 0;
    QVector<QVector<double>> rows;
};

Samples samplesOf(const TavroClipData& data)
{
    Samples s { data.clipDataCount(), data.gpsDataCount(), {} };
    for (int i = 0; i < data.clipDataCount(); ++i) {
        s.rows.append({ double(data.getGx(i)), double(data.getGy(i)), double(data.getGz(i)),
            data.getGpsLat(i), data.getGpsLng(i), double(data.getGpsSpeed(i)),
            double(data.sampleUtcMsecs(i)) });
    }
    return s;
}

// What the viewer reads: the track extracted by ffmpeg to SubRip text.
Samples throughFfmpeg(const QString& mp4)
{
    const QString srt = mp4 + QStringLiteral(".srt");
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg",
        { "-nostdin", "-loglevel", "error", "-y", "-i", mp4, "-vn", "-an", "-c:s", "text", srt });
    EXPECT_TRUE(ffmpeg.waitForFinished(60000) && ffmpeg.exitCode() == 0);
    const auto data = std::make_unique<TavroClipData>();
    data->loadVideoFileCilpDataFromFilePath(srt);
    return samplesOf(*data);
}

Samples native(const QString& mp4)
{
    const auto data = std::make_unique<TavroClipData>();
    data->loadMp4TextTrack(mp4);
    return samplesOf(*data);
}

} // namespace

TEST(Mp4TextTrack, SameSamplesAsTheFfmpegExtraction)
{
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
    const Samples viaFfmpeg = throughFfmpeg(mp4);
    const Samples viaTrack = native(mp4);
    EXPECT_EQ(viaTrack.count, 40);
    EXPECT_EQ(viaTrack.count, viaFfmpeg.count);
    EXPECT_EQ(viaTrack.gps, viaFfmpeg.gps);
    EXPECT_EQ(viaTrack.rows, viaFfmpeg.rows);

    // The same telemetry as its samples' texts, in track order (the muxer
    // fills gaps between subtitles with empty samples).
    int texts = 0;
    const QByteArray bytes = TestFiles::read(mp4);
    EXPECT_TRUE(Mp4TextTrack::forEachSample(bytes, [&](QByteArrayView text) {
        if (text.isEmpty())
            return true;
        EXPECT_TRUE(text.startsWith("gsensor,") || text.startsWith("GPRMC,"))
            << text.toByteArray().constData();
        ++texts;
        return true;
    }));
    EXPECT_EQ(texts, 44);

    // Cut anywhere, the file yields at most what the whole one does, and never crashes.
    const auto record = std::make_unique<TavroClipData>();
    for (qsizetype cut = 0; cut < bytes.size(); cut += std::max<qsizetype>(1, bytes.size() / 97)) {
        const int count = Mp4TextTrackParser().parse(QByteArrayView(bytes).first(cut), *record);
        EXPECT_GE(count, 0);
        EXPECT_LE(count, 40);
    }
}

TEST(Mp4TextTrack, NotAMovieOrNoTextTrackGivesNothing)
{
    const auto record = std::make_unique<TavroClipData>();
    const QByteArray notMp4 = "not really a clip, just text that goes on for a while";
    EXPECT_FALSE(Mp4TextTrack::isMovie(notMp4));
    EXPECT_EQ(Mp4TextTrackParser().parse(notMp4, *record), 0);
    // A moov whose only track is video, and a box that claims more than the file holds.
    const QByteArray videoOnly = QByteArray::fromHex("00000008667265650000002c6d6f6f76"
                                                     "000000247472616b0000001c6d646961"
                                                     "0000001468646c720000000000000000"
                                                     "76696465");
    EXPECT_TRUE(Mp4TextTrack::isMovie(videoOnly));
    EXPECT_FALSE(Mp4TextTrack::forEachSample(videoOnly, [](QByteArrayView) { return true; }));
    const QByteArray oversized = QByteArray::fromHex("ffffff006d6f6f76") + QByteArray(64, '\0');
    EXPECT_FALSE(Mp4TextTrack::isMovie(oversized));
    EXPECT_EQ(Mp4TextTrackParser().parse(oversized, *record), 0);
    EXPECT_EQ(record->gpsDataCount(), 0);
}
