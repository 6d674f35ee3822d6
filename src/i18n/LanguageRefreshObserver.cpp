#include "i18n/LanguageRefreshObserver.h"

#include "library/TavroNotifier.h"

#include <QMetaObject>

LanguageRefreshObserver::LanguageRefreshObserver(
    std::function<void()> applyLanguageSettings, QObject* parent)
    : QObject(parent)
    , m_applyLanguageSettings(std::move(applyLanguageSettings))
{
    connect(&TavroNotifier::shared(), &TavroNotifier::refreshLanguage, this,
        &LanguageRefreshObserver::refreshLanguageHandler);
}

void LanguageRefreshObserver::refreshLanguageHandler()
{
    // Queued: dropped with this object if the window closes before it runs.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_applyLanguageSettings)
                m_applyLanguageSettings();
        },
        Qt::QueuedConnection);
}
