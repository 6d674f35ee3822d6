#pragma once

#include <QLoggingCategory>

// The configuration module's log, silent unless enabled with
// QT_LOGGING_RULES="tavro.config.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcConfig)
