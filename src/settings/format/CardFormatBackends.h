#pragma once

#include "settings/format/CardFormatPlan.h"

class FormatCommandRunner;

// Runs the format a plan allows, step by step, on the calling thread (the
// format's worker): unmount, make the file system again with the same type and
// label, mount again. Nothing goes through a shell; every argument is its own
// (a folder with blanks stays one argument). Once the card is unmounted, its
// serial is read again (blkid, or UDisks2's IdUUID) right before the file
// system is made: another card in its place is not formatted. When a step
// fails after the card was unmounted, the card is still mounted again, and the
// result says when that too failed.
FormatResult runFormat(const FormatPlan& plan, FormatCommandRunner& runner,
    const QString& procRoot = QStringLiteral("/proc"));

// The root command-line path: umount (fusermount -u for a FUSE mount),
// mkfs.vfat -F <FAT size> -n LABEL / mkfs.exfat -L LABEL, then mount with the
// same driver or FUSE program at the same folder.
FormatResult runCommandLineFormat(const FormatPlan& plan, FormatCommandRunner& runner,
    const QString& procRoot = QStringLiteral("/proc"));

// The desktop path over UDisks2 (through gdbus on the system bus):
// Filesystem.Unmount, Block.Format with the same type and label,
// Filesystem.Mount (which may choose another folder; the result says where).
FormatResult runUDisksFormat(const FormatPlan& plan, FormatCommandRunner& runner);
