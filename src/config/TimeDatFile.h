#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

// SETTING/time.dat: one line asking the camera to set its clock at the next
// start, "yyyy,MM,dd,HH,mm,ss,Z" with the zone as +hhmm, e.g.
// "2016,03,07,14,05,09,+0900". The viewer only writes it, never reads it.
namespace TimeDatFile {

QByteArray format(const QDateTime& dateTime);

// Writes the file for `dateTime` (in its own zone); false on failure.
bool write(const QString& cardRoot, const QDateTime& dateTime);

// Deletes a pending clock request; true when none is left.
bool remove(const QString& cardRoot);

} // namespace TimeDatFile
