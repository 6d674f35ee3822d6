#pragma once

#include "config/SetupValues.h"

#include <QByteArray>

// Reads and writes the binary settings record. Every read is bounded by the
// buffer: a field cut off by the end of the data reads its missing bytes as
// zero, and fields past the end keep the values they held.
namespace SetupRecordCodec {

// Decodes the first `fieldCount` fields (fewer when the data ends first) the
// way setup.cfg is read: a 1-byte field replaces only the low byte of its
// value, a 2-byte field is unsigned, text stops at the first zero byte and is
// decoded as UTF-8. Returns the number of fields decoded.
int decode(const QByteArray& bytes, int fieldCount, SetupValues& values);

// Decodes default.cfg: bounded by the data's length alone (and the table).
int decodeDefaultCfg(const QByteArray& bytes, SetupValues& values);

// The record of the first `fieldCount` fields, recordSize(fieldCount) bytes.
QByteArray encode(const SetupValues& values, int fieldCount);

} // namespace SetupRecordCodec
