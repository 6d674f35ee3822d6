#pragma once

#include <QLoggingCategory>

// "tavro.telemetry": silent unless enabled (QT_LOGGING_RULES="tavro.telemetry.debug=true").
Q_DECLARE_LOGGING_CATEGORY(lcTelemetry)
