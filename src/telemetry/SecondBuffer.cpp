#include "telemetry/SecondBuffer.h"

#include "telemetry/SampleWriter.h"
#include "telemetry/TavroClipData.h"

#include <algorithm>

SecondBuffer::SecondBuffer(int capacity)
    : m_capacity(std::clamp(capacity, 1, kMaxCapacity))
{
}

bool SecondBuffer::append(const RawGSample& sample)
{
    if (m_count >= m_capacity)
        return false;
    m_slots[m_count++] = sample;
    return true;
}

void SecondBuffer::distribute(SampleWriter& writer, const GpsFix& fix)
{
    const int n = m_count;
    constexpr int kTen = TavroClipData::kSamplesPerSecond;
    if (n > kTen) {
        // Thinning: a raw sample is kept when it falls into a new tenth of
        // the second. The camera's arithmetic is single precision here.
        const float step = 10.0f / static_cast<float>(n);
        int previous = -1;
        int appended = 0;
        for (int i = 0; i < n && appended < kTen; ++i) {
            const float position = static_cast<float>(i) * step;
            const int bucket = static_cast<int>(static_cast<double>(position) + 0.5);
            if (bucket == previous)
                continue;
            previous = bucket;
            writer.append(m_slots[i], fix);
            ++appended;
        }
    } else {
        // Stretching: sample k of ten repeats raw sample trunc(k * n / 10).
        const float step = static_cast<float>(n) / 10.0f;
        for (int k = 0; k < kTen; ++k)
            writer.append(m_slots[static_cast<int>(static_cast<float>(k) * step)], fix);
    }
    m_count = 0;
}
