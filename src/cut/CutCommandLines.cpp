#include "cut/CutCommandLines.h"

#include <algorithm>
#include <cmath>

namespace CutCommandLines {

namespace {

QString seconds(double value)
{
    return QString::number(value, 'f', 6);
}

QString videoStream(const CutPlan::Source& source)
{
    return QStringLiteral("v:%1").arg(source.stream);
}

// Quiet but for errors, the progress report on standard output.
QStringList commonArguments()
{
    return { QStringLiteral("-hide_banner"), QStringLiteral("-v"), QStringLiteral("error"),
        QStringLiteral("-nostdin"), QStringLiteral("-nostats"), QStringLiteral("-progress"),
        QStringLiteral("pipe:1"), QStringLiteral("-y") };
}

QString quotedForList(const QString& path)
{
    QString quoted = path;
    quoted.replace(u'\'', QLatin1String("'\\''"));
    return u'\'' + quoted + u'\'';
}

int even(int value)
{
    return std::max(2, value & ~1);
}

// The box the second camera is drawn into.
QSize insetSize(const CutPlan::Request& request, QSize mainSize)
{
    if (request.compose == CutPlan::Compose::PictureInPicture)
        return { even(mainSize.width() / 4), even(mainSize.height() / 4) };
    if (request.compose == CutPlan::Compose::SideBySide)
        return { even(mainSize.width() / 2), even(mainSize.height()) };
    return { even(mainSize.width()), even(mainSize.height()) };
}

// A camera's picture fitted into a box of `size`, black bars where the aspects differ.
QString fittedInto(QSize size)
{
    return QStringLiteral("scale=%1:%2:force_original_aspect_ratio=decrease,"
                          "pad=%1:%2:(ow-iw)/2:(oh-ih)/2,setsar=1")
        .arg(size.width())
        .arg(size.height());
}

struct Inputs {
    QStringList arguments;
    int count = 0;

    int addFile(const CutPlan::Segment& segment, const QString& path)
    {
        arguments << QStringLiteral("-ss") << seconds(segment.inpoint) << QStringLiteral("-t")
                  << seconds(segment.length()) << QStringLiteral("-i") << path;
        return count++;
    }
    int addGenerated(const CutPlan::Segment& segment, const QString& source)
    {
        arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-t")
                  << seconds(segment.length()) << QStringLiteral("-i") << source;
        return count++;
    }
};

} // namespace

QStringList keyFrameProbe(const CutPlan::Source& source, double upTo)
{
    return { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-select_streams"),
        videoStream(source), QStringLiteral("-read_intervals"),
        QStringLiteral("%+") + seconds(upTo + 1.0), QStringLiteral("-show_entries"),
        QStringLiteral("packet=pts_time,flags"), QStringLiteral("-of"), QStringLiteral("csv=p=0"),
        source.path };
}

double keyFrameAtOrBefore(const QByteArray& probeOutput, double at)
{
    // A thousandth of slack: a key frame given as 2.000 for a start of 1.9995.
    double best = 0;
    for (const QByteArray& line : probeOutput.split('\n')) {
        const QList<QByteArray> fields = line.trimmed().split(',');
        if (fields.size() < 2 || !fields[1].contains('K'))
            continue;
        bool ok = false;
        const double time = fields[0].toDouble(&ok);
        if (ok && time <= at + 1e-3 && time > best)
            best = time;
    }
    return best;
}

QStringList frameSizeProbe(const CutPlan::Source& source)
{
    return { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-select_streams"),
        videoStream(source), QStringLiteral("-show_entries"), QStringLiteral("stream=width,height"),
        QStringLiteral("-of"), QStringLiteral("csv=p=0:s=x"), source.path };
}

QSize frameSize(const QByteArray& probeOutput)
{
    const QList<QByteArray> parts = probeOutput.trimmed().split('\n').value(0).split('x');
    if (parts.size() != 2)
        return {};
    const int width = parts[0].toInt();
    const int height = parts[1].toInt();
    return width > 0 && height > 0 ? QSize(width, height) : QSize();
}

QString concatList(const QVector<CutPlan::Segment>& segments, double start)
{
    QString list = QStringLiteral("ffconcat version 1.0\n");
    for (int i = 0; i < segments.size(); ++i) {
        const CutPlan::Segment& segment = segments[i];
        list += QStringLiteral("file ") + quotedForList(segment.main.path) + u'\n';
        // Only the first segment can start inside its clip, only the last
        // end inside it.
        if (i == 0 && start > 0)
            list += QStringLiteral("inpoint ") + seconds(start) + u'\n';
        if (i == segments.size() - 1)
            list += QStringLiteral("outpoint ") + seconds(segment.outpoint) + u'\n';
    }
    return list;
}

QStringList copyArguments(
    const QString& listPath, const QVector<CutPlan::Segment>& segments, const QString& output)
{
    QStringList arguments = commonArguments();
    arguments << QStringLiteral("-f") << QStringLiteral("concat") << QStringLiteral("-safe")
              << QStringLiteral("0") << QStringLiteral("-i") << listPath << QStringLiteral("-map")
              << QStringLiteral("0:") + videoStream(segments.first().main);
    if (segments.first().mainHasAudio)
        arguments << QStringLiteral("-map") << QStringLiteral("0:a:0?");
    arguments << QStringLiteral("-c") << QStringLiteral("copy") << QStringLiteral("-movflags")
              << QStringLiteral("+faststart") << QStringLiteral("-f") << QStringLiteral("mp4")
              << output;
    return arguments;
}

QSize outputSize(const CutPlan::Request&, QSize mainSize)
{
    // Every kind of cut is one picture the size of the main camera's.
    return { even(mainSize.width()), even(mainSize.height()) };
}

QStringList reencodeArguments(const QVector<CutPlan::Segment>& segments,
    const CutPlan::Request& request, QSize mainSize, const QString& assPath, const QString& output)
{
    const bool composed = request.compose != CutPlan::Compose::None;
    const bool audio = std::any_of(segments.begin(), segments.end(),
        [](const CutPlan::Segment& segment) { return segment.mainHasAudio; });
    const QSize main(even(mainSize.width()), even(mainSize.height()));
    const QSize inset = insetSize(request, mainSize);
    Inputs inputs;
    QStringList graph;
    QString mainPads;
    QString insetPads;
    for (int i = 0; i < segments.size(); ++i) {
        const CutPlan::Segment& segment = segments[i];
        const int m = inputs.addFile(segment, segment.main.path);
        const QString fit = request.compose == CutPlan::Compose::SideBySide
            ? fittedInto(inset)
            : QStringLiteral("scale=%1:%2,setsar=1").arg(main.width()).arg(main.height());
        graph << QStringLiteral("[%1:%2]%3[m%4]").arg(m).arg(videoStream(segment.main), fit).arg(i);
        mainPads += QStringLiteral("[m%1]").arg(i);
        if (audio) {
            const int a = segment.mainHasAudio
                ? m
                : inputs.addGenerated(segment, QStringLiteral("anullsrc=r=48000:cl=mono"));
            mainPads += QStringLiteral("[%1:a:0]").arg(a);
        }
        if (!composed)
            continue;
        // The second camera fitted into its box; black where the clip has none.
        if (segment.inset.isValid()) {
            const int r = inputs.addFile(segment, segment.inset.path);
            graph << QStringLiteral("[%1:%2]%3[r%4]")
                         .arg(r)
                         .arg(videoStream(segment.inset), fittedInto(inset))
                         .arg(i);
        } else {
            const int r = inputs.addGenerated(segment,
                QStringLiteral("color=c=black:s=%1x%2:r=%3")
                    .arg(inset.width())
                    .arg(inset.height())
                    .arg(kFillerRate));
            graph << QStringLiteral("[%1:v:0]setsar=1[r%2]").arg(r).arg(i);
        }
        insetPads += QStringLiteral("[r%1]").arg(i);
    }
    const int n = int(segments.size());
    graph << mainPads
            + QStringLiteral("concat=n=%1:v=1:a=%2[main]%3")
                  .arg(n)
                  .arg(audio ? 1 : 0)
                  .arg(audio ? QStringLiteral("[sound]") : QString());
    QString picture = QStringLiteral("[main]");
    if (composed) {
        graph << insetPads + QStringLiteral("concat=n=%1:v=1:a=0[inset]").arg(n);
        const int margin = even(main.height() / 40);
        // Side by side is the front (in the left half) padded to the whole
        // width and the rear laid over the right half: hstack would wait
        // forever for a rear whose frame rate differs from the front's.
        graph << (request.compose == CutPlan::Compose::PictureInPicture
                ? QStringLiteral("[main][inset]overlay=W-w-%1:H-h-%1[both]").arg(margin)
                : QStringLiteral("[main]pad=%1:%2[wide];[wide][inset]overlay=%3:0[both]")
                      .arg(main.width())
                      .arg(main.height())
                      .arg(inset.width()));
        picture = QStringLiteral("[both]");
    }
    QString last = picture + QStringLiteral("format=yuv420p");
    if (!assPath.isEmpty())
        last += QStringLiteral(",ass=filename=") + filterPath(assPath);
    graph << last + QStringLiteral("[video]");

    QStringList arguments = commonArguments();
    arguments << inputs.arguments << QStringLiteral("-filter_complex") << graph.join(u';')
              << QStringLiteral("-map") << QStringLiteral("[video]");
    if (audio)
        arguments << QStringLiteral("-map") << QStringLiteral("[sound]") << QStringLiteral("-c:a")
                  << QStringLiteral("aac") << QStringLiteral("-b:a") << QStringLiteral("128k");
    arguments << QStringLiteral("-c:v") << QStringLiteral("libx264") << QStringLiteral("-preset")
              << QLatin1String(kPreset) << QStringLiteral("-crf") << QString::number(kQuality)
              << QStringLiteral("-t") << seconds(CutPlan::totalLength(segments))
              << QStringLiteral("-movflags") << QStringLiteral("+faststart") << QStringLiteral("-f")
              << QStringLiteral("mp4") << output;
    return arguments;
}

QString filterPath(const QString& path)
{
    // First as an option's value, then as text of the graph.
    QString value;
    for (const QChar c : path) {
        if (c == u'\\' || c == u'\'' || c == u':')
            value += u'\\';
        value += c;
    }
    QString graph;
    for (const QChar c : value) {
        if (c == u'\\' || c == u'\'' || c == u'[' || c == u']' || c == u',' || c == u';')
            graph += u'\\';
        graph += c;
    }
    return graph;
}

std::optional<double> progressSeconds(const QByteArray& line)
{
    static const QByteArray key("out_time_us=");
    if (!line.startsWith(key))
        return std::nullopt;
    bool ok = false;
    const qlonglong micro = line.mid(key.size()).trimmed().toLongLong(&ok);
    if (!ok || micro < 0)
        return std::nullopt;
    return micro / 1e6;
}

} // namespace CutCommandLines
