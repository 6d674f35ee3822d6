#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class QApplication;

// The viewer's look: a dark, calm palette and the style sheet of its controls.
namespace ViewerStyle {

inline const QColor kWindow { 0x15, 0x17, 0x1a };
inline const QColor kPanel { 0x1f, 0x22, 0x26 };
inline const QColor kSeparator { 0x2c, 0x30, 0x36 };
inline const QColor kText { 0xf2, 0xf2, 0xf2 };
inline const QColor kSecondaryText { 0x9a, 0xa0, 0xa6 };
inline const QColor kAccent { 0xf5, 0xa6, 0x23 };
// Rows of clips the camera exported ("Saved_Videos").
inline const QColor kSavedVideo { 0xff, 0x00, 0xff };

// Palette and style sheet for the whole application.
void apply(QApplication& application);
QString styleSheet();
// A face whose digits all have the same width, so read-outs don't jitter.
QFont tabularFont(int pointSize = 0);

} // namespace ViewerStyle
