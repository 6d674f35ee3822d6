#pragma once

#include <QColor>
#include <QString>

// The look of the settings pages: the viewer's palette (TavroStyle) with the
// amber accent for the selected tab, checked radio buttons and slider fills.
namespace EditorStyle {

// The partition graph's bar colours, by bar (continuous, event, park, manual).
QColor barColour(int index);

// The style sheet a settings page sets on itself (it may be shown outside
// the viewer, without the application's sheet).
QString pageStyleSheet();

// Caption column width, so that the controls of a tab line up.
inline constexpr int kCaptionWidth = 190;

} // namespace EditorStyle
