#include "settings/format/FormatLog.h"

Q_LOGGING_CATEGORY(lcFormat, "tavro.format", QtWarningMsg)
