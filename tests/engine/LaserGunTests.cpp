#include "EngineTestHelpers.h"
#include "engine/QuindrelLaserGun.h"

#include <gtest/gtest.h>

using namespace enginetest;

namespace
{
void setUp(QuindrelLaserGun& gun, float sampleRate, double depth = 0.0)
{
    gun.setSampleRate(sampleRate);
    gun.setDepth(depth);
    gun.setSweep(0.5);
    gun.setDecay(1.0);
}
} // namespace

// The pitch falls from depth * 35050 + 40 Hz along the sweep envelope to 40 Hz
// (the shape of the fall is in the stored renders).
TEST(EngineLaserGun, PitchSweepsDownTo40Hz)
{
    for (float sr : { 44100.0f, 96000.0f, 192000.0f })
        for (double depth : { 0.0, 0.5 })
        {
            QuindrelLaserGun gun;
            setUp(gun, sr, depth);
            gun.trigger(1.0f);
            const auto out = render(gun, (size_t) sr);
            const auto early = (size_t) (sr * 0.005f), late = (size_t) (sr * 0.5f);
            EXPECT_NEAR(zeroCrossingFrequency(out, late, out.size(), sr), 40.0, 0.1) << "depth " << depth << " at " << sr;
            EXPECT_TRUE(depth == 0.0 ? zeroCrossingFrequency(out, 0, late, sr) < 40.1 : zeroCrossingFrequency(out, 0, early, sr) > 500.0) << "depth " << depth << " at " << sr;
        }
}

// The first 0.97 ms of a note fade out the old one by 0.11 a sample; a note on
// a silent gun therefore starts with zeros (43 samples of countdown, then one
// with the sine at phase 0).
TEST(EngineLaserGun, NewNoteStartsAfterFadingTheOldOneButNotAtLevelZero)
{
    QuindrelLaserGun gun;
    setUp(gun, 44100.0f);
    gun.trigger(1.0f);
    const auto first = render(gun, 3000);
    EXPECT_LT(peakOf(first, 0, 44), 1e-19);
    EXPECT_GT(std::fabs(first[44]), 1e-6);

    gun.trigger(1.0f);
    const auto second = render(gun, 100);
    ASSERT_GT(std::fabs(first.back()), 0.1);
    for (size_t i = 0; i < 43; ++i)
        ASSERT_NEAR(second[i], (i == 0 ? first.back() : second[i - 1]) * 0.89, 1e-12) << "sample " << i << " of the fade";
    EXPECT_LT(std::fabs(second[43]), 1e-19) << "the new note starts at phase 0";
    EXPECT_GT(std::fabs(second[44]), 1e-6);

    // A trigger at level 0 leaves the old note alone, fading with the level.
    QuindrelLaserGun retriggered, untouched;
    for (auto* gun : { &retriggered, &untouched })
    {
        setUp(*gun, 96000.0f);
        gun->trigger(1.0f);
        render(*gun, 2000);
        gun->setLevel(0.0);
    }
    retriggered.trigger(1.0f);
    EXPECT_EQ(render(retriggered, 20000), render(untouched, 20000));
}
