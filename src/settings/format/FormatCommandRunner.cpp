#include "settings/format/FormatCommandRunner.h"

#include "settings/format/FormatLog.h"

#include <QProcess>
#include <QStandardPaths>

QString ProcessFormatCommandRunner::findProgram(const QString& program)
{
    if (program.contains(u'/'))
        return program;
    const QString onPath = QStandardPaths::findExecutable(program);
    if (!onPath.isEmpty())
        return onPath;
    return QStandardPaths::findExecutable(program,
        { QStringLiteral("/usr/local/sbin"), QStringLiteral("/usr/sbin"), QStringLiteral("/sbin"),
            QStringLiteral("/usr/bin"), QStringLiteral("/bin") });
}

CommandResult ProcessFormatCommandRunner::run(const QString& program, const QStringList& arguments)
{
    CommandResult result;
    const QString path = findProgram(program);
    if (path.isEmpty()) {
        qCDebug(lcFormat) << "not installed:" << program;
        return result;
    }
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(path, arguments);
    if (!process.waitForStarted()) {
        qCDebug(lcFormat) << "could not start" << path << process.errorString();
        return result;
    }
    result.started = true;
    if (!process.waitForFinished(kTimeoutMs)) {
        process.kill();
        process.waitForFinished();
    }
    result.output = process.readAll();
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    qCDebug(lcFormat) << path << arguments << "exit" << result.exitCode << result.output;
    return result;
}
