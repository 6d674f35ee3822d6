#include "app/window/QuitSignalHandler.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int g_signalFds[2] = { -1, -1 };

void handleSignal(int)
{
    // Nothing else is safe in a signal handler: one non-blocking write (a
    // full socket means a quit is already on its way), errno left as it was.
    const int savedErrno = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(g_signalFds[0], &byte, 1);
    errno = savedErrno;
}

} // namespace

QuitSignalHandler::QuitSignalHandler(QObject* parent)
    : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, g_signalFds) != 0)
        return;
    m_notifier = new QSocketNotifier(g_signalFds[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &QuitSignalHandler::onSignal);
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int signal : { SIGINT, SIGTERM, SIGHUP })
        ::sigaction(signal, &action, nullptr);
}

QuitSignalHandler::~QuitSignalHandler()
{
    for (int signal : { SIGINT, SIGTERM, SIGHUP })
        ::signal(signal, SIG_DFL);
    for (int& fd : g_signalFds) {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
}

void QuitSignalHandler::onSignal()
{
    char byte = 0;
    [[maybe_unused]] const ssize_t read = ::read(g_signalFds[1], &byte, 1);
    QCoreApplication::quit();
}
