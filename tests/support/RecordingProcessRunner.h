#pragma once

#include "library/ProcessRunner.h"

#include <QHash>
#include <QList>
#include <QMutex>
#include <QSet>
#include <QStringList>

// A stand-in for ffmpeg. It records every run and answers like ffmpeg would:
// "-i FILE" alone gets a stream report built from the counts set for FILE;
// any other run writes its output (the last argument) unless its input was
// marked as rejected.
class RecordingProcessRunner final : public ProcessRunner {
public:
    struct Call {
        QString program;
        QStringList arguments;
    };

    QByteArray run(const QString& program, const QStringList& arguments) override;
    // A run reading a rejected input fails, as ffmpeg's would (status 1).
    Result execute(const QString& program, const QStringList& arguments) override;

    // The report for `input` lists that many video and audio streams.
    void setStreams(const QString& input, int videoStreams, int audioStreams);
    // Runs reading `input` write nothing, as when ffmpeg cannot read a file.
    void reject(const QString& input);

    QList<Call> calls() const;
    // The argument lists of the runs that wrote a file (not the stream reports).
    QList<QStringList> conversions() const;
    void clear();

    // What the fake writes into an output file made from `input`.
    static QByteArray outputBytes(const QString& input);

private:
    mutable QMutex m_mutex;
    QList<Call> m_calls;
    QHash<QString, QPair<int, int>> m_streams;
    QSet<QString> m_rejected;
};
