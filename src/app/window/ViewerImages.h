#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QString>

// The viewer's artwork by image name. Buttons and covers live under
// ":/viewer/<name>.svg" (hover and pressed states as "<name>_hover" and
// "<name>_click"); the telemetry indicators under ":/images/<name>.svg".
// A name given with ".png" (the map cover, "mapview_cover.png") means the
// same drawing, rasterised here.
namespace ViewerImages {

// The resource path of the image, or an empty string when there is none.
QString path(const QString& imageName);
// The image drawn at `size` logical pixels for the given device pixel ratio;
// a null pixmap for an unknown name.
QPixmap pixmap(const QString& imageName, const QSize& size, qreal devicePixelRatio = 1.0);
// The application icon.
QIcon applicationIcon();

} // namespace ViewerImages
