#pragma once

#include "player/TavroAVViewStatus.h"

class PlayerView;

// Receiver of a player view's callbacks, all on the GUI thread. Every message
// carries the sending view first. The view keeps a plain pointer: an owner
// that goes away before its views clears it with setDelegate(nullptr).
class TavroAVViewDelegate {
public:
    virtual ~TavroAVViewDelegate() = default;

    // After every status change, delivered from the event loop (never from
    // inside the call that changed the status), in order, with the value set.
    virtual void tavroAVViewDidUpdateStatus(PlayerView* view, TavroAVViewStatus status) = 0;
    // The player's rate changed (0 paused, 1 normal play, 2/4/... fast
    // forward, -2/-4/... rewind).
    virtual void tavroAVViewDidUpdateRate(PlayerView* view, float rate) = 0;
    // Every tenth of a second of media time while a file is loaded, and after
    // every jump of the position (seek, frame step) once the player has the
    // new position: a seek or a step is answered later, from the event loop,
    // never inside the call, and until then currentTime() may still read the
    // old position. The first report after a seek or step carries the
    // position it landed on.
    virtual void tavroAVViewDidUpdateTime(PlayerView* view, double seconds) = 0;
    // The media played to its end.
    virtual void tavroAVViewDidPlayToEndTime(PlayerView* view) = 0;
    // The user released the right mouse button over the view.
    virtual void tavroAVViewDidRequestFullscreen(PlayerView* view) = 0;
};
