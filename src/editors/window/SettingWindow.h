#pragma once

#include <QDialog>

#include <memory>

class QAction;
class QMenu;
class SettingPage;
class SettingWindowLanguage;
class ViewerLanguage;

// The modal window that hosts one settings page at a time, centred over the
// main window (half the size difference on each side), with or without a
// title bar. The page is its key-event delegate and ends it: the window's
// result is the page's (1 confirmed, 0 cancelled; closing the window is 0).
// While it runs, the main window takes no input.
//
// It carries the viewer's Language menu (English, French, Japanese,
// Portuguese); each entry first switches through the main window's language
// controller, then through its own, as the main window's menu would.
class SettingWindow : public QDialog {
    Q_OBJECT
public:
    // `mainWindowLanguage` may be null (no Language menu then).
    SettingWindow(QWidget* parentWindow, ViewerLanguage* mainWindowLanguage);
    ~SettingWindow() override;

    // Shows the page modally and returns its result. The window takes the
    // page over and hides when the page ends.
    int showModalWindow(SettingPage* page, bool showTitleBar);

    // Where a page of `pageSize` goes over a window of `parentFrame`.
    static QRect centredOver(const QRect& parentFrame, const QSize& pageSize);

    SettingPage* page() const { return m_page; }
    QMenu* languageMenu() const { return m_languageMenu; }
    // The menu's entries in menu order.
    QList<QAction*> languageActions() const { return m_languageActions; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildLanguageMenu(ViewerLanguage& language);
    void applyLanguageSettings();

    SettingPage* m_page = nullptr;
    std::unique_ptr<SettingWindowLanguage> m_language;
    QMenu* m_languageMenu = nullptr;
    QList<QAction*> m_languageActions;
};
