#include "MediaProbe.h"

#include <QProcess>
#include <QStringList>

namespace MediaProbe {

namespace {

QByteArray output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return process.readAllStandardOutput();
}

} // namespace

QString describe(const QString& file)
{
    return QString::fromUtf8(output(QStringLiteral("ffprobe"),
        { "-v", "error", "-select_streams", "v:0", "-count_packets", "-show_entries",
            "stream=width,height,nb_read_packets:format=duration,nb_streams", "-of", "default=nw=1",
            file }));
}

double duration(const QString& file)
{
    const QString text = describe(file);
    const qsizetype at = text.indexOf(QLatin1String("duration="));
    return at < 0 ? -1 : text.mid(at + 9).section(u'\n', 0, 0).toDouble();
}

QString colourAt(const QString& file, double seconds, int x, int y, int width)
{
    const QByteArray rgb = output(QStringLiteral("ffmpeg"),
        { "-v", "error", "-ss", QString::number(seconds), "-i", file, "-frames:v", "1", "-f",
            "rawvideo", "-pix_fmt", "rgb24", "-" });
    const qsizetype at = (qsizetype(y) * width + x) * 3;
    if (rgb.size() < at + 3)
        return QStringLiteral("none");
    const int r = quint8(rgb[at]);
    const int g = quint8(rgb[at + 1]);
    const int b = quint8(rgb[at + 2]);
    if (r > 200 && g < 60 && b < 60)
        return QStringLiteral("red");
    if (b > 200 && r < 60 && g < 60)
        return QStringLiteral("blue");
    if (r < 40 && g < 40 && b < 40)
        return QStringLiteral("black");
    return QStringLiteral("other");
}

} // namespace MediaProbe
