#include "UnreadableFile.h"

#include <QFile>

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// The powers that let root read a file whatever its mode.
constexpr unsigned int kReadOverrides = (1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH);

bool changeEffectiveOverrides(bool keep)
{
    __user_cap_header_struct header { _LINUX_CAPABILITY_VERSION_3, 0 };
    __user_cap_data_struct data[2] {};
    if (syscall(SYS_capget, &header, data) != 0)
        return false;
    if (keep)
        data[0].effective |= data[0].permitted & kReadOverrides;
    else
        data[0].effective &= ~kReadOverrides;
    return syscall(SYS_capset, &header, data) == 0;
}

} // namespace

UnreadableFile::UnreadableFile(const QString& path)
    : m_path(path)
{
    struct stat info { };
    const QByteArray name = QFile::encodeName(path);
    if (::stat(name.constData(), &info) != 0)
        return;
    m_mode = info.st_mode & 07777;
    ::chmod(name.constData(), 0);
    if (geteuid() == 0)
        m_droppedOverride = changeEffectiveOverrides(false);
}

UnreadableFile::~UnreadableFile()
{
    if (m_droppedOverride)
        changeEffectiveOverrides(true);
    // The file may have been replaced meanwhile; whatever is there gets its mode back.
    ::chmod(QFile::encodeName(m_path).constData(), m_mode);
}

bool UnreadableFile::holds() const
{
    QFile file(m_path);
    return file.exists() && !file.open(QIODevice::ReadOnly);
}
