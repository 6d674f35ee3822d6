#pragma once

#include <QLoggingCategory>

// Debug output of the settings pages and the settings window:
// QT_LOGGING_RULES="tavro.editors.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcEditors)
