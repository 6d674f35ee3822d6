#include "editors/web/WebDashcam.h"

#include "editors/EditorsLogging.h"
#include "editors/web/WebSettingWindowController.h"

#include <optional>

namespace {

// Text the page passed; numbers, booleans, objects and nothing are not.
std::optional<QString> text(const QVariant& value)
{
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

} // namespace

const QList<WebDashcam::ScriptName>& WebDashcam::scriptNames()
{
    static const QList<ScriptName> names {
        { QStringLiteral("log"), "log" },
        { QStringLiteral("getCfg"), "getCfg" },
        { QStringLiteral("popup"), "popup" },
        { QStringLiteral("userNoti"), "showPopup" },
        { QStringLiteral("setdate:use"), "SetDateUse" },
        { QStringLiteral("setdate"), "SetDate" },
        { QStringLiteral("setdate:ampm"), "SetDateAmPm" },
        { QStringLiteral("setdate:min"), "SetDateMin" },
        { QStringLiteral("setdate:hour"), "SetDateHour" },
        { QStringLiteral("format"), "format" },
        { QStringLiteral("reset"), "reset" },
        { QStringLiteral("adasreset"), "adasreset" },
        { QStringLiteral("docLoadComplete"), "docLoadComplete" },
        { QStringLiteral("languageSetComplete"), "languageSetComplete" },
        { QStringLiteral("clickedList"), "clickedList" },
    };
    return names;
}

WebDashcam::WebDashcam(WebSettingWindowController* controller)
    : QObject(nullptr)
    , m_controller(controller)
{
    setObjectName(QStringLiteral("Dashcam"));
}

void WebDashcam::log(const QVariant& message)
{
    qCDebug(lcEditors) << "settings page:" << message;
}

void WebDashcam::getCfg(const QVariant&) { }

void WebDashcam::popup(const QVariant&) { }

void WebDashcam::showPopup(const QVariant& fields)
{
    if (const std::optional<QString> value = text(fields))
        m_controller->showPopup(*value);
}

void WebDashcam::SetDateUse(const QVariant& use)
{
    // Only the text "1" asks for the clock to be set.
    m_controller->setDateUse(text(use).value_or(QString()));
}

void WebDashcam::SetDate(const QVariant& date)
{
    if (const std::optional<QString> value = text(date))
        m_controller->setDate(*value);
}

void WebDashcam::SetDateAmPm(const QVariant&) { }

void WebDashcam::SetDateMin(const QVariant& minute)
{
    if (const std::optional<QString> value = text(minute))
        m_controller->setDateMin(*value);
}

void WebDashcam::SetDateHour(const QVariant& hour)
{
    if (const std::optional<QString> value = text(hour))
        m_controller->setDateHour(*value);
}

void WebDashcam::format() { }

void WebDashcam::reset() { }

void WebDashcam::adasreset()
{
    m_controller->adasreset();
}

void WebDashcam::docLoadComplete()
{
    m_controller->docLoadComplete();
}

void WebDashcam::languageSetComplete()
{
    m_controller->languageSetComplete();
}

void WebDashcam::clickedList()
{
    m_controller->clickedList();
}
