#pragma once

#include <QObject>

#include <functional>

// Re-applies a window's texts after the viewer language has switched. Each
// window that shows localised texts (the main window, every modal page) owns
// one, created with the window's own "apply texts" routine. On
// "RefreshLanguageNotification" the routine is queued on the main thread and
// runs after the notification has been delivered to everyone, never inside it.
class LanguageRefreshObserver : public QObject {
    Q_OBJECT
public:
    LanguageRefreshObserver(std::function<void()> applyLanguageSettings, QObject* parent = nullptr);

private:
    void refreshLanguageHandler();

    std::function<void()> m_applyLanguageSettings;
};
