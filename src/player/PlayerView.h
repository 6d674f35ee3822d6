#pragma once

#include "player/TavroAVViewStatus.h"

#include <QImage>
#include <QString>

#include <functional>

class TavroAVViewDelegate;

// What the playback session needs from a player: the operations, the status
// and the delegate of one view that plays one file. TavroAVView implements it
// on libmpv; tests drive the session with a scripted implementation.
class PlayerView {
public:
    virtual ~PlayerView() = default;

    virtual TavroAVViewDelegate* delegate() const = 0;
    virtual void setDelegate(TavroAVViewDelegate* delegate) = 0;

    // Kept for the owner; the view does not consult it.
    virtual bool isEnabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;

    virtual QString fileName() const = 0;
    // Closes what is loaded, sets Init and, for a non-empty path, starts
    // loading it (Loading, then Prepared or Error).
    virtual void setFileName(const QString& path) = 0;
    virtual void reset() = 0;
    virtual void close() = 0;

    virtual TavroAVViewStatus status() const = 0;
    // False in Init and Error, true otherwise (also while loading).
    virtual bool hasMovie() const = 0;

    virtual void play() = 0;
    virtual void pause() = 0;
    virtual void playPauseToggle() = 0;
    virtual void fastForward() = 0;
    virtual void rewind() = 0;
    virtual void stepForward() = 0;
    virtual void stepBackward() = 0;
    // The player's last reported rate (0 while paused).
    virtual float rate() const = 0;

    // Seeks exactly to the given time rounded to the whole second.
    virtual void setCurrentTime(double seconds) = 0;
    // Seeks exactly to the given time, not rounded (a trip's marks and clip
    // starts lie between seconds).
    virtual void setCurrentTimeExactly(double seconds) = 0;
    virtual double currentTime() const = 0;
    // 0 until the media is ready to play.
    virtual double duration() const = 0;

    // 0.0 to 1.0.
    virtual float volume() const = 0;
    virtual void setVolume(float volume) = 0;

    // Mirrors the picture top to bottom (not a rotation).
    virtual bool upsideDown() const = 0;
    virtual void setUpsideDown(bool upsideDown) = 0;

    // Which video stream of the file is shown: 1 the first, 2 the second
    // (the rear camera of a dual-stream AVI).
    virtual int videoTrack() const = 0;
    virtual void setVideoTrack(int track) = 0;

    // One frame of the loaded file (see TavroAVView::snapshot); null without media.
    virtual QImage snapshot() = 0;
    // The same still as work that may run on any thread (decoding the frame
    // takes a while): what to grab is settled now, the grabbing when called.
    virtual std::function<QImage()> snapshotJob()
    {
        return [image = snapshot()] { return image; };
    }

    // Exchanges the loaded media of this view and other, which must be of the
    // same kind: nothing reloads, nothing pauses; statuses, rates and the
    // mirror setting stay with the views.
    virtual void swapPlayerItemWith(PlayerView& other) = 0;
};
