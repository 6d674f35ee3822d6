#pragma once

#include "config/SetupRecordLayout.h"

#include <QString>

#include <array>

// In-memory values of every record field: each integer field as a signed
// 32-bit number whatever its width on the card, each text field as a string
// (a null string is an absent text and is written as zero bytes).
struct SetupValues {
    std::array<qint32, SetupRecordLayout::kFieldCount> ints {};
    std::array<QString, SetupRecordLayout::kFieldCount> texts {};
};
