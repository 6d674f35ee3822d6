#pragma once

#include "TelemetryScripts.h"

#include <QByteArray>
#include <QString>
#include <QVector>

// Rewrites an AVI file as the cameras write it: telemetry chunks interleaved
// with the frames inside the "movi" list, each after the frame it belongs to,
// and a fresh "idx1" index of the audio and video chunks. OpenDML indexes of
// the source ("indx" headers, "ix##" chunks) are dropped, since their offsets
// would no longer hold; players fall back to idx1.
class RiffAviRewriter {
public:
    // Reads the source AVI; false (with errorString()) when it is not a
    // plain RIFF AVI with a movi list.
    bool load(const QByteArray& bytes);

    // The new file with `chunks` interleaved by time against the frames of
    // stream 0.
    QByteArray rewrite(const QVector<TelemetryScripts::TimedChunk>& chunks) const;

    double framesPerSecond() const { return m_fps; }
    QString errorString() const { return m_error; }

private:
    struct Chunk {
        QByteArray fourcc;
        qsizetype dataOffset = 0;
        quint32 size = 0;
        quint32 indexFlags = 0;
    };
    bool readHeaderList(qsizetype offset, quint32 size);
    bool readMovi(qsizetype offset, quint32 size);
    void readIdx1(qsizetype offset, quint32 size);

    QByteArray m_source;
    qsizetype m_moviAt = -1; // where the movi list starts; everything before it is kept
    QVector<Chunk> m_media; // audio and video chunks of movi, in file order
    double m_fps = 0;
    QString m_error;
};
