// The four localisation tables against the key registry: every key the code
// uses is translated in every language, the compiled tables say what the .ts
// sources say, and multi-line messages keep their line breaks.

#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerSettings.h"

#include <QFile>
#include <QMap>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

// Test names and messages show the language code, not QString's bytes.
void PrintTo(const QString& text, std::ostream* out)
{
    *out << text.toStdString();
}

namespace {

struct TableEntry {
    QString translation;
    QString type; // the translation's type attribute: unfinished, vanished, obsolete
};

struct SourceTable {
    QStringList contexts;
    QMap<QString, TableEntry> entries;
    QStringList duplicates;
    QString error;
};

SourceTable readSourceTable(const QString& language)
{
    SourceTable table;
    QFile file(QStringLiteral(TAVRO_I18N_SOURCE_DIR "/Localizable_Tolm_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly)) {
        table.error = file.errorString();
        return table;
    }
    QXmlStreamReader xml(&file);
    QString source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            table.contexts << xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            TableEntry entry;
            entry.type = xml.attributes().value(QLatin1String("type")).toString();
            entry.translation = xml.readElementText();
            if (table.entries.contains(source))
                table.duplicates << source;
            table.entries.insert(source, entry);
        }
    }
    if (xml.hasError())
        table.error = xml.errorString();
    return table;
}

QSet<QString> registryKeys()
{
    QSet<QString> keys;
    for (const char* key : LocalizationKeys::kAllKeys)
        keys.insert(QString::fromUtf8(key));
    return keys;
}

QString show(const QString& text)
{
    QString shown = text;
    shown.replace(QLatin1Char('\r'), QLatin1String("\\r"))
        .replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return shown;
}

class LocalisationTablesTest : public ::testing::TestWithParam<QString> { };

TEST(LocalisationRegistry, KeysAreUnique)
{
    EXPECT_EQ(registryKeys().size(), qsizetype(std::size(LocalizationKeys::kAllKeys)));
}

TEST_P(LocalisationTablesTest, TableHoldsExactlyTheRegistryKeys)
{
    const SourceTable table = readSourceTable(GetParam());
    ASSERT_TRUE(table.error.isEmpty()) << table.error.toStdString();
    EXPECT_EQ(table.contexts, QStringList { QLatin1String(TavroLanguages::kTableName) });
    EXPECT_TRUE(table.duplicates.isEmpty()) << show(table.duplicates.join(u'|')).toStdString();

    const QSet<QString> inTable(table.entries.keyBegin(), table.entries.keyEnd());
    const QSet<QString> keys = registryKeys();
    for (const QString& key : keys - inTable)
        ADD_FAILURE() << "key missing from the table: " << show(key).toStdString();
    for (const QString& key : inTable - keys)
        ADD_FAILURE() << "key in the table but not in the registry: " << show(key).toStdString();
}

TEST_P(LocalisationTablesTest, EveryEntryIsFinishedAndKeepsItsLayout)
{
    const SourceTable table = readSourceTable(GetParam());
    ASSERT_TRUE(table.error.isEmpty()) << table.error.toStdString();
    for (auto it = table.entries.cbegin(); it != table.entries.cend(); ++it) {
        const QString& key = it.key();
        const QString& text = it.value().translation;
        SCOPED_TRACE(show(key).toStdString());
        EXPECT_TRUE(it.value().type.isEmpty()) << it.value().type.toStdString();
        EXPECT_FALSE(text.trimmed().isEmpty());
        EXPECT_EQ(text.count(QLatin1Char('\n')), key.count(QLatin1Char('\n')))
            << show(text).toStdString();
        EXPECT_EQ(text.count(QLatin1Char('\r')), key.count(QLatin1Char('\r')))
            << show(text).toStdString();
        for (const char* placeholder : { "%1", "%2" })
            EXPECT_EQ(text.contains(QLatin1String(placeholder)),
                key.contains(QLatin1String(placeholder)));
    }
}

// The card messages tell the user which button to press; the button names they
// quote must be the buttons' own translations.
TEST_P(LocalisationTablesTest, MessagesQuoteTheButtonsAsTranslated)
{
    const SourceTable table = readSourceTable(GetParam());
    ASSERT_TRUE(table.error.isEmpty()) << table.error.toStdString();
    const QString yes = table.entries.value(QString::fromUtf8(LocalizationKeys::kYes)).translation;
    const QString no = table.entries.value(QString::fromUtf8(LocalizationKeys::kNo)).translation;
    ASSERT_FALSE(yes.isEmpty());
    ASSERT_FALSE(no.isEmpty());
    const auto quotes = [](const QString& text, const QString& button) {
        return text.contains(u'(' + button + u')') || text.contains(u'（' + button + u'）');
    };
    int messages = 0;
    for (auto it = table.entries.cbegin(); it != table.entries.cend(); ++it) {
        if (!it.key().contains(QStringLiteral("(예)")))
            continue;
        ++messages;
        EXPECT_TRUE(quotes(it.value().translation, yes))
            << show(it.value().translation).toStdString();
        EXPECT_TRUE(quotes(it.value().translation, no))
            << show(it.value().translation).toStdString();
    }
    EXPECT_EQ(messages, 2);
}

// The embedded, compiled table answers every registry key with the text of
// the .ts source: the build is current and lrelease dropped nothing.
TEST_P(LocalisationTablesTest, CompiledTableAnswersEveryKey)
{
    const QString language = GetParam();
    const SourceTable table = readSourceTable(language);
    ASSERT_TRUE(table.error.isEmpty()) << table.error.toStdString();
    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    ASSERT_TRUE(languages.hasTable(language));
    for (const char* utf8Key : LocalizationKeys::kAllKeys) {
        const QString key = QString::fromUtf8(utf8Key);
        const QString text = languages.localizedIn(language, key);
        EXPECT_FALSE(text.isEmpty()) << show(key).toStdString();
        EXPECT_EQ(text, table.entries.value(key).translation) << show(key).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, LocalisationTablesTest,
    ::testing::ValuesIn(
        ViewerSettings::supportedLanguages().cbegin(), ViewerSettings::supportedLanguages().cend()),
    [](const ::testing::TestParamInfo<QString>& info) { return info.param.toStdString(); });

} // namespace
