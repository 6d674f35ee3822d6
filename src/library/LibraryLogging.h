#pragma once

#include <QLoggingCategory>

// Clip library, conversion and child processes. Silent unless enabled with
// QT_LOGGING_RULES="tavro.library.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcLibrary)
