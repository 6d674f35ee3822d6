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

namespace {

// Clip bytes whose codec handler (AVI) gives the codec type.
QByteArray clipBytes(int type, int size = 300)
{
    static const char* const kHandlers[] = { "H264", "AVC1", "iso4hvc1", "MJPG" };
    QByteArray bytes(size, '\0');
    bytes.replace(112, 8, QByteArray(kHandlers[type]).leftJustified(8, '\0'));
    return bytes;
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

    QString cache(const QString& file) const { return m_dir.filePath("work/temp_video/" + file); }

    // Converts the clip and returns the files, relative to the cache; each
    // ffmpeg run goes into m_runs as "input > output" (the output relative to
    // the cache, under the name it is put in place as).
    QStringList convert(const QString& clip)
    {
        // ffmpeg writes each output under a hidden ".NAME.partial.EXT" beside it.
        static const QRegularExpression partial(
            QStringLiteral("/\\.([^/]*)\\.partial\\.([^./]*)$"));
        m_runner.clear();
        m_runs.clear();
        const auto result = m_converter->checkAndConvertVideo(QUrl::fromLocalFile(clip));
        for (QStringList run : m_runner.conversions()) {
            EXPECT_TRUE(partial.match(run.last()).hasMatch()) << qPrintable(run.last());
            const QString input = run.at(run.indexOf("-i") + 1);
            const QString output = run.last().replace(partial, QStringLiteral("/\\1.\\2"));
            m_runs << QFileInfo(input).fileName() + " > " + output.mid(cache({}).size());
            if (QFileInfo::exists(output)) {
                EXPECT_EQ(TestFiles::read(output), RecordingProcessRunner::outputBytes(input));
            }
        }
        for (const auto& call : m_runner.calls())
            EXPECT_EQ(call.program, QStringLiteral("/usr/bin/ffmpeg-under-test"));
        if (!result)
            return { QStringLiteral("(none)") };
        QStringList files;
        for (const QUrl& url : *result)
            files << url.toLocalFile().mid(cache({}).size());
        return files;
    }

    QTemporaryDir m_dir;
    QStringList m_runs;
    RecordingProcessRunner m_runner;
    std::unique_ptr<CardTreeBuilder> m_card;
    std::unique_ptr<ClipConverter> m_converter;
};

TEST_F(ClipConverterTest, AviClipsAreRemuxedPerCameraWithTheTagOfTheirCodec)
{
    // Each camera's stream is mapped (the sound with it when there is sound),
    // streams are copied, the codec tag follows the codec type (none for
    // H264, hvc1 for HEVC, avc1 otherwise).
    const char* const tags[] = { "", "avc1", "hvc1", "avc1" };
    const QRegularExpression tag(QStringLiteral("-vtag (\\w+)"));
    for (int type = 0; type < 4; ++type) {
        for (const int audio : { 0, 1 }) {
            const QString name = QStringLiteral("t%1_a%2").arg(type).arg(audio);
            const QString clip = m_card->add("evt_rec/" + name + ".avi", clipBytes(type));
            const QString out = name + "_300/" + name;
            m_runner.setStreams(clip, 2, audio);
            EXPECT_EQ(convert(clip), (QStringList { out + "_f.mov", out + "_r.mov" }));
            EXPECT_EQ(m_runs,
                (QStringList {
                    name + ".avi > " + out + "_f.mov", name + ".avi > " + out + "_r.mov" }));
            for (int camera = 0; camera < 2; ++camera) {
                const QString args = m_runner.conversions().at(camera).join(' ');
                EXPECT_TRUE(args.contains(QStringLiteral("-map 0:%1 ").arg(camera)))
                    << qPrintable(args);
                EXPECT_EQ(args.contains("-map 0:2 "), audio == 1) << qPrintable(args);
                EXPECT_TRUE(args.contains("-vcodec copy")) << qPrintable(args);
                EXPECT_EQ(tag.match(args).captured(1), QLatin1String(tags[type]));
            }
            // The second time the cache answers: no conversion runs.
            EXPECT_EQ(convert(clip), (QStringList { out + "_f.mov", out + "_r.mov" }));
            EXPECT_TRUE(m_runs.isEmpty());
        }
        // One camera: one output.
        const QString single
            = m_card->add(QStringLiteral("cont_rec/s%1.avi").arg(type), clipBytes(type));
        m_runner.setStreams(single, 1, 1);
        EXPECT_EQ(convert(single), QStringList { QStringLiteral("s%1_300/s%1_f.mov").arg(type) });
        const QString args = m_runner.conversions().at(0).join(' ');
        EXPECT_FALSE(args.contains("-map")) << qPrintable(args);
        EXPECT_EQ(tag.match(args).captured(1), QLatin1String(tags[type]));
    }
    // An AVI without video streams gives nothing playable, and nothing runs.
    const QString noVideo = m_card->add("cont_rec/audio_only.avi", clipBytes(0));
    m_runner.setStreams(noVideo, 0, 1);
    EXPECT_EQ(convert(noVideo), QStringList {});
    EXPECT_TRUE(m_runs.isEmpty());
}

TEST_F(ClipConverterTest, Mp4PairGivesBothCamerasAndTheirSubtitles)
{
    // The rear clip is re-muxed with the front clip's codec type (hvc1 here);
    // each camera's subtitles are extracted before its movie.
    const QString front
        = m_card->add("evt_rec/clip_F.mp4", QByteArray(300, '\0').replace(16, 8, "iso4hvc1"));
    m_card->add("evt_rec/clip_R.mp4", clipBytes(1, 400));
    const QStringList runs { "clip_F.mp4 > clip_F_300/clip_F_f.srt",
        "clip_F.mp4 > clip_F_300/clip_F_f.mov", "clip_R.mp4 > clip_F_300/clip_F_r.srt",
        "clip_R.mp4 > clip_F_300/clip_F_r.mov" };
    const QStringList files { "clip_F_300/clip_F_f.mov", "clip_F_300/clip_F_r.mov" };
    EXPECT_EQ(convert(front), files);
    EXPECT_EQ(m_runs, runs);
    EXPECT_TRUE(m_runner.conversions()[3].join(' ').contains("-vtag hvc1"));
    EXPECT_EQ(convert(front), files);
    EXPECT_TRUE(m_runner.calls().isEmpty());
    // Opened from the rear clip, the rear camera becomes the front output.
    convert(m_card->path("evt_rec/clip_R.mp4"));
    EXPECT_EQ(m_runs.first(), "clip_R.mp4 > clip_R_400/clip_R_f.srt");
    // "b_F_BC.mp4" holds no "F.": the "F_BC." rule finds the rear clip.
    const QString bc = m_card->add("cont_rec/b_F_BC.mp4", clipBytes(0));
    m_card->add("cont_rec/b_R_BC.mp4", clipBytes(0));
    EXPECT_EQ(convert(bc), (QStringList { "b_F_BC_300/b_F_BC_f.mov", "b_F_BC_300/b_F_BC_r.mov" }));
    EXPECT_EQ(m_runs.last(), "b_R_BC.mp4 > b_F_BC_300/b_F_BC_r.mov");
    // A front clip without its rear file: the front output is reused, the
    // missing rear file looked for again; a new size is a new clip.
    const QString lone = m_card->add("cont_rec/lone_F.mp4", clipBytes(0));
    EXPECT_EQ(convert(lone), QStringList { "lone_F_300/lone_F_f.mov" });
    EXPECT_EQ(m_runs.size(), 2);
    EXPECT_EQ(convert(lone), QStringList { "lone_F_300/lone_F_f.mov" });
    EXPECT_EQ(m_runner.calls().size(), 0);
    m_card->add("cont_rec/lone_F.mp4", clipBytes(0, 512));
    EXPECT_EQ(convert(lone), QStringList { "lone_F_512/lone_F_f.mov" });
}

TEST_F(ClipConverterTest, ClipsThatAreNotConvertedOrFailToBe)
{
    // A .mov (even an absent one) and other containers are played as they are.
    for (const QString& path :
        { m_card->add("manual_rec/m.MOV"), m_card->path("gone.mov"), m_card->path("x.mkv") }) {
        EXPECT_EQ(m_converter->checkAndConvertVideo(QUrl::fromLocalFile(path)),
            QList<QUrl> { QUrl::fromLocalFile(path) });
    }
    EXPECT_EQ(convert(m_card->path("cont_rec/vanished.mp4")), QStringList {});
    EXPECT_EQ(convert(QString()), QStringList { "(none)" });
    EXPECT_TRUE(m_runner.calls().isEmpty());
    // ffmpeg refuses the rear clip: the front is all there is; then the front too.
    const QString bad = m_card->add("evt_rec/bad_F.mp4", clipBytes(0));
    m_runner.reject(m_card->add("evt_rec/bad_R.mp4", clipBytes(0)));
    EXPECT_EQ(convert(bad), (QStringList { "bad_F_300/bad_F_f.mov" }));
    EXPECT_EQ(m_runs.size(), 4);
    m_runner.reject(bad);
    m_card->add("evt_rec/bad_F.mp4", clipBytes(0, 301));
    EXPECT_EQ(convert(bad), QStringList {});
    // Outputs in the cache are complete ones (a run is put in place only when
    // it succeeds): they are used without running ffmpeg, whatever they hold.
    const QString cut = m_card->add("cont_rec/cut.avi", clipBytes(0));
    TestFiles::write(cache("cut_300/cut_f.mov"), "complete");
    TestFiles::write(cache("cut_300/cut_r.mov"), "complete");
    EXPECT_EQ(convert(cut), (QStringList { "cut_300/cut_f.mov", "cut_300/cut_r.mov" }));
    EXPECT_TRUE(m_runner.calls().isEmpty());
    // A cache folder that cannot be made (a file in the way) gives no result.
    for (const char* blocked : { "blocked", "work2/temp_video" }) {
        TestFiles::write(m_dir.filePath(blocked), "a file where a folder should be");
        const ClipConverter converter(
            m_runner, m_dir.filePath(QString(blocked).section('/', 0, 0)));
        EXPECT_FALSE(converter.checkAndConvertVideo(QUrl::fromLocalFile(cut)).has_value());
    }
}

} // namespace
