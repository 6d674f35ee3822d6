#include "telemetry/ClipFileBytes.h"

#include <QFileInfo>

#include <sys/mman.h>

namespace {
// What is read from a file that cannot be mapped (a pipe, a device): more
// than any clip's telemetry needs, and a bound for endless sources.
constexpr qint64 kMaxReadBytes = qint64(64) << 20;
constexpr qint64 kReadBlock = 64 << 10;
} // namespace

ClipFileBytes::ClipFileBytes(const QString& path, Access access)
    : m_file(path)
{
    if (QFileInfo(path).isDir() || !m_file.open(QIODevice::ReadOnly))
        return;
    m_open = true;
    const qint64 size = m_file.size();
    if (size > 0)
        m_mapped = m_file.map(0, size);
    if (m_mapped) {
        madvise(m_mapped, static_cast<size_t>(size),
            access == Access::Sequential ? MADV_SEQUENTIAL : MADV_RANDOM);
        m_view = QByteArrayView(m_mapped, size);
        return;
    }
    while (m_read.size() < kMaxReadBytes) {
        const QByteArray block = m_file.read(std::min(kReadBlock, kMaxReadBytes - m_read.size()));
        if (block.isEmpty())
            break;
        m_read += block;
    }
    m_view = QByteArrayView(m_read);
}

ClipFileBytes::~ClipFileBytes()
{
    if (m_mapped)
        m_file.unmap(m_mapped);
}
