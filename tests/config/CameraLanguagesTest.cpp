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
    const std::pair<const char*, const char*> cases[] = {
        { "ab", "Abkhazian" },
        { "aa", "Afar" },
        { "en", "English" },
        { "fr", "French" },
        { "es", "Spanish" },
        { "ko", "Korean" },
        { "zh-Hans-CN", "PRC Mainland Chinese in simplified script" },
        { "zh-wuu", "Shanghaiese or Wu" },
        { "zh-Hant-HK", "Chinese(Traditional/Contonese)" },
        { "sg", "Sangro" },
        { "vo", "Volap?k" },
        { "li", "Limburgish ( Limburger)" },
        { "bn", "Bengali (Bangla)" },
        { "be", "Byelorussian (Belarusian)" },
        { "km", "Cambodian" },
        { "lo", "Laothian" },
        { "dz", "Bhutani" },
        { "fo", "Faeroese" },
        { "fa", "Farsi" },
        { "wa", "Wallon" },
        { "iw", "Hebrew" },
        { "he", "Hebrew" },
        { "in", "Indonesian" },
        { "id", "Indonesian" },
        { "ji", "Yiddish" },
        { "yi", "Yiddish" },
        { "mo", "Moldavian" },
        { "sh", "Serbo-Croatian" },
        // Not in the table: the code comes back unchanged; lookup is case-sensitive.
        { "xx", "xx" },
        { "EN", "EN" },
        { "zh-hant-hk", "zh-hant-hk" },
        { "", "" },
    };
    for (const auto& [code, name] : cases)
        EXPECT_EQ(languageTitleByExpandingCode(QString::fromUtf8(code)), QString::fromUtf8(name))
            << code;

    const QStringList codes = CameraLanguages::languageCodes();
    EXPECT_EQ(codes.size(), 163);
    EXPECT_EQ(QSet<QString>(codes.cbegin(), codes.cend()).size(), 163);
    EXPECT_EQ(codes.first(), QStringLiteral("ab"));
    EXPECT_EQ(codes.last(), QStringLiteral("zu"));
    for (const QString& code : codes)
        EXPECT_NE(languageTitleByExpandingCode(code), code) << qPrintable(code);
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
