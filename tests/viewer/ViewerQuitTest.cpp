// Quitting the viewer by a signal while a clip is being converted: ffmpeg
// ends within a second and nothing of its output is left in the cache. While
// a card is being formatted, the quit waits with the progress sheet up.
#include "DriveClip.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "TestTiming.h"
#include "app/window/QuitSignalHandler.h"
#include "editors/format/CardOperationDialog.h"
#include "editors/format/CardSheetDialog.h"
#include "settings/format/CardFormatActivity.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/FormatQuitGuard.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>

namespace {

// ffmpeg's files in the conversion cache under `cacheHome`.
QStringList conversionFiles(const QString& cacheHome)
{
    QStringList files;
    QDirIterator it(cacheHome, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (path.contains(QStringLiteral("/temp_video/")))
            files << path;
    }
    return files;
}

bool processAlive(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    // A zombie is an ended process its parent has not reaped yet.
    const QList<QByteArray> fields = status.readAll().split(' ');
    return fields.size() > 2 && fields[2] != "Z";
}

TEST(ViewerQuitTest, ASignalDuringAConversionEndsFfmpegAndLeavesNoPartialFile)
{
    if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
        GTEST_SKIP() << "ffmpeg is not installed";
    QTemporaryDir dir;
    const QString card = dir.filePath(QStringLiteral("card"));
    QDir().mkpath(card + QStringLiteral("/SETTING"));
    TestFiles::write(card + QStringLiteral("/SETTING/setup.cfg"),
        SetupCfgBuilder(432).sizeWord(432).productName("Tolm").version("1.02.17").bytes());
    ASSERT_TRUE(DriveClip::make(
        card + QStringLiteral("/cont_rec/20240315_081502_F.mp4"), 30, 160, 90, 15, 0));
    // ffmpeg reading at the clip's own pace, noting its process id.
    const QString pids = dir.filePath(QStringLiteral("ffmpeg.pids"));
    const QString slow = dir.filePath(QStringLiteral("slow-ffmpeg"));
    TestFiles::write(
        slow, "#!/bin/sh\necho $$ >> '" + pids.toUtf8() + "'\nexec ffmpeg -re \"$@\"\n");
    QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    for (const int signal : { SIGTERM, SIGINT, SIGHUP }) {
        SCOPED_TRACE(signal);
        QFile::remove(pids);
        const QString cacheHome = dir.filePath(QStringLiteral("cache-%1").arg(signal));
        QProcess viewer;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TAVRO_FFMPEG"), slow);
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), cacheHome);
        environment.insert(
            QStringLiteral("XDG_CONFIG_HOME"), dir.filePath(QStringLiteral("config")));
        viewer.setProcessEnvironment(environment);
        viewer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        viewer.start(QStringLiteral(TAVRO_VIEWER_PATH),
            { QStringLiteral("--no-splash"), QStringLiteral("--card"), card,
                QStringLiteral("--play"), QStringLiteral("0") });
        ASSERT_TRUE(viewer.waitForStarted(10000));
        // Converting: ffmpeg runs and writes into the cache.
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return QFile::exists(pids) && !conversionFiles(cacheHome).isEmpty(); }, 60000));
        const qint64 ffmpeg = TestFiles::read(pids).trimmed().split('\n').last().toLongLong();
        ASSERT_GT(ffmpeg, 0);
        ASSERT_TRUE(processAlive(ffmpeg));

        QElapsedTimer stopping;
        stopping.start();
        ::kill(pid_t(viewer.processId()), signal);
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return !processAlive(ffmpeg); }, TestTiming::scaled(1000)))
            << "ffmpeg still runs " << stopping.elapsed() << " ms after the signal";
        ASSERT_TRUE(viewer.waitForFinished(20000));
        EXPECT_EQ(viewer.exitStatus(), QProcess::NormalExit);
        EXPECT_TRUE(conversionFiles(cacheHome).isEmpty())
            << qPrintable(conversionFiles(cacheHome).join(u' '));
    }
}

// A format engine whose format runs `formatMs`, counted in `activity` as the
// real one is.
class SlowFormatEngine final : public CardFormatEngine {
public:
    SlowFormatEngine(CardFormatActivity& activity, int formatMs)
        : m_activity(activity)
        , m_formatMs(formatMs)
    {
    }
    void inspect(
        const QString&, QObject* context, std::function<void(const FormatPlan&)> done) override
    {
        FormatPlan plan;
        plan.refusal = FormatRefusal::None;
        QTimer::singleShot(0, context, [plan, done] { done(plan); });
    }
    void format(
        const FormatPlan&, QObject* context, std::function<void(const FormatResult&)> done) override
    {
        started = m_activity.begin();
        QTimer::singleShot(m_formatMs, context, [this, done] {
            m_activity.end(false);
            done(FormatResult { FormatResult::Outcome::Formatted, {}, true, {} });
        });
    }
    bool started = false;

private:
    CardFormatActivity& m_activity;
    int m_formatMs;
};

TEST(ViewerQuitTest, ASignalDuringACardFormatWaitsWithTheSheetUpUntilTheCardIsBack)
{
    QuitSignalHandler quitOnSignal;
    CardFormatActivity activity;
    FormatQuitGuard guard(activity, nullptr);
    QWidget editor;
    editor.resize(600, 400);
    editor.show();
    const int formatMs = TestTiming::scaled(1500);
    auto engine = std::make_unique<SlowFormatEngine>(activity, formatMs);
    SlowFormatEngine* formatting = engine.get();
    QPointer<CardOperationDialog> operation
        = askFormat(&editor, QStringLiteral("/media/user/CARD"), std::move(engine));
    QPointer<CardSheetDialog> sheet = operation->sheetDialog();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet && sheet->isVisible()); }, 5000));
    QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton); // "예"
    ASSERT_TRUE(formatting->started);

    QElapsedTimer quitting;
    bool sheetUpWhileHeld = false;
    QObject::connect(&guard, &FormatQuitGuard::quitHeld, [&] {
        quitting.start();
        QTimer::singleShot(formatMs / 3,
            [&] { sheetUpWhileHeld = sheet && sheet->isVisible() && editor.isVisible(); });
    });
    QTimer::singleShot(0, [] { ::raise(SIGTERM); });
    QApplication::exec();
    EXPECT_TRUE(sheetUpWhileHeld);
    ASSERT_TRUE(quitting.isValid()) << "the signal's quit was not held";
    EXPECT_GE(quitting.elapsed(), formatMs * 2 / 3) << "quit before the format had ended";
    EXPECT_FALSE(activity.isRunning());
}

} // namespace
