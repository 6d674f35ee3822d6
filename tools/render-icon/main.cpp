// render-icon: draws an SVG icon into a square PNG for the desktop's icon theme
// (hicolor/<size>x<size>/apps), so the installed PNG always matches the SVG.
//   render-icon IN.svg SIZE OUT.png
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv)
{
    // Drawing shapes into an image needs neither a display nor fonts.
    QCoreApplication application(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    bool sizeOk = false;
    const int size = args.size() == 4 ? args[2].toInt(&sizeOk) : 0;
    if (!sizeOk || size <= 0 || size > 4096) {
        std::fputs("usage: render-icon IN.svg SIZE OUT.png\n", stderr);
        return 2;
    }
    QSvgRenderer renderer(args[1]);
    if (!renderer.isValid()) {
        std::fprintf(stderr, "render-icon: cannot read %s\n", qPrintable(args[1]));
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(0, 0, size, size));
    }
    QSaveFile out(args[3]);
    if (!out.open(QIODevice::WriteOnly) || !image.save(&out, "PNG") || !out.commit()) {
        std::fprintf(stderr, "render-icon: cannot write %s\n", qPrintable(args[3]));
        return 1;
    }
    return 0;
}
