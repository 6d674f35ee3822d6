#pragma once

#include <QString>
#include <QStringList>

// The viewer's own preferences, kept in the user's settings store (QSettings
// with the application's organisation and name). Every key and its default is
// declared here once; the classes that read or write a preference use these.
namespace ViewerSettings {

// The viewer's language: one of kSupportedLanguages.
inline constexpr const char* kLanguageKey = "TavroViewerLanguage";
inline constexpr const char* kDefaultLanguage = "en";

// Mirror of the chosen language as a one-element list. Its first element is the
// language every text lookup uses, so it must be set before any window loads.
inline constexpr const char* kLookupLanguagesKey = "AppleLanguages";

// Speed unit of the speedometer: 0 km/h (also when absent), 1 mph.
inline constexpr const char* kSpeedUnitKey = "TavroViewerSpeedUnit";
inline constexpr int kDefaultSpeedUnit = 0;

// The viewer's languages, in the order of the language menu.
inline const QStringList& supportedLanguages()
{
    static const QStringList codes{QStringLiteral("en"), QStringLiteral("fr"),
                                   QStringLiteral("ja"), QStringLiteral("pt")};
    return codes;
}

inline bool isSupportedLanguage(const QString& code)
{
    return supportedLanguages().contains(code);
}

} // namespace ViewerSettings
