#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Small file and process helpers shared by the test binaries.
namespace TestFiles {

// Writes bytes to path (creating parent folders); fails the current test on error.
void write(const QString& path, const QByteArray& bytes);
QByteArray read(const QString& path);

// The result of running the `tavro` tool built alongside the tests.
struct CliResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};
// Runs `tavro`; a run still going after `timeoutMs` is killed (exit code -1).
CliResult runCli(const QStringList& args, const QStringList& extraEnv = {}, int timeoutMs = 120000);

// Writes into `dir` an ffmpeg that writes "partial" to its output (its last
// argument), reports half a second done and then takes a minute, beside a
// link to the real ffprobe; its path.
QString writeStalledFfmpeg(const QString& dir);

// True when an executable of that name is on PATH (ffmpeg, mpv, ...).
bool haveTool(const QString& name);

} // namespace TestFiles
