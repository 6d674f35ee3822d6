#include "display/DisplayLogging.h"

Q_LOGGING_CATEGORY(lcDisplay, "tavro.display", QtCriticalMsg)
