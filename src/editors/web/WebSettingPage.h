#pragma once

#include <QString>
#include <QUrl>
#include <QVariant>

#include <functional>

// The web page that runs the camera's settings page, as the settings window
// controller sees it. Script results come back later, from the event loop,
// never inside evaluate(): an invalid QVariant stands for undefined, null or
// a script that threw; strings, numbers and booleans arrive as such.
class WebSettingPage {
public:
    using Answer = std::function<void(const QVariant& result)>;

    virtual ~WebSettingPage() = default;

    // Loads the page into the main frame.
    virtual void loadPage(const QUrl& url) = 0;
    // Evaluates script text in the page's global scope; scripts run in the
    // order they are sent. `answer` may be empty when the result is not used.
    virtual void evaluate(const QString& script, Answer answer = {}) = 0;
};

// The window around the page: its buttons and the page's notifications.
class WebSettingWindowView {
public:
    virtual ~WebSettingWindowView() = default;

    virtual void setBackButtonVisible(bool visible) = 0;
    // Save waits for the page's record: the buttons that would start another
    // exchange are off meanwhile. Cancel stays usable.
    virtual void setExchangeButtonsEnabled(bool enabled) = 0;
    // Closes the window; the controller goes with it.
    virtual void closeWindow() = 0;
    // Shows a notification window-modally over the settings window, with
    // the message text `title`, the informative text `message` and the
    // localised buttons of `buttonKeys`, first to last. When the user has
    // chosen, the view calls the controller's yesNoAlertDidSelected() with
    // 1000 for the first button, 1001 for the second (a box closed without
    // a choice counts as the first).
    virtual void showNotification(
        const QString& title, const QString& message, const QStringList& buttonKeys)
        = 0;
    // Tells the user something of the window's own (localisation keys), with
    // one OK button, window-modally; the window stays open.
    virtual void showMessage(const QString& titleKey, const QString& messageKey) = 0;
};
