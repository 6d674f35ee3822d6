#include "settings/format/FormatQuitGuard.h"

#include "settings/format/CardFormatActivity.h"
#include "settings/format/FormatLog.h"

#include <QCoreApplication>
#include <QEvent>

#include <cstdlib>

namespace {

// The process ends from outside the event loop (the display server went away
// at the end of a session): a format under way still mounts its card again.
void finishFormatsAtExit()
{
    CardFormatActivity::shared().closeStarts();
    CardFormatActivity::shared().waitUntilIdle();
}

} // namespace

FormatQuitGuard::FormatQuitGuard(QObject* parent)
    : FormatQuitGuard(CardFormatActivity::shared(), parent)
{
    static const bool registered = std::atexit(finishFormatsAtExit) == 0;
    Q_UNUSED(registered);
}

FormatQuitGuard::FormatQuitGuard(CardFormatActivity& activity, QObject* parent)
    : QObject(parent)
    , m_activity(activity)
{
    // The activity calls on the format's worker thread; the answer is taken
    // up here, on the application's thread.
    m_activity.setIdleListener([this] {
        QMetaObject::invokeMethod(this, &FormatQuitGuard::formatsEnded, Qt::QueuedConnection);
    });
    QCoreApplication::instance()->installEventFilter(this);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
        &FormatQuitGuard::lastChanceToFinish);
}

FormatQuitGuard::~FormatQuitGuard()
{
    m_activity.setIdleListener({});
}

bool FormatQuitGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance())
        return false;
    if (!m_holding) {
        // No format runs: the quit goes through (a format asked for just
        // now never begins, see lastChanceToFinish).
        if (!m_activity.isRunning())
            return false;
        // Nothing new may begin while the running one finishes.
        m_activity.closeStarts();
        m_holding = true;
        qCDebug(lcFormat) << "quit held until the card is mounted again";
        emit quitHeld();
    }
    event->ignore();
    return true;
}

void FormatQuitGuard::formatsEnded()
{
    if (!m_holding || m_activity.isRunning())
        return;
    m_holding = false;
    if (m_activity.leftCardUnmounted()) {
        // The result sheet says the card is no longer mounted; the viewer
        // stays to show it, and the next quit goes through.
        qCDebug(lcFormat) << "format left the card unmounted; quit dropped";
        m_activity.reopenStarts();
        return;
    }
    qCDebug(lcFormat) << "card mounted again; quitting";
    QCoreApplication::quit();
}

// The event loop has ended. A format whose worker has not begun never will;
// one that has begun mounts its card again before the application goes on
// to tear its windows down.
void FormatQuitGuard::lastChanceToFinish()
{
    m_activity.closeStarts();
    m_activity.waitUntilIdle();
}
