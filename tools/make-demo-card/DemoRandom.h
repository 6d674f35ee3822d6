#pragma once

#include <cstdint>

// A small seeded generator (splitmix64) whose sequence is the same on every
// platform and library, so one seed always gives the same card.
class DemoRandom {
public:
    explicit DemoRandom(std::uint64_t seed)
        : m_state(seed)
    {
    }

    std::uint64_t next()
    {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // Uniform in [0, 1).
    double unit() { return double(next() >> 11) * (1.0 / 9007199254740992.0); }
    // Uniform in [low, high).
    double between(double low, double high) { return low + (high - low) * unit(); }

private:
    std::uint64_t m_state;
};
