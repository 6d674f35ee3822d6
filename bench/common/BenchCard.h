#pragma once

#include <QString>
#include <QStringList>

// A card of many clips for the benchmarks: the demo card's clips that carry
// telemetry, hard-linked (copied where linking fails) under new names into
// the card folders, front and rear of a pair kept together. Kept in the
// build folder for later runs; the demo card is written first when missing.
namespace BenchCard {

struct Run {
    double ms = 0;
    int exitCode = -1;
};

// A program next to the benchmark's own (tavro, make-demo-card).
QString sibling(const QString& name);
Run runProgram(const QString& program, const QStringList& arguments);
// The fastest of `runs` runs.
Run bestOf(int runs, const QString& program, const QStringList& arguments);

// The clip files of the card in `card` (sorted), making the card of `clips`
// files from `demo` when it does not hold that many. Empty on failure.
QStringList ensureCard(const QString& demo, const QString& card, int clips);

} // namespace BenchCard
