#pragma once

#include <QLoggingCategory>

// The card format's log (each command it runs and how it ended), silent unless
// enabled with QT_LOGGING_RULES="tavro.format.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcFormat)
