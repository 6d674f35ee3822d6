#pragma once

#include <QAbstractButton>
#include <QHash>
#include <QString>

#include <memory>

class QSvgRenderer;

// A button drawn from the viewer's artwork: image "name" while idle,
// "name_hover" under the mouse and "name_click" while pressed (each state
// falls back to the plain image when it has no drawing of its own). With a
// text, the image is stretched behind the text as its background. Disabled
// buttons are drawn faded.
class ImageButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit ImageButton(const QString& imageName, QWidget* parent = nullptr);
    ~ImageButton() override;

    QString imageName() const { return m_imageName; }
    void setImageName(const QString& imageName);

    // Whether the hover image shows under the mouse (on by default).
    bool isHoverImageEnabled() const { return m_hoverImageEnabled; }
    void setHoverImageEnabled(bool enabled);

    // Size of the image for a button without text.
    void setIconSize(const QSize& size);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QSvgRenderer* renderer(const QString& imageName) const;
    QString currentImageName() const;

    QString m_imageName;
    bool m_hoverImageEnabled = true;
    bool m_hovered = false;
    QSize m_iconSize { 24, 24 };
    mutable QHash<QString, QSvgRenderer*> m_renderers;
};
