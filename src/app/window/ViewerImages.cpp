#include "app/window/ViewerImages.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace ViewerImages {

QString path(const QString& imageName)
{
    QString name = imageName;
    if (name.endsWith(QLatin1String(".png")))
        name.chop(4);
    for (const char* folder : { ":/viewer/", ":/images/" }) {
        const QString candidate = QLatin1String(folder) + name + QLatin1String(".svg");
        if (QFile::exists(candidate))
            return candidate;
    }
    return {};
}

QPixmap pixmap(const QString& imageName, const QSize& size, qreal devicePixelRatio)
{
    const QString file = path(imageName);
    if (file.isEmpty() || size.isEmpty())
        return {};
    QSvgRenderer renderer(file);
    QPixmap result(size * devicePixelRatio);
    result.fill(Qt::transparent);
    {
        QPainter painter(&result);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(result.size())));
    }
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

QIcon applicationIcon()
{
    return QIcon(QStringLiteral(":/viewer/io.github.tavro.Viewer.svg"));
}

} // namespace ViewerImages
