#include "library/LibraryLogging.h"

Q_LOGGING_CATEGORY(lcLibrary, "tavro.library", QtWarningMsg)
