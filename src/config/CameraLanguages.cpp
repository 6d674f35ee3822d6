#include "config/CameraLanguages.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <cstdlib>

namespace {

struct LanguageName {
    const char* code;
    const char* name;
};

// English names of the language codes a camera may announce: ISO 639-1
// codes, a few withdrawn codes kept as aliases, and Chinese script and region
// tags. The names are the camera maker's, spellings included.
const LanguageName kLanguageNames[] = {
    { "ab", "Abkhazian" },
    { "aa", "Afar" },
    { "af", "Afrikaans" },
    { "sq", "Albanian" },
    { "am", "Amharic" },
    { "ar", "Arabic" },
    { "an", "Aragonese" },
    { "hy", "Armenian" },
    { "as", "Assamese" },
    { "ay", "Aymara" },
    { "az", "Azerbaijani" },
    { "ba", "Bashkir" },
    { "eu", "Basque" },
    { "bn", "Bengali (Bangla)" },
    { "dz", "Bhutani" },
    { "bh", "Bihari" },
    { "bi", "Bislama" },
    { "br", "Breton" },
    { "bg", "Bulgarian" },
    { "my", "Burmese" },
    { "be", "Byelorussian (Belarusian)" },
    { "km", "Cambodian" },
    { "ca", "Catalan" },
    { "zh", "Chinese" },
    { "zh-Hans", "Chinese (Simplified)" },
    { "zh-Hant", "Chinese (Traditional)" },
    { "zh-cmn", "Mandarin Chinese" },
    { "zh-cmn-Hans", "Mandarin Chinese (Simplified)" },
    { "zh-cmn-Hant", "Mandarin Chinese (Traditional)" },
    { "zh-Hans-CN", "PRC Mainland Chinese in simplified script" },
    { "zh-Hans-HK", "Hong Kong Chinese in simplified script" },
    { "zh-Hans-MO", "Macao Chinese in simplified script" },
    { "zh-Hans-TW", "Taiwan Chinese in simplified script" },
    { "zh-Hant-CN", "PRC Mainland Chinese in traditional script" },
    { "zh-Hant-HK", "Chinese(Traditional/Contonese)" },
    { "zh-Hant-MO", "Macao Chinese in traditional script" },
    { "zh-Hant-SG", "Singapore Chinese in traditional script" },
    { "zh-Hant-TW", "Taiwan Chinese in traditional script" },
    { "zh-wuu", "Shanghaiese or Wu" },
    { "co", "Corsican" },
    { "hr", "Croatian" },
    { "cs", "Czech" },
    { "da", "Danish" },
    { "nl", "Dutch" },
    { "en", "English" },
    { "eo", "Esperanto" },
    { "et", "Estonian" },
    { "fo", "Faeroese" },
    { "fa", "Farsi" },
    { "fj", "Fiji" },
    { "fi", "Finnish" },
    { "fr", "French" },
    { "fy", "Frisian" },
    { "gl", "Galician" },
    { "gd", "Gaelic (Scottish)" },
    { "gv", "Gaelic (Manx)" },
    { "ka", "Georgian" },
    { "de", "German" },
    { "el", "Greek" },
    { "kl", "Greenlandic" },
    { "gn", "Guarani" },
    { "gu", "Gujarati" },
    { "ht", "Haitian Creole" },
    { "ha", "Hausa" },
    { "he", "Hebrew" },
    { "iw", "Hebrew" },
    { "hi", "Hindi" },
    { "hu", "Hungarian" },
    { "is", "Icelandic" },
    { "io", "Ido" },
    { "id", "Indonesian" },
    { "in", "Indonesian" },
    { "ia", "Interlingua" },
    { "ie", "Interlingue" },
    { "iu", "Inuktitut" },
    { "ik", "Inupiak" },
    { "ga", "Irish" },
    { "it", "Italian" },
    { "ja", "Japanese" },
    { "jv", "Javanese" },
    { "kn", "Kannada" },
    { "ks", "Kashmiri" },
    { "kk", "Kazakh" },
    { "rw", "Kinyarwanda (Ruanda)" },
    { "ky", "Kirghiz" },
    { "rn", "Kirundi (Rundi)" },
    { "ko", "Korean" },
    { "ku", "Kurdish" },
    { "lo", "Laothian" },
    { "la", "Latin" },
    { "lv", "Latvian (Lettish)" },
    { "li", "Limburgish ( Limburger)" },
    { "ln", "Lingala" },
    { "lt", "Lithuanian" },
    { "mk", "Macedonian" },
    { "mg", "Malagasy" },
    { "ms", "Malay" },
    { "ml", "Malayalam" },
    { "mt", "Maltese" },
    { "mi", "Maori" },
    { "mr", "Marathi" },
    { "mo", "Moldavian" },
    { "mn", "Mongolian" },
    { "na", "Nauru" },
    { "ne", "Nepali" },
    { "no", "Norwegian" },
    { "oc", "Occitan" },
    { "or", "Oriya" },
    { "om", "Oromo (Afaan Oromo)" },
    { "ps", "Pashto (Pushto)" },
    { "pl", "Polish" },
    { "pt", "Portuguese" },
    { "pa", "Punjabi" },
    { "qu", "Quechua" },
    { "rm", "Rhaeto-Romance" },
    { "ro", "Romanian" },
    { "ru", "Russian" },
    { "sm", "Samoan" },
    { "sg", "Sangro" },
    { "sa", "Sanskrit" },
    { "sr", "Serbian" },
    { "sh", "Serbo-Croatian" },
    { "st", "Sesotho" },
    { "tn", "Setswana" },
    { "sn", "Shona" },
    { "ii", "Sichuan Yi" },
    { "sd", "Sindhi" },
    { "si", "Sinhalese" },
    { "ss", "Siswati" },
    { "sk", "Slovak" },
    { "sl", "Slovenian" },
    { "so", "Somali" },
    { "es", "Spanish" },
    { "su", "Sundanese" },
    { "sw", "Swahili (Kiswahili)" },
    { "sv", "Swedish" },
    { "tl", "Tagalog" },
    { "tg", "Tajik" },
    { "ta", "Tamil" },
    { "tt", "Tatar" },
    { "te", "Telugu" },
    { "th", "Thai" },
    { "bo", "Tibetan" },
    { "ti", "Tigrinya" },
    { "to", "Tonga" },
    { "ts", "Tsonga" },
    { "tr", "Turkish" },
    { "tk", "Turkmen" },
    { "tw", "Twi" },
    { "ug", "Uighur" },
    { "uk", "Ukrainian" },
    { "ur", "Urdu" },
    { "uz", "Uzbek" },
    { "vi", "Vietnamese" },
    { "vo", "Volap?k" },
    { "wa", "Wallon" },
    { "cy", "Welsh" },
    { "wo", "Wolof" },
    { "xh", "Xhosa" },
    { "yi", "Yiddish" },
    { "ji", "Yiddish" },
    { "yo", "Yoruba" },
    { "zu", "Zulu" },
};

const QHash<QString, QString>& languageNameTable()
{
    static const QHash<QString, QString> table = [] {
        QHash<QString, QString> names;
        for (const LanguageName& entry : kLanguageNames)
            names.insert(QString::fromLatin1(entry.code), QString::fromLatin1(entry.name));
        return names;
    }();
    return table;
}

} // namespace

namespace CameraLanguages {

CameraLanguageList parseVerDat(const QByteArray& bytes)
{
    // "." of the camera's pattern stops at every line terminator (CR, LF,
    // NEL, LS, PS), not only at LF: a bare CR among the codes ends the match.
    static const QRegularExpression kAnnouncement(
        QStringLiteral("#\\s+Language ISO Code:([^\\r\\n\\x{85}\\x{2028}\\x{2029}]+?)\\s*$"),
        QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression kBlank(
        QStringLiteral("\\s"), QRegularExpression::UseUnicodePropertiesOption);
    CameraLanguageList list;
    const QStringList lines = QString::fromUtf8(bytes).split(u'\n');
    for (const QString& line : lines) {
        const QRegularExpressionMatch match = kAnnouncement.match(line);
        if (!match.hasMatch())
            continue;
        // Every blank splits, so a blank after the colon yields an empty
        // first code numbered 0: the camera counts it too.
        const QStringList codes = match.captured(1).split(kBlank);
        for (qsizetype i = 0; i < codes.size(); ++i)
            list.append({ qint32(i), codes[i] });
    }
    return list;
}

CameraLanguageList fallbackLanguages()
{
    return { { 0, QStringLiteral("en") }, { 1, QStringLiteral("fr") },
        { 4, QStringLiteral("es") } };
}

QStringList languageCodes()
{
    QStringList codes;
    for (const LanguageName& entry : kLanguageNames)
        codes.append(QString::fromLatin1(entry.code));
    return codes;
}

} // namespace CameraLanguages

QString languageTitleByExpandingCode(const QString& code)
{
    const QString name = languageNameTable().value(code);
    return name.isEmpty() ? code : name;
}

QByteArray dataFromHexString(const QString& hex)
{
    // Each pair converts as strtoul does (leading blanks, a sign and leading
    // hexadecimal digits); a pair without digits gives 0.
    const QByteArray text = hex.toUtf8();
    QByteArray data;
    data.reserve(text.size() / 2 + 1);
    for (qsizetype i = 0; i < text.size(); i += 2) {
        const char pair[3] = { text[i], i + 1 < text.size() ? text[i + 1] : '\0', '\0' };
        const unsigned long value = std::strtoul(pair, nullptr, 16);
        data.append(char(value & 0xFFu));
    }
    return data;
}
