#include "FfmpegJobs.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>

#include <algorithm>
#include <memory>

namespace {

struct Running {
    std::unique_ptr<QProcess> process;
    qsizetype job = 0;
};

constexpr int kPollMs = 20;

} // namespace

QString FfmpegJobs::ffmpegPath()
{
    return QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}

bool FfmpegJobs::run(bool verbose)
{
    const QString ffmpeg = ffmpegPath();
    if (ffmpeg.isEmpty()) {
        m_error = QStringLiteral("ffmpeg was not found on PATH");
        return false;
    }
    std::stable_sort(m_jobs.begin(), m_jobs.end(),
        [](const FfmpegJob& a, const FfmpegJob& b) { return a.cost > b.cost; });
    QTextStream err(stderr);
    std::vector<Running> running;
    qsizetype next = 0;
    bool failed = false;
    while ((next < m_jobs.size() && !failed) || !running.empty()) {
        while (!failed && next < m_jobs.size() && int(running.size()) < m_parallel) {
            auto process = std::make_unique<QProcess>();
            process->setProcessChannelMode(QProcess::SeparateChannels);
            process->setStandardOutputFile(QProcess::nullDevice());
            process->start(ffmpeg, m_jobs[next].arguments);
            if (verbose)
                err << "  " << m_jobs[next].label << '\n' << Qt::flush;
            running.push_back({ std::move(process), next++ });
        }
        for (auto it = running.begin(); it != running.end();) {
            QProcess& process = *it->process;
            if (process.state() != QProcess::NotRunning && !process.waitForFinished(kPollMs)) {
                ++it;
                continue;
            }
            FfmpegJob& job = m_jobs[it->job];
            if (process.error() == QProcess::FailedToStart
                || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
                if (!failed)
                    m_error
                        = QStringLiteral("%1: ffmpeg failed: %2")
                              .arg(job.label,
                                  QString::fromLocal8Bit(process.readAllStandardError()).trimmed());
                failed = true;
            } else if (!failed && job.finish && !job.finish(m_error)) {
                m_error = job.label + QStringLiteral(": ") + m_error;
                failed = true;
            }
            it = running.erase(it);
        }
    }
    return !failed;
}
