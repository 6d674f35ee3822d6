#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class QApplication;

// The look of every window of the viewer (the main window, the settings
// pages, the dialogs): one dark, calm palette with an amber accent, the face
// of the read-outs, and the style sheet rules the windows share.
namespace TavroStyle {

inline const QColor kWindow { 0x15, 0x17, 0x1a };
inline const QColor kPanel { 0x1f, 0x22, 0x26 };
inline const QColor kSeparator { 0x2c, 0x30, 0x36 };
inline const QColor kText { 0xf2, 0xf2, 0xf2 };
inline const QColor kSecondaryText { 0x9a, 0xa0, 0xa6 };
inline const QColor kAccent { 0xf5, 0xa6, 0x23 };
// A hovered button, a selected row.
inline const QColor kRaised { 0x3a, 0x3f, 0x46 };
// The fill of a disabled slider.
inline const QColor kDisabledFill { 0x5b, 0x61, 0x68 };
// Rows of clips the camera exported ("Saved_Videos").
inline const QColor kSavedVideo { 0xff, 0x00, 0xff };

// The sheet with @window, @panel, @separator, @text, @secondary, @accent,
// @raised and @disabled replaced by the palette's colours.
QString withPalette(QString sheet);

// The rules of controls every window shares (sliders, tool tips, scroll
// bars), palette applied.
QString sharedStyleSheet();

// Fusion, the palette and the main window's style sheet, for the whole
// application.
void apply(QApplication& application);

// A face whose digits all have the same width, so read-outs don't jitter.
QFont tabularFont(int pointSize = 0);

} // namespace TavroStyle
