// The texts the viewer sends to the camera's settings page, the record's
// hexadecimal transport, the card files and what the page may read, checked
// on worked examples.

#include "editors/web/WebSettingScripts.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "editors/web/CardPageAccess.h"
#include "editors/web/WebSettingCard.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace WS = WebSettingScripts;

// (The handshake, reset and notification tests check the other scripts'
// texts; the page's hexadecimal text back to bytes is the camera language
// list's decoder, checked pair by pair in its own test.)
TEST(WebSettingScripts, RecordTextsAndTheLanguageIndexAtOffset428)
{
    EXPECT_EQ(WS::cfgStringWithData(QByteArray("\x0a\x1b\xff", 3)), QStringLiteral("0A1BFF"));
    EXPECT_EQ(WS::dataFromCfgString(QString(200000, u'F')), QByteArray(100000, '\xff'));
    // Quotes, backslashes and every line break escaped.
    EXPECT_EQ(
        WS::setParamLanguage({ { 0, "x'y\"" } }).toStdString(), "setParamLanguage(['x\\'y\"',])");
    EXPECT_EQ(WS::updateOk(1, QStringLiteral("a\"b\\\r\n\u2028\u2029'")).toStdString(),
        "update_ok(1, \"a\\\"b\\\\\\r\\n\\u2028\\u2029'\")");
    // The language index is the little-endian word at offset 428.
    const struct {
        QByteArray record;
        std::optional<quint32> index;
    } cases[]
        = { { SetupCfgBuilder(432).int32(428, 0x01020304).bytes(), 0x01020304u }, // ends with it
              { SetupCfgBuilder(432).int32(424, 7).bytes(), 0u },
              { SetupCfgBuilder(431).bytes(), std::nullopt } }; // ends inside the field
    for (const auto& c : cases)
        EXPECT_EQ(WS::languageIndex(WS::cfgStringWithData(c.record)), c.index) << c.record.size();
    EXPECT_EQ(WS::languageIndex(QString(856, u'0') + QStringLiteral("0102zz04")), std::nullopt);
}

TEST(WebSettingCard, FilesOfTheCard)
{
    // The clock request, odd ones (a whole one is read in the handshake test
    // and written in the window test).
    QTemporaryDir dir;
    const QString path = dir.filePath("time.dat");
    const struct {
        QByteArray bytes;
        bool read;
        const char *date, *hour, *min;
    } cases[] = {
        { "2020,05", true, "2020,05", "", "" },
        { "2020,05,17,\xff\xfe,09", false, "", "", "" }, // not UTF-8
        { "2020,05,17,08,09" + QByteArray(4096 - 16, ' '), true, "2020,05,17", "08", "09" },
        { QByteArray(4097, '1'), false, "", "", "" } // no short line
    };
    for (const auto& c : cases) {
        TestFiles::write(path, c.bytes);
        const auto request = WebSettingCard::readTimeDat(path);
        ASSERT_EQ(request.has_value(), c.read) << c.bytes.left(20).constData();
        if (request) {
            EXPECT_EQ(QStringList({ request->date, request->hour, request->min }),
                QStringList({ c.date, c.hour, c.min }));
        }
    }
    EXPECT_FALSE(WebSettingCard::readTimeDat(dir.filePath("none.dat")));

    // The record handed to the page: up to 64 KiB, whole; anything longer is none.
    for (const qsizetype size : { 65536, 65537 }) {
        TestFiles::write(path, QByteArray(size, 'r'));
        EXPECT_EQ(WebSettingCard::readRecord(path).size(), size == 65536 ? size : 0);
    }
}

// (The page's reads of its record, other files and a server: the window test.)
TEST(CardPageAccess, OnlyFilesInsideTheCardsHtmlFolder)
{
    QTemporaryDir dir;
    const QString card = dir.filePath("my card");
    const QString html = card + "/SETTING/html";
    TestFiles::write(html + "/index.html", "<html>");
    TestFiles::write(html + "2/index.html", "<html>");
    TestFiles::write(html + "/js/app.js", "1");
    TestFiles::write(card + "/SETTING/setup.cfg", "record");
    TestFiles::write(dir.filePath("secret.txt"), "secret");
    ASSERT_TRUE(QFile::link(dir.filePath("secret.txt"), html + "/link.txt"));
    ASSERT_TRUE(QFile::link(card + "/SETTING", html + "/up"));
    const CardPageAccess access(html);
    const struct {
        QUrl url;
        bool allowed;
    } cases[] = { { WebSettingCard::indexHtmlFilename(card), true },
        { QUrl::fromLocalFile(html + "/js/../index.html"), true },
        { QUrl::fromLocalFile(html + "/js"), false }, // a folder
        { QUrl::fromLocalFile(html + "2/index.html"), false }, // a folder beside it
        { QUrl::fromLocalFile(html + "/link.txt"), false }, // a link out of the folder
        { QUrl::fromLocalFile(html + "/up/setup.cfg"), false },
        { QUrl::fromLocalFile(html + "/missing.js"), false },
        { QUrl("qrc:/qtwebchannel/qwebchannel.js"), false },
        { QUrl("file://host" + html + "/index.html"), false } };
    for (const auto& c : cases)
        EXPECT_EQ(access.allows(c.url), c.allowed) << qPrintable(c.url.toString());
    // A card without the folder allows nothing.
    EXPECT_FALSE(
        CardPageAccess(dir.filePath("none")).allows(QUrl::fromLocalFile(html + "/index.html")));
}
