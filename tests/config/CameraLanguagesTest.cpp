// The camera's language announcement, language names and the hexadecimal
// decoder of the settings page.
#include "config/CameraLanguages.h"

#include <gtest/gtest.h>

using L = CameraLanguageList;

TEST(CameraLanguagesTest, AnnouncementsNamesOfLanguageCodesAndHexText)
{
    // An announcement numbers every piece, empty ones included.
    const std::pair<QByteArray, CameraLanguageList> cases[] = {
        { "# Language ISO Code: en fr\n", L { { 0, "" }, { 1, "en" }, { 2, "fr" } } },
        { "v1.2\n#\tLanguage ISO Code:ko  ja \r\nx # Language ISO Code:de",
            L { { 0, "ko" }, { 1, "" }, { 2, "ja" }, { 0, "de" } } },
        // A blank must follow the number sign; the words are case-sensitive; no
        // line terminator (CR, NEL, LS, PS) is part of the codes.
        { "#Language ISO Code: en\n# language iso code: en\n# Language ISO Code: en\rfr\n"
          "# Language ISO Code: en\xC2\x85"
          "fr\n# Language ISO Code: en\xE2\x80\xA8"
          "fr\n"
          "# Language ISO Code: en\xE2\x80\xA9"
          "fr",
            {} },
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(CameraLanguages::parseVerDat(text), expected) << text.constData();
    // The camera's spellings; withdrawn codes are aliases; the lookup is exact.
    const std::pair<const char*, const char*> names[]
        = { { "zh-Hant-HK", "Chinese(Traditional/Contonese)" }, { "iw", "Hebrew" }, { "EN", "EN" },
              { "", "" } };
    for (const auto& [code, name] : names)
        EXPECT_EQ(
            languageTitleByExpandingCode(QString::fromLatin1(code)), QString::fromLatin1(name));
    EXPECT_EQ(CameraLanguages::languageCodes().size(), 163);

    // Pairs convert as strtoul does; an odd last character converts alone.
    const std::pair<const char*, QByteArray> hex[] = {
        { "0aFF", QByteArray("\x0a\xff", 2) },
        { "abc", QByteArray("\xab\x0c", 2) },
        { "", QByteArray() },
        { "zz10", QByteArray("\x00\x10", 2) },
        { "7g", QByteArray("\x07", 1) },
        { " f", QByteArray("\x0f", 1) },
        { "-1", QByteArray("\xff", 1) },
    };
    for (const auto& [text, bytes] : hex)
        EXPECT_EQ(dataFromHexString(QString::fromUtf8(text)), bytes) << text;
}
