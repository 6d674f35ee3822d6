#include "app/window/SeekSlider.h"

#include <QProxyStyle>

namespace {

class JumpToClickStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* returnData) const override
    {
        if (hint == QStyle::SH_Slider_AbsoluteSetButtons)
            return Qt::LeftButton;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

} // namespace

SeekSlider::SeekSlider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    // Without a base style the proxy makes its own copy of the application's
    // style; handing it the application's instance would transfer ownership.
    auto* style = new JumpToClickStyle;
    style->setParent(this);
    setStyle(style);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
}
