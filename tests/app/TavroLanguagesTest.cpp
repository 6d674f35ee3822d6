// Lookup of localisation keys in the embedded tables.

#include "LanguageSettingsFixture.h"

#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerSettings.h"

#include <QSet>

namespace {

class TavroLanguagesTest : public LanguageSettingsFixture {
protected:
    static void useLookupLanguages(const QStringList& languages)
    {
        storeValue(ViewerSettings::kLookupLanguagesKey, languages);
    }

    static QString lookup(const QString& key)
    {
        return TavroLanguages::SharedTavroLanguages().localized(key);
    }

    // Looks key up with the given lookup list and compares with the expected text.
    static void expectLookup(
        const QStringList& languages, const QString& key, const QString& expected)
    {
        useLookupLanguages(languages);
        EXPECT_EQ(lookup(key), expected)
            << "languages " << languages.join(u',').toStdString() << ", key " << key.toStdString();
    }
};

TEST_F(TavroLanguagesTest, KeysTurnIntoTheTextOfTheChosenLanguage)
{
    // The chosen language's table answers (the tables' contents are checked
    // against their sources by the localisation table tests).
    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    QSet<QString> texts;
    for (const QString& language : ViewerSettings::supportedLanguages()) {
        const QString key = QString::fromUtf8(LocalizationKeys::kYes);
        expectLookup({ language }, key, languages.localizedIn(language, key));
        texts.insert(lookup(key));
    }
    EXPECT_EQ(texts.size(), ViewerSettings::supportedLanguages().size());
    expectLookup(
        { QStringLiteral("en") }, QString::fromUtf8(LocalizationKeys::kYes), QStringLiteral("Yes"));
}

TEST_F(TavroLanguagesTest, OnlyTheFirstLookupLanguageCounts)
{
    expectLookup({ QStringLiteral("ja"), QStringLiteral("fr") },
        QString::fromUtf8(LocalizationKeys::kNo), QStringLiteral("いいえ"));
    expectLookup({ QStringLiteral("de"), QStringLiteral("fr") },
        QString::fromUtf8(LocalizationKeys::kNo), QString());
}

TEST_F(TavroLanguagesTest, KeyMissingFromTheTableShowsTheKey)
{
    const QString missingKeys[] = {
        QStringLiteral("표에 없는 키"), QStringLiteral("Wenna : 표에 없는 키"),
        QStringLiteral("not a key"),
        QString::fromUtf8(LocalizationKeys::kYes) + QLatin1Char(' '), // keys match exactly
    };
    for (const QString& language : ViewerSettings::supportedLanguages())
        for (const QString& key : missingKeys)
            expectLookup({ language }, key, key);
}

TEST_F(TavroLanguagesTest, LanguageWithoutTableShowsNothing)
{
    const QString key = QString::fromUtf8(LocalizationKeys::kMemoryCardError);
    const QStringList languagesWithoutTable[] = {
        { QStringLiteral("de") },
        { QStringLiteral("ko") },
        { QStringLiteral("EN") },
        { QString() },
        { QStringLiteral("../i18n/Localizable_Tolm_en") },
        { QStringLiteral("en.qm") },
        {},
    };
    for (const QStringList& languages : languagesWithoutTable) {
        expectLookup(languages, key, QString());
        expectLookup(languages, QStringLiteral("표에 없는 키"), QString());
    }
    clearStore(); // the preference not set at all
    EXPECT_EQ(lookup(key), QString());
}

TEST_F(TavroLanguagesTest, OnlyTheViewerLanguagesHaveTables)
{
    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    EXPECT_FALSE(languages.hasTable(QStringLiteral("de")));
    EXPECT_FALSE(languages.hasTable(QString()));
}

} // namespace
