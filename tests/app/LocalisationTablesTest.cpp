// Every key the code uses is translated in each of the four tables, whole, and
// compiled; the card questions quote the Yes/No buttons as translated.

#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "i18n/ViewerSettings.h"

#include <QFile>
#include <QMap>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

std::string shown(QString text)
{
    return text.replace(u'\r', QLatin1String("\\r"))
        .replace(u'\n', QLatin1String("\\n"))
        .toStdString();
}

class LocalisationTablesTest : public ::testing::TestWithParam<QString> { };

TEST_P(LocalisationTablesTest, EveryRegistryKeyIsTranslatedWholeAndCompiled)
{
    const QString language = GetParam();
    QFile file(QStringLiteral(TAVRO_I18N_SOURCE_DIR "/Localizable_Tolm_%1.ts").arg(language));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QString source;
    QMap<QString, QString> table;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            EXPECT_EQ(xml.attributes().value(QLatin1String("type")), QString()) << shown(source);
            EXPECT_FALSE(table.contains(source)) << "twice: " << shown(source);
            table.insert(source, xml.readElementText());
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();

    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    QSet<QString> keys;
    for (const char* utf8Key : LocalizationKeys::kAllKeys) {
        const QString key = QString::fromUtf8(utf8Key);
        SCOPED_TRACE(shown(key));
        EXPECT_FALSE(keys.contains(key)) << "twice in the registry";
        keys.insert(key);
        const QString text = table.value(key);
        EXPECT_FALSE(text.trimmed().isEmpty());
        for (const QStringView part : { u"\n", u"\r", u"%1", u"%2" })
            EXPECT_EQ(text.count(part), key.count(part)) << shown(text);
        EXPECT_EQ(languages.localizedIn(language, key), text);
    }
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        EXPECT_TRUE(keys.contains(it.key())) << "not in the registry: " << shown(it.key());

    // The two card questions name the buttons to press, in brackets.
    const QString yes = table.value(QString::fromUtf8(LocalizationKeys::kYes));
    const QString no = table.value(QString::fromUtf8(LocalizationKeys::kNo));
    const auto quotes = [](const QString& text, const QString& button) {
        return text.contains(u'(' + button + u')') || text.contains(u'（' + button + u'）');
    };
    int questions = 0;
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        if (it.key().contains(QStringLiteral("(예)")) && ++questions) {
            EXPECT_TRUE(quotes(it.value(), yes) && quotes(it.value(), no)) << shown(it.value());
        }
    }
    EXPECT_EQ(questions, 2);
}

INSTANTIATE_TEST_SUITE_P(Languages, LocalisationTablesTest,
    ::testing::ValuesIn(
        ViewerSettings::supportedLanguages().cbegin(), ViewerSettings::supportedLanguages().cend()),
    [](const ::testing::TestParamInfo<QString>& info) { return info.param.toStdString(); });

} // namespace
