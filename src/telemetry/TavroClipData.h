#pragma once

#include "telemetry/GpsFix.h"

#include <QByteArrayView>
#include <QString>

#include <array>
#include <cstdint>

class ClipFileBytes;

// The telemetry of one clip, ten samples per second of video (sample i belongs
// to media time i/10 s), at most 650 samples (65 s). Units and sentinels:
//   gx, gy, gz        signed 16-bit, 1/128 g (a raw 128 is 1 g)
//   gpsInfoLat/Lng    single-precision decimal degrees, south and west
//                     negative, 0 when the camera had no fix
//   gpsSpeed          km/h, whole numbers
// Reads outside the valid samples return the sentinels kNoG (-512),
// kNoCoordinate (512.0) and kNoSpeed (1024), which no real sample reaches.
// The arrays are fixed; reloading a clip never allocates. Only clipDataCount
// says which samples are valid: entries past it may hold an older clip's data.
class TavroClipData {
public:
    static constexpr int kCapacity = 650;
    static constexpr int kSamplesPerSecond = 10;
    static constexpr int kNoG = -512;
    static constexpr float kNoCoordinate = 512.0f;
    static constexpr int kNoSpeed = 1024;

    TavroClipData() { m_sampleUtc.fill(kNoUtcMsecs); }

    // The general loader: subtitle file (extension exactly "srt"), else the
    // raw-record scan, the tail block and the chunk stream, first non-empty wins.
    void loadVideoFileCilpDataFromFilePath(const QString& path);
    // The Kel-family loader: only the Kel chunk stream is read.
    void loadVideoFileCilpDataFromFilePath_Kel(const QString& path);
    // An MP4 clip's own subtitle (text) track, read in place instead of
    // through an extracted subtitle file: the same samples, no ffmpeg.
    void loadMp4TextTrack(const QString& path);

    int getGx(int index) const;
    int getGy(int index) const;
    int getGz(int index) const;
    float getGpsLat(int index) const;
    float getGpsLng(int index) const;
    int getGpsSpeed(int index) const;
    // The UTC date and time (ms since 1970) of the RMC sentence that closed
    // the sample's second; kNoUtcMsecs when it had none or out of range.
    int64_t sampleUtcMsecs(int index) const;
    void getClipDataWithIndex(
        int index, int& x, int& y, int& z, float& lat, float& lng, int& speed) const;

    int clipDataCount() const { return m_clipDataCount; }
    void setClipDataCount(int count) { m_clipDataCount = count; }
    int gpsDataCount() const { return m_gpsDataCount; }
    void setGpsDataCount(int count) { m_gpsDataCount = count; }

    // NMEA ddmm.mmmm / dddmm.mmmm to millionths of a degree (single precision,
    // truncated); 0 for an empty text or one without at least two digits before ".".
    static int32_t cal_string(QByteArrayView text);
    static int32_t cal_string(const QString& text);

    // The individual parsers, each reading the file itself. They set
    // gpsDataCount and return the sample count; clipDataCount is the loader's.
    uint32_t getAllDataFromFileTail(const QString& path);
    int getAllDataFromFile(const char* path);
    int getTolmAllDataFromSrtFile(const QString& path);
    int getTolmAllDataFromFile(const QString& path);
    int getAllDataFromFile_Kel(const char* path);

    // Written by the parsers; `index` is below kCapacity.
    void storeG(int index, int16_t x, int16_t y, int16_t z);
    void storeGps(int index, float lat, float lng);
    void storeSpeed(int index, int32_t speed);
    void storeUtc(int index, int64_t utcMsecs);

private:
    bool inRange(int index) const;
    void clearLeadingBytes();
    void dropIfCut(const ClipFileBytes& file);

    std::array<int16_t, kCapacity> m_gx {};
    std::array<int16_t, kCapacity> m_gy {};
    std::array<int16_t, kCapacity> m_gz {};
    std::array<float, kCapacity> m_gpsInfoLat {};
    std::array<float, kCapacity> m_gpsInfoLng {};
    std::array<int32_t, kCapacity> m_gpsSpeed {};
    // Not part of the camera's record: kept for route exports, and reset
    // whole on every load so no clock of an earlier clip survives.
    std::array<int64_t, kCapacity> m_sampleUtc {};
    int32_t m_clipDataCount = 0;
    int32_t m_gpsDataCount = 0;
};
