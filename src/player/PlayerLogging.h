#pragma once

#include <QLoggingCategory>

// "tavro.player": silent unless enabled with QT_LOGGING_RULES.
Q_DECLARE_LOGGING_CATEGORY(lcPlayer)
