#pragma once

#include "player/TavroAVViewDelegate.h"

#include <QHash>
#include <QTest>
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

    void tavroAVViewDidUpdateStatus(PlayerView* view, TavroAVViewStatus status) override
    {
        m_logs[view].statuses.append(status);
    }
    void tavroAVViewDidUpdateRate(PlayerView* view, float rate) override
    {
        m_logs[view].rates.append(rate);
    }
    void tavroAVViewDidUpdateTime(PlayerView* view, double seconds) override
    {
        m_logs[view].times.append(seconds);
    }
    void tavroAVViewDidPlayToEndTime(PlayerView* view) override { ++m_logs[view].ends; }
    void tavroAVViewDidRequestFullscreen(PlayerView* view) override
    {
        ++m_logs[view].fullscreenRequests;
    }

    Log log(PlayerView* view) const { return m_logs.value(view); }

    // Runs the event loop until the view has reported `status` (true) or
    // timeoutMs passed (false).
    bool waitForStatus(PlayerView* view, TavroAVViewStatus status, int timeoutMs = 10000) const
    {
        return QTest::qWaitFor([&] { return log(view).statuses.contains(status); }, timeoutMs);
    }
    bool waitForEnd(PlayerView* view, int ends = 1, int timeoutMs = 10000) const
    {
        return QTest::qWaitFor([&] { return log(view).ends >= ends; }, timeoutMs);
    }

private:
    QHash<PlayerView*, Log> m_logs;
};
