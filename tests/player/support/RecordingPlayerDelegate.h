#pragma once

#include "player/TavroAVViewDelegate.h"

#include <QList>
#include <QVector>

#include <ostream>

// Statuses print by name in test failures.
inline void PrintTo(TavroAVViewStatus status, std::ostream* out)
{
    *out << TavroAVViewStatusName(status).toStdString();
}

// Records every delegate message, per sending view, for tests of player
// views and of their owners.
class RecordingPlayerDelegate : public TavroAVViewDelegate {
public:
    struct Log {
        QVector<TavroAVViewStatus> statuses;
        QVector<float> rates;
        QVector<double> times;
        int ends = 0;
        int fullscreenRequests = 0;
    };

    void tavroAVViewDidUpdateStatus(PlayerView* view, TavroAVViewStatus status) override;
    void tavroAVViewDidUpdateRate(PlayerView* view, float rate) override;
    void tavroAVViewDidUpdateTime(PlayerView* view, double seconds) override;
    void tavroAVViewDidPlayToEndTime(PlayerView* view) override;
    void tavroAVViewDidRequestFullscreen(PlayerView* view) override;

    const Log& log(PlayerView* view) const;
    void clear() { m_logs.clear(); }

    // Runs the event loop until the view has reported `status` (true) or
    // timeoutMs passed (false).
    bool waitForStatus(PlayerView* view, TavroAVViewStatus status, int timeoutMs = 10000) const;
    bool waitForEnd(PlayerView* view, int ends = 1, int timeoutMs = 10000) const;

private:
    Log& entry(PlayerView* view);
    QList<QPair<PlayerView*, Log>> m_logs;
};
