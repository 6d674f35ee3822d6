#include "ScriptedPlayerView.h"

#include "player/TavroAVViewDelegate.h"

#include <QMetaObject>

#include <algorithm>

void ScriptedPlayerView::setStatus(TavroAVViewStatus status)
{
    m_status = status;
    QMetaObject::invokeMethod(
        &m_queue,
        [this, status] {
            if (m_delegate)
                m_delegate->tavroAVViewDidUpdateStatus(this, status);
        },
        Qt::QueuedConnection);
}

void ScriptedPlayerView::setPlayerRate(float rate)
{
    m_media.playerRate = rate;
    if (m_rate == rate)
        return;
    m_rate = rate;
    if (m_delegate)
        m_delegate->tavroAVViewDidUpdateRate(this, rate);
}

void ScriptedPlayerView::setFileName(const QString& path)
{
    m_calls << QStringLiteral("setFileName %1").arg(path);
    if (m_media.loaded) {
        // Closing clears the name; the new one is stored afterwards.
        setPlayerRate(0.0f);
        m_media = Media {};
    }
    m_media.fileName = path;
    m_media.serial = ++m_nextSerial;
    setStatus(TavroAVViewStatus::Init);
    if (path.isEmpty())
        return;
    ++m_loadCount;
    m_media.loaded = true;
    setStatus(TavroAVViewStatus::Loading);
    if (m_autoPrepareDuration > 0.0)
        finishLoading(m_autoPrepareDuration);
}

void ScriptedPlayerView::close()
{
    setPlayerRate(0.0f);
    m_media = Media {};
    setStatus(TavroAVViewStatus::Init);
}

void ScriptedPlayerView::play()
{
    if (!m_media.loaded)
        return;
    if (currentTime() == duration())
        landAt(0.0); // the start is there at once: playback runs from it
    setPlayerRate(1.0f);
}

void ScriptedPlayerView::changeRate(float rate)
{
    if (m_media.loaded)
        setPlayerRate(rate);
}

void ScriptedPlayerView::playPauseToggle()
{
    if (m_media.loaded && m_media.playerRate == 1.0f)
        setPlayerRate(0.0f);
    else
        play();
}

void ScriptedPlayerView::step(double seconds)
{
    m_calls << (seconds > 0 ? QStringLiteral("stepForward") : QStringLiteral("stepBackward"));
    if (m_media.ready) {
        setPlayerRate(0.0f);
        seekTo(std::clamp(m_media.time + seconds, 0.0, m_media.duration));
    }
}

void ScriptedPlayerView::setCurrentTime(double seconds)
{
    m_calls << QStringLiteral("setCurrentTime %1").arg(seconds);
    seekTo(PlayerRules::wholeSecondSeekTarget(seconds));
}

void ScriptedPlayerView::setCurrentTimeExactly(double seconds)
{
    m_calls << QStringLiteral("setCurrentTimeExactly %1").arg(seconds);
    seekTo(seconds);
}

// As libmpv does, a queued seek answers later (and not for other media).
void ScriptedPlayerView::seekTo(double seconds)
{
    if (!m_media.loaded)
        return;
    const quint64 serial = m_media.serial;
    QMetaObject::invokeMethod(
        &m_queue,
        [this, seconds, serial] {
            if (m_media.loaded && m_media.serial == serial)
                landAt(seconds);
        },
        Qt::QueuedConnection);
}

void ScriptedPlayerView::landAt(double seconds)
{
    m_media.time = std::clamp(seconds, 0.0, m_media.ready ? m_media.duration : 0.0);
    reportTime();
}

void ScriptedPlayerView::reportTime()
{
    if (m_delegate && m_media.loaded)
        m_delegate->tavroAVViewDidUpdateTime(this, m_media.time);
}

void ScriptedPlayerView::swapPlayerItemWith(PlayerView& other)
{
    // The media move; statuses, the views' rate fields and the mirror stay.
    if (auto* scripted = dynamic_cast<ScriptedPlayerView*>(&other); scripted && scripted != this)
        std::swap(m_media, scripted->m_media);
}

void ScriptedPlayerView::finishLoading(double durationSeconds)
{
    if (!m_media.loaded || m_status != TavroAVViewStatus::Loading)
        return;
    m_media.ready = true;
    m_media.duration = std::max(0.0, durationSeconds);
    setStatus(TavroAVViewStatus::Prepared);
}

void ScriptedPlayerView::advance(double wallSeconds)
{
    if (!m_media.ready || m_media.playerRate == 0.0f || wallSeconds <= 0.0)
        return;
    const double target = m_media.time + wallSeconds * double(m_media.playerRate);
    const double step = m_media.playerRate > 0.0f ? 0.1 : -0.1;
    while (m_media.playerRate != 0.0f) {
        const double next = m_media.time + step;
        if (step > 0 ? next > target + 1e-9 : next < target - 1e-9)
            break;
        const bool atEnd = next >= m_media.duration;
        if (atEnd || next <= 0.0) {
            m_media.time = atEnd ? m_media.duration : 0.0;
            reportTime();
            setPlayerRate(0.0f);
            if (atEnd && m_delegate)
                m_delegate->tavroAVViewDidPlayToEndTime(this);
            return;
        }
        m_media.time = next;
        reportTime();
    }
}
