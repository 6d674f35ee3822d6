#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

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

    struct Result {
        QByteArray output;
        // The program ran to its end by itself and said so with status 0.
        bool succeeded = false;
    };
    // The same, telling whether the program exited normally with status 0. A
    // runner that cannot tell (a stand-in) takes every run as a success.
    virtual Result execute(const QString& program, const QStringList& arguments)
    {
        return { run(program, arguments), true };
    }

    // The same, handing what the program writes to `sink` as it arrives (a
    // long ffmpeg run reports its progress this way). A runner that cannot
    // stream hands all of it over at the end.
    using OutputSink = std::function<void(const QByteArray& chunk)>;
    virtual Result executeStreaming(
        const QString& program, const QStringList& arguments, const OutputSink& sink)
    {
        Result result = execute(program, arguments);
        if (sink && !result.output.isEmpty())
            sink(result.output);
        return result;
    }

    // May be called from any thread: ends the child that is running (its
    // run fails) and makes later runs fail at once until resetCancel().
    virtual void cancel() { }
    virtual void resetCancel() { }
};
