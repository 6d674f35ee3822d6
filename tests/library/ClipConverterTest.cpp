// Conversion with a recording stand-in for ffmpeg: which command lines run
// for which clip, where the outputs go, and when the cache answers instead.
#include "CardTreeBuilder.h"
#include "RecordingProcessRunner.h"
#include "TestFiles.h"

#include "library/ClipConverter.h"
#include "library/Utils.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

namespace {

using Args = QStringList;

// Clip bytes whose codec handler (AVI) or brands (MP4) give the codec type.
QByteArray clipBytes(int type, int size = 300)
{
    static const char* const kHandlers[] = { "H264", "AVC1", "iso4hvc1", "MJPG" };
    QByteArray bytes(size, '\0');
    bytes.replace(112, 8, QByteArray(kHandlers[type]).leftJustified(8, '\0'));
    return bytes;
}

// ffmpeg writes each output under a hidden ".NAME.partial.EXT" beside it,
// renamed once it succeeded: the runs with the names they end up under.
QList<Args> finalNames(QList<Args> runs)
{
    static const QRegularExpression kPartial(QStringLiteral("/\\.([^/]*)\\.partial\\.([^./]*)$"));
    for (Args& run : runs) {
        EXPECT_TRUE(kPartial.match(run.last()).hasMatch()) << qPrintable(run.last());
        run.last().replace(kPartial, QStringLiteral("/\\1.\\2"));
    }
    return runs;
}

class ClipConverterTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        Utils::SetFFMPEGPath(QStringLiteral("/usr/bin/ffmpeg-under-test"));
        m_card = std::make_unique<CardTreeBuilder>(m_dir.filePath("card"));
        m_converter = std::make_unique<ClipConverter>(m_runner, m_dir.filePath("work"));
    }
    void TearDown() override { Utils::SetFFMPEGPath(QString()); }

    QString cache(const QString& folder, const QString& file) const
    {
        return m_dir.filePath("work/temp_video/" + folder + "/" + file);
    }

    // Converts the clip, then checks which input each ffmpeg run read and
    // which output it made (in order), and the files returned.
    using Made = QList<QPair<QString, QString>>;
    void expectConversion(const QString& clip, const Made& made, const QStringList& files)
    {
        m_runner.clear();
        const auto result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clip));
        ASSERT_TRUE(result.has_value()) << qPrintable(clip);
        QStringList paths;
        for (const QUrl& url : *result)
            paths << url.toLocalFile();
        EXPECT_EQ(paths, files) << qPrintable(clip);
        Made runs;
        for (const Args& run : finalNames(m_runner.conversions()))
            runs.append({ run.at(run.indexOf("-i") + 1), run.last() });
        EXPECT_EQ(runs, made) << qPrintable(clip);
        for (const auto& call : m_runner.calls())
            EXPECT_EQ(call.program, QStringLiteral("/usr/bin/ffmpeg-under-test"));
        for (const QString& file : files)
            EXPECT_EQ(TestFiles::read(file).left(15), QByteArray("converted from "));
    }

    QTemporaryDir m_dir;
    RecordingProcessRunner m_runner;
    std::unique_ptr<CardTreeBuilder> m_card;
    std::unique_ptr<ClipConverter> m_converter;
};

// The value that follows an option in a run, or "" when the option is absent.
QString optionValue(const Args& run, const char* option)
{
    const qsizetype at = run.indexOf(QString::fromLatin1(option));
    return at >= 0 && at + 1 < run.size() ? run.at(at + 1) : QString();
}

TEST_F(ClipConverterTest, AviClipsAreRemuxedPerCameraWithTheTagOfTheirCodec)
{
    // Properties of the runs rather than their full lists: each camera's
    // stream is mapped (the sound with it when there is sound), streams are
    // copied, the codec tag follows the codec type (none for H264, hvc1 for
    // HEVC, avc1 otherwise) and the output is the camera's cache file.
    const char* const tags[] = { "", "avc1", "hvc1", "avc1" };
    for (const int cameras : { 1, 2 }) {
        for (int type = 0; type < 4; ++type) {
            for (const int audio : { 0, 1 }) {
                const QString name
                    = QStringLiteral("c%1_t%2_a%3").arg(cameras).arg(type).arg(audio);
                SCOPED_TRACE(name.toStdString());
                const QString clip = m_card->add("evt_rec/" + name + ".avi", clipBytes(type));
                m_runner.setStreams(clip, cameras, audio);
                m_runner.clear();
                const auto result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clip));
                ASSERT_TRUE(result.has_value());
                const QList<Args> runs = finalNames(m_runner.conversions());
                ASSERT_EQ(runs.size(), cameras);
                ASSERT_EQ(result->size(), cameras);
                for (int camera = 0; camera < cameras; ++camera) {
                    const Args& run = runs.at(camera);
                    const QString output = result->at(camera).toLocalFile();
                    EXPECT_EQ(run.last(), output);
                    EXPECT_TRUE(output.endsWith(camera == 0 ? "_f.mov" : "_r.mov"));
                    EXPECT_EQ(TestFiles::read(output), RecordingProcessRunner::outputBytes(clip));
                    EXPECT_EQ(optionValue(run, "-i"), clip);
                    EXPECT_EQ(optionValue(run, "-vcodec"), QStringLiteral("copy"));
                    EXPECT_EQ(optionValue(run, "-vtag"), QString::fromLatin1(tags[type]));
                    if (cameras == 2) {
                        EXPECT_EQ(optionValue(run, "-map"), QStringLiteral("0:%1").arg(camera));
                        EXPECT_EQ(run.contains("0:2"), audio == 1);
                    }
                }
                // The second time the cache answers: no conversion runs.
                m_runner.clear();
                EXPECT_EQ(m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clip)), result);
                EXPECT_TRUE(m_runner.conversions().isEmpty());
            }
        }
    }
}

TEST_F(ClipConverterTest, Mp4PairGivesBothCamerasAndTheirSubtitles)
{
    // The rear clip is re-muxed with the front clip's codec type (hvc1 here);
    // each camera's subtitles are extracted before its movie.
    const QString front
        = m_card->add("evt_rec/clip_F.mp4", QByteArray(300, '\0').replace(16, 8, "iso4hvc1"));
    const QString rear = m_card->add("evt_rec/clip_R.mp4", clipBytes(1, 400));
    const auto in
        = [this](const QString& folder, const QString& name) { return cache(folder, name); };
    const QString f = in("clip_F_300", "clip_F_f.mov");
    const QString r = in("clip_F_300", "clip_F_r.mov");
    expectConversion(front,
        { { front, in("clip_F_300", "clip_F_f.srt") }, { front, f },
            { rear, in("clip_F_300", "clip_F_r.srt") }, { rear, r } },
        { f, r });
    for (const Args& run : m_runner.conversions()) {
        if (run.last().endsWith(".mov")) {
            EXPECT_EQ(optionValue(run, "-vtag"), QStringLiteral("hvc1"));
        }
    }
    EXPECT_EQ(TestFiles::read(r), RecordingProcessRunner::outputBytes(rear));
    expectConversion(front, {}, { f, r });
    EXPECT_TRUE(m_runner.calls().isEmpty());

    // Opened from the rear clip, the rear camera becomes the front output.
    const QString rf = in("clip_R_400", "clip_R_f.mov");
    const QString rr = in("clip_R_400", "clip_R_r.mov");
    expectConversion(rear,
        { { rear, in("clip_R_400", "clip_R_f.srt") }, { rear, rf },
            { front, in("clip_R_400", "clip_R_r.srt") }, { front, rr } },
        { rf, rr });
    EXPECT_EQ(TestFiles::read(rf), RecordingProcessRunner::outputBytes(rear));
}

TEST_F(ClipConverterTest, Mp4PartnerLookups)
{
    // "clip_F_BC.mp4" holds no "F.": the "F_BC." rule finds the rear clip.
    const QString bc = m_card->add("cont_rec/clip_F_BC.mp4", clipBytes(0));
    const QString bcRear = m_card->add("cont_rec/clip_R_BC.mp4", clipBytes(0));
    const QString folder = "clip_F_BC_300";
    expectConversion(bc,
        { { bc, cache(folder, "clip_F_BC_f.srt") }, { bc, cache(folder, "clip_F_BC_f.mov") },
            { bcRear, cache(folder, "clip_F_BC_r.srt") },
            { bcRear, cache(folder, "clip_F_BC_r.mov") } },
        { cache(folder, "clip_F_BC_f.mov"), cache(folder, "clip_F_BC_r.mov") });

    // A front clip without its rear file, and a clip with no marker at all.
    const QString lone = m_card->add("cont_rec/lone_F.mp4", clipBytes(0));
    const QString plain = m_card->add("cont_rec/plain.mp4", clipBytes(0));
    for (const QString& clip : { lone, plain }) {
        const QString base = QFileInfo(clip).completeBaseName();
        const QString f = cache(base + "_300", base + "_f.mov");
        expectConversion(
            clip, { { clip, cache(base + "_300", base + "_f.srt") }, { clip, f } }, { f });
        // The front output is reused; the missing rear file is looked for again.
        expectConversion(clip, {}, { f });
    }
}

TEST_F(ClipConverterTest, ChangedSizeConvertsAnew)
{
    const QString clip = m_card->add("cont_rec/c.avi", clipBytes(0));
    m_runner.setStreams(clip, 1, 0);
    expectConversion(clip, { { clip, cache("c_300", "c_f.mov") } }, { cache("c_300", "c_f.mov") });
    m_card->add("cont_rec/c.avi", clipBytes(0, 512));
    expectConversion(clip, { { clip, cache("c_512", "c_f.mov") } }, { cache("c_512", "c_f.mov") });
}

TEST_F(ClipConverterTest, ClipsThatAreNotConverted)
{
    // A .mov is played as it is, even when absent; nothing runs.
    const QString mov = m_card->add("manual_rec/m.MOV");
    for (const QString& path : { mov, m_card->path("gone.mov"), m_card->path("x.mkv") }) {
        m_runner.clear();
        const auto result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(path));
        ASSERT_TRUE(result.has_value());
        EXPECT_EQ(*result, QList<QUrl> { QUrl::fromLocalFile(path) });
        EXPECT_TRUE(m_runner.calls().isEmpty());
    }
    EXPECT_FALSE(m_converter->checkAndConvertVideo(QUrl()).has_value());

    // An AVI without video streams gives nothing playable.
    const QString noVideo = m_card->add("cont_rec/audio_only.avi", clipBytes(0));
    m_runner.setStreams(noVideo, 0, 1);
    expectConversion(noVideo, {}, {});
    // A clip that vanished gives nothing either.
    expectConversion(m_card->path("cont_rec/vanished.mp4"), {}, {});
}

TEST_F(ClipConverterTest, RejectedClipsGiveWhatFfmpegProduced)
{
    const QString bad = m_card->add("evt_rec/bad_F.mp4", clipBytes(0));
    const QString badRear = m_card->add("evt_rec/bad_R.mp4", clipBytes(0));
    m_runner.reject(badRear);
    const QString f = cache("bad_F_300", "bad_F_f.mov");
    m_runner.clear();
    auto result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(bad));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(*result, QList<QUrl> { QUrl::fromLocalFile(f) });
    EXPECT_EQ(m_runner.conversions().size(), 4);

    m_runner.reject(bad);
    m_card->add("evt_rec/bad_F.mp4", clipBytes(0, 301));
    result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(bad));
    ASSERT_TRUE(result.has_value());
    EXPECT_TRUE(result->isEmpty());
}

TEST_F(ClipConverterTest, ExistingOutputIsTrustedAsItIs)
{
    // An output in the cache is a complete one (ffmpeg's runs are put in
    // place only when they succeed): it is reused without running ffmpeg.
    const QString clip = m_card->add("cont_rec/cut.avi", clipBytes(0));
    m_runner.setStreams(clip, 2, 0);
    TestFiles::write(cache("cut_300", "cut_f.mov"), "complete");
    TestFiles::write(cache("cut_300", "cut_r.mov"), "complete");
    m_runner.clear();
    const auto result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clip));
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->size(), 2);
    EXPECT_TRUE(m_runner.calls().isEmpty());
}

TEST_F(ClipConverterTest, CacheFolderThatCannotBeMadeGivesNoResult)
{
    TestFiles::write(m_dir.filePath("blocked"), "a file where the working folder should be");
    const ClipConverter blocked(m_runner, m_dir.filePath("blocked"));
    const QString clip = m_card->add("cont_rec/c.mp4", clipBytes(0));
    EXPECT_FALSE(blocked.checkAndConvertVideo(QUrl::fromLocalFile(clip)).has_value());
    // Likewise when "temp_video" itself is a file.
    TestFiles::write(m_dir.filePath("work2/temp_video"), "x");
    const ClipConverter blocked2(m_runner, m_dir.filePath("work2"));
    EXPECT_FALSE(blocked2.checkAndConvertVideo(QUrl::fromLocalFile(clip)).has_value());
    EXPECT_TRUE(m_runner.calls().isEmpty());
}

TEST_F(ClipConverterTest, ConversionsRunSideBySideOnWorkerThreads)
{
    QStringList clips;
    for (int i = 0; i < 8; ++i) {
        clips << m_card->add(QStringLiteral("cont_rec/w%1.avi").arg(i), clipBytes(0));
        m_runner.setStreams(clips.last(), 2, 1);
    }
    std::vector<std::optional<QList<QUrl>>> results(size_t(clips.size()));
    std::thread first([&] {
        for (int i = 0; i < 8; i += 2)
            results[size_t(i)] = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clips[i]));
    });
    std::thread second([&] {
        for (int i = 1; i < 8; i += 2)
            results[size_t(i)] = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clips[i]));
    });
    first.join();
    second.join();
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(results[size_t(i)].has_value());
        ASSERT_EQ(results[size_t(i)]->size(), 2);
        EXPECT_EQ(TestFiles::read(results[size_t(i)]->at(1).toLocalFile()),
            RecordingProcessRunner::outputBytes(clips[i]));
    }
}

} // namespace
