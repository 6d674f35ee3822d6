#pragma once

#include <QString>

// Short clips made with ffmpeg once per test run, in a temporary folder.
struct PlayerClips {
    // 15 s, 320x240, 10 frames/s, red top half over a blue bottom half, with sound.
    QString redOverBlue;
    // 4.5 s, 160x120, 10 frames/s, plain green, no sound (a fractional length).
    QString greenFractional;
    // 2 s of sound only.
    QString audioOnly;
    // 3 s AVI with two video streams: 320x240 red first, 160x120 blue second.
    QString dualStreamAvi;
    // A file that is not media at all.
    QString garbage;
    // A path where no file exists.
    QString missing;

    bool ok = false;
    QString error;

    // Makes the clips on first use; `ok` is false (and `error` says why)
    // when ffmpeg is missing or fails.
    static const PlayerClips& shared();
};
