#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

// One ffmpeg run and what to do with its output once it has succeeded
// (rewrite the container, append telemetry, move it into place).
struct FfmpegJob {
    QString label;
    QStringList arguments;
    std::function<bool(QString& error)> finish;
    double cost = 1; // a rough measure of encoding work; the costliest start first
};

// Runs ffmpeg jobs a few at a time and reports the first failure.
class FfmpegJobs {
public:
    explicit FfmpegJobs(int parallel)
        : m_parallel(parallel < 1 ? 1 : parallel)
    {
    }

    void add(FfmpegJob job) { m_jobs.push_back(std::move(job)); }
    // Runs every job, the costliest first so that no long one is left
    // running alone at the end; false with errorString() as soon as one
    // fails (the jobs still running are waited for).
    bool run(bool verbose);
    QString errorString() const { return m_error; }

    static QString ffmpegPath();

private:
    QVector<FfmpegJob> m_jobs;
    int m_parallel;
    QString m_error;
};
