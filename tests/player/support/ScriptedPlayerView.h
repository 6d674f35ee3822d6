#pragma once

#include "player/PlayerRules.h"
#include "player/PlayerView.h"
#include "player/TavroAVViewDelegate.h"

#include <QObject>
#include <QStringList>

#include <algorithm>

// A player view without media for tests of the playback session. It keeps the
// real view's rules (statuses queued, rate steps, whole-second seeks, restart
// at the end, media moving on a swap; seeks and steps land later, from the
// event loop, as libmpv's do), and the test scripts what the media does.
class ScriptedPlayerView : public PlayerView {
public:
    // --- PlayerView
    TavroAVViewDelegate* delegate() const override { return m_delegate; }
    void setDelegate(TavroAVViewDelegate* delegate) override { m_delegate = delegate; }
    bool isEnabled() const override { return m_enabled; }
    void setEnabled(bool enabled) override { m_enabled = enabled; }
    QString fileName() const override { return m_media.fileName; }
    void setFileName(const QString& path) override;
    void reset() override { close(); }
    void close() override;
    TavroAVViewStatus status() const override { return m_status; }
    bool hasMovie() const override { return m_status != TavroAVViewStatus::Init; }
    void play() override;
    void pause() override { changeRate(0.0f); }
    void playPauseToggle() override;
    void fastForward() override
    {
        changeRate(PlayerRules::nextFastForwardRate(m_media.playerRate));
    }
    void rewind() override { changeRate(PlayerRules::nextRewindRate(m_media.playerRate)); }
    void stepForward() override { step(0.1); }
    void stepBackward() override { step(-0.1); }
    float rate() const override { return m_rate; }
    void setCurrentTime(double seconds) override;
    void setCurrentTimeExactly(double seconds) override;
    double currentTime() const override { return m_media.loaded ? m_media.time : 0.0; }
    double duration() const override { return m_media.ready ? m_media.duration : 0.0; }
    float volume() const override { return m_media.volume; }
    void setVolume(float volume) override { m_media.volume = std::clamp(volume, 0.0f, 1.0f); }
    bool upsideDown() const override { return m_upsideDown; }
    void setUpsideDown(bool upsideDown) override { m_upsideDown = upsideDown; }
    int videoTrack() const override { return m_media.videoTrack; }
    void setVideoTrack(int track) override { m_media.videoTrack = std::max(1, track); }
    QImage snapshot() override { return m_media.loaded ? m_snapshot : QImage(); }
    void swapPlayerItemWith(PlayerView& other) override;

    // --- script
    // Above 0, every load finishes by itself as Prepared with that duration.
    void setAutoPrepareDuration(double seconds) { m_autoPrepareDuration = seconds; }
    // The loading file becomes ready (Prepared).
    void finishLoading(double durationSeconds);
    // Plays `wallSeconds` at the current rate, reporting each tenth and the end.
    void advance(double wallSeconds);
    // Moves the media time at once, without a report (between two reports).
    void setMediaTime(double seconds) { m_media.time = seconds; }
    void releaseRightButton() { m_delegate->tavroAVViewDidRequestFullscreen(this); }
    void setSnapshotImage(const QImage& image) { m_snapshot = image; }

    // Moves and loads asked for, e.g. "setFileName /a.mp4", "setCurrentTime 13", "stepForward".
    const QStringList& calls() const { return m_calls; }
    void clearCalls() { m_calls.clear(); }
    // Number of loads started (a swap must not add any).
    int loadCount() const { return m_loadCount; }

private:
    // What travels with the media on a swap.
    struct Media {
        QString fileName;
        bool loaded = false;
        bool ready = false;
        double time = 0.0;
        double duration = 0.0;
        float volume = 1.0f;
        float playerRate = 0.0f;
        int videoTrack = 1;
        quint64 serial = 0; // tells apart the media a queued seek was asked for
    };

    void setStatus(TavroAVViewStatus status);
    void setPlayerRate(float rate);
    void changeRate(float rate);
    void step(double seconds);
    // Lands on the time later, from the event loop, and reports it.
    void seekTo(double seconds);
    void landAt(double seconds);
    void reportTime();

    QObject m_queue;
    TavroAVViewDelegate* m_delegate = nullptr;
    bool m_enabled = true;
    bool m_upsideDown = false;
    TavroAVViewStatus m_status = TavroAVViewStatus::Init;
    float m_rate = 0.0f;
    Media m_media;
    double m_autoPrepareDuration = 0.0;
    QImage m_snapshot;
    QStringList m_calls;
    int m_loadCount = 0;
    quint64 m_nextSerial = 0;
};
