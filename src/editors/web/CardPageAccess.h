#pragma once

#include <QString>
#include <QUrl>

// What the camera's settings page may read: files under the card's
// SETTING/html folder, found by their real path (a link that points out of
// the folder leads nowhere). No other local file, nothing from the network.
// Immutable after construction, so the web engine's network thread may ask.
class CardPageAccess {
public:
    explicit CardPageAccess(const QString& htmlFolder);

    bool allows(const QUrl& url) const;
    QString root() const { return m_root; }

private:
    QString m_root; // canonical path of the html folder; empty when it does not exist
};
