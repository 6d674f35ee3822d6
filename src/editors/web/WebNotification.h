#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// A notification the settings page asks the viewer to show ("userNoti"):
// one string of tab-separated fields — title, message, index, value, button
// count. The viewer answers the page with the index (and the value) once the
// user has chosen a button.
struct WebNotification {
    QString title;
    QString message;
    int index = 0;
    QString value;
    int buttonCount = 0;

    // Nothing when the text has fewer than five fields; fields after the
    // fifth are ignored.
    static std::optional<WebNotification> parse(const QString& fields);

    // The localisation keys of the buttons, first to last: "아니오" and "예"
    // for a question of exactly two buttons, "확인" alone otherwise. The first
    // button answers "update_cancel", any other "update_ok".
    QStringList buttonKeys() const;
};

// The leading integer of a text as the page's numbers are read: blanks, an
// optional sign and the digits up to the first other character; 0 when there
// are none, clamped to the 32-bit range.
int leadingIntValue(const QString& text);
