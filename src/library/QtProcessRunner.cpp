#include "library/QtProcessRunner.h"

#include "library/LibraryLogging.h"

#include <QProcess>

namespace {
constexpr int kPollMs = 100; // how often a waiting run looks for cancel()
}

QByteArray QtProcessRunner::run(const QString& program, const QStringList& arguments)
{
    return execute(program, arguments).output;
}

ProcessRunner::Result QtProcessRunner::execute(const QString& program, const QStringList& arguments)
{
    return executeStreaming(program, arguments, {});
}

ProcessRunner::Result QtProcessRunner::executeStreaming(
    const QString& program, const QStringList& arguments, const OutputSink& sink)
{
    if (program.isEmpty() || m_cancelled)
        return {};
    // The QProcess lives on this stack frame: if anything unwinds, its
    // destructor kills and reaps the child.
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(-1)) {
        qCDebug(lcLibrary) << "cannot start" << program << process.errorString();
        return {};
    }
    Result result;
    bool killed = false;
    // Read while it runs so a chatty child never blocks on a full pipe.
    while (process.state() != QProcess::NotRunning) {
        if (m_cancelled) {
            process.kill();
            killed = true;
            break;
        }
        process.waitForReadyRead(kPollMs);
        const QByteArray chunk = process.readAll();
        result.output += chunk;
        if (sink && !chunk.isEmpty())
            sink(chunk);
    }
    process.waitForFinished(-1);
    const QByteArray rest = process.readAll();
    result.output += rest;
    if (sink && !rest.isEmpty())
        sink(rest);
    result.succeeded
        = !killed && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    qCDebug(lcLibrary) << program << arguments << "exited with" << process.exitCode();
    return result;
}
