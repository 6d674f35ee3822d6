#include "editors/EditorsLogging.h"

Q_LOGGING_CATEGORY(lcEditors, "tavro.editors", QtWarningMsg)
