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

// The pitch falls from depth * 35050 + 40 Hz along the sweep envelope to 40 Hz,
// so the cycles of a note are the sum of its frequencies over the sample rate.
TEST(EngineLaserGun, PitchSweepsDownTo40Hz)
{
    for (float sr : { 44100.0f, 96000.0f, 192000.0f })
    {
        QuindrelLaserGun flat, swept;
        setUp(flat, sr);
        flat.trigger(1.0f);
        const auto out = render(flat, (size_t) (sr * 0.5f));
        EXPECT_NEAR(zeroCrossingFrequency(out, 0, out.size(), sr), 40.0, 0.1) << "depth 0 at " << sr;

        setUp(swept, sr, 0.5);
        swept.trigger(1.0f);
        const auto note = render(swept, (size_t) (sr * 0.2f));
        // The envelope already falls while the old note fades; the phase
        // advances from the last sample of the fade on.
        const double rate = QuindrelLaserGun::sweepRateForKnob(0.5, swept.getSampleRateInfo().rateScale);
        const auto fade = (size_t) std::ceil(sr * 0.00097);
        double cycles = 0.0, envelope = 1.0, crossings = 0.0;
        for (size_t i = 0; i < note.size(); ++i, envelope *= 1.0 - rate)
        {
            cycles += i + 1 < fade ? 0.0 : (0.1 * envelope * 35050.0 + 40.0) / sr;
            crossings += i > 0 && note[i - 1] <= 0.0 && note[i] > 0.0 ? 1.0 : 0.0;
        }
        // One rising crossing for each cycle begun, the first at phase 0.
        EXPECT_NEAR(crossings - 0.5, cycles, 0.55) << "depth 0.5 at " << sr;
    }
}

// The first 0.97 ms of a note fade out the old one by 0.11 a sample; a note on
// a silent gun therefore starts with zeros (43 samples of countdown, then one
// with the sine at phase 0).
TEST(EngineLaserGun, NewNoteStartsAfterFadingTheOldOne)
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
}

// A trigger at level 0 leaves the old note alone, fading with the level.
TEST(EngineLaserGun, TriggerAtLevelZeroDoesNotRestart)
{
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
