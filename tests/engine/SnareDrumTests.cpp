#include "EngineTestHelpers.h"
#include "engine/QuindrelSnareDrum.h"

#include <gtest/gtest.h>

using namespace enginetest;

namespace
{
// A snare fed with its own noise, rendered for a fixed time after a trigger;
// its tone gains have had time to reach their targets first.
Signal renderSnare(float velocity, double snappy, uint32_t noiseSeed)
{
    QuindrelSnareDrum snare;
    snare.setSampleRate(44100.0f);
    snare.setTone(0.5);
    snare.setDecay(0.5);
    snare.setSnappy(snappy);
    render(snare, 20000, []
           { return 0.0; });
    snare.trigger(velocity);
    return render(snare, 8000, Noise{ noiseSeed });
}
} // namespace

TEST(EngineSnareDrum, SnappySetsTheNoiseShareAndVelocityIsSquared)
{
    // Without snares the noise does not reach the output at all; with them it does.
    EXPECT_EQ(renderSnare(1.0f, 0.0, 1), renderSnare(1.0f, 0.0, 2));
    const auto a = renderSnare(1.0f, 1.0, 1), b = renderSnare(1.0f, 1.0, 2);
    double difference = 0.0;
    for (size_t i = 0; i < a.size(); ++i)
        difference = std::fmax(difference, std::fabs(a[i] - b[i]));
    EXPECT_GT(difference, 0.05) << "the snares should follow the noise";

    // The drum path is linear in A = (2.645 v)^2: half the velocity, a quarter of the sound.
    const double fullPeak = peakOf(renderSnare(1.0f, 0.0, 1));
    ASSERT_GT(fullPeak, 0.1);
    EXPECT_NEAR(peakOf(renderSnare(0.5f, 0.0, 1)) / fullPeak, 0.25, 1e-6);
    // Velocity 0: finite and silent apart from the anti-denormal constants.
    EXPECT_LT(peakOf(renderSnare(0.0f, 1.0, 1)), 1e-12);
}
