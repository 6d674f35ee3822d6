// Conversion with the real ffmpeg on clips generated for the test: the
// outputs hold the streams they should, the subtitle files hold the camera's
// telemetry records, and the cache spares a second run. (An interrupted run
// is ended by the session's and the viewer's quit tests.)
#include "CardTreeBuilder.h"
#include "DriveClip.h"
#include "FfmpegClipBuilder.h"
#include "TestFiles.h"

#include "library/ClipConverter.h"
#include "library/QtProcessRunner.h"
#include "library/Utils.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>

namespace {

// The real runner, counting its runs.
class CountingRunner final : public ProcessRunner {
public:
    QByteArray run(const QString& program, const QStringList& arguments) override
    {
        ++runs;
        return m_real.run(program, arguments);
    }
    Result execute(const QString& program, const QStringList& arguments) override
    {
        ++runs;
        return m_real.execute(program, arguments);
    }
    std::atomic<int> runs { 0 };

private:
    QtProcessRunner m_real;
};

class ClipConverterFfmpegTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
            GTEST_SKIP() << "ffmpeg is not installed";
        ASSERT_TRUE(m_dir.isValid());
        Utils::SetFFMPEGPath(QString());
    }
    void TearDown() override { Utils::SetFFMPEGPath(QString()); }

    // The files made, and the ffmpeg runs it took in m_runs.
    QStringList convert(const QString& clip)
    {
        m_runner.runs = 0;
        const auto result = m_converter.checkAndConvertVideo(QUrl::fromLocalFile(clip));
        m_runs = m_runner.runs;
        QStringList paths;
        for (const QUrl& url : result.value_or(QList<QUrl> {}))
            paths << url.toLocalFile();
        return paths;
    }

    QTemporaryDir m_dir;
    CardTreeBuilder m_card { m_dir.filePath("card") };
    CountingRunner m_runner;
    ClipConverter m_converter { m_runner, m_dir.filePath("work") };
    int m_runs = 0;
};

TEST_F(ClipConverterFfmpegTest, TwoCameraAviSplitsIntoFrontAndRear)
{
    for (const bool withAudio : { true, false }) {
        const QString clip = m_card.path(withAudio ? "evt_rec/dual_a.avi" : "evt_rec/dual.avi");
        ASSERT_TRUE(FfmpegClipBuilder::makeDualStreamAvi(clip, withAudio))
            << qPrintable(FfmpegClipBuilder::lastLog());
        EXPECT_EQ(Utils::GetAviType(clip), Utils::kAviTypeH264);
        const QStringList files = convert(clip);
        ASSERT_EQ(files.size(), 2) << withAudio;
        EXPECT_EQ(m_runs, 4); // two stream reports, two conversions
        const QStringList audio = withAudio ? QStringList { "audio" } : QStringList {};
        EXPECT_EQ(FfmpegClipBuilder::streams(files[0]), QStringList { "video 64x48" } + audio);
        EXPECT_EQ(FfmpegClipBuilder::streams(files[1]), QStringList { "video 32x24" } + audio);
        EXPECT_EQ(convert(clip), files);
        EXPECT_EQ(m_runs, 0);
    }
    // A clip ffmpeg cannot read gives nothing.
    const QString garbage = m_card.add(
        "evt_rec/garbage.avi", QByteArray("RIFF\x10\0\0\0AVI LIST", 16) + QByteArray(500, '\xff'));
    EXPECT_EQ(convert(garbage), QStringList {});
    EXPECT_EQ(m_runs, 1); // the stream report found no video stream
}

TEST_F(ClipConverterFfmpegTest, Mp4PairGivesBothCamerasAndTheirTelemetry)
{
    const QString front = m_card.path("cont_rec/20240101_120000_F.mp4");
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(front, DriveClip::telemetrySrt(1, 11), 64))
        << qPrintable(FfmpegClipBuilder::lastLog());
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(
        m_card.path("cont_rec/20240101_120000_R.mp4"), DriveClip::telemetrySrt(1, 22), 48));
    const QStringList files = convert(front);
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(m_runs, 4);
    EXPECT_EQ(FfmpegClipBuilder::streams(files[0]).first(), "video 64x48");
    EXPECT_EQ(FfmpegClipBuilder::streams(files[1]).first(), "video 48x48");
    for (const auto& [file, tag] : { std::pair { files[0], 11 }, std::pair { files[1], 22 } }) {
        const QString text
            = QString::fromUtf8(TestFiles::read(QString(file).replace(".mov", ".srt")));
        EXPECT_TRUE(text.contains(QStringLiteral("gsensor,%1,-20,128").arg(tag)));
        EXPECT_EQ(text.count("GPRMC,000000.00,A,3723.2475,N,12658.4100,E,30.0,"), 1);
        EXPECT_EQ(text.count(" --> "), 11);
    }
    EXPECT_EQ(convert(front), files);
    EXPECT_EQ(m_runs, 0);
    const QString garbage = m_card.add("evt_rec/garbage_F.mp4", QByteArray(4096, 'g'));
    EXPECT_EQ(convert(garbage), QStringList {});
}

} // namespace
