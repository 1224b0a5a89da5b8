#include "EngineTestHelpers.h"
#include "engine/QuindrelSnareDrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

using enginetest::snareDrum;

namespace
{
// A snare fed with its own noise, rendered for a fixed time after a trigger;
// its tone gains have had time to reach their targets first.
std::vector<double> renderSnare(float velocity, double snappy, uint32_t noiseSeed, int frames = 8000)
{
    QuindrelSnareDrum snare;
    snare.setSampleRate(44100.0f);
    snare.setTone(0.5);
    snare.setDecay(0.5);
    snare.setSnappy(snappy);
    for (int i = 0; i < 20000; ++i)
        snare.renderSample(0.0);

    snare.trigger(velocity);
    std::vector<double> out((size_t) frames);
    uint32_t state = noiseSeed;
    for (auto& y : out)
    {
        state = state * 1664525u + 1013904223u;
        y = snare.renderSample((double) (int32_t) state / 4294967296.0);
    }
    return out;
}
} // namespace

TEST(EngineSnareDrum, SnappySetsTheNoiseShare)
{
    // Without snares the noise input does not reach the output at all.
    EXPECT_EQ(renderSnare(1.0f, 0.0, 1), renderSnare(1.0f, 0.0, 2));

    const auto a = renderSnare(1.0f, 1.0, 1);
    const auto b = renderSnare(1.0f, 1.0, 2);
    double difference = 0.0;
    for (size_t i = 0; i < a.size(); ++i)
        difference = std::fmax(difference, std::fabs(a[i] - b[i]));
    EXPECT_GT(difference, 0.05) << "the snares should follow the noise";
}

TEST(EngineSnareDrum, VelocityIsSquared)
{
    // The drum path is linear in A = (2.645 v)^2: half the velocity, a quarter of the sound.
    const auto full = renderSnare(1.0f, 0.0, 1);
    const auto half = renderSnare(0.5f, 0.0, 1);
    const double fullPeak = enginetest::peakOf(full);
    ASSERT_GT(fullPeak, 0.1);
    EXPECT_NEAR(enginetest::peakOf(half) / fullPeak, 0.25, 1e-6);

    // Velocity 0: finite and silent apart from the anti-denormal constants.
    for (double y : renderSnare(0.0f, 1.0, 1))
        ASSERT_LT(std::fabs(y), 1e-12);
}
