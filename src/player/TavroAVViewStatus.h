#pragma once

#include <QString>

// Loading state of a player view. The view itself only ever assigns Init,
// Loading, Prepared, Unknown and Error; Playing, Paused and Ended exist for
// the text form only (the owner follows play/pause itself).
enum class TavroAVViewStatus : int {
    Init = 0,
    Loading = 1,
    Prepared = 2,
    Playing = 3,
    Paused = 4,
    Ended = 5,
    Unknown = 6,
    Error = 7,
};

// The status's text form, e.g. "TavroAVViewStatusPrepared"; any value outside
// 0..7 reads as "TavroAVViewStatusUnknown".
QString TavroAVViewStatusName(int status);
QString TavroAVViewStatusName(TavroAVViewStatus status);
