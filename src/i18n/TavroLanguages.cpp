#include "i18n/TavroLanguages.h"

#include "i18n/ViewerSettings.h"

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSettings>
#include <QTranslator>

Q_LOGGING_CATEGORY(lcLanguages, "tavro.app.languages", QtWarningMsg)

namespace {

// A language code as it may name a table: "en", "pt-BR", "zh_Hant". Anything
// else (an edited preference holding a path, say) has no table.
bool isWellFormedCode(const QString& code)
{
    static const QRegularExpression pattern(
        QStringLiteral("^[A-Za-z]{2,3}([-_][A-Za-z0-9]{1,8})*$"));
    return pattern.match(code).hasMatch();
}

} // namespace

TavroLanguages::TavroLanguages() = default;
TavroLanguages::~TavroLanguages() = default;

TavroLanguages& TavroLanguages::SharedTavroLanguages()
{
    static TavroLanguages* instance = new TavroLanguages; // lives until process exit
    return *instance;
}

QString TavroLanguages::lookupLanguage()
{
    const QStringList languages
        = QSettings().value(QLatin1String(ViewerSettings::kLookupLanguagesKey)).toStringList();
    return languages.isEmpty() ? QString() : languages.first();
}

QString TavroLanguages::tablePath(const QString& language)
{
    return QStringLiteral(":/i18n/%1_%2.qm").arg(QLatin1String(kTableName), language);
}

QString TavroLanguages::localized(const QString& key) const
{
    return localizedIn(lookupLanguage(), key);
}

QString TavroLanguages::localized(const char* utf8Key) const
{
    return localized(QString::fromUtf8(utf8Key));
}

QString TavroLanguages::localizedIn(const QString& language, const QString& key) const
{
    const QTranslator* translator = table(language);
    if (!translator)
        return QString(); // no table for this language: no text at all
    const QString text = translator->translate(kTableName, key.toUtf8().constData());
    return text.isEmpty() ? key : text;
}

bool TavroLanguages::hasTable(const QString& language) const
{
    return table(language) != nullptr;
}

const QTranslator* TavroLanguages::table(const QString& language) const
{
    const auto found = m_tables.find(language);
    if (found != m_tables.end())
        return found->second.get();

    std::unique_ptr<QTranslator> translator;
    if (isWellFormedCode(language)) {
        translator = std::make_unique<QTranslator>();
        if (!translator->load(tablePath(language))) {
            qCDebug(lcLanguages) << "no localisation table for" << language;
            translator.reset();
        }
    }
    return m_tables.emplace(language, std::move(translator)).first->second.get();
}
