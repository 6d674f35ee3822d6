#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Runs one child process to its end. The viewer runs ffmpeg through this seam
// so that tests can record the argument lists instead of starting a program.
//
// Implementations must be safe to call from any thread (one call per thread at
// a time) and must never leave the child running when run() returns.
class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;

    // Runs `program` with `arguments`, standard output and standard error
    // merged into one stream, waits until the program exits and returns all
    // it wrote. A program that cannot be started yields an empty result.
    virtual QByteArray run(const QString& program, const QStringList& arguments) = 0;
};
