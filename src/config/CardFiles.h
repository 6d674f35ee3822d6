#pragma once

#include <QByteArray>
#include <QString>

// Paths and writes of the camera's files on the card. The camera's folder is
// "SETTING"; cards copied to a case-keeping file system may carry it as
// "setting", so reads look in both and writes always go to "SETTING".
namespace CardFiles {

inline const QString kSettingDir = QStringLiteral("SETTING");
inline const QString kLowerSettingDir = QStringLiteral("setting");

enum class Lookup { LowerFirst, UpperFirst };

// The first existing file `relative` (e.g. "setup.cfg", "lang/ver.dat") under
// the card's setting folder, or an empty string.
QString findSettingFile(
    const QString& cardRoot, const QString& relative, Lookup order = Lookup::UpperFirst);

// The path a write of `relative` goes to: <cardRoot>/SETTING/<relative>.
QString settingWritePath(const QString& cardRoot, const QString& relative);

// Reads a whole file; false when it can't be opened or read.
bool readWhole(const QString& path, QByteArray& bytes);

// Replaces <cardRoot>/SETTING/<relative> atomically (temporary file and
// rename), creating the folders first. A failed write leaves the old file.
bool writeSettingFile(const QString& cardRoot, const QString& relative, const QByteArray& bytes);

} // namespace CardFiles
