// The settings window's exchange with the camera's page, against a page
// double that answers later, as QtWebEngine does.

#include "ScriptedSettingPage.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "editors/web/WebDashcam.h"
#include "editors/web/WebSettingScripts.h"
#include "editors/web/WebSettingWindowController.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

const QString kModelName = QStringLiteral("model.name");
const QString kCfgSize = QStringLiteral("model.cfgSize");
const QString kGetCfg = QStringLiteral("get_cfg()");

// Lets the page's answers run (waiting up to 3 s for `done`).
void settle(const std::function<bool()>& done = {})
{
    if (done)
        (void)QTest::qWaitFor(done, 3000);
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

class WebSettingControllerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_card = m_dir.filePath(QStringLiteral("my card"));
        QDir().mkpath(m_card + "/SETTING/html");
    }

    std::unique_ptr<WebSettingWindowController> makeController(
        const CameraLanguageList& languages = { { 0, "a" }, { 1, "b" }, { 2, "c" } })
    {
        auto controller
            = std::make_unique<WebSettingWindowController>(m_card, languages, m_page, m_view);
        controller->setAnswerTimeout(200);
        return controller;
    }
    void writeCard(const QString& name, const QByteArray& bytes)
    {
        TestFiles::write(m_card + "/SETTING/" + name, bytes);
    }
    QTemporaryDir m_dir { QDir::tempPath() + "/tavro web XXXXXX" };
    QString m_card;
    ScriptedSettingPage m_page;
    RecordingWindowView m_view;
};

TEST_F(WebSettingControllerTest, HandshakeFeedsThePageInTheDesignedOrder)
{
    const QByteArray record = SetupCfgBuilder(596).int32(428, 2).text(8, 16, "Zenti").bytes();
    writeCard("setup.cfg", record);
    writeCard("time.dat", "2020,05,17,08,09,00,+0900");
    m_page.answer(kModelName, QStringLiteral("Zenti"));
    m_page.answer(kCfgSize, 596.0);
    auto controller = makeController();

    controller->windowDidLoad();
    ASSERT_EQ(m_page.loads().size(), 1);
    EXPECT_EQ(m_page.loads().first().toLocalFile(), m_card + "/SETTING/html/index.html");
    EXPECT_FALSE(m_view.backVisible);
    controller->mainFrameDidFinishLoad(false); // a refused navigation
    // The page may signal before its load finishes: never inside its own call.
    controller->webDashcam()->docLoadComplete();
    EXPECT_TRUE(m_page.scripts().isEmpty());
    controller->mainFrameDidFinishLoad(true);
    EXPECT_EQ(m_page.scripts(), QStringList { kModelName }); // the size only once the name is back
    settle();
    controller->mainFrameDidFinishLoad(true); // a later load: the handshake runs once
    settle();
    const QStringList expected { kModelName, kCfgSize,
        "set_cfg(\"" + WebSettingScripts::cfgStringWithData(record) + "\")",
        "setParamLanguage(['a','b','c',])", "set_language(\"c\")", "setTimeDate(\"2020,05,17\")",
        "setTimeHour(\"08\")", "setTimeMin(\"09\")" };
    EXPECT_EQ(m_page.scripts(), expected);
    EXPECT_EQ(controller->modelName(), "Zenti");
    EXPECT_EQ(controller->cfgSize(), 596);
    EXPECT_TRUE(controller->websetting_date_time_use());
    EXPECT_FALSE(controller->acceptsFurtherLoads());
}

// A card without setup.cfg or time.dat: an empty record, no language, no clock.
TEST_F(WebSettingControllerTest, HandshakeTakesWhatTheCardHas)
{
    {
        ScriptedSettingPage page;
        WebSettingWindowController controller(m_card, {}, page, m_view);
        controller.mainFrameDidFinishLoad(true);
        settle();
        EXPECT_EQ(page.scripts().mid(2), (QStringList { "set_cfg(\"\")", "setParamLanguage([])" }));
        EXPECT_FALSE(controller.websetting_date_time_use());
    }
    // A language index the camera's list does not have: the page keeps its own.
    writeCard("setup.cfg", SetupCfgBuilder(432).int32(428, 3).bytes());
    auto controller = makeController();
    controller->mainFrameDidFinishLoad(true);
    settle();
    EXPECT_TRUE(m_page.scripts().contains("setParamLanguage(['a','b','c',])"));
    EXPECT_FALSE(m_page.scripts().join('\n').contains("set_language"));
}

TEST_F(WebSettingControllerTest, LateAnswersAreDroppedAndASilentPageStillGetsTheRecord)
{
    writeCard("setup.cfg", "\x01\x02");
    m_page.answer(kModelName, QStringLiteral("late"));
    m_page.holdAnswers();
    {
        auto controller = makeController();
        controller->mainFrameDidFinishLoad(true);
        settle([&] { return m_page.scripts().contains("set_cfg(\"0102\")"); });
        EXPECT_TRUE(m_page.scripts().contains("set_cfg(\"0102\")"));
        // The name arrives after its time: it is not taken, nothing is asked twice.
        m_page.release();
        settle();
        EXPECT_EQ(controller->modelName(), QString());
        EXPECT_EQ(m_page.count(kCfgSize), 1);
        m_page.holdAnswers();
        controller->saveConfig();
    }
    // Answers after the window has gone find nobody.
    m_page.release();
    settle();
    EXPECT_EQ(m_page.count(kGetCfg), 1);
    EXPECT_EQ(TestFiles::read(m_card + "/SETTING/setup.cfg"), "\x01\x02");
}

TEST_F(WebSettingControllerTest, SaveWritesOnlyATextRecordAndAClockRequestOnlyWhenAskedFor)
{
    // A number or a script error (undefined; no answer in time is taken as
    // one): the window closes and the card keeps its record. An empty record
    // keeps the window.
    const QVariant broken[] = { 5.0, QVariant(), QString("") };
    for (const QVariant& answer : broken) {
        ScriptedSettingPage page;
        RecordingWindowView view;
        page.answer(kGetCfg, answer);
        WebSettingWindowController controller(m_card, {}, page, view);
        controller.setAnswerTimeout(200);
        controller.onBtnSave();
        settle([&] { return view.closed > 0 || view.exchangeEnabled; });
        EXPECT_EQ(view.closed, answer == QString("") ? 0 : 1) << qPrintable(answer.toString());
        EXPECT_TRUE(snapshot(m_card).isEmpty());
    }
    m_page.answer(kGetCfg, QStringLiteral("0a1B"));
    auto controller = makeController();
    controller->windowDidLoad(); // the page never finishes loading
    controller->onBtnSave();
    controller->onBtnSave();
    EXPECT_FALSE(m_view.exchangeEnabled);
    settle([&] { return m_view.closed > 0; });
    EXPECT_EQ(m_page.count(kGetCfg), 1);
    EXPECT_EQ(m_view.closed, 1);
    EXPECT_EQ(
        snapshot(m_card), (QMap<QString, QByteArray> { { "SETTING/setup.cfg", "\x0a\x1b" } }));

    // Only the text "1" asks for the clock.
    for (const QVariant& use : { QVariant(true), QVariant(" 1"), QVariant() }) {
        controller->webDashcam()->SetDateUse(QStringLiteral("1"));
        EXPECT_TRUE(controller->websetting_date_time_use());
        controller->webDashcam()->SetDateUse(use);
        EXPECT_FALSE(controller->websetting_date_time_use()) << qPrintable(use.toString());
    }
}

TEST_F(WebSettingControllerTest, ResetSendsTheFactoryRecordAndBackTheTabs)
{
    const QByteArray factory = SetupCfgBuilder(432).int32(428, 1).bytes();
    writeCard("setup.cfg", SetupCfgBuilder(432).int32(428, 2).bytes());
    writeCard("default.cfg", factory);
    auto controller = makeController();
    const QMap<QString, QByteArray> before = snapshot(m_card);
    controller->onBtnReset();
    EXPECT_EQ(m_page.scripts(),
        (QStringList { "set_cfg(\"" + WebSettingScripts::cfgStringWithData(factory) + "\")",
            "generateSetting(true)" }));
    EXPECT_EQ(snapshot(m_card), before);
    QFile::remove(m_card + "/SETTING/default.cfg");
    controller->onBtnReset();
    EXPECT_EQ(m_page.scripts().at(2), "set_cfg(\"\")");
    // A list opened on the page shows Back; Back brings the tabs again.
    controller->webDashcam()->clickedList();
    EXPECT_TRUE(m_view.backVisible);
    controller->onBtnBack();
    EXPECT_EQ(m_page.scripts().last(), "generateSetting(true)");
    EXPECT_FALSE(m_view.backVisible);
}

TEST_F(WebSettingControllerTest, NotificationsAreAnsweredOneAfterTheOther)
{
    auto controller = makeController();
    WebDashcam* dashcam = controller->webDashcam();
    // A notification of one button is cancelled; fields past the fifth are ignored.
    dashcam->showPopup(QStringLiteral("T\tM\t-4\tx y\t0\tignored"));
    ASSERT_EQ(m_view.notices.size(), 1);
    EXPECT_EQ(m_view.notices.first().buttonKeys, QStringList { "확인" });
    controller->yesNoAlertDidSelected(1000);
    EXPECT_FALSE(controller->hasOpenNotification());
    EXPECT_EQ(m_page.scripts().last(), "update_cancel(-4)");
    // Too few fields, or not text: nothing shown, nothing answered.
    m_view.notices.clear();
    dashcam->showPopup(QStringLiteral("Title\tMessage\t3\tv"));
    dashcam->showPopup(QVariant(5.0));
    dashcam->showPopup(QVariant());
    EXPECT_TRUE(m_view.notices.isEmpty());
    EXPECT_EQ(m_page.scripts().size(), 1);

    // While one is open the next ones wait in order, at most 16 of them.
    for (int i = 0; i < 18; ++i)
        controller->showPopup(QStringLiteral("N%1\tm\t%1\tv%1\t2").arg(i));
    for (int i = 0; i < 20; ++i)
        controller->yesNoAlertDidSelected(1001);
    ASSERT_EQ(m_view.notices.size(), 17);
    EXPECT_EQ(m_view.notices.last().title, "N16");
}

} // namespace
