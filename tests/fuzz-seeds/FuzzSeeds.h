#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// Small, valid inputs for the fuzz targets under fuzz/, written by the test
// builders: the fuzzers start from files the parsers accept and mutate from
// there. `tools/fuzz.sh --campaign` copies fuzz/corpus/<target>/ into its
// working corpus; make-fuzz-seeds rewrites that folder.
struct FuzzSeed {
    QString target; // the fuzz target's name, e.g. "fuzz_telemetry_chunk"
    QString name; // the seed's file name
    QByteArray bytes;
};

namespace FuzzSeeds {

// Clip telemetry: AVI chunks, the text block, raw records, SubRip text, the
// MP4 text track (made by ffmpeg in `scratchDir`; left out when ffmpeg is
// missing), and the clip-info bytes.
QList<FuzzSeed> telemetrySeeds(const QString& scratchDir);

// Card settings files, the settings pages and the command line.
QList<FuzzSeed> settingsSeeds();

// Both lists.
QList<FuzzSeed> allSeeds(const QString& scratchDir);

// Writes every seed to <folder>/<target>/<name>, replacing what each
// target's folder held; returns the number written, -1 when a write failed.
int writeSeeds(const QList<FuzzSeed>& seeds, const QString& folder);

} // namespace FuzzSeeds
