#include "ScreenReader.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QWidget>
#include <QtEndian>

#include <unistd.h>

namespace ScreenReader {
namespace {

QString setting(const char* name)
{
    return qEnvironmentVariable(name);
}

// An XWD file as Xvfb keeps its screen: a header of 32-bit words, a colour
// map, then the pixels, 32 bits each in the server's byte order.
QImage readXwd(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read ") + path;
        return {};
    }
    const QByteArray bytes = file.readAll();
    if (bytes.size() < 100) {
        *error = QStringLiteral("short framebuffer file");
        return {};
    }
    const auto* words = reinterpret_cast<const uchar*>(bytes.constData());
    const bool bigEndian = qFromBigEndian<quint32>(words) < 4096;
    auto word = [&](int index) {
        const uchar* at = words + 4 * index;
        return bigEndian ? qFromBigEndian<quint32>(at) : qFromLittleEndian<quint32>(at);
    };
    const quint32 headerSize = word(0), width = word(4), height = word(5);
    const quint32 byteOrder = word(7), bitsPerPixel = word(11), bytesPerLine = word(12);
    const quint32 colours = word(19);
    const qint64 pixels = qint64(headerSize) + qint64(colours) * 12;
    if (bitsPerPixel != 32 || byteOrder != 0 || word(14) != 0xff0000 || word(15) != 0xff00
        || word(16) != 0xff || pixels + qint64(bytesPerLine) * height > bytes.size()) {
        *error = QStringLiteral("framebuffer not in 32-bit RGB");
        return {};
    }
    QImage image(int(width), int(height), QImage::Format_RGB32);
    for (quint32 y = 0; y < height; ++y)
        memcpy(image.scanLine(int(y)), bytes.constData() + pixels + qint64(y) * bytesPerLine,
            size_t(width) * 4);
    return image;
}

QImage runGrabber(const QString& command, QString* error)
{
    QStringList words = QProcess::splitCommand(command);
    if (words.isEmpty()) {
        *error = QStringLiteral("empty screen command");
        return {};
    }
    QProcess process;
    process.start(words.takeFirst(), words);
    if (!process.waitForFinished(20000) || process.exitCode() != 0) {
        *error = command + QStringLiteral(" failed: ")
            + QString::fromLocal8Bit(process.readAllStandardError());
        return {};
    }
    QImage image = QImage::fromData(process.readAllStandardOutput(), "PNG");
    if (image.isNull())
        *error = command + QStringLiteral(" printed no PNG");
    return image.convertToFormat(QImage::Format_RGB32);
}

QJsonObject swayTree()
{
    QProcess process;
    process.start(QStringLiteral("swaymsg"),
        { QStringLiteral("-r"), QStringLiteral("-t"), QStringLiteral("get_tree") });
    process.waitForFinished(10000);
    return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
}

QRect rectOf(const QJsonValue& value)
{
    const QJsonObject r = value.toObject();
    return { r[u"x"].toInt(), r[u"y"].toInt(), r[u"width"].toInt(), r[u"height"].toInt() };
}

// Sway's views of this process whose content has the window's size, the one
// with the window's title first: where the content is, in the output's
// logical pixels.
QRect swayContentRect(const QWidget& window)
{
    QRect found;
    bool foundByTitle = false;
    const qint64 ownPid = ::getpid();
    std::function<void(const QJsonObject&)> walk = [&](const QJsonObject& node) {
        const QRect inner = rectOf(node[u"window_rect"]);
        if (node[u"pid"].toInteger() == ownPid && node[u"visible"].toBool()
            && qAbs(inner.width() - window.width()) <= 2
            && qAbs(inner.height() - window.height()) <= 2) {
            const bool byTitle = node[u"name"].toString() == window.windowTitle();
            if (found.isNull() || (byTitle && !foundByTitle)) {
                found = inner.translated(rectOf(node[u"rect"]).topLeft());
                foundByTitle = byTitle;
            }
        }
        for (const char* list : { "nodes", "floating_nodes" }) {
            for (const QJsonValue& child : node[QLatin1String(list)].toArray())
                walk(child.toObject());
        }
    };
    walk(swayTree());
    return found;
}

// Where the X server has the window, in its own (device) pixels. Qt's
// logical coordinates cannot say it at a scale of 2 when a window manager
// puts the window at an odd pixel.
QPoint x11WindowPosition(const QWidget& window)
{
    QProcess process;
    process.start(
        QStringLiteral("xwininfo"), { QStringLiteral("-id"), QString::number(window.winId()) });
    process.waitForFinished(10000);
    QPoint at(-1, -1);
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QByteArray text = line.trimmed();
        if (text.startsWith("Absolute upper-left X:"))
            at.setX(text.mid(text.indexOf(':') + 1).trimmed().toInt());
        else if (text.startsWith("Absolute upper-left Y:"))
            at.setY(text.mid(text.indexOf(':') + 1).trimmed().toInt());
    }
    return at;
}

} // namespace

bool isConfigured()
{
    return !setting("TAVRO_SCREEN_XWD").isEmpty() || !setting("TAVRO_SCREEN_COMMAND").isEmpty();
}

bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

QImage grab(QString* error)
{
    QString ignored;
    QString& why = error ? *error : ignored;
    if (!setting("TAVRO_SCREEN_XWD").isEmpty())
        return readXwd(setting("TAVRO_SCREEN_XWD"), &why);
    if (!setting("TAVRO_SCREEN_COMMAND").isEmpty())
        return runGrabber(setting("TAVRO_SCREEN_COMMAND"), &why);
    why = QStringLiteral("no way to read the screen (run through tools/screen.sh)");
    return {};
}

QRect placeOf(const QWidget& widget)
{
    const qreal ratio = widget.devicePixelRatioF();
    const QWidget& window = *widget.window();
    QPoint windowAt;
    if (isWayland()) {
        const QRect content = swayContentRect(window);
        if (content.isNull())
            return {};
        windowAt = (QPointF(content.topLeft()) * ratio).toPoint();
    } else {
        windowAt = x11WindowPosition(window);
        if (windowAt.x() < 0)
            return {};
    }
    const QPoint inWindow = (QPointF(widget.mapTo(&window, QPoint(0, 0))) * ratio).toPoint();
    return { windowAt + inWindow, (QSizeF(widget.size()) * ratio).toSize() };
}

void save(const QImage& screen, const QString& name)
{
    const QString dir = setting("TAVRO_SCREEN_SHOTS");
    if (dir.isEmpty() || screen.isNull())
        return;
    QDir().mkpath(dir);
    screen.save(QDir(dir).filePath(name + QStringLiteral(".png")));
}

} // namespace ScreenReader
