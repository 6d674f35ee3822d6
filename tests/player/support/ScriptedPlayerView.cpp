#include "ScriptedPlayerView.h"

#include "player/PlayerRules.h"
#include "player/TavroAVViewDelegate.h"

#include <QMetaObject>

#include <cmath>

ScriptedPlayerView::ScriptedPlayerView() = default;
ScriptedPlayerView::~ScriptedPlayerView() = default;

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

void ScriptedPlayerView::setEnabled(bool enabled)
{
    m_calls << QStringLiteral("setEnabled %1").arg(enabled);
    m_enabled = enabled;
}

void ScriptedPlayerView::setFileName(const QString& path)
{
    m_calls << QStringLiteral("setFileName %1").arg(path);
    if (m_media.loaded) {
        // Closing clears the name; the new one is stored afterwards.
        m_calls << QStringLiteral("close");
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

void ScriptedPlayerView::reset()
{
    m_calls << QStringLiteral("reset");
    close();
}

void ScriptedPlayerView::close()
{
    if (m_calls.isEmpty() || m_calls.last() != QStringLiteral("reset"))
        m_calls << QStringLiteral("close");
    setPlayerRate(0.0f);
    m_media = Media {};
    setStatus(TavroAVViewStatus::Init);
}

bool ScriptedPlayerView::hasMovie() const
{
    return m_status != TavroAVViewStatus::Error && m_status != TavroAVViewStatus::Init;
}

void ScriptedPlayerView::play()
{
    m_calls << QStringLiteral("play");
    if (!m_media.loaded)
        return;
    if (currentTime() == duration())
        landAt(0.0); // the start is there at once: playback runs from it
    setPlayerRate(1.0f);
}

void ScriptedPlayerView::pause()
{
    m_calls << QStringLiteral("pause");
    if (m_media.loaded)
        setPlayerRate(0.0f);
}

void ScriptedPlayerView::playPauseToggle()
{
    m_calls << QStringLiteral("playPauseToggle");
    if (!m_media.loaded)
        return;
    if (m_media.playerRate == 1.0f) {
        setPlayerRate(0.0f);
        return;
    }
    if (currentTime() == duration())
        landAt(0.0);
    setPlayerRate(1.0f);
}

void ScriptedPlayerView::fastForward()
{
    m_calls << QStringLiteral("fastForward");
    if (m_media.loaded)
        setPlayerRate(PlayerRules::nextFastForwardRate(m_media.playerRate));
}

void ScriptedPlayerView::rewind()
{
    m_calls << QStringLiteral("rewind");
    if (m_media.loaded)
        setPlayerRate(PlayerRules::nextRewindRate(m_media.playerRate));
}

void ScriptedPlayerView::stepForward()
{
    m_calls << QStringLiteral("stepForward");
    if (m_media.ready) {
        setPlayerRate(0.0f);
        seekTo(std::min(m_media.duration, m_media.time + 0.1));
    }
}

void ScriptedPlayerView::stepBackward()
{
    m_calls << QStringLiteral("stepBackward");
    if (m_media.ready) {
        setPlayerRate(0.0f);
        seekTo(std::max(0.0, m_media.time - 0.1));
    }
}

void ScriptedPlayerView::setCurrentTime(double seconds)
{
    m_calls << QStringLiteral("setCurrentTime %1").arg(seconds);
    if (m_media.loaded)
        seekTo(PlayerRules::wholeSecondSeekTarget(seconds));
}

void ScriptedPlayerView::setCurrentTimeExactly(double seconds)
{
    m_calls << QStringLiteral("setCurrentTimeExactly %1").arg(seconds);
    if (m_media.loaded)
        seekTo(seconds);
}

void ScriptedPlayerView::seekTo(double seconds)
{
    // Measured from the position the player will have when it gets to the
    // request, as libmpv does: a queued seek answers later.
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
    const double end = m_media.ready ? m_media.duration : 0.0;
    m_media.time = std::clamp(seconds, 0.0, end);
    reportTime();
}

void ScriptedPlayerView::reportTime()
{
    if (m_delegate && m_media.loaded)
        m_delegate->tavroAVViewDidUpdateTime(this, m_media.time);
}

void ScriptedPlayerView::setVolume(float volume)
{
    m_calls << QStringLiteral("setVolume %1").arg(double(volume));
    m_media.volume = std::clamp(volume, 0.0f, 1.0f);
}

void ScriptedPlayerView::setUpsideDown(bool upsideDown)
{
    m_calls << QStringLiteral("setUpsideDown %1").arg(upsideDown);
    m_upsideDown = upsideDown;
}

void ScriptedPlayerView::setVideoTrack(int track)
{
    m_calls << QStringLiteral("setVideoTrack %1").arg(track);
    m_media.videoTrack = std::max(1, track);
}

QImage ScriptedPlayerView::snapshot()
{
    m_calls << QStringLiteral("snapshot");
    return m_media.loaded ? m_snapshot : QImage();
}

void ScriptedPlayerView::swapPlayerItemWith(PlayerView& other)
{
    m_calls << QStringLiteral("swapPlayerItemWith");
    auto* scripted = dynamic_cast<ScriptedPlayerView*>(&other);
    if (!scripted || scripted == this)
        return;
    // The media move; statuses, the views' rate fields and the mirror stay.
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

void ScriptedPlayerView::failLoading()
{
    if (m_media.loaded && m_status == TavroAVViewStatus::Loading)
        setStatus(TavroAVViewStatus::Error);
}

void ScriptedPlayerView::finishLoadingWithoutVideo(double durationSeconds)
{
    if (!m_media.loaded || m_status != TavroAVViewStatus::Loading)
        return;
    setStatus(TavroAVViewStatus::Error);
    m_media.ready = true;
    m_media.duration = std::max(0.0, durationSeconds);
}

void ScriptedPlayerView::advance(double wallSeconds)
{
    if (!m_media.ready || m_media.playerRate == 0.0f || wallSeconds <= 0.0)
        return;
    const double target = m_media.time + wallSeconds * double(m_media.playerRate);
    const double step = m_media.playerRate > 0.0f ? 0.1 : -0.1;
    while (m_media.playerRate != 0.0f) {
        const double next = m_media.time + step;
        const bool pastTarget = step > 0 ? next > target + 1e-9 : next < target - 1e-9;
        if (pastTarget)
            break;
        if (next >= m_media.duration) {
            m_media.time = m_media.duration;
            reportTime();
            setPlayerRate(0.0f);
            if (m_delegate)
                m_delegate->tavroAVViewDidPlayToEndTime(this);
            return;
        }
        if (next <= 0.0) {
            m_media.time = 0.0;
            reportTime();
            setPlayerRate(0.0f);
            return;
        }
        m_media.time = next;
        reportTime();
    }
}

void ScriptedPlayerView::releaseRightButton()
{
    if (m_delegate)
        m_delegate->tavroAVViewDidRequestFullscreen(this);
}
