#pragma once

#include <QString>

#include <cstdint>

// Inputs for the telemetry benchmark, written into a scratch folder.
namespace BenchFiles {

// `bytes` of pseudo-random data (no telemetry of any kind), written in 1 MiB blocks.
bool writeNoise(const QString& path, int64_t bytes);
// A 60-s 1080p AVI made by ffmpeg; false when ffmpeg is missing or fails.
bool writeClip(const QString& path, int seconds);
// A subtitle file as extracted from a 65-s clip: ten "gsensor" records and
// one "GPRMC" sentence per second.
bool writeSubtitle(const QString& path, int seconds);

// Resident memory in MiB: the peak (getrusage) and the current anonymous part.
double peakRssMiB();
double anonRssMiB();

} // namespace BenchFiles
