// Where the player goes: seeks, frame steps, backwards play, and when the
// position they lead to is reported.
#include "player/MpvPlayer.h"

#include "player/MpvProperties.h"
#include "player/PlayerRules.h"

#include <mpv/client.h>

#include <QByteArray>

#include <algorithm>
#include <utility>

void MpvPlayer::reverseTick()
{
    if (m_seekPending)
        return;
    if (m_timePos <= 0.0) {
        setRate(0.0f);
        return;
    }
    const QByteArray step = QByteArray::number(-0.001 * kReverseStepMs * double(-m_reverseRate));
    command({ MpvName::kSeek, step.constData(), MpvName::kSeekRelativeExact });
    m_seekPending = true;
    m_reportNextTime = true;
    awaitPosition(PositionWait::Restart);
}

void MpvPlayer::awaitPosition(PositionWait wait)
{
    // A step forward sent while the landing of a seek is still being asked
    // lands after it: its position is awaited once the landing is reported.
    if (wait == PositionWait::Change && m_positionWait == PositionWait::Restart) {
        m_changeAfterLanding = true;
        return;
    }
    m_changeAfterLanding = false;
    m_positionWait = wait;
}

void MpvPlayer::reportLandedPosition(double seconds)
{
    if (m_positionWait == PositionWait::None)
        return;
    m_positionWait = std::exchange(m_changeAfterLanding, false) ? PositionWait::Change
                                                                : PositionWait::None;
    m_timePos = seconds;
    m_lastTimeSlot = PlayerRules::timeObserverSlot(seconds);
    m_reportNextTime = false;
    if (!m_fileLoaded)
        return;
    ++m_dispatching;
    emit timeChanged(seconds);
    --m_dispatching;
}

void MpvPlayer::seekExact(double seconds)
{
    if (isMoveUnderWay())
        hold(Move::Seek, seconds);
    else
        sendSeek(seconds);
}

void MpvPlayer::stepForward()
{
    if (isMoveUnderWay())
        hold(Move::StepForward);
    else
        sendStepForward();
}

void MpvPlayer::stepBackward()
{
    if (isMoveUnderWay())
        hold(Move::StepBackward);
    else
        sendStepBackward();
}

void MpvPlayer::hold(Move move, double seconds)
{
    const auto waits = [this](Move step) {
        return std::any_of(m_heldMoves.cbegin(), m_heldMoves.cend(),
            [step](const HeldMove& held) { return held.move == step; });
    };
    // A seek makes what waited before it pointless. A step asked while a step
    // the same way is under way and another already waits adds nothing: key
    // repeats come faster than mpv steps.
    if (move == Move::Seek)
        m_heldMoves.clear();
    else if (m_stepUnderWay == move && waits(move))
        return;
    m_heldMoves.append({ move, seconds });
    if (!m_seekPending)
        return; // behind a step forward, which reports its own landing
    m_reportNextTime = true;
    awaitPosition(PositionWait::Restart);
}

void MpvPlayer::keepOneWaiting(Move step)
{
    bool kept = false;
    m_heldMoves.removeIf([step, &kept](const HeldMove& held) {
        if (held.move != step)
            return false;
        return std::exchange(kept, true);
    });
}

void MpvPlayer::playbackRestarted()
{
    if (m_stepUnderWay == Move::StepBackward)
        m_stepUnderWay.reset();
    sendHeldMoves();
}

void MpvPlayer::forwardStepLanded()
{
    // Also reached when mpv never reports the step (at the last frame).
    if (m_retiring || m_stepUnderWay != Move::StepForward)
        return;
    m_stepUnderWay.reset();
    m_stepLandingTimer.stop();
    sendHeldMoves();
}

void MpvPlayer::sendHeldMoves()
{
    while (!m_heldMoves.isEmpty() && !isMoveUnderWay()) {
        const HeldMove held = m_heldMoves.takeFirst();
        switch (held.move) {
        case Move::Seek:
            sendSeek(held.seconds);
            break;
        case Move::StepForward:
            // Lands at the next position mpv reports, not at this restart.
            m_positionWait = PositionWait::None;
            sendStepForward();
            keepOneWaiting(Move::StepForward);
            break;
        case Move::StepBackward:
            sendStepBackward();
            keepOneWaiting(Move::StepBackward);
            break;
        }
    }
}

void MpvPlayer::sendSeek(double seconds)
{
    const QByteArray target = QByteArray::number(seconds, 'f', 6);
    command({ MpvName::kSeek, target.constData(), MpvName::kSeekAbsoluteExact });
    m_seekPending = true;
    m_stepUnderWay.reset();
    m_stepLandingTimer.stop();
    m_reportNextTime = true;
    awaitPosition(PositionWait::Restart);
}

void MpvPlayer::sendStepForward()
{
    command({ MpvName::kFrameStep });
    m_stepUnderWay = Move::StepForward;
    m_stepLandingTimer.start();
    m_reportNextTime = true;
    awaitPosition(PositionWait::Change);
}

void MpvPlayer::sendStepBackward()
{
    // mpv steps back by seeking: playback restarts on the frame before.
    command({ MpvName::kFrameBackStep });
    m_seekPending = true;
    m_stepUnderWay = Move::StepBackward;
    m_stepLandingTimer.stop();
    m_reportNextTime = true;
    awaitPosition(PositionWait::Restart);
}
