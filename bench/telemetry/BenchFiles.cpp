#include "BenchFiles.h"

#include <QFile>
#include <QProcess>
#include <QTextStream>

#include <sys/resource.h>

#include <vector>

namespace BenchFiles {

bool writeNoise(const QString& path, int64_t bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    std::vector<uint64_t> block(1 << 17); // 1 MiB
    uint64_t state = 0x9E3779B97F4A7C15ULL;
    for (int64_t written = 0; written < bytes; written += 1 << 20) {
        for (uint64_t& word : block) {
            state ^= state << 13;
            state ^= state >> 7;
            state ^= state << 17;
            word = state;
        }
        const qint64 size = std::min<int64_t>(1 << 20, bytes - written);
        if (file.write(reinterpret_cast<const char*>(block.data()), size) != size)
            return false;
    }
    return true;
}

bool writeClip(const QString& path, int seconds)
{
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"),
        { "-nostdin", "-loglevel", "error", "-y", "-f", "lavfi", "-i",
            QStringLiteral("testsrc2=size=1920x1080:rate=30:duration=%1").arg(seconds), "-c:v",
            "mpeg4", "-q:v", "3", path });
    return ffmpeg.waitForFinished(600000) && ffmpeg.exitStatus() == QProcess::NormalExit
        && ffmpeg.exitCode() == 0;
}

bool writeSubtitle(const QString& path, int seconds)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QTextStream out(&file);
    int counter = 0;
    const auto block = [&](int ms, const QString& text) {
        const auto stamp = [](int t) {
            return QString::asprintf(
                "%02d:%02d:%02d,%03d", t / 3600000, t / 60000 % 60, t / 1000 % 60, t % 1000);
        };
        out << ++counter << '\n'
            << stamp(ms) << " --> " << stamp(ms + 60) << '\n'
            << text << "\n\n";
    };
    for (int s = 0; s < seconds; ++s) {
        for (int k = 0; k < 10; ++k)
            block(
                s * 1000 + k * 90, QStringLiteral("gsensor,%1,%2,128").arg(k - 5).arg(-20 + s % 5));
        block(s * 1000 + 920,
            QStringLiteral("GPRMC,0000%1.00,A,37%2,N,126%3,E,%4,0.0,070316,,,A")
                .arg(s % 60, 2, 10, QLatin1Char('0'))
                .arg(23.2475 + s * 0.054, 7, 'f', 4, QLatin1Char('0'))
                .arg(58.41 + s * 0.061, 7, 'f', 4, QLatin1Char('0'))
                .arg(20.0 + s % 7, 0, 'f', 1));
    }
    return true;
}

double peakRssMiB()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

double anonRssMiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1.0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("RssAnon:"))
            return line.mid(8).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return -1.0;
}

} // namespace BenchFiles
