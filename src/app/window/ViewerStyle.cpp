#include "app/window/ViewerStyle.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

namespace ViewerStyle {

namespace {

QString hex(const QColor& colour)
{
    return colour.name(QColor::HexRgb);
}

} // namespace

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
    application.setStyleSheet(styleSheet());
}

QString styleSheet()
{
    QString sheet = QStringLiteral(R"(
QMainWindow, QDialog { background: @window; }
QToolTip { background: @panel; color: @text; border: 1px solid @separator; padding: 3px; }
QMenuBar { background: @window; color: @text; }
QMenuBar::item:selected { background: @separator; }
QMenu { background: @panel; color: @text; border: 1px solid @separator; }
QMenu::item:selected { background: @separator; }
QMenu::item:disabled { color: @secondary; }
#panel { background: @panel; border-radius: 6px; }
#videoArea { background: #000000; }
QLabel { color: @text; }
QLabel[secondary="true"] { color: @secondary; }
QLineEdit { background: @window; color: @secondary; border: 1px solid @separator; border-radius: 4px; padding: 2px 6px; }
QListWidget { background: @window; border: 1px solid @separator; border-radius: 4px; outline: none; }
QListWidget::item { padding: 3px 6px; }
QListWidget::item:selected { background: #3a3f46; }
QSlider::groove:horizontal { height: 4px; background: @separator; border-radius: 2px; }
QSlider::sub-page:horizontal { background: @accent; border-radius: 2px; }
QSlider::sub-page:horizontal:disabled { background: #5b6168; }
QSlider::handle:horizontal { width: 12px; height: 12px; margin: -4px 0; border-radius: 6px; background: @text; }
QSlider::handle:horizontal:disabled { background: #5b6168; }
QScrollBar:vertical { background: @window; width: 10px; }
QScrollBar::handle:vertical { background: @separator; border-radius: 4px; min-height: 24px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
)");
    sheet.replace(QLatin1String("@window"), hex(kWindow));
    sheet.replace(QLatin1String("@panel"), hex(kPanel));
    sheet.replace(QLatin1String("@separator"), hex(kSeparator));
    sheet.replace(QLatin1String("@text"), hex(kText));
    sheet.replace(QLatin1String("@secondary"), hex(kSecondaryText));
    sheet.replace(QLatin1String("@accent"), hex(kAccent));
    return sheet;
}

QFont tabularFont(int pointSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (pointSize > 0)
        font.setPointSize(pointSize);
    return font;
}

} // namespace ViewerStyle
