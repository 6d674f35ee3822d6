#include "telemetry/ClipFileBytes.h"

#include <sys/mman.h>

ClipFileBytes::ClipFileBytes(const QString& path)
    : m_file(path)
{
    if (!m_file.open(QIODevice::ReadOnly))
        return;
    m_open = true;
    const qint64 size = m_file.size();
    if (size > 0)
        m_mapped = m_file.map(0, size);
    if (m_mapped) {
        // Every parser walks the clip front to back; let the kernel read ahead.
        madvise(m_mapped, static_cast<size_t>(size), MADV_SEQUENTIAL);
        m_view = QByteArrayView(m_mapped, size);
        return;
    }
    m_read = m_file.readAll();
    m_view = QByteArrayView(m_read);
}

ClipFileBytes::~ClipFileBytes()
{
    if (m_mapped)
        m_file.unmap(m_mapped);
}
