// The camera's language announcement, language names and the hexadecimal
// decoder of the settings page.
#include "CardBuilder.h"

#include "config/CameraLanguages.h"
#include "config/TolmSettingManager.h"

#include <QSet>

#include <gtest/gtest.h>

namespace {

CameraLanguageList pairs(std::initializer_list<std::pair<int, const char*>> list)
{
    CameraLanguageList out;
    for (const auto& [number, code] : list)
        out.append({ number, QString::fromUtf8(code) });
    return out;
}

} // namespace

TEST(CameraLanguagesTest, AnnouncementsNumberEveryPieceIncludingEmptyOnes)
{
    const std::pair<QByteArray, CameraLanguageList> cases[] = {
        { "# Language ISO Code: en fr es\n",
            pairs({ { 0, "" }, { 1, "en" }, { 2, "fr" }, { 3, "es" } }) },
        { "#\tLanguage ISO Code:ko en  \r\n", pairs({ { 0, "ko" }, { 1, "en" } }) },
        { "#  Language ISO Code:ko  ja", pairs({ { 0, "ko" }, { 1, "" }, { 2, "ja" } }) },
        { "version 1.2\n# Language ISO Code:en\n# Language ISO Code:de fr\n",
            pairs({ { 0, "en" }, { 0, "de" }, { 1, "fr" } }) },
        { "x # Language ISO Code:zh-Hant-HK", pairs({ { 0, "zh-Hant-HK" } }) },
        { "#Language ISO Code: en", {} }, // a blank must follow the number sign
        { "# Language ISO Code:   \n", pairs({ { 0, "" }, { 1, "" } }) }, // one blank is captured
        { "# language iso code: en", {} },
        { "", {} },
        // No line terminator of any kind is part of the codes.
        { "# Language ISO Code: en\rfr\n", {} },
        { "# Language ISO Code: en\xC2\x85"
          "fr",
            {} }, // NEL
        { "# Language ISO Code: en\xE2\x80\xA8"
          "fr",
            {} }, // LINE SEPARATOR
        { "# Language ISO Code: en\xE2\x80\xA9"
          "fr",
            {} }, // PARAGRAPH SEPARATOR
        { "# Language ISO Code:\xFF\xFE en",
            pairs({ { 0, QString::fromUtf8("\xFF\xFE").toUtf8().constData() }, { 1, "en" } }) },
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(CameraLanguages::parseVerDat(text), expected) << text.constData();
}

TEST(CameraLanguagesTest, ManagerFallsBackToEnglishFrenchSpanish)
{
    const CameraLanguageList fallback = pairs({ { 0, "en" }, { 1, "fr" }, { 4, "es" } });
    CardBuilder none, silent, announced;
    silent.verDat("nothing to see\n");
    announced.verDat("# Language ISO Code: ko\n");
    const std::pair<QString, CameraLanguageList> cases[] = {
        { none.root(), fallback },
        { silent.root(), fallback },
        { QString(), fallback },
        { announced.root(), pairs({ { 0, "" }, { 1, "ko" } }) },
    };
    for (const auto& [root, expected] : cases) {
        TolmSettingManager manager;
        manager.setSettingDirPath(root);
        manager.loadLanguages();
        EXPECT_EQ(manager.languages(), expected) << qPrintable(root);
    }
}

TEST(CameraLanguagesTest, NamesOfLanguageCodes)
{
    // Every code of the table has a name of its own; the withdrawn codes
    // name the same language as their successors; anything else comes back
    // as it is (the lookup is case-sensitive).
    const QStringList codes = CameraLanguages::languageCodes();
    EXPECT_EQ(QSet<QString>(codes.cbegin(), codes.cend()).size(), codes.size());
    for (const QString& code : codes)
        EXPECT_NE(languageTitleByExpandingCode(code), code) << qPrintable(code);
    const std::pair<const char*, const char*> aliases[]
        = { { "iw", "he" }, { "in", "id" }, { "ji", "yi" } };
    for (const auto& [old, current] : aliases)
        EXPECT_EQ(languageTitleByExpandingCode(QString::fromLatin1(old)),
            languageTitleByExpandingCode(QString::fromLatin1(current)));
    for (const char* unknown : { "xx", "EN", "zh-hant-hk", "" })
        EXPECT_EQ(languageTitleByExpandingCode(QString::fromLatin1(unknown)),
            QString::fromLatin1(unknown));
    // Worked examples, the camera's spelling kept.
    EXPECT_EQ(languageTitleByExpandingCode(QStringLiteral("en")), QStringLiteral("English"));
    EXPECT_EQ(languageTitleByExpandingCode(QStringLiteral("zh-Hant-HK")),
        QStringLiteral("Chinese(Traditional/Contonese)"));
}

TEST(CameraLanguagesTest, HexTextToBytes)
{
    const std::pair<const char*, QByteArray> cases[] = {
        { "0aFF", QByteArray("\x0a\xff", 2) },
        { "abc", QByteArray("\xab\x0c", 2) },
        { "", QByteArray() },
        { "zz10", QByteArray("\x00\x10", 2) },
        { "a", QByteArray("\x0a", 1) },
        { "7g", QByteArray("\x07", 1) },
        { " f", QByteArray("\x0f", 1) },
        { "-1", QByteArray("\xff", 1) },
        { "0x", QByteArray("\x00", 1) },
    };
    for (const auto& [text, bytes] : cases)
        EXPECT_EQ(dataFromHexString(QString::fromUtf8(text)), bytes) << text;
}
