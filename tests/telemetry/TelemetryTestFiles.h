#pragma once

#include "telemetry/TavroClipData.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <ostream>
#include <vector>

// Writing clip files into a scratch folder and reading a record back.
namespace TelemetryTestFiles {

// A path in this test binary's scratch folder.
QString scratchPath(const QString& name);
QString writeClip(const QString& name, const QByteArray& bytes);

std::unique_ptr<TavroClipData> loadGeneral(
    const QByteArray& bytes, const QString& name = QStringLiteral("clip.avi"));
std::unique_ptr<TavroClipData> loadKel(
    const QByteArray& bytes, const QString& name = QStringLiteral("Rec_20240101_120000.avi"));

struct Sample {
    int x = 0;
    int y = 0;
    int z = 0;
    float lat = 0.0f;
    float lng = 0.0f;
    int speed = 0;
    bool operator==(const Sample&) const = default;
};
std::ostream& operator<<(std::ostream& os, const Sample& sample);

// Every valid sample of the record, read through getClipDataWithIndex.
std::vector<Sample> samples(const TavroClipData& data);
std::vector<int> gxValues(const TavroClipData& data);

} // namespace TelemetryTestFiles
