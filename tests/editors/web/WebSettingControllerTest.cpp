// The settings window's exchange with the camera's page, against a page
// double that answers later, as QtWebEngine does: handshake, save, reset,
// notifications, the clock request, and pages that misbehave.

#include "ScriptedSettingPage.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "editors/web/WebDashcam.h"
#include "editors/web/WebSettingScripts.h"
#include "editors/web/WebSettingWindowController.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString kModelName = QStringLiteral("model.name");
const QString kCfgSize = QStringLiteral("model.cfgSize");
const QString kGetCfg = QStringLiteral("get_cfg()");

// Lets queued work and the page's answers run.
void settle(int rounds = 20)
{
    for (int i = 0; i < rounds; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

// Every file under a folder with its content.
QMap<QString, QByteArray> snapshot(const QString& root)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(QDir(root).relativeFilePath(path), TestFiles::read(path));
    }
    return files;
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

    QStringList scriptsAfterHandshake(WebSettingWindowController& controller)
    {
        controller.windowDidLoad();
        controller.mainFrameDidFinishLoad(true);
        settle();
        return m_page.scripts();
    }

    // Save, then wait for the window to be told to close.
    void save(WebSettingWindowController& controller)
    {
        controller.onBtnSave();
        QElapsedTimer timer;
        timer.start();
        while (m_view.closed == 0 && timer.elapsed() < 5000)
            settle(1);
        ASSERT_EQ(m_view.closed, 1);
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

    controller->mainFrameDidFinishLoad(true);
    // The size is asked only once the name has come back.
    EXPECT_EQ(m_page.scripts(), QStringList { kModelName });
    settle();
    const QStringList expected { kModelName, kCfgSize,
        "set_cfg(\"" + WebSettingScripts::cfgStringWithData(record) + "\")",
        "setParamLanguage(['a','b','c',])", "set_language(\"c\")", "setTimeDate(\"2020,05,17\")",
        "setTimeHour(\"08\")", "setTimeMin(\"09\")" };
    EXPECT_EQ(m_page.scripts(), expected);
    EXPECT_EQ(controller->modelName(), "Zenti");
    EXPECT_EQ(controller->cfgSize(), 596);
    EXPECT_TRUE(controller->websetting_date_time_use());
    EXPECT_TRUE(controller->didLoadHtml());
    EXPECT_FALSE(controller->acceptsFurtherLoads());
}

TEST_F(WebSettingControllerTest, HandshakeRunsOnceWhicheverSignalComesFirst)
{
    for (const bool pageFirst : { true, false }) {
        ScriptedSettingPage page;
        RecordingWindowView view;
        WebSettingWindowController controller(m_card, {}, page, view);
        controller.windowDidLoad();
        if (pageFirst) {
            controller.webDashcam()->docLoadComplete();
            // Not inside the page's own call.
            EXPECT_TRUE(page.scripts().isEmpty());
        }
        controller.mainFrameDidFinishLoad(true);
        controller.webDashcam()->docLoadComplete();
        controller.mainFrameDidFinishLoad(true); // a later load
        settle();
        EXPECT_EQ(page.count(kModelName), 1) << pageFirst;
        EXPECT_EQ(page.count("setParamLanguage([])"), 1) << pageFirst;
    }
}

TEST_F(WebSettingControllerTest, MissingFilesGiveAnEmptyRecordAndNoClockRequest)
{
    auto controller = makeController();
    const QStringList scripts = scriptsAfterHandshake(*controller);
    EXPECT_TRUE(scripts.contains("set_cfg(\"\")"));
    // No record, no language field: the page keeps its own language.
    for (const QString& script : scripts) {
        EXPECT_FALSE(script.startsWith("set_language")) << qPrintable(script);
        EXPECT_FALSE(script.startsWith("setTime")) << qPrintable(script);
    }
    EXPECT_FALSE(controller->websetting_date_time_use());
    // model.name and model.cfgSize answered undefined.
    EXPECT_EQ(controller->modelName(), QString());
    EXPECT_EQ(controller->cfgSize(), 0);
}

TEST_F(WebSettingControllerTest, LanguageIndexOutsideTheListSendsNoLanguage)
{
    writeCard("setup.cfg", SetupCfgBuilder(432).int32(428, 3).bytes());
    auto controller = makeController();
    const QStringList scripts = scriptsAfterHandshake(*controller);
    EXPECT_TRUE(scripts.contains("setParamLanguage(['a','b','c',])"));
    EXPECT_FALSE(scripts.join('\n').contains("set_language"));
}

TEST_F(WebSettingControllerTest, SaveWritesTheClockRequestAndThePageRecord)
{
    writeCard("setup.cfg", SetupCfgBuilder(432).bytes());
    m_page.answer(kGetCfg, QStringLiteral("0a1B"));
    auto controller = makeController();
    scriptsAfterHandshake(*controller);
    WebDashcam* dashcam = controller->webDashcam();
    dashcam->SetDate(QStringLiteral("2021/12/31"));
    dashcam->SetDateHour(QStringLiteral("7"));
    dashcam->SetDateMin(QStringLiteral("05"));
    dashcam->SetDateUse(QStringLiteral("1"));

    save(*controller);
    EXPECT_FALSE(m_view.exchangeEnabled);
    EXPECT_EQ(TestFiles::read(m_card + "/SETTING/time.dat"), "2021,12,31,7,05,00,+0900");
    EXPECT_EQ(TestFiles::read(m_card + "/SETTING/setup.cfg"), QByteArray("\x0a\x1b", 2));
    EXPECT_EQ(m_page.count(kGetCfg), 1);
}

TEST_F(WebSettingControllerTest, OnlyTheTextOneTurnsTheClockRequestOn)
{
    auto controller = makeController();
    const struct {
        QVariant use;
        bool on;
    } cases[] = { { QStringLiteral("1"), true }, { QStringLiteral("true"), false },
        { QStringLiteral("0"), false }, { QVariant(true), false }, { QVariant(1.0), false },
        { QStringLiteral(" 1"), false }, { QVariant(), false } };
    for (const auto& c : cases) {
        controller->webDashcam()->SetDateUse(QStringLiteral("1"));
        controller->webDashcam()->SetDateUse(c.use);
        EXPECT_EQ(controller->websetting_date_time_use(), c.on) << qPrintable(c.use.toString());
    }
}

TEST_F(WebSettingControllerTest, WhatThePageReturnsIsWrittenAsTheDesignSays)
{
    const struct {
        QString answer;
        QByteArray written;
    } cases[] = { { "abc", QByteArray("\xab\x0c", 2) }, { "zz", QByteArray(1, '\0') },
        { QString(200000, u'F'), QByteArray(100000, '\xff') } };
    using Outcome = WebSettingWindowController::SaveOutcome;
    for (const auto& c : cases) {
        ScriptedSettingPage page;
        RecordingWindowView view;
        writeCard("setup.cfg", "old");
        page.answer(kGetCfg, c.answer);
        WebSettingWindowController controller(m_card, {}, page, view);
        Outcome outcome = Outcome::NoRecord;
        controller.saveConfig([&outcome](Outcome done) { outcome = done; });
        settle();
        EXPECT_EQ(outcome, Outcome::Written);
        EXPECT_EQ(TestFiles::read(m_card + "/SETTING/setup.cfg"), c.written) << c.answer.size();
    }
}

// A page given no record (a card without setup.cfg, or Reset on a card
// without default.cfg) hands back an empty one: the card keeps its own.
TEST_F(WebSettingControllerTest, AnEmptyRecordNeverReplacesTheCardsRecord)
{
    const QByteArray record = SetupCfgBuilder(432).int32(428, 1).bytes();
    enum class Card { WithRecord, WithoutRecord, ResetWithoutDefaults };
    for (const Card card : { Card::WithRecord, Card::WithoutRecord, Card::ResetWithoutDefaults }) {
        SCOPED_TRACE(int(card));
        QDir(m_card + "/SETTING").removeRecursively();
        if (card != Card::WithoutRecord)
            writeCard("setup.cfg", record);
        const QMap<QString, QByteArray> before = snapshot(m_card);
        ScriptedSettingPage page;
        RecordingWindowView view;
        page.answer(kGetCfg, QStringLiteral(""));
        WebSettingWindowController controller(m_card, {}, page, view);
        controller.mainFrameDidFinishLoad(true);
        settle();
        if (card == Card::ResetWithoutDefaults)
            controller.onBtnReset();
        controller.webDashcam()->SetDateUse(QStringLiteral("1"));
        controller.onBtnSave();
        settle();
        EXPECT_EQ(page.count(kGetCfg), 1);
        EXPECT_EQ(snapshot(m_card), before);
        // The window says so and stays, ready for Cancel or another Save.
        ASSERT_EQ(view.messages.size(), 1);
        EXPECT_EQ(view.messages[0].message,
            QString::fromUtf8("설정 페이지가 빈 설정값을 돌려주었습니다. 메모리카드의 setup.cfg는 "
                              "그대로 두었습니다."));
        EXPECT_EQ(view.closed, 0);
        EXPECT_TRUE(view.exchangeEnabled);
        EXPECT_FALSE(controller.isSaving());
        // A record of any other length is written as the page hands it back.
        page.answer(kGetCfg, QStringLiteral("00"));
        controller.onBtnSave();
        settle();
        EXPECT_EQ(view.closed, 1);
        EXPECT_EQ(TestFiles::read(m_card + "/SETTING/setup.cfg"), QByteArray(1, '\0'));
    }
}

TEST_F(WebSettingControllerTest, ARecordThatIsNotTextLeavesTheCardAsItWas)
{
    writeCard("setup.cfg", SetupCfgBuilder(432).int32(428, 1).bytes());
    const QMap<QString, QByteArray> before = snapshot(m_card);
    // Thrown / undefined, a number, a boolean, an object, no answer at all.
    const QList<QVariant> answers { QVariant(), QVariant(42.0), QVariant(true),
        QVariant(QVariantMap { { "a", 1 } }) };
    for (int i = 0; i <= answers.size(); ++i) {
        ScriptedSettingPage page;
        RecordingWindowView view;
        if (i < answers.size())
            page.answer(kGetCfg, answers.at(i));
        else
            page.silence(kGetCfg);
        WebSettingWindowController controller(m_card, {}, page, view);
        controller.setAnswerTimeout(100);
        controller.webDashcam()->SetDateUse(QStringLiteral("1"));
        controller.onBtnSave();
        QElapsedTimer timer;
        timer.start();
        while (view.closed == 0 && timer.elapsed() < 3000)
            settle(1);
        EXPECT_EQ(view.closed, 1) << i;
        EXPECT_EQ(snapshot(m_card), before) << i;
    }
}

TEST_F(WebSettingControllerTest, SavePressedTwiceAsksOnce)
{
    m_page.answer(kGetCfg, QStringLiteral("00"));
    auto controller = makeController();
    controller->onBtnSave();
    controller->onBtnSave();
    settle();
    EXPECT_EQ(m_page.count(kGetCfg), 1);
    EXPECT_EQ(m_view.closed, 1);
}

TEST_F(WebSettingControllerTest, ResetSendsTheFactoryRecordAndWritesNothing)
{
    const QByteArray factory = SetupCfgBuilder(432).int32(428, 1).bytes();
    writeCard("setup.cfg", SetupCfgBuilder(432).int32(428, 2).bytes());
    writeCard("default.cfg", factory);
    auto controller = makeController();
    scriptsAfterHandshake(*controller);
    const QMap<QString, QByteArray> before = snapshot(m_card);
    const qsizetype sent = m_page.scripts().size();

    m_view.backVisible = true;
    controller->onBtnReset();
    EXPECT_EQ(m_page.scripts().mid(sent),
        (QStringList { "set_cfg(\"" + WebSettingScripts::cfgStringWithData(factory) + "\")",
            "generateSetting(true)" }));
    EXPECT_FALSE(m_view.backVisible);
    EXPECT_EQ(snapshot(m_card), before);

    QFile::remove(m_card + "/SETTING/default.cfg");
    controller->onBtnReset();
    EXPECT_EQ(m_page.scripts().at(sent + 2), "set_cfg(\"\")");
}

TEST_F(WebSettingControllerTest, ListBackAndLanguageSetCompleteDriveTheBackButton)
{
    auto controller = makeController();
    controller->webDashcam()->clickedList();
    EXPECT_TRUE(m_view.backVisible);
    controller->onBtnBack();
    EXPECT_EQ(m_page.scripts().last(), "generateSetting(true)");
    EXPECT_FALSE(m_view.backVisible);

    controller->webDashcam()->clickedList();
    controller->webDashcam()->languageSetComplete();
    EXPECT_NE(m_page.scripts().last(), "generateSetting(false)"); // queued, not inside the call
    settle();
    EXPECT_EQ(m_page.scripts().last(), "generateSetting(false)");
    EXPECT_FALSE(m_view.backVisible);
}

TEST_F(WebSettingControllerTest, NotificationsAnswerCancelOrOkByButton)
{
    auto controller = makeController();
    WebDashcam* dashcam = controller->webDashcam();
    const struct {
        const char* fields;
        int returnCode;
        QStringList buttons;
        const char* answer;
    } cases[] = {
        { "Title\tMessage\t3\tv\t1", 1000, { "확인" }, "update_cancel(3)" },
        { "Title\tMessage\t3\tv\t2", 1001, { "아니오", "예" }, "update_ok(3, \"v\")" },
        { "Title\tMessage\t3\tv\t2", 1000, { "아니오", "예" }, "update_cancel(3)" },
        { "T\tM\t-4\tx y\t0\tignored", 1000, { "확인" }, "update_cancel(-4)" },
    };
    for (const auto& c : cases) {
        m_view.notices.clear();
        dashcam->showPopup(QString::fromUtf8(c.fields));
        ASSERT_EQ(m_view.notices.size(), 1) << c.fields;
        EXPECT_EQ(m_view.notices.first().buttonKeys, c.buttons);
        EXPECT_TRUE(controller->hasOpenNotification());
        controller->yesNoAlertDidSelected(c.returnCode);
        EXPECT_FALSE(controller->hasOpenNotification());
        EXPECT_EQ(m_page.scripts().last(), QString::fromUtf8(c.answer));
    }
    EXPECT_EQ(m_view.notices.first().title, "T");
    EXPECT_EQ(m_view.notices.first().message, "M");

    // Too few fields, or not text: nothing shown, nothing answered.
    const qsizetype sent = m_page.scripts().size();
    m_view.notices.clear();
    dashcam->showPopup(QStringLiteral("Title\tMessage\t3\tv"));
    dashcam->showPopup(QVariant(5.0));
    dashcam->showPopup(QVariant());
    EXPECT_TRUE(m_view.notices.isEmpty());
    EXPECT_EQ(m_page.scripts().size(), sent);
}

TEST_F(WebSettingControllerTest, ANotificationWhileOneIsOpenWaitsItsTurn)
{
    auto controller = makeController();
    controller->showPopup(QStringLiteral("A\ta\t1\tv1\t2"));
    controller->showPopup(QStringLiteral("B\tb\t2\tv2\t2"));
    ASSERT_EQ(m_view.notices.size(), 1);
    controller->yesNoAlertDidSelected(1001);
    ASSERT_EQ(m_view.notices.size(), 2);
    EXPECT_EQ(m_view.notices.last().title, "B");
    controller->yesNoAlertDidSelected(1001);
    EXPECT_EQ(m_page.scripts().mid(m_page.scripts().size() - 2),
        (QStringList { "update_ok(1, \"v1\")", "update_ok(2, \"v2\")" }));
    // An answer with nothing open does nothing.
    controller->yesNoAlertDidSelected(1000);
    EXPECT_EQ(m_page.scripts().last(), "update_ok(2, \"v2\")");
}

TEST_F(WebSettingControllerTest, AdasResetRemovesTheCalibrationFile)
{
    writeCard("ADAS_CAL.dat", "calibration");
    auto controller = makeController();
    controller->webDashcam()->adasreset();
    EXPECT_FALSE(QFile::exists(m_card + "/SETTING/ADAS_CAL.dat"));
    controller->webDashcam()->adasreset(); // already gone
    EXPECT_TRUE(QFileInfo(m_card + "/SETTING").isDir());
}

TEST_F(WebSettingControllerTest, IgnoredEntriesChangeNothing)
{
    writeCard("setup.cfg", SetupCfgBuilder(432).bytes());
    writeCard("ADAS_CAL.dat", "calibration");
    auto controller = makeController();
    const QMap<QString, QByteArray> before = snapshot(m_card);
    WebDashcam* dashcam = controller->webDashcam();
    dashcam->log(QStringLiteral("hello"));
    dashcam->getCfg(QVariant());
    dashcam->popup(QStringLiteral("x"));
    dashcam->SetDateAmPm(QStringLiteral("PM"));
    dashcam->format();
    dashcam->reset();
    settle();
    EXPECT_TRUE(m_page.scripts().isEmpty());
    EXPECT_TRUE(m_view.notices.isEmpty());
    EXPECT_EQ(m_view.closed, 0);
    EXPECT_EQ(snapshot(m_card), before);
}

TEST_F(WebSettingControllerTest, AnswersAfterTheWindowHasGoneAreDropped)
{
    m_page.answer(kModelName, QStringLiteral("late"));
    m_page.holdAnswers();
    {
        auto controller = makeController();
        controller->mainFrameDidFinishLoad(true);
        controller->saveConfig();
    }
    m_page.release();
    settle();
    EXPECT_EQ(m_page.scripts(), (QStringList { kModelName, kGetCfg }));
}

TEST_F(WebSettingControllerTest, APageThatNeverAnswersStillGetsTheRecord)
{
    m_page.silence(kModelName);
    writeCard("setup.cfg", "\x01\x02");
    auto controller = makeController();
    controller->mainFrameDidFinishLoad(true);
    QElapsedTimer timer;
    timer.start();
    while (!m_page.scripts().contains("set_cfg(\"0102\")") && timer.elapsed() < 3000)
        settle(1);
    EXPECT_TRUE(m_page.scripts().contains("set_cfg(\"0102\")"));
    EXPECT_EQ(controller->modelName(), QString());
}

TEST_F(WebSettingControllerTest, OneWindowAtATime)
{
    auto first = makeController();
    auto second = makeController();
    EXPECT_EQ(WebSettingWindowController::instance(), nullptr);
    first->beginModal();
    EXPECT_EQ(WebSettingWindowController::instance(), first.get());
    // Another controller ending does not clear the open one.
    second->endModalSession();
    EXPECT_EQ(WebSettingWindowController::instance(), first.get());
    // Nothing opens while one is open.
    EXPECT_EQ(WebSettingWindowController::showWebSettingWindow(nullptr, m_card, {}), nullptr);
    first.reset();
    EXPECT_EQ(WebSettingWindowController::instance(), nullptr);
}

} // namespace
