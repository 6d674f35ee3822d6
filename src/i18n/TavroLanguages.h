#pragma once

#include <QString>

#include <map>
#include <memory>

class QTranslator;

// Turns a localisation key into the text shown to the user.
//
// Each viewer language has one table, "Localizable_Tolm", compiled from
// resources/i18n/Localizable_Tolm_<code>.ts and embedded as
// ":/i18n/Localizable_Tolm_<code>.qm". The source text of every entry is the
// key itself (mostly Korean, some prefixed by a model code such as "Wenna : ").
// The language looked up is the first element of the "AppleLanguages"
// preference, read on every call, so a switch takes effect at once.
//
// One process-wide instance, created on first use and never released. It keeps
// no state beyond the tables it has already loaded. Main thread only.
class TavroLanguages {
public:
    static constexpr const char* kTableName = "Localizable_Tolm";

    static TavroLanguages& SharedTavroLanguages();

    // The entry for key in the current language's table; the key itself when
    // the table has no entry for it; "" when the language has no table.
    QString localized(const QString& key) const;
    QString localized(const char* utf8Key) const;

    // The same lookup in a given language, whatever the preference says.
    QString localizedIn(const QString& language, const QString& key) const;

    // True when the language has a table among the application's resources.
    bool hasTable(const QString& language) const;

    // The language the lookups use now: the first element of "AppleLanguages",
    // or "" when that list is empty.
    static QString lookupLanguage();

    // Where the table of a language lives among the resources.
    static QString tablePath(const QString& language);

    TavroLanguages(const TavroLanguages&) = delete;
    TavroLanguages& operator=(const TavroLanguages&) = delete;

private:
    TavroLanguages();
    ~TavroLanguages();

    const QTranslator* table(const QString& language) const;

    // Loaded tables by language code; nullptr remembers a language without one.
    mutable std::map<QString, std::unique_ptr<QTranslator>> m_tables;
};
