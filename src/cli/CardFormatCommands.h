#pragma once

#include "cli/CliCommands.h"

// tavro card format DIR [--yes] and tavro card touch-reset DIR [--yes].
int runCardFormatCommand(const QStringList& args, CliIo& io);
int runCardTouchResetCommand(const QStringList& args, CliIo& io);
