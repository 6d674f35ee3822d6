#include "RecordingProcessRunner.h"

#include <QFile>

namespace {

QString inputOf(const QStringList& arguments)
{
    const qsizetype at = arguments.indexOf(QStringLiteral("-i"));
    return at >= 0 && at + 1 < arguments.size() ? arguments.at(at + 1) : QString();
}

QByteArray report(const QString& input, int videoStreams, int audioStreams)
{
    QByteArray text = "Input #0, avi, from '" + input.toUtf8() + "':\n  Duration: 00:01:00.00\n";
    int index = 0;
    for (int i = 0; i < videoStreams; ++i, ++index)
        text += "  Stream #0:" + QByteArray::number(index)
            + ": Video: h264 (H264 / 0x34363248), 1920x1080\n";
    for (int i = 0; i < audioStreams; ++i, ++index)
        text += "  Stream #0:" + QByteArray::number(index) + ": Audio: pcm_s16le, 16000 Hz, mono\n";
    return text + "At least one output file must be specified\n";
}

} // namespace

QByteArray RecordingProcessRunner::run(const QString& program, const QStringList& arguments)
{
    QMutexLocker locker(&m_mutex);
    m_calls.append({ program, arguments });
    const QString input = inputOf(arguments);
    if (arguments.size() == 2) {
        const auto streams = m_streams.value(input, { 0, 0 });
        return report(input, streams.first, streams.second);
    }
    if (m_rejected.contains(input) || arguments.isEmpty())
        return "Invalid data found when processing input\n";
    QFile output(arguments.last());
    if (output.open(QIODevice::WriteOnly | QIODevice::Truncate))
        output.write(outputBytes(input));
    return {};
}

ProcessRunner::Result RecordingProcessRunner::execute(
    const QString& program, const QStringList& arguments)
{
    const bool rejected = [&] {
        QMutexLocker locker(&m_mutex);
        return m_rejected.contains(inputOf(arguments));
    }();
    QByteArray output = run(program, arguments);
    return { std::move(output), !rejected };
}

void RecordingProcessRunner::setStreams(const QString& input, int videoStreams, int audioStreams)
{
    QMutexLocker locker(&m_mutex);
    m_streams.insert(input, { videoStreams, audioStreams });
}

void RecordingProcessRunner::reject(const QString& input)
{
    QMutexLocker locker(&m_mutex);
    m_rejected.insert(input);
}

QList<RecordingProcessRunner::Call> RecordingProcessRunner::calls() const
{
    QMutexLocker locker(&m_mutex);
    return m_calls;
}

QList<QStringList> RecordingProcessRunner::conversions() const
{
    QMutexLocker locker(&m_mutex);
    QList<QStringList> result;
    for (const Call& call : m_calls) {
        if (call.arguments.size() > 2)
            result.append(call.arguments);
    }
    return result;
}

void RecordingProcessRunner::clear()
{
    QMutexLocker locker(&m_mutex);
    m_calls.clear();
}

QByteArray RecordingProcessRunner::outputBytes(const QString& input)
{
    return "converted from " + input.toUtf8();
}
