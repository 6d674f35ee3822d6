#include "ScriptedSettingPage.h"

#include <QTimer>

void ScriptedSettingPage::evaluate(const QString& script, Answer answer)
{
    m_scripts.append(script);
    if (!answer || m_silent.contains(script))
        return;
    const QVariant result = m_answers.value(script);
    if (m_holding) {
        m_held.append({ answer, result });
        return;
    }
    QTimer::singleShot(0, [answer, result] { answer(result); });
}

void ScriptedSettingPage::release()
{
    m_holding = false;
    const auto held = std::exchange(m_held, {});
    for (const auto& [answer, result] : held)
        answer(result);
}
