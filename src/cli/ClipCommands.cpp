#include "CliCommands.h"

int runClipsCommand(const QStringList&, CliIo& io)
{
    io.err << "tavro: this command is not available yet\n";
    return CliExit::kUsage;
}

int runConvertCommand(const QStringList&, CliIo& io)
{
    io.err << "tavro: this command is not available yet\n";
    return CliExit::kUsage;
}

