#include "telemetry/SampleWriter.h"

#include "telemetry/TavroClipData.h"

static_assert(TavroClipData::kCapacity == 650);

SampleWriter::SampleWriter(TavroClipData& record)
    : m_record(record)
{
}

bool SampleWriter::isFull() const
{
    return m_count >= TavroClipData::kCapacity;
}

bool SampleWriter::append(const RawGSample& sample, const GpsFix& fix)
{
    if (isFull())
        return false;
    m_record.storeG(m_count, sample.x, sample.y, sample.z);
    m_record.storeSpeed(m_count, fix.speedKmh);
    m_record.storeUtc(m_count, fix.utcMsecs);
    m_fixes[m_count] = { fix.latitudeE6, fix.longitudeE6, fix.latitudeLetter, fix.longitudeLetter };
    ++m_count;
    return true;
}

int SampleWriter::finish()
{
    int withFix = 0;
    for (int i = 0; i < m_count; ++i) {
        const KeptFix& kept = m_fixes[i];
        float latitude = static_cast<float>(kept.latitudeE6) / 1000000.0f;
        float longitude = static_cast<float>(kept.longitudeE6) / 1000000.0f;
        if (kept.latitudeLetter != 'N')
            latitude = -latitude;
        if (kept.longitudeLetter != 'E')
            longitude = -longitude;
        m_record.storeGps(i, latitude, longitude);
        if (latitude != 0.0f || longitude != 0.0f)
            ++withFix;
    }
    m_record.setGpsDataCount(withFix);
    return m_count;
}
