#include "telemetry/TelemetryLog.h"

Q_LOGGING_CATEGORY(lcTelemetry, "tavro.telemetry", QtWarningMsg)
