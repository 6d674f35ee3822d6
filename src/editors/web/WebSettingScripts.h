#pragma once

#include "config/CameraLanguages.h"

#include <QByteArray>
#include <QString>

#include <optional>

// What the viewer says to the camera's settings page, and how the record
// travels between them. The page keeps all knowledge of the record's layout:
// it receives the raw bytes of SETTING/setup.cfg as hexadecimal text and hands
// the edited record back the same way.
namespace WebSettingScripts {

inline constexpr const char* kModelName = "model.name";
inline constexpr const char* kModelCfgSize = "model.cfgSize";
inline constexpr const char* kGetCfg = "get_cfg()";

// The record as upper-case hexadecimal, two digits a byte, no separators.
QString cfgStringWithData(const QByteArray& data);

// The bytes of the page's hexadecimal text: two characters a byte from the
// start, each pair read as an unsigned base-16 number up to its first
// non-hexadecimal character (so "1G" is 0x01 and "ZZ" 0x00), an odd last
// character making a byte alone. Lower case is accepted; no length check.
QByteArray dataFromCfgString(const QString& hex);

// "set_cfg(\"<hex>\")".
QString setCfg(const QString& hex);

// "setParamLanguage(['en','fr',])": every code followed by a comma, the
// trailing one included, as the camera's pages expect.
QString setParamLanguage(const CameraLanguageList& languages);

// "set_language(\"<code>\")".
QString setLanguage(const QString& code);

QString setTimeDate(const QString& date);
QString setTimeHour(const QString& hour);
QString setTimeMin(const QString& minute);

// "generateSetting(true)" / "generateSetting(false)".
QString generateSetting(bool showFirstView);

// "update_ok(<index>, \"<value>\")" and "update_cancel(<index>)".
QString updateOk(int index, const QString& value);
QString updateCancel(int index);

// The camera's language index, read from the record's hexadecimal text: the
// little-endian 32-bit field at byte offset 428. Nothing for a record too
// short to hold it.
std::optional<quint32> languageIndex(const QString& cfgHex);

// The body of a script string literal: texts from the card (language codes,
// values the page sent) are quoted so that they stay one string. Plain texts
// come out unchanged.
QString scriptStringBody(const QString& text, QChar quote);

} // namespace WebSettingScripts
