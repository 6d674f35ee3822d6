#include "player/PlayerLogging.h"

Q_LOGGING_CATEGORY(lcPlayer, "tavro.player", QtCriticalMsg)
