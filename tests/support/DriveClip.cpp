#include "DriveClip.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>

namespace DriveClip {

namespace {

QString stamp(int ms)
{
    return QStringLiteral("%1:%2:%3,%4")
        .arg(ms / 3600000, 2, 10, QChar(u'0'))
        .arg(ms / 60000 % 60, 2, 10, QChar(u'0'))
        .arg(ms / 1000 % 60, 2, 10, QChar(u'0'))
        .arg(ms % 1000, 3, 10, QChar(u'0'));
}

} // namespace

QString telemetrySrt(int seconds, int tag, const Drive& drive)
{
    QString text;
    int counter = 1;
    // Subtitle events must not overlap, or ffmpeg merges them.
    auto block = [&](int startMs, const QString& payload) {
        text += QStringLiteral("%1\n%2 --> %3\n%4\n\n")
                    .arg(counter++)
                    .arg(stamp(startMs), stamp(startMs + 60), payload);
    };
    for (int s = 0; s < seconds; ++s) {
        for (int k = 0; k < 10; ++k) {
            const int x = int(20 * std::sin((s * 10 + k) / 5.0)) + tag;
            const int y = s * 10 + k == drive.knockAtTenth ? 256 : -20 + (s * 10 + k) % 40;
            block(s * 1000 + k * 90, QStringLiteral("gsensor,%1,%2,%3").arg(x).arg(y).arg(128));
        }
        // 37°23.2475' N, 126°58.4100' E, moving north-east every second.
        const int at = drive.fromSecond + s;
        const double latMinutes = 23.2475 + at * 0.054;
        const double lngMinutes = 58.41 + at * 0.061;
        const double knots = 30 + 8 * std::sin(at / 3.0);
        const QDateTime clock = drive.startUtc.isValid()
            ? drive.startUtc.addSecs(s)
            : QDateTime(QDate(2016, 3, 7), QTime(0, 0, s % 60), Qt::UTC);
        block(s * 1000 + 920,
            QStringLiteral("GPRMC,%1.00,A,37%2,N,126%3,E,%4,0.0,%5,,,A")
                .arg(clock.toString(QStringLiteral("HHmmss")))
                .arg(latMinutes, 7, 'f', 4, QChar(u'0'))
                .arg(lngMinutes, 7, 'f', 4, QChar(u'0'))
                .arg(knots, 0, 'f', 1)
                .arg(clock.toString(QStringLiteral("ddMMyy"))));
    }
    return text;
}

bool make(const QString& path, int seconds, int width, int height, int fps, int tag,
    const Drive& drive, const Look& look)
{
    QTemporaryDir scratch;
    const QString srt = scratch.filePath(QStringLiteral("telemetry.srt"));
    QFile file(srt);
    if (!file.open(QIODevice::WriteOnly)
        || file.write(telemetrySrt(seconds, tag, drive).toUtf8()) < 0)
        return false;
    file.close();
    QDir().mkpath(QFileInfo(path).absolutePath());
    const QString pattern = look.colour.isEmpty() ? QStringLiteral("testsrc2=")
                                                  : QStringLiteral("color=c=%1:").arg(look.colour);
    const QString source = QStringLiteral("%1size=%2x%3:rate=%4:duration=%5")
                               .arg(pattern)
                               .arg(width)
                               .arg(height)
                               .arg(fps)
                               .arg(seconds);
    QStringList arguments { QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"),
        QStringLiteral("error"), QStringLiteral("-y"), QStringLiteral("-f"),
        QStringLiteral("lavfi"), QStringLiteral("-i"), source, QStringLiteral("-i"), srt };
    if (look.sound)
        arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
                  << QStringLiteral("sine=frequency=440:duration=%1").arg(seconds)
                  << QStringLiteral("-map") << QStringLiteral("2:a") << QStringLiteral("-c:a")
                  << QStringLiteral("aac");
    arguments << QStringLiteral("-map") << QStringLiteral("0:v") << QStringLiteral("-map")
              << QStringLiteral("1:s");
    if (look.bt709)
        arguments << QStringLiteral("-vf")
                  << QStringLiteral("scale=out_color_matrix=bt709,format=yuv420p")
                  << QStringLiteral("-colorspace") << QStringLiteral("bt709")
                  << QStringLiteral("-color_primaries") << QStringLiteral("bt709")
                  << QStringLiteral("-color_trc") << QStringLiteral("bt709");
    arguments << QStringLiteral("-c:v") << QStringLiteral("libx264") << QStringLiteral("-preset")
              << QStringLiteral("ultrafast") << QStringLiteral("-pix_fmt")
              << QStringLiteral("yuv420p") << QStringLiteral("-g") << QString::number(fps)
              << QStringLiteral("-c:s") << QStringLiteral("mov_text") << path;
    QProcess ffmpeg;
    ffmpeg.setProcessChannelMode(QProcess::MergedChannels);
    ffmpeg.start(QStringLiteral("ffmpeg"), arguments);
    if (!ffmpeg.waitForFinished(600000) || ffmpeg.exitStatus() != QProcess::NormalExit
        || ffmpeg.exitCode() != 0) {
        qWarning("ffmpeg failed: %s", ffmpeg.readAll().constData());
        return false;
    }
    return QFileInfo::exists(path);
}

} // namespace DriveClip
