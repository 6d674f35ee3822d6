#pragma once

#include <QWidget>

class LanguageRefreshObserver;

// The base of every page the settings window hosts (the settings editors, the
// card and model choice pages). A page ends itself with finished(result),
// 1 for confirmed and 0 for cancelled, and re-applies its texts on
// "RefreshLanguageNotification" through applyLanguageSettings(). Keys the
// settings window receives go to the page first (keyDown).
class SettingPage : public QWidget {
    Q_OBJECT
public:
    explicit SettingPage(QWidget* parent = nullptr);

    // Titles every control in the viewer's current language.
    virtual void applyLanguageSettings() = 0;
    // A key pressed in the settings window; true when the page used it. The
    // default takes Return as OK-if-enabled and Escape as cancel.
    virtual bool keyDown(int key, Qt::KeyboardModifiers modifiers);

signals:
    void finished(int result);

protected:
    // Call once the page is built: re-texts the page after language switches.
    void observeLanguage();
    // The button Return presses, if any.
    virtual void confirm() { }
    virtual bool canConfirm() const { return false; }
    virtual void cancel() { emit finished(0); }

private:
    LanguageRefreshObserver* m_languageObserver = nullptr;
};
