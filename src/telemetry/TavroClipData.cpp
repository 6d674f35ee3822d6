#include "telemetry/TavroClipData.h"

#include "telemetry/AviChunkParser.h"
#include "telemetry/AviTailParser.h"
#include "telemetry/ClipFileBytes.h"
#include "telemetry/KelChunkParser.h"
#include "telemetry/Mp4TextTrackParser.h"
#include "telemetry/RmcSentence.h"
#include "telemetry/TelemetryLog.h"
#include "telemetry/TelemetryText.h"
#include "telemetry/TolmRawParser.h"
#include "telemetry/TolmSubtitleParser.h"

#include <QFileInfo>

#include <cstring>

namespace {

// Runs one parser on a file of its own (the single-parser entry points).
int parseFile(const TelemetryParser& parser, const QString& path, TavroClipData& record)
{
    const ClipFileBytes file(path);
    if (!file.isOpen()) {
        record.setGpsDataCount(0);
        return 0;
    }
    const int count = parser.parse(file.bytes(), record);
    if (file.isIntact())
        return count;
    record.setGpsDataCount(0); // the file shrank under the parser
    return 0;
}

} // namespace

void TavroClipData::clearLeadingBytes()
{
    // The camera's viewer clears 650 bytes of each array, not 650 entries:
    // the rest keeps the previous clip's values, which clipDataCount hides.
    constexpr size_t kClearedBytes = 650;
    std::memset(m_gx.data(), 0, kClearedBytes);
    std::memset(m_gy.data(), 0, kClearedBytes);
    std::memset(m_gz.data(), 0, kClearedBytes);
    std::memset(m_gpsInfoLat.data(), 0, kClearedBytes);
    std::memset(m_gpsInfoLng.data(), 0, kClearedBytes);
    std::memset(m_gpsSpeed.data(), 0, kClearedBytes);
    m_sampleUtc.fill(kNoUtcMsecs);
}

void TavroClipData::loadVideoFileCilpDataFromFilePath(const QString& path)
{
    clearLeadingBytes();
    const ClipFileBytes file(path);
    const QByteArrayView bytes = file.bytes(); // empty when the file cannot be opened
    if (QFileInfo(path).suffix() == QLatin1String("srt")) {
        m_clipDataCount = TolmSubtitleParser().parse(bytes, *this);
        dropIfCut(file);
        qCDebug(lcTelemetry) << "subtitle" << path << m_clipDataCount;
        return;
    }
    const TolmRawParser raw;
    const AviTailParser tail;
    const AviChunkParser chunks;
    for (const TelemetryParser* parser :
        { static_cast<const TelemetryParser*>(&raw), static_cast<const TelemetryParser*>(&tail),
            static_cast<const TelemetryParser*>(&chunks) }) {
        m_clipDataCount = parser->parse(bytes, *this);
        if (!file.isIntact() || m_clipDataCount != 0)
            break;
    }
    dropIfCut(file);
    qCDebug(lcTelemetry) << "clip" << path << m_clipDataCount << m_gpsDataCount;
}

void TavroClipData::loadVideoFileCilpDataFromFilePath_Kel(const QString& path)
{
    clearLeadingBytes();
    const ClipFileBytes file(path);
    m_clipDataCount = KelChunkParser().parse(file.bytes(), *this);
    dropIfCut(file);
    qCDebug(lcTelemetry) << "Kel clip" << path << m_clipDataCount << m_gpsDataCount;
}

void TavroClipData::dropIfCut(const ClipFileBytes& file)
{
    // A card pulled out (or a file cut short) while it was read: what the
    // parsers made of the zeros that stood in for the lost bytes is not kept.
    if (file.isIntact())
        return;
    m_clipDataCount = 0;
    m_gpsDataCount = 0;
}

void TavroClipData::loadMp4TextTrack(const QString& path)
{
    clearLeadingBytes();
    const ClipFileBytes file(path, ClipFileBytes::Access::Random);
    m_clipDataCount = Mp4TextTrackParser().parse(file.bytes(), *this);
    dropIfCut(file);
    qCDebug(lcTelemetry) << "MP4 text track" << path << m_clipDataCount << m_gpsDataCount;
}

bool TavroClipData::inRange(int index) const
{
    return index <= kCapacity - 1
        && static_cast<uint32_t>(index) < static_cast<uint32_t>(m_clipDataCount);
}

int TavroClipData::getGx(int index) const
{
    return inRange(index) ? m_gx[index] : kNoG;
}

int TavroClipData::getGy(int index) const
{
    return inRange(index) ? m_gy[index] : kNoG;
}

int TavroClipData::getGz(int index) const
{
    return inRange(index) ? m_gz[index] : kNoG;
}

float TavroClipData::getGpsLat(int index) const
{
    return inRange(index) ? m_gpsInfoLat[index] : kNoCoordinate;
}

float TavroClipData::getGpsLng(int index) const
{
    return inRange(index) ? m_gpsInfoLng[index] : kNoCoordinate;
}

int TavroClipData::getGpsSpeed(int index) const
{
    return inRange(index) ? m_gpsSpeed[index] : kNoSpeed;
}

int64_t TavroClipData::sampleUtcMsecs(int index) const
{
    return inRange(index) ? m_sampleUtc[index] : kNoUtcMsecs;
}

void TavroClipData::getClipDataWithIndex(
    int index, int& x, int& y, int& z, float& lat, float& lng, int& speed) const
{
    x = getGx(index);
    y = getGy(index);
    z = getGz(index);
    lat = getGpsLat(index);
    lng = getGpsLng(index);
    speed = getGpsSpeed(index);
}

int32_t TavroClipData::cal_string(QByteArrayView text)
{
    const qsizetype point = text.indexOf('.');
    const qsizetype minutesStart = point - 2;
    if (text.isEmpty() || point < 0 || minutesStart < 0)
        return 0;
    const auto degrees = static_cast<float>(TelemetryText::intValue(text.first(minutesStart)));
    const float minutes = TelemetryText::floatValue(text.sliced(minutesStart));
    // Single precision on purpose: the camera's own values carry about seven digits.
    const float millionths = (degrees + minutes / 60.0f) * 1000000.0f;
    return RmcSentence::truncateToInt32(static_cast<double>(millionths));
}

int32_t TavroClipData::cal_string(const QString& text)
{
    return cal_string(QByteArrayView(text.toUtf8()));
}

uint32_t TavroClipData::getAllDataFromFileTail(const QString& path)
{
    return static_cast<uint32_t>(parseFile(AviTailParser(), path, *this));
}

int TavroClipData::getAllDataFromFile(const char* path)
{
    return parseFile(AviChunkParser(), QString::fromUtf8(path), *this);
}

int TavroClipData::getTolmAllDataFromSrtFile(const QString& path)
{
    return parseFile(TolmSubtitleParser(), path, *this);
}

int TavroClipData::getTolmAllDataFromFile(const QString& path)
{
    return parseFile(TolmRawParser(), path, *this);
}

int TavroClipData::getAllDataFromFile_Kel(const char* path)
{
    return parseFile(KelChunkParser(), QString::fromUtf8(path), *this);
}

void TavroClipData::storeG(int index, int16_t x, int16_t y, int16_t z)
{
    m_gx[index] = x;
    m_gy[index] = y;
    m_gz[index] = z;
}

void TavroClipData::storeGps(int index, float lat, float lng)
{
    m_gpsInfoLat[index] = lat;
    m_gpsInfoLng[index] = lng;
}

void TavroClipData::storeSpeed(int index, int32_t speed)
{
    m_gpsSpeed[index] = speed;
}

void TavroClipData::storeUtc(int index, int64_t utcMsecs)
{
    m_sampleUtc[index] = utcMsecs;
}
