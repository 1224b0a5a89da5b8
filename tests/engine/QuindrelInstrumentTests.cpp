#include "EngineTestHelpers.h"
#include "engine/QuindrelBassDrum.h"
#include "engine/QuindrelClaves.h"

#include <gtest/gtest.h>

#include <cmath>

// A voice that stays below the follower's start value ends when the follower,
// released at k * 0.0002 per sample, falls from 0.01 to 3e-5.
TEST(EngineInstrument, QuietVoiceEndsByTheFollowerInTheExpectedTime)
{
    for (float sr : { 44100.0f, 96000.0f, 192000.0f })
    {
        QuindrelBassDrum drum;
        drum.setSampleRate(sr);
        const auto out = enginetest::renderUntilSilent(drum, 0.0f);
        EXPECT_EQ(enginetest::peakOf(out), 0.0) << "velocity 0 must be finite and silent at " << sr;

        const double release = drum.getSampleRateInfo().rateScale * 0.0002;
        EXPECT_NEAR((double) out.size(), std::log(3e-05 / 0.01) / std::log(1.0 - release), 2.0) << sr;
        EXPECT_TRUE(sr != 44100.0f || out.size() == 29043u) << out.size();
    }
}

TEST(EngineInstrument, LevelMovesWithAFiveHundredSampleTimeConstant)
{
    QuindrelClaves claves;
    claves.setSampleRate(44100.0f);
    claves.setLevel(0.0);

    // The level moves while the voice is silent, too.
    for (int i = 0; i < 500; ++i)
        claves.renderSample();
    EXPECT_NEAR(claves.getLevel(), std::exp(-1.0), 0.001);
    for (int i = 0; i < 20000; ++i)
        claves.renderSample();
    EXPECT_NEAR(claves.getLevel(), 0.0, 1e-9);

    // At level 0 a voice still takes its time, in (nearly) exact silence.
    const auto out = enginetest::renderUntilSilent(claves, 1.0f);
    EXPECT_LT(enginetest::peakOf(out), 1e-30);
    EXPECT_GT(out.size(), 29000u);
}
