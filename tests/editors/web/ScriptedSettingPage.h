#pragma once

#include "editors/web/WebSettingPage.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QUrl>

// A settings page that records every script and answers the ones it has an
// answer for later, from the event loop, in order — as QtWebEngine's
// runJavaScript does. Scripts without an answer get undefined (an invalid
// QVariant); scripts marked silent never get an answer at all, like those of
// a page stuck in a loop.
class ScriptedSettingPage : public WebSettingPage {
public:
    void loadPage(const QUrl& url) override { m_loads.append(url); }
    void evaluate(const QString& script, Answer answer) override;

    void answer(const QString& script, const QVariant& result) { m_answers.insert(script, result); }
    void silence(const QString& script) { m_silent.append(script); }
    // Keeps answers back until release() (to deliver them after the asker is gone).
    void holdAnswers() { m_holding = true; }
    void release();

    const QStringList& scripts() const { return m_scripts; }
    const QList<QUrl>& loads() const { return m_loads; }
    int count(const QString& script) const { return int(m_scripts.count(script)); }

private:
    QStringList m_scripts;
    QList<QUrl> m_loads;
    QHash<QString, QVariant> m_answers;
    QStringList m_silent;
    bool m_holding = false;
    QList<std::pair<Answer, QVariant>> m_held;
};

// The settings window as the controller sees it, recording what it is told.
class RecordingWindowView : public WebSettingWindowView {
public:
    struct Notice {
        QString title;
        QString message;
        QStringList buttonKeys;
    };

    void setBackButtonVisible(bool visible) override { backVisible = visible; }
    void setExchangeButtonsEnabled(bool enabled) override { exchangeEnabled = enabled; }
    void closeWindow() override { ++closed; }
    void showNotification(
        const QString& title, const QString& message, const QStringList& buttonKeys) override
    {
        notices.append({ title, message, buttonKeys });
    }
    void showMessage(const QString& titleKey, const QString& messageKey) override
    {
        messages.append({ titleKey, messageKey, {} });
    }

    bool backVisible = true;
    bool exchangeEnabled = true;
    int closed = 0;
    QList<Notice> notices;
    QList<Notice> messages;
};
