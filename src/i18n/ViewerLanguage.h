#pragma once

#include <QObject>
#include <QString>

// The viewer's language preference and the main window's language menu logic,
// without the menu itself: the window builds a radio group of four entries and
// keeps its check marks in step with markedItem()/markedItemChanged().
//
// A switch stores the code in "TavroViewerLanguage" and as the one-element list
// "AppleLanguages" (the list the lookups read), then posts
// "RefreshLanguageNotification" through TavroNotifier so every open window
// re-applies its texts; no restart is needed. Qt's own texts (standard dialog
// buttons and the like) are switched along with it.
//
// Wiring a menu: one checkable action per Item (titled menuTitle(item)) in an
// exclusive action group; each action's triggered() runs its
// languageChangeTo... operation; markedItemChanged(item) checks the action of
// item; markCurrentLanguage() runs once the menu exists.
class ViewerLanguage : public QObject {
    Q_OBJECT
public:
    // The entries of the language menu, in menu order.
    enum class Item { English, French, Japanese, Portuguese };
    Q_ENUM(Item)

    explicit ViewerLanguage(QObject* parent = nullptr);

    // First thing at launch, before any window loads: validates the stored
    // language ("en" when unset or not one of the viewer's languages), mirrors
    // it into "AppleLanguages" and writes the settings to disk. Returns the code.
    // Run it once the application object exists, so that Qt's own texts follow.
    static QString initializeLanguageSetting();

    // The stored language ("TavroViewerLanguage"), as it stands.
    static QString currentLanguage();

    // Menu actions: mark their entry, then switch.
    void languageChangeToEnglish();
    void languageChangeToFrench();
    void languageChangeToPortuguese();
    void languageChangeToJapanese();

    // Switches to code when it differs from the stored language: stores it,
    // posts the notification, then writes the settings to disk. Choosing the
    // language in use does nothing. Codes the viewer has no table for are
    // ignored. Returns true when the language changed.
    bool languageChange(const QString& code);

    // At start-up: marks Portuguese for "pt", French for "fr", Japanese for
    // "ja", English otherwise.
    void markCurrentLanguage();

    // The menu entry that carries the check mark.
    Item markedItem() const { return m_markedItem; }

    static QString codeForItem(Item item);
    // The entry's label. Each language is named in its own language, so that a
    // user who lands in a language they can't read still finds theirs.
    static QString menuTitle(Item item);

signals:
    void markedItemChanged(ViewerLanguage::Item item);

private:
    friend class SettingWindowLanguage;
    enum class DiskWrite { Now, LeftToCaller };

    // The switch shared by the main window and the settings window; the
    // settings window leaves the disk write to the main window.
    static bool storeLanguage(const QString& code, DiskWrite diskWrite);

    // The entry on, every other entry of the menu off.
    void markRadio(Item item);
    void markAndChange(Item item);

    Item m_markedItem = Item::English;
};
