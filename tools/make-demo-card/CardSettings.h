#pragma once

#include <QString>

// The camera's own files in the card's SETTING folder, written through the
// viewer's settings models so that they are exactly what a camera leaves.
namespace CardSettings {

// A binary-record camera (model Tolm): setup.cfg with the user's settings,
// default.cfg with the factory values, and lang/ver.dat.
bool writeRecordCamera(const QString& cardRoot, QString& error);

// A Kel-family camera (model Wenna): blackbox.cfg.
bool writeKelCamera(const QString& cardRoot, QString& error);

// A camera that carries its own settings page (model Zenti): setup.cfg,
// default.cfg, lang/ver.dat and the page, SETTING/html/index.html.
bool writeWebCamera(const QString& cardRoot, QString& error);

} // namespace CardSettings
