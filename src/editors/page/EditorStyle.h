#pragma once

#include <QColor>
#include <QString>

// The look of the settings pages: the viewer's dark palette with the amber
// accent for the selected tab, checked radio buttons and slider fills.
namespace EditorStyle {

inline const QColor kWindow { 0x15, 0x17, 0x1a };
inline const QColor kPanel { 0x1f, 0x22, 0x26 };
inline const QColor kSeparator { 0x2c, 0x30, 0x36 };
inline const QColor kText { 0xf2, 0xf2, 0xf2 };
inline const QColor kSecondaryText { 0x9a, 0xa0, 0xa6 };
inline const QColor kAccent { 0xf5, 0xa6, 0x23 };

// The partition graph's bar colours, by bar (continuous, event, park, manual).
QColor barColour(int index);

// The style sheet a settings page sets on itself.
QString pageStyleSheet();

// Caption column width, so that the controls of a tab line up.
inline constexpr int kCaptionWidth = 190;

} // namespace EditorStyle
