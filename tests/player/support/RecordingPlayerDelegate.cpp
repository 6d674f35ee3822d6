#include "RecordingPlayerDelegate.h"

#include <QTest>

RecordingPlayerDelegate::Log& RecordingPlayerDelegate::entry(PlayerView* view)
{
    for (auto& pair : m_logs) {
        if (pair.first == view)
            return pair.second;
    }
    m_logs.append({ view, Log {} });
    return m_logs.last().second;
}

const RecordingPlayerDelegate::Log& RecordingPlayerDelegate::log(PlayerView* view) const
{
    static const Log kEmpty;
    for (const auto& pair : m_logs) {
        if (pair.first == view)
            return pair.second;
    }
    return kEmpty;
}

void RecordingPlayerDelegate::tavroAVViewDidUpdateStatus(PlayerView* view, TavroAVViewStatus status)
{
    entry(view).statuses.append(status);
}

void RecordingPlayerDelegate::tavroAVViewDidUpdateRate(PlayerView* view, float rate)
{
    entry(view).rates.append(rate);
}

void RecordingPlayerDelegate::tavroAVViewDidUpdateTime(PlayerView* view, double seconds)
{
    entry(view).times.append(seconds);
}

void RecordingPlayerDelegate::tavroAVViewDidPlayToEndTime(PlayerView* view)
{
    ++entry(view).ends;
}

void RecordingPlayerDelegate::tavroAVViewDidRequestFullscreen(PlayerView* view)
{
    ++entry(view).fullscreenRequests;
}

bool RecordingPlayerDelegate::waitForStatus(
    PlayerView* view, TavroAVViewStatus status, int timeoutMs) const
{
    return QTest::qWaitFor([&] { return log(view).statuses.contains(status); }, timeoutMs);
}

bool RecordingPlayerDelegate::waitForEnd(PlayerView* view, int ends, int timeoutMs) const
{
    return QTest::qWaitFor([&] { return log(view).ends >= ends; }, timeoutMs);
}
