#pragma once

#include <functional>

// The volume slider as the playback session sees it: a volume between 0.0 and
// 1.0 (values outside are clamped to the nearer bound), a muted flag and the
// volume to restore on unmuting. Muting keeps the volume as backup and sets 0;
// unmuting restores the backup. Every change made by the user or by muting is
// reported through the change callback with the new volume.
class VolumeSliderModel {
public:
    using ChangeHandler = std::function<void(float volume)>;

    void setChangeHandler(ChangeHandler handler) { m_changed = std::move(handler); }

    float volume() const { return m_volume; }
    bool isMuted() const { return m_muted; }
    float backupVolume() const { return m_backup; }

    // The user moved the slider (reported).
    void setVolume(float volume);
    // Moves the slider without reporting (volume up/down keys report themselves).
    void setVolumeQuietly(float volume);
    // Mutes or unmutes (reported when the flag changes).
    void setMuted(bool muted);

    static float clamp(float volume);

private:
    void report();

    float m_volume = 1.0f;
    float m_backup = 1.0f;
    bool m_muted = false;
    ChangeHandler m_changed;
};
