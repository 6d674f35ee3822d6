#pragma once

#include <QLoggingCategory>

// The telemetry views and the map page log here; silent unless enabled with
// QT_LOGGING_RULES="tavro.display.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcDisplay)
