#pragma once

#include <QString>
#include <QStringList>

// The viewer's language preferences, kept in the user's settings store
// (QSettings with the application's organisation and name). Each key and its
// default is declared here once; the classes that read or write them use these.
namespace ViewerSettings {

// The viewer's language: one of supportedLanguages().
inline constexpr const char* kLanguageKey = "TavroViewerLanguage";
inline constexpr const char* kDefaultLanguage = "en";

// Mirror of the chosen language as a one-element list. Its first element is the
// language every text lookup uses, so it must be set before any window loads.
inline constexpr const char* kLookupLanguagesKey = "AppleLanguages";

// The third preference, the speed unit ("TavroViewerSpeedUnit"), belongs to the
// speedometer and is declared with it (display/SpeedUnit.h).

// The viewer's languages, in the order of the language menu.
inline const QStringList& supportedLanguages()
{
    static const QStringList codes { QStringLiteral("en"), QStringLiteral("fr"),
        QStringLiteral("ja"), QStringLiteral("pt") };
    return codes;
}

inline bool isSupportedLanguage(const QString& code)
{
    return supportedLanguages().contains(code);
}

} // namespace ViewerSettings
