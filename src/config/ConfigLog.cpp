#include "config/ConfigLog.h"

Q_LOGGING_CATEGORY(lcConfig, "tavro.config", QtCriticalMsg)
