#pragma once

#include <QString>

// The script installed in the settings page before any of its own: it
// defines the global "Dashcam" with one function per script name of
// WebDashcam (names with a colon too: Dashcam["setdate:use"]("1")), keeps the
// calls the page makes while the channel to the viewer is being set up, and
// hands them on in order once it is. The page cannot replace or extend it.
namespace WebDashcamShim {

// The shim itself (without the QWebChannel client it needs in front).
QString shimSource();

// qwebchannel.js followed by the shim: the text of the document-creation script.
QString documentCreationScript();

} // namespace WebDashcamShim
