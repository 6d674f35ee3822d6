#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

// SETTING/time.dat: one line asking the camera to set its clock at the next
// start, "yyyy,MM,dd,HH,mm,ss,Z" with the zone as +hhmm, e.g.
// "2016,03,07,14,05,09,+0900". The settings pages write it, and read a
// pending one back to show it.
namespace TimeDatFile {

QByteArray format(const QDateTime& dateTime);

// Writes the file for `dateTime` (in its own zone); false on failure.
bool write(const QString& cardRoot, const QDateTime& dateTime);

// Deletes a pending clock request; true when none is left.
bool remove(const QString& cardRoot);

// The time a request asks for (in the zone it names), or none when the text
// is not valid UTF-8 or not exactly that pattern with a real date and time.
// Trailing blanks and line ends are allowed.
std::optional<QDateTime> parse(const QByteArray& bytes);

// The pending request on the card: none when there is no time.dat, it can't
// be read, or it doesn't parse.
std::optional<QDateTime> read(const QString& cardRoot);

} // namespace TimeDatFile
