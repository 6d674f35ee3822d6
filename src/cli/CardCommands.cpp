#include "CliCommands.h"

int runCardCommand(const QStringList&, CliIo& io)
{
    io.err << "tavro: this command is not available yet\n";
    return CliExit::kUsage;
}

int runConfigCommand(const QStringList&, CliIo& io)
{
    io.err << "tavro: this command is not available yet\n";
    return CliExit::kUsage;
}

int runKelCommand(const QStringList&, CliIo& io)
{
    io.err << "tavro: this command is not available yet\n";
    return CliExit::kUsage;
}

int runLanguagesCommand(const QStringList&, CliIo& io)
{
    io.err << "tavro: this command is not available yet\n";
    return CliExit::kUsage;
}

