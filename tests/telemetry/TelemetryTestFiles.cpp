#include "TelemetryTestFiles.h"

#include "TestFiles.h"

#include <QTemporaryDir>

namespace TelemetryTestFiles {

QString scratchPath(const QString& name)
{
    static QTemporaryDir scratch;
    return scratch.filePath(name);
}

QString writeClip(const QString& name, const QByteArray& bytes)
{
    const QString path = scratchPath(name);
    TestFiles::write(path, bytes);
    return path;
}

std::unique_ptr<TavroClipData> loadGeneral(const QByteArray& bytes, const QString& name)
{
    auto data = std::make_unique<TavroClipData>();
    data->loadVideoFileCilpDataFromFilePath(writeClip(name, bytes));
    return data;
}

std::unique_ptr<TavroClipData> loadKel(const QByteArray& bytes, const QString& name)
{
    auto data = std::make_unique<TavroClipData>();
    data->loadVideoFileCilpDataFromFilePath_Kel(writeClip(name, bytes));
    return data;
}

std::ostream& operator<<(std::ostream& os, const Sample& s)
{
    return os << '[' << s.x << ',' << s.y << ',' << s.z << ',' << s.lat << ',' << s.lng << ','
              << s.speed << ']';
}

std::vector<Sample> samples(const TavroClipData& data)
{
    std::vector<Sample> out;
    for (int i = 0; i < data.clipDataCount(); ++i) {
        Sample s;
        data.getClipDataWithIndex(i, s.x, s.y, s.z, s.lat, s.lng, s.speed);
        out.push_back(s);
    }
    return out;
}

std::vector<int> gxValues(const TavroClipData& data)
{
    std::vector<int> out;
    for (int i = 0; i < data.clipDataCount(); ++i)
        out.push_back(data.getGx(i));
    return out;
}

} // namespace TelemetryTestFiles
