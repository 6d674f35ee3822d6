#pragma once

#include <QString>

#include <array>
#include <cstdint>

// The layout of the camera's binary settings record, generated from the one
// field table in SetupFields.def. Offsets, counts and sizes all follow from
// that table; nothing here is written out by hand a second time.

// Index of every field in file order: SetupField::tz_key, ...
enum class SetupField : int {
#define TAVRO_SETUP_FIELD(name, Name, width, kind) name,
#include "config/SetupFields.def"
#undef TAVRO_SETUP_FIELD
};

enum class SetupFieldKind : std::uint8_t { Int32, UInt16, Int8, Text };

struct SetupFieldInfo {
    const char* name;
    int width;
    SetupFieldKind kind;
};

namespace SetupRecordLayout {

inline constexpr std::array kFields {
#define TAVRO_SETUP_FIELD(name, Name, width, kind)                                                 \
    SetupFieldInfo { #name, width, SetupFieldKind::kind },
#include "config/SetupFields.def"
#undef TAVRO_SETUP_FIELD
};

inline constexpr int kFieldCount = int(kFields.size());

// The camera's width list carries one more entry of width 1 after the last
// field; no field uses it and no model's count reaches it.
inline constexpr int kTrailingWidth = 1;

constexpr int index(SetupField field)
{
    return int(field);
}

constexpr const SetupFieldInfo& info(SetupField field)
{
    return kFields[std::size_t(field)];
}

// Byte offset of the field at index i: the widths of every field before it.
// An index outside the table gives 0, like the first field.
constexpr int offsetOfIndex(int i)
{
    if (i <= 0 || i >= kFieldCount)
        return 0;
    int offset = 0;
    for (int k = 0; k < i; ++k)
        offset += kFields[std::size_t(k)].width;
    return offset;
}

// Length of a record of the first `count` fields (0 when count < 1; counts
// beyond the table are capped at the table).
constexpr int recordSize(int count)
{
    int size = 0;
    for (int k = 0; k < count && k < kFieldCount; ++k)
        size += kFields[std::size_t(k)].width;
    return size;
}

// The field whose name is `name` (exact, case-sensitive), or -1.
int indexOfName(const QString& name);

static_assert(kFieldCount == 116);
static_assert(recordSize(60) == 432 && recordSize(68) == 464 && recordSize(78) == 504);
static_assert(recordSize(79) == 508 && recordSize(81) == 516 && recordSize(92) == 560);
static_assert(recordSize(93) == 564 && recordSize(96) == 576 && recordSize(99) == 579);
static_assert(recordSize(102) == 582 && recordSize(113) == 593 && recordSize(116) == 596);

} // namespace SetupRecordLayout
