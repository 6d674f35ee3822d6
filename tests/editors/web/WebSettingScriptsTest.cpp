// The texts the viewer sends to the camera's settings page, the record's
// hexadecimal transport and the card files, checked on worked examples.

#include "editors/web/WebSettingScripts.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "editors/web/CardPageAccess.h"
#include "editors/web/WebDashcam.h"
#include "editors/web/WebNotification.h"
#include "editors/web/WebSettingCard.h"
#include "editors/web/WebSettingWindow.h"

#include <QFile>
#include <QMetaMethod>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace WS = WebSettingScripts;

TEST(WebSettingScripts, RecordTravelsAsUpperCaseHexAndComesBackByPairs)
{
    // Every byte value there and back.
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(char(b));
    const QString hex = WS::cfgStringWithData(all);
    EXPECT_EQ(hex.size(), 512);
    EXPECT_EQ(hex, hex.toUpper());
    EXPECT_EQ(WS::dataFromCfgString(hex), all);
    EXPECT_EQ(WS::dataFromCfgString(hex.toLower()), all);

    const struct {
        const char* text;
        QByteArray bytes;
    } fromPage[] = {
        { "", QByteArray() },
        { "0a1B", QByteArray("\x0a\x1b", 2) },
        { "abc", QByteArray("\xab\x0c", 2) }, // odd length: the last digit alone
        { "1G", QByteArray("\x01", 1) }, // a pair stops at its first non-digit
        { "ZZ00", QByteArray("\x00\x00", 2) },
        { "f", QByteArray("\x0f", 1) },
    };
    for (const auto& c : fromPage)
        EXPECT_EQ(WS::dataFromCfgString(QString::fromLatin1(c.text)), c.bytes) << c.text;
    EXPECT_EQ(WS::cfgStringWithData(QByteArray("\x0a\x1b\xff", 3)), QStringLiteral("0A1BFF"));
    EXPECT_EQ(WS::cfgStringWithData({}), QString());
}

TEST(WebSettingScripts, ScriptTextsAsThePageExpectsThem)
{
    const CameraLanguageList abc { { 0, "a" }, { 1, "b" }, { 2, "c" } };
    const struct {
        QString script;
        const char* expected;
    } cases[] = {
        { WS::setParamLanguage(abc), "setParamLanguage(['a','b','c',])" },
        { WS::setParamLanguage({}), "setParamLanguage([])" },
        { WS::setCfg("0A1B"), "set_cfg(\"0A1B\")" },
        { WS::setLanguage("zh-Hans"), "set_language(\"zh-Hans\")" },
        { WS::setTimeDate("2020,05,17"), "setTimeDate(\"2020,05,17\")" },
        { WS::setTimeHour("08"), "setTimeHour(\"08\")" },
        { WS::setTimeMin("09"), "setTimeMin(\"09\")" },
        { WS::generateSetting(true), "generateSetting(true)" },
        { WS::generateSetting(false), "generateSetting(false)" },
        { WS::updateOk(3, "v"), "update_ok(3, \"v\")" },
        { WS::updateCancel(-1), "update_cancel(-1)" },
        // Card texts stay one string.
        { WS::setParamLanguage({ { 0, "x'y" } }), "setParamLanguage(['x\\'y',])" },
        { WS::updateOk(1, "a\"b\\\n"), "update_ok(1, \"a\\\"b\\\\\\n\")" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.script, QString::fromUtf8(c.expected));
}

TEST(WebSettingScripts, LanguageIndexIsTheLittleEndianWordAtOffset428)
{
    const struct {
        QByteArray record;
        std::optional<quint32> index;
    } cases[] = {
        { SetupCfgBuilder(596).int32(428, 2).bytes(), 2u },
        { SetupCfgBuilder(432).int32(428, 0x01020304).bytes(), 0x01020304u },
        { SetupCfgBuilder(432).int32(424, 7).bytes(), 0u },
        { SetupCfgBuilder(431).bytes(), std::nullopt }, // ends inside the field
        { QByteArray(), std::nullopt },
    };
    for (const auto& c : cases)
        EXPECT_EQ(WS::languageIndex(WS::cfgStringWithData(c.record)), c.index) << c.record.size();
}

TEST(WebSettingCard, PathsAndPageAddress)
{
    EXPECT_EQ(WebSettingCard::indexHtmlFilename("/media/my card").toString(QUrl::FullyEncoded),
        "file:///media/my%20card/SETTING/html/index.html");
    // Every character of the folder stays part of the path.
    const QUrl odd = WebSettingCard::indexHtmlFilename("/m/a  b%c#d?e");
    EXPECT_EQ(
        odd.toString(QUrl::FullyEncoded), "file:///m/a%20%20b%25c%23d%3Fe/SETTING/html/index.html");
    EXPECT_EQ(odd.toLocalFile(), "/m/a  b%c#d?e/SETTING/html/index.html");
    EXPECT_FALSE(odd.hasFragment());
    EXPECT_FALSE(odd.hasQuery());
    EXPECT_EQ(WebSettingCard::cfgFilename("/c"), "/c/SETTING/setup.cfg");
    EXPECT_EQ(WebSettingCard::defaultCfgFilename("/c"), "/c/SETTING/default.cfg");
    EXPECT_EQ(WebSettingCard::adasFilename("/c"), "/c/SETTING/ADAS_CAL.dat");
    EXPECT_EQ(WebSettingCard::timedateFilename("/c"), "/c/SETTING/time.dat");
}

TEST(WebSettingCard, ClockRequestReadAndWritten)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("time.dat");
    TestFiles::write(path, "2020,05,17,08,09,00,+0900");
    const auto request = WebSettingCard::readTimeDat(path);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->date, "2020,05,17");
    EXPECT_EQ(request->hour, "08");
    EXPECT_EQ(request->min, "09");

    // Hour and minute are written as the page sent them.
    EXPECT_EQ(WebSettingCard::timeDatText({ "2021,12,31", "7", "05" }),
        QByteArray("2021,12,31,7,05,00,+0900"));

    // Short, missing, not UTF-8, absurdly long.
    TestFiles::write(path, "2020,05");
    ASSERT_TRUE(WebSettingCard::readTimeDat(path));
    EXPECT_EQ(WebSettingCard::readTimeDat(path)->hour, QString());
    EXPECT_FALSE(WebSettingCard::readTimeDat(dir.filePath("none.dat")));
    TestFiles::write(path, "2020,05,17,\xff\xfe,09");
    EXPECT_FALSE(WebSettingCard::readTimeDat(path));
    TestFiles::write(path, QByteArray(1 << 20, '1'));
    EXPECT_FALSE(WebSettingCard::readTimeDat(path));
}

TEST(WebNotification, FieldsButtonsAndNumbers)
{
    const auto one = WebNotification::parse("Title\tMessage\t3\tv\t1");
    ASSERT_TRUE(one);
    EXPECT_EQ(one->title, "Title");
    EXPECT_EQ(one->message, "Message");
    EXPECT_EQ(one->index, 3);
    EXPECT_EQ(one->value, "v");
    EXPECT_EQ(one->buttonKeys(), QStringList { "확인" });

    const auto two = WebNotification::parse("t\tm\t 12abc\t\t2\textra\tmore");
    ASSERT_TRUE(two);
    EXPECT_EQ(two->index, 12);
    EXPECT_EQ(two->value, QString());
    EXPECT_EQ(two->buttonKeys(), (QStringList { "아니오", "예" }));
    EXPECT_EQ(WebNotification::parse("t\tm\t1\tv\t3")->buttonKeys(), QStringList { "확인" });

    for (const char* fewer : { "", "t", "t\tm\t3\tv" })
        EXPECT_FALSE(WebNotification::parse(QString::fromUtf8(fewer))) << fewer;

    const struct {
        const char* text;
        int value;
    } numbers[] = { { "42", 42 }, { "-7x", -7 }, { "+5", 5 }, { "x1", 0 }, { "", 0 },
        { "99999999999", 2147483647 }, { "-99999999999", -2147483647 - 1 } };
    for (const auto& n : numbers)
        EXPECT_EQ(leadingIntValue(QString::fromLatin1(n.text)), n.value) << n.text;
}

TEST(WebDashcam, EveryScriptNameReachesASlotOfTheBridge)
{
    const QMetaObject& meta = WebDashcam::staticMetaObject;
    QStringList names;
    for (const WebDashcam::ScriptName& name : WebDashcam::scriptNames()) {
        names << name.first;
        const int noArgument = meta.indexOfMethod(name.second + "()");
        const int oneArgument = meta.indexOfMethod(name.second + "(QVariant)");
        ASSERT_TRUE(noArgument >= 0 || oneArgument >= 0) << name.second.constData();
        EXPECT_EQ(meta.method(std::max(noArgument, oneArgument)).access(), QMetaMethod::Public);
    }
    // The colon names are among them, and none twice.
    EXPECT_TRUE(names.contains("setdate:use"));
    EXPECT_TRUE(names.contains("userNoti"));
    EXPECT_EQ(names.size(), QSet<QString>(names.begin(), names.end()).size());
}

TEST(WebSettingWindow, CentredOverTheOtherWindow)
{
    // new origin = other origin + (other size - own size) / 2
    EXPECT_EQ(WebSettingWindow::centeredOrigin(QRect(100, 50, 1280, 800), QSize(1040, 720)),
        QPoint(220, 90));
    EXPECT_EQ(WebSettingWindow::centeredOrigin(QRect(0, 0, 800, 600), QSize(1000, 700)),
        QPoint(-100, -50));
}

TEST(CardPageAccess, OnlyFilesInsideTheCardsHtmlFolder)
{
    QTemporaryDir dir;
    const QString card = dir.filePath("my card");
    const QString html = card + "/SETTING/html";
    TestFiles::write(html + "/index.html", "<html>");
    TestFiles::write(html + "/js/app.js", "1");
    TestFiles::write(card + "/SETTING/setup.cfg", "record");
    TestFiles::write(dir.filePath("secret.txt"), "secret");
    ASSERT_TRUE(QFile::link(dir.filePath("secret.txt"), html + "/link.txt"));
    ASSERT_TRUE(QFile::link(card + "/SETTING", html + "/up"));
    const CardPageAccess access(html);
    const struct {
        QUrl url;
        bool allowed;
    } cases[] = {
        { QUrl::fromLocalFile(html + "/index.html"), true },
        { WebSettingCard::indexHtmlFilename(card), true },
        { QUrl::fromLocalFile(html + "/js/app.js"), true },
        { QUrl::fromLocalFile(html + "/js/../index.html"), true },
        { QUrl::fromLocalFile(html + "/../setup.cfg"), false },
        { QUrl::fromLocalFile(html + "/link.txt"), false }, // a link out of the folder
        { QUrl::fromLocalFile(html + "/up/setup.cfg"), false },
        { QUrl::fromLocalFile(html), false },
        { QUrl::fromLocalFile(html + "/missing.js"), false },
        { QUrl("file:///etc/hostname"), false },
        { QUrl("http://127.0.0.1/index.html"), false },
        { QUrl("qrc:/qtwebchannel/qwebchannel.js"), false },
        { QUrl("file://host" + html + "/index.html"), false },
    };
    for (const auto& c : cases)
        EXPECT_EQ(access.allows(c.url), c.allowed) << qPrintable(c.url.toString());
    // A card without the folder allows nothing.
    EXPECT_FALSE(
        CardPageAccess(dir.filePath("none")).allows(QUrl::fromLocalFile(html + "/index.html")));
}
