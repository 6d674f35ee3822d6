#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

// One language the camera offers: the number stored in `cur_language` and
// the language's code ("en", "zh-Hant-HK", or empty).
using CameraLanguage = QPair<qint32, QString>;
using CameraLanguageList = QList<CameraLanguage>;

// The camera announces its languages in SETTING/lang/ver.dat with a line
//   # Language ISO Code: en fr es
// whose codes are numbered from 0 in order.
namespace CameraLanguages {

// Every (number, code) pair of the announcement text; empty when no line
// announces languages.
CameraLanguageList parseVerDat(const QByteArray& text);

// The list used when the card announces nothing: 0 en, 1 fr, 4 es.
CameraLanguageList fallbackLanguages();

// Every code of the language-name table, in table order (163 entries).
QStringList languageCodes();

} // namespace CameraLanguages

// The English name of a language code ("ko" → "Korean"), or the code itself
// when the table has no name for it. Exact, case-sensitive lookup.
QString languageTitleByExpandingCode(const QString& code);

// Bytes from hexadecimal text, two characters per byte; an odd last character
// converts alone and a pair that is not hexadecimal gives 0.
QByteArray dataFromHexString(const QString& hex);
