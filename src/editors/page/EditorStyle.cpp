#include "editors/page/EditorStyle.h"

#include "style/TavroStyle.h"

namespace EditorStyle {

QColor barColour(int index)
{
    static const QColor kBars[] = { TavroStyle::kAccent, QColor(0xe0, 0x5a, 0x4f),
        QColor(0x4f, 0x9d, 0xe0), QColor(0x7b, 0xc4, 0x6a) };
    return kBars[((index % 4) + 4) % 4];
}

QString pageStyleSheet()
{
    return TavroStyle::sharedStyleSheet() + TavroStyle::withPalette(QStringLiteral(R"(
SettingPage { background: @window; }
QTabWidget::pane { border: 1px solid @separator; background: @panel; border-radius: 4px; top: -1px; }
QTabBar::tab { background: @window; color: @secondary; padding: 7px 18px; border: 1px solid @separator;
    border-bottom: none; border-top-left-radius: 4px; border-top-right-radius: 4px; margin-right: 2px; }
QTabBar::tab:selected { background: @accent; color: @window; }
#section { background: @panel; border-radius: 6px; }
#sectionTitle { color: @text; font-weight: bold; }
#sectionLine { background: @separator; }
#caption { color: @text; }
#guide { color: @accent; }
QRadioButton, QCheckBox { color: @text; spacing: 6px; }
QRadioButton:disabled, QCheckBox:disabled { color: @secondary; }
QRadioButton::indicator, QCheckBox::indicator { width: 12px; height: 12px; }
QRadioButton::indicator { border-radius: 7px; border: 1px solid @secondary; background: @window; }
QRadioButton::indicator:checked { border: 1px solid @accent; background: qradialgradient(cx: 0.5,
    cy: 0.5, radius: 0.5, fx: 0.5, fy: 0.5, stop: 0 @accent, stop: 0.55 @accent, stop: 0.65 @window,
    stop: 1 @window); }
QRadioButton::indicator:checked:disabled { border: 1px solid @secondary; background: qradialgradient(
    cx: 0.5, cy: 0.5, radius: 0.5, fx: 0.5, fy: 0.5, stop: 0 @secondary, stop: 0.55 @secondary,
    stop: 0.65 @window, stop: 1 @window); }
QCheckBox::indicator { border-radius: 3px; border: 1px solid @secondary; background: @window; }
QCheckBox::indicator:checked { background: @accent; border: 1px solid @accent; }
QComboBox, QDateTimeEdit { background: @window; color: @text; border: 1px solid @separator;
    border-radius: 4px; padding: 3px 8px; }
QComboBox:disabled, QDateTimeEdit:disabled { color: @secondary; }
QComboBox QAbstractItemView { background: @panel; color: @text; selection-background-color: @separator; }
QPushButton { background: @separator; color: @text; border: 1px solid @raised; border-radius: 4px;
    padding: 6px 18px; }
QPushButton:hover { background: @raised; }
QPushButton:disabled { color: @secondary; }
#okButton { background: @accent; color: @window; border: none; }
#okButton:disabled { background: @separator; color: @secondary; }
QListWidget { background: @panel; color: @text; border: 1px solid @separator; }
QListWidget::item { padding: 4px 8px; }
QListWidget::item:selected { background: @accent; color: @window; }

)"));
}

} // namespace EditorStyle
