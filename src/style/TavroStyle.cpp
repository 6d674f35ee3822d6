#include "style/TavroStyle.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

namespace TavroStyle {

QString withPalette(QString sheet)
{
    const struct {
        const char* token;
        const QColor& colour;
    } tokens[] = {
        { "@window", kWindow },
        { "@panel", kPanel },
        { "@separator", kSeparator },
        { "@text", kText },
        { "@secondary", kSecondaryText },
        { "@accent", kAccent },
        { "@raised", kRaised },
        { "@disabled", kDisabledFill },
    };
    for (const auto& token : tokens)
        sheet.replace(QLatin1String(token.token), token.colour.name(QColor::HexRgb));
    return sheet;
}

QString sharedStyleSheet()
{
    return withPalette(QStringLiteral(R"(
QToolTip { background: @panel; color: @text; border: 1px solid @separator; padding: 3px; }
QLabel { color: @text; }
QSlider::groove:horizontal { height: 4px; background: @separator; border-radius: 2px; }
QSlider::sub-page:horizontal { background: @accent; border-radius: 2px; }
QSlider::sub-page:horizontal:disabled { background: @disabled; }
QSlider::handle:horizontal { width: 12px; height: 12px; margin: -4px 0; border-radius: 6px; background: @text; }
QSlider::handle:horizontal:disabled { background: @disabled; }
QScrollBar:vertical { background: @window; width: 10px; }
QScrollBar::handle:vertical { background: @separator; border-radius: 4px; min-height: 24px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
)"));
}

void apply(QApplication& application)
{
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette palette;
    palette.setColor(QPalette::Window, kWindow);
    palette.setColor(QPalette::WindowText, kText);
    palette.setColor(QPalette::Base, kPanel);
    palette.setColor(QPalette::AlternateBase, kWindow);
    palette.setColor(QPalette::Text, kText);
    palette.setColor(QPalette::Button, kSeparator);
    palette.setColor(QPalette::ButtonText, kText);
    palette.setColor(QPalette::ToolTipBase, kPanel);
    palette.setColor(QPalette::ToolTipText, kText);
    palette.setColor(QPalette::Highlight, kAccent);
    palette.setColor(QPalette::HighlightedText, kWindow);
    palette.setColor(QPalette::PlaceholderText, kSecondaryText);
    palette.setColor(QPalette::Disabled, QPalette::Text, kSecondaryText);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, kSecondaryText);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, kSecondaryText);
    application.setPalette(palette);
    application.setStyleSheet(sharedStyleSheet() + withPalette(QStringLiteral(R"(
QMainWindow, QDialog { background: @window; }
QMenuBar { background: @window; color: @text; }
QMenuBar::item:selected { background: @separator; }
QMenu { background: @panel; color: @text; border: 1px solid @separator; }
QMenu::item:selected { background: @separator; }
QMenu::item:disabled { color: @secondary; }
#panel { background: @panel; border-radius: 6px; }
#videoArea { background: #000000; }
QLabel[secondary="true"] { color: @secondary; }
QLineEdit { background: @window; color: @secondary; border: 1px solid @separator; border-radius: 4px; padding: 2px 6px; }
QListWidget { background: @window; border: 1px solid @separator; border-radius: 4px; outline: none; }
QListWidget::item { padding: 3px 6px; }
QListWidget::item:selected { background: @raised; }
)")));
}

QFont tabularFont(int pointSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (pointSize > 0)
        font.setPointSize(pointSize);
    return font;
}

} // namespace TavroStyle
