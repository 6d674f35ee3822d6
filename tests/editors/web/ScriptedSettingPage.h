#pragma once

#include "TestFiles.h"
#include "editors/web/WebSettingPage.h"

#include <QDir>
#include <QDirIterator>
#include <QHash>
#include <QList>
#include <QStringList>
#include <QUrl>

// Every file under the card's folder, by relative path, with its bytes.
inline QMap<QString, QByteArray> snapshot(const QString& root)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(QDir(root).relativeFilePath(path), TestFiles::read(path));
    }
    return files;
}

// A settings page that records every script and answers the ones it has an
// answer for later, from the event loop, in order — as QtWebEngine's
// runJavaScript does. Scripts without an answer get undefined (an invalid
// QVariant). Answers can be held back, to come after their asker is gone.
class ScriptedSettingPage : public WebSettingPage {
public:
    void loadPage(const QUrl& url) override { m_loads.append(url); }
    void evaluate(const QString& script, Answer answer) override;

    void answer(const QString& script, const QVariant& result) { m_answers.insert(script, result); }
    void holdAnswers() { m_holding = true; }
    void release();

    const QStringList& scripts() const { return m_scripts; }
    const QList<QUrl>& loads() const { return m_loads; }
    int count(const QString& script) const { return int(m_scripts.count(script)); }

private:
    QStringList m_scripts;
    QList<QUrl> m_loads;
    QHash<QString, QVariant> m_answers;
    bool m_holding = false;
    QList<std::pair<Answer, QVariant>> m_held;
};

// The settings window as the controller sees it, recording what it is told.
struct RecordingWindowView : WebSettingWindowView {
    struct Notice {
        QString title;
        QStringList buttonKeys;
    };
    void setBackButtonVisible(bool visible) override { backVisible = visible; }
    void setExchangeButtonsEnabled(bool enabled) override { exchangeEnabled = enabled; }
    void closeWindow() override { ++closed; }
    void showNotification(
        const QString& title, const QString&, const QStringList& buttonKeys) override
    {
        notices.append({ title, buttonKeys });
    }
    void showMessage(const QString&, const QString&) override { }

    bool backVisible = true;
    bool exchangeEnabled = true;
    int closed = 0;
    QList<Notice> notices;
};
