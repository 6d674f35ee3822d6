#include "player/PlayerTimeline.h"

#include <algorithm>

namespace PlayerTimeline {

namespace {

constexpr char kScheme[] = "edl://";
const QSize kDefaultBlank(640, 360);

// Every value travels with its length in bytes ("%12%/card/a,b.mp4"), so
// that commas and semicolons in paths mean nothing.
QByteArray quoted(const QByteArray& value)
{
    return '%' + QByteArray::number(value.size()) + '%' + value;
}

QByteArray source(const Segment& segment)
{
    if (!segment.path.isEmpty())
        return segment.path.toUtf8();
    const QSize size = segment.blankSize.isValid() && !segment.blankSize.isEmpty()
        ? segment.blankSize
        : kDefaultBlank;
    // Even sizes, as the decoders downstream want them.
    return QByteArrayLiteral("av://lavfi:color=c=black:r=30:s=")
        + QByteArray::number(size.width() & ~1) + 'x' + QByteArray::number(size.height() & ~1)
        + ":d=" + QByteArray::number(segment.seconds, 'f', 3);
}

bool hasSound(const Segment& segment)
{
    return !segment.path.isEmpty() && segment.audioStreams > 0;
}

// The segment whose streams the timeline takes: one with a single video
// stream, with sound when every segment has sound, else without.
qsizetype layoutSegment(const QVector<Segment>& segments)
{
    const bool allSound = std::all_of(segments.cbegin(), segments.cend(), hasSound);
    for (qsizetype i = 0; i < segments.size(); ++i) {
        if (segments[i].videoStreams == 1 && hasSound(segments[i]) == allSound)
            return i;
    }
    return 0;
}

} // namespace

QString url(const QVector<Segment>& segments)
{
    QByteArray text = kScheme;
    const qsizetype layout = layoutSegment(segments);
    for (qsizetype i = 0; i < segments.size(); ++i) {
        if (i > 0)
            text += ';';
        text += quoted(source(segments[i]))
            + ",length=" + QByteArray::number(segments[i].seconds, 'f', 6);
        if (i == layout)
            text += ",layout=this";
    }
    return QString::fromUtf8(text);
}

bool isTimeline(const QString& path)
{
    return path.startsWith(QLatin1String(kScheme));
}

} // namespace PlayerTimeline
