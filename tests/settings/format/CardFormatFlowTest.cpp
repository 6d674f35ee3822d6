// The format dialog's sequence with a scripted engine that answers later, as
// the real one does from its worker thread.
#include "FakeCardSystem.h"

#include "i18n/LocalizationKeys.h"
#include "settings/format/CardFormatFlow.h"
#include "settings/format/CardFormatter.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

// Answers inspect() and format() from the event loop, never inside the call.
class ScriptedEngine final : public CardFormatEngine {
public:
    FormatPlan plan;
    FormatResult result;
    int inspections = 0;
    int formats = 0;

    void inspect(const QString& cardRoot, QObject* context,
        std::function<void(const FormatPlan&)> done) override
    {
        ++inspections;
        FormatPlan answer = plan;
        answer.cardRoot = cardRoot;
        QTimer::singleShot(0, context, [answer, done] { done(answer); });
    }
    void format(
        const FormatPlan&, QObject* context, std::function<void(const FormatResult&)> done) override
    {
        ++formats;
        QTimer::singleShot(20, context, [r = result, done] { done(r); });
    }
};

FormatPlan allowed()
{
    FormatPlan plan;
    plan.refusal = FormatRefusal::None;
    plan.backend = FormatBackend::CommandLine;
    return plan;
}

// Runs the event loop until the flow reaches `state` (or 5 s pass).
bool waitFor(const CardFormatFlow& flow, CardFormatFlow::State state)
{
    for (int i = 0; i < 500 && flow.state() != state; ++i) {
        QCoreApplication::processEvents();
        QThread::msleep(10);
    }
    return flow.state() == state;
}

const QString kRoot = QStringLiteral("/media/user/DASH CAM");

} // namespace

TEST(CardFormatFlowTest, ARefusedFolderGetsTheOneButtonRefusalAndNothingRuns)
{
    ScriptedEngine engine;
    engine.plan.refusal = FormatRefusal::NotRemovable;
    CardFormatFlow flow(engine);
    flow.start(kRoot);
    EXPECT_EQ(flow.state(), CardFormatFlow::State::Checking);
    EXPECT_FALSE(flow.sheet().isOpen()); // the answer comes later
    ASSERT_TRUE(waitFor(flow, CardFormatFlow::State::Refused));
    EXPECT_EQ(flow.sheet().kind, CardSheet::Kind::Refusal);
    EXPECT_EQ(flow.sheet().messageKey, CardSheetKeys::kFormatTitle);
    EXPECT_EQ(flow.sheet().informativeKey, CardSheetKeys::kCannotFormat);
    EXPECT_EQ(flow.sheet().buttonKeys, QStringList { QStringLiteral("OK") });
    EXPECT_TRUE(flow.sheet().buttonsEnabled);
    flow.answer(1000);
    EXPECT_FALSE(flow.sheet().isOpen());
    EXPECT_EQ(engine.formats, 0);
}

TEST(CardFormatFlowTest, AnsweringNoRunsNothing)
{
    ScriptedEngine engine;
    engine.plan = allowed();
    CardFormatFlow flow(engine);
    flow.start(kRoot);
    ASSERT_TRUE(waitFor(flow, CardFormatFlow::State::Asking));
    EXPECT_EQ(flow.sheet().buttonKeys, QStringList({ CardSheetKeys::kNo, CardSheetKeys::kYes }));
    EXPECT_EQ(flow.sheet().informativeKey, CardSheetKeys::kFormatQuestion);
    flow.answer(1000);
    EXPECT_EQ(flow.state(), CardFormatFlow::State::Idle);
    EXPECT_FALSE(flow.sheet().isOpen());
    QCoreApplication::processEvents();
    EXPECT_EQ(engine.formats, 0);
}

TEST(CardFormatFlowTest, YesShowsProgressThenTheResultWithTheButtonEnabled)
{
    struct Case {
        const char* name;
        FormatResult::Outcome outcome;
        bool mounted;
        QString informative;
        QString note;
    };
    const Case cases[] = {
        { "formatted", FormatResult::Outcome::Formatted, true, CardSheetKeys::kFormatDone, {} },
        { "tool exit 1", FormatResult::Outcome::Failed, true, CardSheetKeys::kFormatFailed, {} },
        { "left unmounted", FormatResult::Outcome::Failed, false, CardSheetKeys::kFormatFailed,
            CardSheetKeys::kCardLeftUnmounted },
        // A tool that can't start leaves the progress text standing.
        { "could not start", FormatResult::Outcome::NotStarted, true, CardSheetKeys::kFormatting,
            {} },
    };
    for (const Case& c : cases) {
        ScriptedEngine engine;
        engine.plan = allowed();
        engine.result.outcome = c.outcome;
        engine.result.mounted = c.mounted;
        CardFormatFlow flow(engine);
        QSignalSpy finished(&flow, &CardFormatFlow::formatFinished);
        flow.start(kRoot);
        ASSERT_TRUE(waitFor(flow, CardFormatFlow::State::Asking)) << c.name;
        flow.answer(1001);

        EXPECT_EQ(flow.state(), CardFormatFlow::State::Formatting) << c.name;
        EXPECT_EQ(flow.sheet().kind, CardSheet::Kind::Progress) << c.name;
        EXPECT_EQ(flow.sheet().informativeKey, CardSheetKeys::kFormatting) << c.name;
        EXPECT_FALSE(flow.sheet().buttonsEnabled) << c.name;
        EXPECT_TRUE(flow.sheet().progressVisible) << c.name;
        flow.answer(1000); // the disabled button can't close the sheet
        flow.start(kRoot); // nor can a second start
        EXPECT_EQ(flow.state(), CardFormatFlow::State::Formatting) << c.name;

        ASSERT_TRUE(waitFor(flow, CardFormatFlow::State::Finished)) << c.name;
        EXPECT_EQ(flow.sheet().informativeKey, c.informative) << c.name;
        EXPECT_EQ(flow.sheet().noteKey, c.note) << c.name;
        EXPECT_TRUE(flow.sheet().buttonsEnabled) << c.name;
        EXPECT_FALSE(flow.sheet().progressVisible) << c.name;
        EXPECT_EQ(flow.sheet().buttonKeys, QStringList { QStringLiteral("OK") }) << c.name;
        ASSERT_EQ(finished.size(), 1) << c.name;
        EXPECT_EQ(finished[0][0].toBool(), c.outcome == FormatResult::Outcome::Formatted) << c.name;
        EXPECT_EQ(engine.formats, 1) << c.name;
        EXPECT_EQ(engine.inspections, 1) << c.name;
        flow.answer(1000);
        EXPECT_FALSE(flow.sheet().isOpen()) << c.name;
    }
}

TEST(CardFormatFlowTest, EveryTextShownIsALocalisationKeyOfTheViewer)
{
    QStringList registry;
    for (const char* key : LocalizationKeys::kAllKeys)
        registry << QString::fromUtf8(key);
    const QString texts[] = { CardSheetKeys::kNo, CardSheetKeys::kYes, CardSheetKeys::kFormatTitle,
        CardSheetKeys::kCannotFormat, CardSheetKeys::kFormatQuestion, CardSheetKeys::kFormatting,
        CardSheetKeys::kFormatDone, CardSheetKeys::kFormatFailed, CardSheetKeys::kCardLeftUnmounted,
        CardSheetKeys::kTouchTitle, CardSheetKeys::kTouchQuestion, CardSheetKeys::kTouchDone };
    for (const QString& text : texts)
        EXPECT_TRUE(registry.contains(text)) << text.toStdString();
}

TEST(CardFormatFlowTest, TheRealFormatterAnswersLaterOnTheCallersThread)
{
    FakeCardSystem machine;
    auto runner = std::make_shared<ScriptedRunner>();
    const QString folder = machine.folder(QStringLiteral("plain folder"));
    CardFormatter formatter(machine.system(), runner);
    CardFormatFlow flow(formatter);
    flow.start(folder);
    EXPECT_EQ(flow.state(), CardFormatFlow::State::Checking);
    ASSERT_TRUE(waitFor(flow, CardFormatFlow::State::Refused));
    EXPECT_EQ(flow.plan().refusal, FormatRefusal::NotAMountPoint);
    EXPECT_TRUE(runner->calls().isEmpty());
}

TEST(CardFormatFlowTest, AFlowClosedWhileTheWorkerRunsIsNotCalledBack)
{
    FakeCardSystem machine;
    auto runner = std::make_shared<ScriptedRunner>();
    CardFormatter formatter(machine.system(), runner);
    {
        CardFormatFlow flow(formatter);
        flow.start(machine.folder(QStringLiteral("card")));
    } // the editor closed before the answer
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
        QThread::msleep(10);
    }
    SUCCEED(); // no call into the destroyed flow (ASan/UBSan builds would catch one)
}
