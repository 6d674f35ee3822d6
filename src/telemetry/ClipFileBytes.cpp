#include "telemetry/ClipFileBytes.h"

#include "telemetry/TelemetryLog.h"

#include <QFile>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <limits>
#include <mutex>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// What is read from a file that cannot be mapped (a pipe, a device): more
// than any clip's telemetry needs, and a bound for endless sources.
constexpr qint64 kMaxReadBytes = qint64(64) << 20;
constexpr qint64 kReadBlock = 64 << 10;

// The mappings being read, for the SIGBUS handler. Fixed slots with atomic
// fields: the handler neither locks nor allocates.
struct GuardSlot {
    std::atomic<uintptr_t> begin { 0 };
    std::atomic<uintptr_t> end { 0 };
    std::atomic<bool> cut { false };
};
constexpr int kGuardSlots = 64;
GuardSlot g_guards[kGuardSlots];
struct sigaction g_previousBusAction;
uintptr_t g_pageSize = 4096;

void onBusError(int signal, siginfo_t* info, void* context)
{
    const int savedErrno = errno;
    const auto address = reinterpret_cast<uintptr_t>(info ? info->si_addr : nullptr);
    for (GuardSlot& slot : g_guards) {
        const uintptr_t begin = slot.begin.load(std::memory_order_acquire);
        const uintptr_t end = slot.end.load(std::memory_order_acquire);
        if (begin == 0 || address < begin || address >= end)
            continue;
        // The file shrank under the mapping: from the faulting page to the
        // end, zeros take the place of the vanished bytes, and the read goes on.
        const uintptr_t from = address & ~(g_pageSize - 1);
        void* zeros = mmap(reinterpret_cast<void*>(from), end - from, PROT_READ,
            MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
        if (zeros != MAP_FAILED) {
            slot.cut.store(true, std::memory_order_release);
            errno = savedErrno;
            return;
        }
        break;
    }
    // Not one of ours (or beyond repair): whatever was there before decides.
    if (g_previousBusAction.sa_flags & SA_SIGINFO) {
        if (g_previousBusAction.sa_sigaction) {
            g_previousBusAction.sa_sigaction(signal, info, context);
            errno = savedErrno;
            return;
        }
    } else if (g_previousBusAction.sa_handler != SIG_DFL
        && g_previousBusAction.sa_handler != SIG_IGN) {
        g_previousBusAction.sa_handler(signal);
        errno = savedErrno;
        return;
    }
    // Default action: the fault repeats on return and ends the process.
    std::signal(SIGBUS, SIG_DFL);
    errno = savedErrno;
}

void installBusHandler()
{
    static std::once_flag once;
    std::call_once(once, [] {
        g_pageSize = uintptr_t(sysconf(_SC_PAGESIZE));
        struct sigaction action = {};
        action.sa_sigaction = &onBusError;
        action.sa_flags = SA_SIGINFO;
        sigemptyset(&action.sa_mask);
        sigaction(SIGBUS, &action, &g_previousBusAction);
    });
}

int claimGuard(void* mapped, qsizetype size)
{
    installBusHandler();
    for (int i = 0; i < kGuardSlots; ++i) {
        uintptr_t expected = 0;
        // The begin marks the slot taken; the end goes in before it counts.
        if (g_guards[i].end.compare_exchange_strong(
                expected, reinterpret_cast<uintptr_t>(mapped) + uintptr_t(size))) {
            g_guards[i].cut.store(false);
            g_guards[i].begin.store(reinterpret_cast<uintptr_t>(mapped), std::memory_order_release);
            return i;
        }
    }
    return -1;
}

void releaseGuard(int index)
{
    g_guards[index].begin.store(0, std::memory_order_release);
    g_guards[index].end.store(0, std::memory_order_release);
}

} // namespace

ClipFileBytes::ClipFileBytes(const QString& path, Access access)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.isEmpty())
        return;
    // Non-blocking, so that a pipe without a writer does not hold us here.
    const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return;
    struct stat info = {};
    if (fstat(fd, &info) != 0 || S_ISDIR(info.st_mode)) {
        ::close(fd);
        return;
    }
    m_open = true;
    const qint64 size = info.st_size;
    if (S_ISREG(info.st_mode) && size > 0 && size < qint64(std::numeric_limits<qsizetype>::max())) {
        void* mapped = mmap(nullptr, size_t(size), PROT_READ, MAP_SHARED, fd, 0);
        if (mapped != MAP_FAILED) {
            m_guard = claimGuard(mapped, qsizetype(size));
            if (m_guard < 0) {
                // Too many files open at once to guard another: read this one.
                munmap(mapped, size_t(size));
            } else {
                m_mapped = mapped;
                m_mappedSize = qsizetype(size);
                // Most parsers walk the clip front to back (let the kernel read
                // ahead); the MP4 reader jumps between its tables and samples.
                madvise(m_mapped, size_t(size),
                    access == Access::Sequential ? MADV_SEQUENTIAL : MADV_RANDOM);
                m_view = QByteArrayView(static_cast<const char*>(m_mapped), m_mappedSize);
                ::close(fd);
                return;
            }
        }
    }
    readAll(fd);
    ::close(fd);
}

void ClipFileBytes::readAll(int fd)
{
    // Blocking from here on: a pipe is read until its writer is done.
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    while (m_read.size() < kMaxReadBytes) {
        const qsizetype before = m_read.size();
        const qsizetype want = qsizetype(std::min(kReadBlock, kMaxReadBytes - before));
        m_read.resize(before + want);
        const ssize_t got = ::read(fd, m_read.data() + before, size_t(want));
        if (got < 0 && errno == EINTR) {
            m_read.resize(before);
            continue;
        }
        m_read.resize(before + std::max<qsizetype>(0, got));
        if (got <= 0)
            break;
    }
    m_view = QByteArrayView(m_read);
}

bool ClipFileBytes::isIntact() const
{
    return m_guard < 0 || !g_guards[m_guard].cut.load(std::memory_order_acquire);
}

ClipFileBytes::~ClipFileBytes()
{
    if (!m_mapped)
        return;
    if (!isIntact())
        qCDebug(lcTelemetry) << "clip file shrank while it was read";
    munmap(m_mapped, size_t(m_mappedSize));
    releaseGuard(m_guard);
}
