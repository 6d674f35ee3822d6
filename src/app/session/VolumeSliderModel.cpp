#include "app/session/VolumeSliderModel.h"

float VolumeSliderModel::clamp(float volume)
{
    if (!(volume > 0.0f))
        return 0.0f; // also NaN
    return volume > 1.0f ? 1.0f : volume;
}

void VolumeSliderModel::setVolume(float volume)
{
    m_volume = clamp(volume);
    report();
}

void VolumeSliderModel::setVolumeQuietly(float volume)
{
    m_volume = clamp(volume);
}

void VolumeSliderModel::setMuted(bool muted)
{
    if (muted == m_muted)
        return;
    m_muted = muted;
    if (muted) {
        m_backup = m_volume;
        m_volume = 0.0f;
    } else {
        m_volume = m_backup;
    }
    report();
}

void VolumeSliderModel::report()
{
    if (m_changed)
        m_changed(m_volume);
}
