// The web settings window with a real QtWebEngine page: a probe page of our
// own calls every entry point of Dashcam, tries to read other files, reach a
// server and leave; the card ends up holding exactly what the page returned.

#include "editors/web/WebSettingWindow.h"
#include "ScriptedSettingPage.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "TestTiming.h"
#include "editors/web/WebDashcam.h"
#include "editors/web/WebSettingWebPage.h"
#include "editors/web/WebSettingWindowController.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkDatagram>
#include <QPushButton>
#include <QSettings>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QUdpSocket>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <gtest/gtest.h>

namespace {

constexpr int kPageTimeoutMs = 20000;

class WebSettingWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        QSettings().setValue(QStringLiteral("AppleLanguages"), QStringList { "en" });
        ASSERT_TRUE(m_dir.isValid());
        ASSERT_TRUE(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] { ++m_connections; });
        ASSERT_TRUE(m_stun.bind(QHostAddress::LocalHost));
        QObject::connect(&m_stun, &QUdpSocket::readyRead, [this] {
            while (m_stun.hasPendingDatagrams()) {
                m_stun.receiveDatagram();
                ++m_datagrams;
            }
        });
        m_record = SetupCfgBuilder::letterPattern(596).int32(428, 1).bytes();
        m_saved = m_record;
        m_saved[0] = char(0xAB); // the probe page edits the first byte
        TestFiles::write(m_dir.filePath("secret.txt"), "SECRET");
        // "#", "?" and "%" would break a URL written by hand.
        m_card = m_dir.filePath(QStringLiteral("CAM#1 what? 100% card"));
        const QString setting = m_card + "/SETTING/";
        const QString pages = qEnvironmentVariable("TAVRO_TEST_DATA") + "/pages/";
        TestFiles::write(setting + "setup.cfg", m_record);
        TestFiles::write(setting + "time.dat", "2020,05,17,08,09,00,+0900");
        TestFiles::write(setting + "ADAS_CAL.dat", "calibration");
        TestFiles::write(setting + "html/inside.txt", "INSIDE");
        TestFiles::write(setting + "html/index.html", TestFiles::read(pages + "probe.html"));
        for (const char* file : { "other.html", "worker.js" })
            TestFiles::write(setting + "html/" + file, TestFiles::read(pages + file));
        TestFiles::write(setting + "html/probe-port.js",
            QStringLiteral("var probePort = %1; var stunPort = %2; var secretPath = '%3';")
                .arg(m_server.serverPort())
                .arg(m_stun.localPort())
                .arg(m_dir.filePath("secret.txt"))
                .toUtf8());
    }
    void TearDown() override
    {
        delete m_window.data();
        QSettings().clear();
    }

    // Opens the window on m_card and waits until the probe page is ready.
    bool openReady()
    {
        m_window = qobject_cast<WebSettingWindow*>(WebSettingWindowController::showWebSettingWindow(
            nullptr, m_card, { { 0, "en" }, { 1, "fr" }, { 2, "es" } }));
        return m_window && waitForPage("report.readyForSave === true");
    }
    // A script's result in the page, waited for.
    QVariant js(const QString& script)
    {
        QVariant result;
        bool done = false;
        m_window->page()->runJavaScript(script, [&](const QVariant& value) {
            result = value;
            done = true;
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return done; }, kPageTimeoutMs)) << qPrintable(script);
        return result;
    }
    QJsonObject report()
    {
        return QJsonDocument::fromJson(js("JSON.stringify(report)").toString().toUtf8()).object();
    }
    bool waitForPage(const QString& condition)
    {
        return QTest::qWaitFor([&] { return m_window && js(condition).toBool(); }, kPageTimeoutMs);
    }
    // The page asks its question ("Title", "Message") at load; answers it.
    void answerNotification(QMessageBox::ButtonRole role)
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return m_window && m_window->notificationBox(); }, kPageTimeoutMs));
        QMessageBox* box = m_window->notificationBox();
        EXPECT_EQ(box->text(), "Title");
        EXPECT_EQ(box->informativeText(), "Message");
        ASSERT_EQ(box->buttons().size(), 2);
        for (QAbstractButton* button : box->buttons())
            if (box->buttonRole(button) == role)
                button->click();
    }
    bool waitClosed()
    {
        return QTest::qWaitFor([&] { return m_window.isNull(); }, kPageTimeoutMs);
    }

    QTemporaryDir m_dir { QDir::tempPath() + "/tavro web XXXXXX" };
    QTcpServer m_server;
    int m_connections = 0;
    QUdpSocket m_stun; // a STUN server the page tries to reach over WebRTC
    int m_datagrams = 0;
    QString m_card;
    QByteArray m_record;
    QByteArray m_saved;
    QPointer<WebSettingWindow> m_window;
};

TEST_F(WebSettingWindowTest, PageTalksToTheViewerAndSaveWritesWhatItReturned)
{
    ASSERT_TRUE(openReady());
    EXPECT_EQ(m_window->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("Dashcam Settings"));
    const QJsonObject seen = report();
    // Dashcam was there for the page's first script, with every entry.
    EXPECT_EQ(seen["early"].toString(), "object");
    EXPECT_TRUE(seen["bridgeKept"].toBool());
    const QVariantList names = seen["names"].toArray().toVariantList();
    for (const WebDashcam::ScriptName& name : WebDashcam::scriptNames())
        EXPECT_TRUE(names.contains(name.first)) << qPrintable(name.first);
    // What the viewer told the page (the controller test has every script's text).
    EXPECT_EQ(seen["language"].toString(), "fr");
    EXPECT_EQ(js("record").toString().toUtf8(), m_record.toHex().toUpper());
    EXPECT_TRUE(seen["calls"].toArray().contains("generateSetting:false"));
    EXPECT_EQ(m_window->controller()->modelName(), "ProbeCam");

    // Only the page's own folder is readable; no pop-ups, no network.
    const QJsonObject reads = seen["reads"].toObject();
    EXPECT_EQ(reads["inside"].toString(), "200:INSIDE");
    for (const char* refused : { "setupCfg", "outside", "etc", "remote" })
        EXPECT_EQ(reads[refused].toString(), "refused") << refused;
    EXPECT_EQ(seen["popup"].toString(), "none");
    ASSERT_TRUE(waitForPage("report.fetch !== undefined"));
    EXPECT_EQ(report()["fetch"].toString(), "refused");
    // No WebRTC: not from the page, not under its old name, not from a frame;
    // no WebTransport, not even in a worker, where no script of ours runs.
    const QJsonObject webrtc = seen["webrtc"].toObject();
    for (const char* where : { "page", "webkit", "frame", "frameByIndex", "frameInFrame" })
        EXPECT_EQ(webrtc[where].toString().toStdString(), "none") << where;
    EXPECT_EQ(webrtc["fromInside"].toString().toStdString(), "undefined");
    EXPECT_EQ(seen["webTransport"].toString().toStdString(), "undefined");
    ASSERT_TRUE(waitForPage("report.workerWebTransport !== undefined"));
    EXPECT_EQ(report()["workerWebTransport"].toString().toStdString(), "undefined");

    // Back button on the page's request; the notification answered "yes".
    EXPECT_TRUE(m_window->backButton()->isVisibleTo(m_window));
    answerNotification(QMessageBox::YesRole);
    ASSERT_TRUE(waitForPage("report.answers.indexOf('ok:3:v') >= 0"));
    // The page stayed where it was, and asked for the ADAS reset.
    EXPECT_EQ(js("location.href").toString(), seen["leftFrom"].toString());
    EXPECT_GE(m_window->page()->refusedNavigations(), 1);
    EXPECT_FALSE(QFile::exists(m_card + "/SETTING/ADAS_CAL.dat"));
    EXPECT_EQ(m_connections, 0);
    QTest::qWait(TestTiming::scaled(1500)); // a STUN request goes out at once, then again
    EXPECT_EQ(m_datagrams, 0) << "UDP from the page";

    // Ctrl+S while the page has the keyboard: the record and the clock request.
    QMap<QString, QByteArray> expected = snapshot(m_card);
    QWidget* focus = m_window->webView()->focusProxy();
    ASSERT_NE(focus, nullptr);
    focus->setFocus();
    QTest::keyClick(focus, Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(waitClosed());
    EXPECT_EQ(WebSettingWindowController::instance(), nullptr);
    expected["SETTING/setup.cfg"] = m_saved;
    expected["SETTING/time.dat"] = "2021,12,31,7,05,00,+0900";
    EXPECT_EQ(snapshot(m_card), expected);
}

TEST_F(WebSettingWindowTest, ReturnAnswersNoAndEscapeCancels)
{
    ASSERT_TRUE(openReady());
    // Return on the page's question answers "아니오": the page may be asking
    // to delete or reset something, and the viewer cannot tell.
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return m_window && m_window->notificationBox(); }, kPageTimeoutMs));
    QTest::keyClick(m_window->notificationBox(), Qt::Key_Return);
    ASSERT_TRUE(waitForPage("report.answers.indexOf('cancel:3') >= 0"));
    const QMap<QString, QByteArray> before = snapshot(m_card);
    // The window active, as under a desktop: its shortcut takes Esc from the page.
    m_window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_window));
    m_window->webView()->focusProxy()->setFocus();
    QTest::keyClick(m_window->webView()->focusProxy(), Qt::Key_Escape);
    ASSERT_TRUE(waitClosed());
    EXPECT_EQ(snapshot(m_card), before);
    // The next window opens.
    ASSERT_TRUE(openReady());
    EXPECT_EQ(WebSettingWindowController::instance(), m_window->controller());
    EXPECT_EQ(WebSettingWindowController::showWebSettingWindow(nullptr, m_card, {}), nullptr);
}

// (The other answers that are no record are in WebSettingControllerTest.)
TEST_F(WebSettingWindowTest, ABrokenOrEmptyRecordFromThePageWritesNothing)
{
    for (const char* mode : { "throw", "empty" }) {
        SCOPED_TRACE(mode);
        ASSERT_TRUE(openReady());
        answerNotification(QMessageBox::NoRole);
        const QMap<QString, QByteArray> before = snapshot(m_card);
        js(QStringLiteral("getCfgMode = '%1'").arg(QLatin1String(mode)));
        m_window->saveButton()->click();
        if (QLatin1String(mode) != QLatin1String("empty")) {
            ASSERT_TRUE(waitClosed());
        } else {
            // The window says the card keeps its record, and stays.
            ASSERT_TRUE(QTest::qWaitFor(
                [&] { return m_window->messageBox() && m_window->messageBox()->isVisible(); },
                kPageTimeoutMs));
            EXPECT_EQ(m_window->messageBox()->informativeText(),
                TavroLanguages::SharedTavroLanguages().localized(
                    LocalizationKeys::kEmptySettingsRecordKept));
            m_window->messageBox()->accept();
            EXPECT_TRUE(m_window->isVisible());
            EXPECT_TRUE(m_window->saveButton()->isEnabled());
        }
        EXPECT_EQ(snapshot(m_card), before);
    }
    // After the empty record the window saves what the page hands back next.
    js(QStringLiteral("getCfgMode = 'edit'"));
    m_window->saveButton()->click();
    ASSERT_TRUE(waitClosed());
    EXPECT_EQ(TestFiles::read(m_card + "/SETTING/setup.cfg"), m_saved);
}

TEST_F(WebSettingWindowTest, NoPageOfTheViewerSendsWebRtcUdp)
{
    // A page without the card page's script, in a process whose Chromium
    // flags are the viewer's: its peer connection gathers, but sends nothing.
    QWebEnginePage page;
    bool loaded = false;
    QObject::connect(&page, &QWebEnginePage::loadFinished, [&](bool ok) { loaded = ok; });
    page.setHtml(QStringLiteral("<script>var pc = new RTCPeerConnection({ iceServers: [{ urls: "
                                "'stun:127.0.0.1:%1' }] }); pc.createDataChannel('x'); "
                                "pc.createOffer().then(function (o) { return "
                                "pc.setLocalDescription(o); });</script>")
                     .arg(m_stun.localPort()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return loaded; }, kPageTimeoutMs));
    // Gathering has begun: a STUN request would be on its way now.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            QString state;
            page.runJavaScript(
                "pc.iceGatheringState", [&](const QVariant& v) { state = v.toString(); });
            (void)QTest::qWaitFor([&] { return !state.isEmpty(); }, kPageTimeoutMs);
            return !state.isEmpty() && state != "new";
        },
        kPageTimeoutMs));
    QTest::qWait(TestTiming::scaled(1500));
    EXPECT_EQ(m_datagrams, 0);
}

} // namespace
