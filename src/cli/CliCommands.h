#pragma once

#include <QStringList>
#include <QTextStream>

// Exit codes shared by every command of the tool.
namespace CliExit {
constexpr int kOk = 0;
constexpr int kFailure = 1; // a file could not be opened, a card write failed
constexpr int kUsage = 2; // the command line was wrong
} // namespace CliExit

// Streams every command writes to; tests of the tool compare their text.
struct CliIo {
    QTextStream& out;
    QTextStream& err;
};

// One entry point per command group. `args` holds the words after the
// command name ("tavro card identify DIR" → runCardCommand({"identify", "DIR"})).
int runTelemetryCommand(const QStringList& args, CliIo& io);
int runCardCommand(const QStringList& args, CliIo& io);
int runConfigCommand(const QStringList& args, CliIo& io);
int runKelCommand(const QStringList& args, CliIo& io);
int runLanguagesCommand(const QStringList& args, CliIo& io);
int runClipsCommand(const QStringList& args, CliIo& io);
int runConvertCommand(const QStringList& args, CliIo& io);
int runSettingsCommand(const QStringList& args, CliIo& io);
int runExportCommand(const QStringList& args, CliIo& io);
int runTripsCommand(const QStringList& args, CliIo& io);
int runCutCommand(const QStringList& args, CliIo& io);
