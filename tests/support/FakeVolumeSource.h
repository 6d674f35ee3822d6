#pragma once

#include "config/VolumeSource.h"
#include "config/VolumeUtils.h"

// A volume list with flags chosen by the test (network shares, fixed disks,
// cards), installed as the process-wide source while it lives.
class FakeVolumeSource final : public VolumeSource {
public:
    FakeVolumeSource& add(const QString& rootPath, bool isLocal, bool isRemovable,
        const QString& name = {}, const QString& device = {});
    // The volume mounted at rootPath goes.
    void remove(const QString& rootPath);
    QList<VolumeInfo> volumes() const override { return m_volumes; }

private:
    QList<VolumeInfo> m_volumes;
};

// Installs a volume source for one test and restores the system's after.
class ScopedVolumeSource {
public:
    explicit ScopedVolumeSource(std::shared_ptr<const VolumeSource> source)
    {
        Utils::setVolumeSource(std::move(source));
    }
    ~ScopedVolumeSource() { Utils::setVolumeSource(nullptr); }
};
