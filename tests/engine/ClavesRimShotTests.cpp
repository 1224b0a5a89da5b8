#include "EngineTestHelpers.h"
#include "engine/QuindrelClaves.h"
#include "engine/QuindrelRimShot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using enginetest::peakOf;
using enginetest::renderUntilSilent;

TEST(EngineClaves, RingsAtItsTuningAtEveryRate)
{
    for (float sr : enginetest::knownRates)
    {
        for (double tuning : { 0.0, 0.5, 1.0 })
        {
            QuindrelClaves voice;
            voice.setSampleRate(sr);
            voice.setTuning(tuning);
            voice.setDecay(1.0);
            const auto out = renderUntilSilent(voice, 1.0f);
            const double expected = 2424.0 * quindrel::tuningCurve(tuning);
            EXPECT_NEAR(enginetest::zeroCrossingFrequency(out, 0, out.size(), sr), expected, expected * 0.005) << "tuning " << tuning << " at " << sr;
        }
    }
}

TEST(EngineClaves, DecayLengthensTheRing)
{
    // At Decay 0 the ring is gone after 2000 samples, at Decay 1 it is still clearly there.
    auto lateLevel = [](double decay)
    {
        QuindrelClaves voice;
        voice.setSampleRate(44100.0f);
        voice.setDecay(decay);
        const auto out = renderUntilSilent(voice, 1.0f);
        return peakOf(std::vector<double>(out.begin() + 2000, out.begin() + 3000));
    };
    EXPECT_LT(lateLevel(0.0), 1e-6);
    EXPECT_GT(lateLevel(1.0), 0.1);
}

TEST(EngineRimShot, ShapedOutputStaysBoundedAndEnds)
{
    for (float sr : enginetest::knownRates)
    {
        for (float velocity : { 0.3779527559055118f, 1.0f, 1.623f })
        {
            QuindrelRimShot voice;
            voice.setSampleRate(sr);
            const auto out = renderUntilSilent(voice, velocity);
            EXPECT_FALSE(voice.isActive()) << sr;
            // The shaper stays within -1..0, so the wave never exceeds the drive
            // 2.645 v by much; the filters add some overshoot. NaN fails both.
            EXPECT_GT(peakOf(out), 0.05 * velocity) << sr;
            EXPECT_LT(peakOf(out), 2.645 * velocity * 2.0) << sr;
        }

        // Velocity 0: the resonators ring inside, but nothing comes out.
        QuindrelRimShot silent;
        silent.setSampleRate(sr);
        EXPECT_LT(peakOf(renderUntilSilent(silent, 0.0f)), 1e-15) << sr;
    }
}
