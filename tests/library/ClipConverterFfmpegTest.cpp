// Conversion with the real ffmpeg on clips generated for the test: the
// outputs hold the streams they should, the subtitle files hold the camera's
// telemetry records, and the cache spares a second run.
#include "CardTreeBuilder.h"
#include "FfmpegClipBuilder.h"
#include "TestFiles.h"

#include "library/ClipConverter.h"
#include "library/QtProcessRunner.h"
#include "library/Utils.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>

namespace {

// The real runner, counting its runs.
class CountingRunner final : public ProcessRunner {
public:
    QByteArray run(const QString& program, const QStringList& arguments) override
    {
        ++m_runs;
        return m_real.run(program, arguments);
    }
    Result execute(const QString& program, const QStringList& arguments) override
    {
        ++m_runs;
        return m_real.execute(program, arguments);
    }
    int runs() const { return m_runs; }
    void reset() { m_runs = 0; }

private:
    QtProcessRunner m_real;
    std::atomic<int> m_runs { 0 };
};

class ClipConverterFfmpegTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!TestFiles::haveTool("ffmpeg") || !TestFiles::haveTool("ffprobe"))
            GTEST_SKIP() << "ffmpeg is not installed";
        ASSERT_TRUE(m_dir.isValid());
        Utils::SetFFMPEGPath(QString());
        m_card = std::make_unique<CardTreeBuilder>(m_dir.filePath("card"));
        m_converter = std::make_unique<ClipConverter>(m_runner, m_dir.filePath("work"));
    }

    QStringList convert(const QString& clip)
    {
        m_runner.reset();
        const auto result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clip));
        EXPECT_TRUE(result.has_value()) << qPrintable(clip);
        QStringList paths;
        for (const QUrl& url : result.value_or(QList<QUrl> {}))
            paths << url.toLocalFile();
        return paths;
    }

    QTemporaryDir m_dir;
    CountingRunner m_runner;
    std::unique_ptr<CardTreeBuilder> m_card;
    std::unique_ptr<ClipConverter> m_converter;
};

TEST_F(ClipConverterFfmpegTest, TwoCameraAviSplitsIntoFrontAndRear)
{
    for (const bool withAudio : { true, false }) {
        const QString clip
            = m_card->path(withAudio ? "evt_rec/dual_audio.avi" : "evt_rec/dual_mute.avi");
        ASSERT_TRUE(FfmpegClipBuilder::makeDualStreamAvi(clip, withAudio))
            << qPrintable(FfmpegClipBuilder::lastLog());
        EXPECT_EQ(Utils::GetAviType(clip), Utils::kAviTypeH264);
        const QStringList files = convert(clip);
        ASSERT_EQ(files.size(), 2) << withAudio;
        EXPECT_TRUE(files[0].endsWith("_f.mov"));
        EXPECT_TRUE(files[1].endsWith("_r.mov"));
        const QStringList audio = withAudio ? QStringList { "audio" } : QStringList {};
        EXPECT_EQ(FfmpegClipBuilder::streams(files[0]), QStringList { "video 64x48" } + audio);
        EXPECT_EQ(FfmpegClipBuilder::streams(files[1]), QStringList { "video 32x24" } + audio);
        // Two stream reports and two conversions; then nothing.
        EXPECT_EQ(m_runner.runs(), 4);
        EXPECT_EQ(convert(clip), files);
        EXPECT_EQ(m_runner.runs(), 0);
    }
}

TEST_F(ClipConverterFfmpegTest, Mp4PairGivesBothCamerasAndTheirTelemetry)
{
    const QString front = m_card->path("cont_rec/20240101_120000_F.mp4");
    const QString rear = m_card->path("cont_rec/20240101_120000_R.mp4");
    ASSERT_TRUE(
        FfmpegClipBuilder::makeSubtitledMp4(front, FfmpegClipBuilder::telemetrySrt(1, 11), 64))
        << qPrintable(FfmpegClipBuilder::lastLog());
    ASSERT_TRUE(
        FfmpegClipBuilder::makeSubtitledMp4(rear, FfmpegClipBuilder::telemetrySrt(1, 22), 48));
    const QStringList files = convert(front);
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(m_runner.runs(), 4);
    EXPECT_EQ(FfmpegClipBuilder::streams(files[0]).first(), "video 64x48");
    EXPECT_EQ(FfmpegClipBuilder::streams(files[1]).first(), "video 48x48");

    const QString frontSrt = QString(files[0]).replace("_f.mov", "_f.srt");
    const QString rearSrt = QString(files[1]).replace("_r.mov", "_r.srt");
    const QString frontText = QString::fromUtf8(TestFiles::read(frontSrt));
    const QString rearText = QString::fromUtf8(TestFiles::read(rearSrt));
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(frontText.contains(QStringLiteral("gsensor,11,%1,128").arg(i - 2)))
            << qPrintable(frontText);
        EXPECT_TRUE(rearText.contains(QStringLiteral("gsensor,22,%1,128").arg(i - 2)))
            << qPrintable(rearText);
    }
    for (const QString& text : { frontText, rearText }) {
        EXPECT_EQ(text.count("GPRMC,120000,A,3723.1234,N,12658.5678,E,10.5"), 1);
        EXPECT_EQ(text.count(" --> "), 6);
    }
    EXPECT_EQ(convert(front), files);
    EXPECT_EQ(m_runner.runs(), 0);
}

TEST_F(ClipConverterFfmpegTest, ClipsFfmpegRejectsGiveNothing)
{
    const QString mp4 = m_card->add("evt_rec/garbage_F.mp4", QByteArray(4096, 'g'));
    const QString avi = m_card->add(
        "evt_rec/garbage.avi", QByteArray("RIFF\x10\0\0\0AVI LIST", 16) + QByteArray(500, '\xff'));
    EXPECT_EQ(convert(mp4), QStringList {});
    EXPECT_EQ(convert(avi), QStringList {});
    EXPECT_EQ(m_runner.runs(), 1); // the stream report found no video stream
}

TEST_F(ClipConverterFfmpegTest, MissingFfmpegGivesNothing)
{
    const QString avi = m_card->path("evt_rec/dual.avi");
    const QString mp4 = m_card->path("evt_rec/one_F.mp4");
    ASSERT_TRUE(FfmpegClipBuilder::makeDualStreamAvi(avi, true));
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(mp4, FfmpegClipBuilder::telemetrySrt(1, 1)));
    Utils::SetFFMPEGPath(m_dir.filePath("no/ffmpeg"));
    EXPECT_EQ(convert(avi), QStringList {});
    EXPECT_EQ(convert(mp4), QStringList {});
    Utils::SetFFMPEGPath(QString());
    // With ffmpeg back the same clips convert (nothing half-made was cached).
    EXPECT_EQ(convert(avi).size(), 2);
    EXPECT_EQ(convert(mp4).size(), 1);
}

} // namespace

namespace {

// Every file in the folder, hidden ones included.
QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

TEST_F(ClipConverterFfmpegTest, AnInterruptedConversionEndsAtOnceAndLeavesNothingInTheCache)
{
    // ffmpeg reading its input at the clip's own pace: a run lasts as long as
    // the clip, long enough to be interrupted.
    const QString slow = m_dir.filePath("slow-ffmpeg");
    TestFiles::write(slow, "#!/bin/sh\nexec ffmpeg -re \"$@\"\n");
    QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString clip = m_card->path("cont_rec/drive 'quoted' %d -x_F.mp4");
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(clip, FfmpegClipBuilder::telemetrySrt(20, 0)))
        << qPrintable(FfmpegClipBuilder::lastLog());
    Utils::SetFFMPEGPath(slow);
    QtProcessRunner runner;
    ClipConverter converter(runner, m_dir.filePath("work"));
    const QString cache = converter.cacheFolderPath(clip);

    std::optional<QList<QUrl>> result;
    std::thread worker([&] { result = converter.checkAndConvertVideo(QUrl::fromLocalFile(clip)); });
    QElapsedTimer waited;
    waited.start();
    while (filesIn(cache).isEmpty() && waited.elapsed() < 15000)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    ASSERT_FALSE(filesIn(cache).isEmpty()) << "ffmpeg never started writing";
    std::this_thread::sleep_for(std::chrono::milliseconds(300));

    // The viewer quits: ffmpeg ends within a second and leaves no file.
    QElapsedTimer stopping;
    stopping.start();
    runner.cancel();
    worker.join();
    EXPECT_LT(stopping.elapsed(), 1000);
    EXPECT_TRUE(filesIn(cache).isEmpty()) << qPrintable(filesIn(cache).join(u' '));
    ASSERT_TRUE(result.has_value());
    EXPECT_TRUE(result->isEmpty());

    // Next time the clip converts in full (the odd name is no problem).
    runner.resetCancel();
    Utils::SetFFMPEGPath(QString());
    const auto again = converter.checkAndConvertVideo(QUrl::fromLocalFile(clip));
    ASSERT_TRUE(again.has_value());
    ASSERT_EQ(again->size(), 1);
    EXPECT_EQ(
        FfmpegClipBuilder::streams(again->at(0).toLocalFile()), QStringList { "video 64x48" });
    EXPECT_TRUE(QFileInfo(cache + "/drive 'quoted' %d -x_F_f.srt").size() > 0);
    EXPECT_EQ(filesIn(cache).filter(".partial.").size(), 0);
}
