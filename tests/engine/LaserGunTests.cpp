#include "EngineTestHelpers.h"
#include "engine/QuindrelLaserGun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{
std::vector<double> renderOn(QuindrelLaserGun& gun, int n)
{
    std::vector<double> out((size_t) n);
    for (auto& y : out)
        y = gun.renderSample();
    return out;
}

size_t risingCrossings(const std::vector<double>& signal)
{
    size_t count = 0;
    for (size_t i = 1; i < signal.size(); ++i)
        count += signal[i - 1] <= 0.0 && signal[i] > 0.0 ? 1 : 0;
    return count;
}
} // namespace

// The pitch falls from depth * 35050 + 40 Hz along the sweep envelope to 40 Hz,
// so the cycles of a note are the sum of its frequencies over the sample rate.
TEST(EngineLaserGun, PitchSweepsDownTo40Hz)
{
    for (float sr : { 44100.0f, 96000.0f, 192000.0f })
    {
        QuindrelLaserGun flat;
        flat.setSampleRate(sr);
        flat.setDecay(1.0);
        flat.trigger(1.0f);
        const auto out = renderOn(flat, (int) (sr * 0.5f));
        EXPECT_NEAR(enginetest::zeroCrossingFrequency(out, 0, out.size(), sr), 40.0, 0.1) << "depth 0 at " << sr;

        QuindrelLaserGun swept;
        swept.setSampleRate(sr);
        swept.setDepth(0.5);
        swept.setSweep(0.5);
        swept.setDecay(1.0);
        swept.trigger(1.0f);
        const auto note = renderOn(swept, (int) (sr * 0.2f));
        // The envelope already falls while the old note fades; the phase
        // advances from the last sample of the fade on.
        const double rate = QuindrelLaserGun::sweepRateForKnob(0.5, swept.getSampleRateInfo().rateScale);
        const auto fade = (size_t) std::ceil(sr * 0.00097);
        double cycles = 0.0, envelope = 1.0;
        for (size_t i = 0; i < note.size(); ++i, envelope *= 1.0 - rate)
            cycles += i + 1 < fade ? 0.0 : (0.1 * envelope * 35050.0 + 40.0) / sr;
        // One rising crossing for each cycle begun, the first at phase 0.
        EXPECT_NEAR((double) risingCrossings(note) - 0.5, cycles, 0.55) << "depth 0.5 at " << sr;
    }
}

// The first 0.97 ms of a note fade out the old one by 0.11 a sample; a note on
// a silent gun therefore starts with zeros.
TEST(EngineLaserGun, NewNoteStartsAfterFadingTheOldOne)
{
    QuindrelLaserGun gun;
    gun.setSampleRate(44100.0f);
    gun.setDecay(1.0);
    gun.trigger(1.0f);
    const auto first = renderOn(gun, 3000);
    // 43 samples of countdown, then one with the sine at phase 0.
    for (size_t i = 0; i < 44; ++i)
        ASSERT_LT(std::fabs(first[i]), 1e-19) << "sample " << i;
    EXPECT_GT(std::fabs(first[44]), 1e-6);

    gun.trigger(1.0f);
    const auto second = renderOn(gun, 100);
    double previous = first.back();
    ASSERT_GT(std::fabs(previous), 0.1);
    for (size_t i = 0; i < 43; ++i)
    {
        ASSERT_NEAR(second[i], previous * 0.89, 1e-12) << "sample " << i << " of the fade";
        previous = second[i];
    }
    EXPECT_LT(std::fabs(second[43]), 1e-19) << "the new note starts at phase 0";
    EXPECT_GT(std::fabs(second[44]), 1e-6);
}

// A trigger at level 0 leaves the old note alone, fading with the level.
TEST(EngineLaserGun, TriggerAtLevelZeroDoesNotRestart)
{
    QuindrelLaserGun retriggered, untouched;
    for (auto* gun : { &retriggered, &untouched })
    {
        gun->setSampleRate(96000.0f);
        gun->setDecay(1.0);
        gun->trigger(1.0f);
        renderOn(*gun, 2000);
        gun->setLevel(0.0);
    }
    retriggered.trigger(1.0f);
    EXPECT_EQ(renderOn(retriggered, 20000), renderOn(untouched, 20000));
}
