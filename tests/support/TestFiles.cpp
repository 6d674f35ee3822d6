#include "TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace TestFiles {

void write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << qPrintable(path);
    ASSERT_EQ(file.write(bytes), bytes.size()) << qPrintable(path);
}

QByteArray read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

QString writeStalledFfmpeg(const QString& dir)
{
    const QString ffmpeg = dir + QStringLiteral("/ffmpeg");
    write(ffmpeg,
        "#!/bin/sh\nfor a; do last=\"$a\"; done\necho partial > \"$last\"\n"
        "echo out_time_us=500000\nexec sleep 60\n");
    QFile::setPermissions(ffmpeg, QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_TRUE(QFile::link(QStandardPaths::findExecutable(QStringLiteral("ffprobe")),
        dir + QStringLiteral("/ffprobe")));
    return ffmpeg;
}

CliResult runCli(const QStringList& args, const QStringList& extraEnv, int timeoutMs)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString& entry : extraEnv) {
        const qsizetype eq = entry.indexOf(u'=');
        env.insert(entry.left(eq), entry.mid(eq + 1));
    }
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(TAVRO_CLI_PATH), args);
    CliResult result;
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

bool haveTool(const QString& name)
{
    return !QStandardPaths::findExecutable(name).isEmpty();
}

} // namespace TestFiles
