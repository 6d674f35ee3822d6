#include "app/window/ImageButton.h"

#include "app/window/ViewerImages.h"
#include "style/TavroStyle.h"

#include <QEnterEvent>
#include <QPainter>
#include <QSvgRenderer>

namespace {

constexpr int kIconPadding = 4;
constexpr int kTextPaddingX = 12;
constexpr int kTextHeight = 26;
constexpr qreal kDisabledOpacity = 0.35;

} // namespace

ImageButton::ImageButton(const QString& imageName, QWidget* parent)
    : QAbstractButton(parent)
    , m_imageName(imageName)
{
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
}

ImageButton::~ImageButton()
{
    qDeleteAll(m_renderers);
}

void ImageButton::setImageName(const QString& imageName)
{
    if (imageName == m_imageName)
        return;
    m_imageName = imageName;
    update();
}

void ImageButton::setHoverImageEnabled(bool enabled)
{
    m_hoverImageEnabled = enabled;
    update();
}

void ImageButton::setIconSize(const QSize& size)
{
    m_iconSize = size;
    updateGeometry();
}

QSize ImageButton::sizeHint() const
{
    if (text().isEmpty())
        return m_iconSize + QSize(2 * kIconPadding, 2 * kIconPadding);
    const int width = fontMetrics().horizontalAdvance(text()) + 2 * kTextPaddingX;
    return { qMax(width, 60), kTextHeight };
}

QSize ImageButton::minimumSizeHint() const
{
    return sizeHint();
}

QSvgRenderer* ImageButton::renderer(const QString& imageName) const
{
    auto found = m_renderers.constFind(imageName);
    if (found != m_renderers.constEnd())
        return found.value();
    const QString file = ViewerImages::path(imageName);
    QSvgRenderer* result = file.isEmpty() ? nullptr : new QSvgRenderer(file);
    m_renderers.insert(imageName, result);
    return result;
}

QString ImageButton::currentImageName() const
{
    if (!isEnabled())
        return m_imageName;
    if (isDown())
        return m_imageName + QLatin1String("_click");
    if (m_hovered && m_hoverImageEnabled)
        return m_imageName + QLatin1String("_hover");
    return m_imageName;
}

void ImageButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    QSvgRenderer* image = renderer(currentImageName());
    if (!image)
        image = renderer(m_imageName);
    if (text().isEmpty()) {
        QSize size = m_iconSize.scaled(rect().size() - QSize(2, 2), Qt::KeepAspectRatio);
        QRectF target(QPointF(0, 0), QSizeF(size));
        target.moveCenter(QRectF(rect()).center());
        if (image)
            image->render(&painter, target);
        return;
    }
    if (image)
        image->render(&painter, QRectF(rect()));
    // A caption on the accent colour reads dark, on the panel colour light.
    const bool onAccent = m_imageName.endsWith(QLatin1String("_2"));
    painter.setPen(onAccent ? TavroStyle::kWindow : TavroStyle::kText);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

void ImageButton::enterEvent(QEnterEvent* event)
{
    m_hovered = true;
    update();
    QAbstractButton::enterEvent(event);
}

void ImageButton::leaveEvent(QEvent* event)
{
    m_hovered = false;
    update();
    QAbstractButton::leaveEvent(event);
}
