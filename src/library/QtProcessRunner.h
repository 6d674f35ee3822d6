#pragma once

#include "library/ProcessRunner.h"

#include <atomic>

// The real child-process runner over QProcess. Standard input is the null
// device, so a program that would ask a question (ffmpeg before overwriting a
// file it was not told to overwrite) reads end-of-file and goes on instead of
// waiting forever.
class QtProcessRunner final : public ProcessRunner {
public:
    QByteArray run(const QString& program, const QStringList& arguments) override;
    // A cancelled run, a crash or a kill is no success.
    Result execute(const QString& program, const QStringList& arguments) override;
    Result executeStreaming(
        const QString& program, const QStringList& arguments, const OutputSink& sink) override;

    // May be called from any thread: kills the child that is running (its
    // run() returns what was read so far) and makes later runs return empty
    // at once until resetCancel(). For a viewer that quits while a worker
    // thread is converting, and for a signal handler: it only stores a
    // lock-free flag, which is safe there.
    void cancel() override { m_cancelled = true; }
    void resetCancel() override { m_cancelled = false; }

private:
    std::atomic<bool> m_cancelled { false };
};
