#include "i18n/QtStandardTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QTranslator>

#include <memory>

Q_LOGGING_CATEGORY(lcQtTranslations, "tavro.app.qttranslations", QtWarningMsg)

namespace {

std::unique_ptr<QTranslator>& installedTranslator()
{
    static auto* translator = new std::unique_ptr<QTranslator>; // lives until process exit
    return *translator;
}

} // namespace

bool QtStandardTranslations::apply(const QString& language)
{
    if (!QCoreApplication::instance())
        return false;
    std::unique_ptr<QTranslator>& installed = installedTranslator();
    if (installed) {
        QCoreApplication::removeTranslator(installed.get());
        installed.reset();
    }
    auto translator = std::make_unique<QTranslator>();
    // QLocale resolves "pt" to Brazilian Portuguese, the variant the system ships.
    if (!translator->load(QLocale(language), QStringLiteral("qtbase"), QStringLiteral("_"),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        qCDebug(lcQtTranslations) << "no Qt translation for" << language;
        return false;
    }
    QCoreApplication::installTranslator(translator.get());
    installed = std::move(translator);
    return true;
}
