#pragma once

// Rules every player view shares, independent of the media engine.
namespace PlayerRules {

// Fast forward: from below 2 the rate becomes 2, otherwise it grows by 2
// (2, 4, 6, ... without an upper bound). A NaN rate counts as below 2.
float nextFastForwardRate(float rate);
// Rewind: from above -2 the rate becomes -2, otherwise it drops by 2.
float nextRewindRate(float rate);

// Seeks land on whole seconds: the target is rounded to the nearest second,
// halves away from zero (12.7 -> 13, 12.5 -> 13, 12.4 -> 12).
double wholeSecondSeekTarget(double seconds);

// The tenth-of-a-second slot a media time falls in; the time observer
// reports once per slot.
long long timeObserverSlot(double seconds);

// The still image is taken at the whole seconds of the duration counted in
// microseconds (a 60.5 s clip gives 60 us): effectively the first frame.
double snapshotTime(double durationSeconds);

} // namespace PlayerRules
