#pragma once

#include "telemetry/GpsFix.h"

#include <array>

class SampleWriter;

// The raw G samples of the second being read. When the second ends they are
// spread to exactly ten samples (fewer only when decimating more than ten):
// 1..10 raw samples are stretched by repetition, 11 or more are thinned out.
// Holds at most `capacity` raw samples (up to kMaxCapacity); later ones of
// the same second are dropped. Emptying keeps the slots' contents: a second without samples
// repeats slot 0, which still holds the first sample of an earlier second.
class SecondBuffer {
public:
    static constexpr int kMaxCapacity = 650;
    // What the AVI chunk records allow in one second.
    static constexpr int kChunkCapacity = 60;

    explicit SecondBuffer(int capacity);

    // False when the buffer is full and the sample was dropped.
    bool append(const RawGSample& sample);
    int count() const { return m_count; }
    bool isEmpty() const { return m_count == 0; }
    const RawGSample& last() const { return m_slots[m_count - 1]; }
    const RawGSample& at(int index) const { return m_slots[index]; }

    // Appends the second's samples with the given GPS values and empties the buffer.
    void distribute(SampleWriter& writer, const GpsFix& fix);
    void clear() { m_count = 0; }

private:
    std::array<RawGSample, kMaxCapacity> m_slots {};
    int m_capacity;
    int m_count = 0;
};
