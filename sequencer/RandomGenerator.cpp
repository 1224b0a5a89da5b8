#include "sequencer/RandomGenerator.h"

#include <juce_core/juce_core.h>

namespace
{
// Hands std::mt19937 the 624 state words of the linear spread as they are:
// the engine takes them unchanged and regenerates before its first word.
struct LinearSpread
{
    using result_type = uint32_t;

    explicit LinearSpread(uint32_t seedValue)
        : first(seedValue)
    {
    }

    template <typename Iterator>
    void generate(Iterator begin, Iterator end) const
    {
        uint32_t x = first;
        for (auto it = begin; it != end; ++it)
        {
            *it = x;
            x *= 69069u;
        }
    }

    size_t size() const { return 1; }

    template <typename Iterator>
    void param(Iterator out) const
    {
        *out = first;
    }

    uint32_t first;
};
} // namespace

RandomGenerator::RandomGenerator()
{
    seed((uint32_t) juce::Time::currentTimeMillis() ^ (uint32_t) juce::Time::getHighResolutionTicks());
}

void RandomGenerator::seed(uint32_t value)
{
    LinearSpread spread(value != 0 ? value : 1u);
    engine.seed(spread);
}

uint32_t RandomGenerator::uniform(uint32_t n)
{
    if (n == 0)
        return 0;

    const uint32_t limit = 0xFFFFFFFFu - (0xFFFFFFFFu % n);
    uint32_t word = next();
    while (word >= limit)
        word = next();
    return word % n;
}
