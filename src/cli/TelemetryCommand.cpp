#include "CliCommands.h"

int runTelemetryCommand(const QStringList&, CliIo& io)
{
    io.err << "tavro: this command is not available yet\n";
    return CliExit::kUsage;
}

