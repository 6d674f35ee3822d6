#pragma once

#include <QString>

// Qt's own texts (the standard buttons of dialogs, the file and print dialogs,
// the context menu of text fields) follow the viewer's language. They come from
// the system's Qt translations (package qt6-translations-l10n); without them
// those texts stay in English and nothing else changes.
class QtStandardTranslations {
public:
    // Replaces the installed Qt translation by the one for language. Returns
    // true when one was found and installed. Needs the application object.
    static bool apply(const QString& language);
};
