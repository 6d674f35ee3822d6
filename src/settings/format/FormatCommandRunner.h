#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// How one command of the format ended.
struct CommandResult {
    bool started = false; // false: the program is missing or could not be run
    int exitCode = -1; // the exit status; -1 when it crashed or was killed
    QByteArray output; // standard output and standard error together

    bool succeeded() const { return started && exitCode == 0; }
};

// Runs one program to its end with separate arguments, never through a shell.
// The format's steps go through this seam so tests can script the answers of
// umount, mkfs, mount and gdbus. Called on the format's worker thread.
class FormatCommandRunner {
public:
    virtual ~FormatCommandRunner() = default;
    virtual CommandResult run(const QString& program, const QStringList& arguments) = 0;
};

// The real runner over QProcess. Programs are looked up on PATH and in the
// system folders (/usr/sbin, /sbin), where mkfs and mount.exfat-fuse live but
// a desktop user's PATH doesn't reach. Standard input is the null device, so a
// tool that would ask a question reads end-of-file instead of waiting.
class ProcessFormatCommandRunner final : public FormatCommandRunner {
public:
    // A command that runs longer than this is killed (a card that stopped
    // answering must not hold the format sheet open for ever).
    static constexpr int kTimeoutMs = 30 * 60 * 1000;

    CommandResult run(const QString& program, const QStringList& arguments) override;

    // The full path of a program, or "" when it is installed nowhere.
    static QString findProgram(const QString& program);
};
