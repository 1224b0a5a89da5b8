#pragma once

#include <cstdint>
#include <random>

// The randomizer's source of draws: the standard 32-bit Mersenne Twister, but
// seeded by the older linear spread x[i] = x[i-1] * 69069 of its first
// publication, so that a result kept as a seed comes back word for word.
// Message thread only.
class RandomGenerator
{
public:
    // Seeded from the system clock, so that each session draws differently.
    RandomGenerator();

    // A seed of 0 would leave the twister's state all zero; it is taken as 1.
    void seed(uint32_t value);

    uint32_t next() { return (uint32_t) engine(); }

    // A draw below n with no bias: words at or above the largest multiple of
    // n that fits are drawn again. n of 0 gives 0 and draws nothing.
    uint32_t uniform(uint32_t n);

private:
    std::mt19937 engine;
};
