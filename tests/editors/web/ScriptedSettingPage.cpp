#include "ScriptedSettingPage.h"

#include <QTimer>

void ScriptedSettingPage::evaluate(const QString& script, Answer answer)
{
    m_scripts.append(script);
    if (!answer)
        return;
    const QVariant result = m_answers.value(script);
    if (m_holding)
        m_held.append({ answer, result });
    else
        QTimer::singleShot(0, [answer, result] { answer(result); });
}

void ScriptedSettingPage::release()
{
    m_holding = false;
    for (const auto& [answer, result] : std::exchange(m_held, {}))
        answer(result);
}
