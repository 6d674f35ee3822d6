#include "FfmpegCommands.h"

#include <QFileInfo>

#include <algorithm>

namespace FfmpegCommands {

QString fontFile()
{
    static const QString found = [] {
        const QStringList candidates {
            QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"),
            QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"),
            QStringLiteral("/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf"),
            QStringLiteral("/usr/share/fonts/truetype/freefont/FreeSansBold.ttf"),
            QStringLiteral("/usr/share/fonts/TTF/DejaVuSans.ttf"),
        };
        for (const QString& path : candidates)
            if (QFileInfo(path).isFile())
                return path;
        return QString();
    }();
    return found;
}

QStringList start()
{
    return { QStringLiteral("-nostdin"), QStringLiteral("-hide_banner"),
        QStringLiteral("-loglevel"), QStringLiteral("error"), QStringLiteral("-y") };
}

QStringList pictureInput(const Picture& picture, int seconds)
{
    // The front camera sees a busy pattern, the rear a calmer one.
    const QString source = picture.rear ? QStringLiteral("testsrc") : QStringLiteral("testsrc2");
    return { QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
        QStringLiteral("%1=size=%2x%3:rate=%4:duration=%5")
            .arg(source)
            .arg(picture.size.width())
            .arg(picture.size.height())
            .arg(picture.fps)
            .arg(seconds) };
}

QString pictureFilter(const Picture& picture)
{
    QStringList chain;
    if (picture.rear)
        chain << QStringLiteral("hflip"); // a rear camera shows a mirror image
    const QString font = fontFile();
    if (!font.isEmpty()) {
        // A time-lapse clock runs faster: stretch the time stamps while drawing.
        if (picture.clockScale > 1)
            chain << QStringLiteral("setpts=%1*PTS").arg(picture.clockScale);
        const int fontSize = std::max(10, picture.size.height() / 22);
        // "%{pts:gmtime:T:format}" prints T + play time; the colons of the
        // time format are escaped for the expansion and for the filter.
        chain << QStringLiteral("drawtext=fontfile=%1:fontsize=%2:fontcolor=white:box=1:"
                                "boxcolor=black@0.55:boxborderw=%3:x=%3:y=h-th-%4:"
                                "text='%5  %{pts\\:gmtime\\:%6\\:%Y-%m-%d %H\\\\\\:%M\\\\\\:%S}'")
                     .arg(font)
                     .arg(fontSize)
                     .arg(fontSize / 3)
                     .arg(fontSize)
                     .arg(picture.label)
                     .arg(picture.clockStart);
        if (picture.clockScale > 1)
            chain << QStringLiteral("setpts=PTS/%1").arg(picture.clockScale);
    }
    chain << QStringLiteral("format=yuv420p");
    return chain.join(QLatin1Char(','));
}

QStringList soundInput(int seconds)
{
    // An idling engine: two low tones, a slow swell and some road noise.
    return { QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
        QStringLiteral("aevalsrc=exprs=0.08*sin(2*PI*55*t)*(1+0.3*sin(2*PI*0.5*t))"
                       "+0.04*sin(2*PI*110*t)+0.02*(random(0)-0.5):s=16000:d=%1")
            .arg(seconds) };
}

QStringList h264(int fps)
{
    return { QStringLiteral("-c:v"), QStringLiteral("libx264"), QStringLiteral("-preset"),
        QStringLiteral("ultrafast"), QStringLiteral("-crf"), QStringLiteral("30"),
        QStringLiteral("-g"), QString::number(fps * 2), QStringLiteral("-pix_fmt"),
        QStringLiteral("yuv420p") };
}

QStringList hevc(int fps)
{
    return { QStringLiteral("-c:v"), QStringLiteral("libx265"), QStringLiteral("-preset"),
        QStringLiteral("ultrafast"), QStringLiteral("-crf"), QStringLiteral("32"),
        QStringLiteral("-x265-params"),
        QStringLiteral("log-level=error:info=0:keyint=%1").arg(fps * 2), QStringLiteral("-tag:v"),
        QStringLiteral("hvc1"), QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p") };
}

QStringList pcmSound()
{
    return { QStringLiteral("-c:a"), QStringLiteral("pcm_s16le"), QStringLiteral("-ar"),
        QStringLiteral("16000"), QStringLiteral("-ac"), QStringLiteral("1") };
}

QStringList reproducible()
{
    return { QStringLiteral("-map_metadata"), QStringLiteral("-1"), QStringLiteral("-fflags"),
        QStringLiteral("+bitexact"), QStringLiteral("-flags:v"), QStringLiteral("+bitexact"),
        QStringLiteral("-flags:a"), QStringLiteral("+bitexact") };
}

} // namespace FfmpegCommands
