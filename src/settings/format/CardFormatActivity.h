#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

// Which card formats are under way in this process, so that quitting never
// cuts one short. A format that has begun runs to its end, the card mounted
// again; once the viewer has begun to quit, no format begins any more (one
// that was asked for but has not begun never starts).
//
// Formats begin and end on their worker threads; the viewer asks and waits on
// its main thread.
class CardFormatActivity {
public:
    // The process's own: the viewer's formats and its quit meet here.
    static CardFormatActivity& shared();

    // The worker's side: begin() is false once starts are closed (the format
    // must then change nothing); every begin() that is true is followed by
    // end() with whether the card was left unmounted.
    bool begin();
    void end(bool leftUnmounted);

    // The quit's side. closeStarts() lets no further format begin and says
    // whether one is running now; reopenStarts() lets them begin again.
    bool closeStarts();
    void reopenStarts();
    bool isRunning() const;
    // Blocks until no format runs (the last moment before the process ends).
    void waitUntilIdle();
    // Whether a format that ended since starts were closed left its card
    // unmounted.
    bool leftCardUnmounted() const;

    // Told on the worker's thread each time the last running format ends,
    // with the activity locked: it may only hand the news on (post an event).
    void setIdleListener(std::function<void()> listener);

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_idle;
    int m_running = 0;
    bool m_closed = false;
    bool m_leftUnmounted = false;
    std::function<void()> m_listener;
};
