#include "settings/format/CardFormatActivity.h"

CardFormatActivity& CardFormatActivity::shared()
{
    static CardFormatActivity activity;
    return activity;
}

bool CardFormatActivity::begin()
{
    std::lock_guard lock(m_mutex);
    if (m_closed)
        return false;
    ++m_running;
    return true;
}

void CardFormatActivity::end(bool leftUnmounted)
{
    std::lock_guard lock(m_mutex);
    if (m_running > 0)
        --m_running;
    if (m_closed && leftUnmounted)
        m_leftUnmounted = true;
    if (m_running > 0)
        return;
    m_idle.notify_all();
    // Under the lock: a listener being removed is never called afterwards.
    if (m_listener)
        m_listener();
}

bool CardFormatActivity::closeStarts()
{
    std::lock_guard lock(m_mutex);
    m_closed = true;
    return m_running > 0;
}

void CardFormatActivity::reopenStarts()
{
    std::lock_guard lock(m_mutex);
    m_closed = false;
    m_leftUnmounted = false;
}

bool CardFormatActivity::isRunning() const
{
    std::lock_guard lock(m_mutex);
    return m_running > 0;
}

void CardFormatActivity::waitUntilIdle()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_running == 0; });
}

bool CardFormatActivity::leftCardUnmounted() const
{
    std::lock_guard lock(m_mutex);
    return m_leftUnmounted;
}

void CardFormatActivity::setIdleListener(std::function<void()> listener)
{
    std::lock_guard lock(m_mutex);
    m_listener = std::move(listener);
}
