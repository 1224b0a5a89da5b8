#include "engine/QuindrelBassDrum.h"
#include "engine/QuindrelClaves.h"
#include "engine/QuindrelInstrument.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(EngineInstrument, SilentSlotRendersZeroInEveryForm)
{
    QuindrelSilentInstrument silent;
    silent.setSampleRate(48000.0f);
    silent.trigger(1.0f);
    for (int i = 0; i < 100; ++i)
    {
        ASSERT_EQ(silent.renderSample(), 0.0);
        ASSERT_EQ(silent.renderSample(0.3), 0.0);
        ASSERT_EQ(silent.renderSample(0.3, -0.2), 0.0);
    }
    EXPECT_EQ(silent.getSampleRateInfo().rateIndex, 1);
}

// A voice that stays below the follower's start value ends when the follower,
// released at k * 0.0002 per sample, falls from 0.01 to 3e-5.
TEST(EngineInstrument, QuietVoiceEndsByTheFollowerInTheExpectedTime)
{
    for (float sr : {44100.0f, 96000.0f, 192000.0f})
    {
        QuindrelBassDrum drum;
        drum.setSampleRate(sr);
        drum.trigger(0.0f);
        ASSERT_TRUE(drum.isActive());

        long samples = 0;
        while (drum.isActive() && samples < 10000000)
        {
            const double y = drum.renderSample();
            ASSERT_TRUE(std::isfinite(y)) << "at sample " << samples;
            ASSERT_EQ(y, 0.0) << "velocity 0 must be silent, at sample " << samples;
            ++samples;
        }

        const double release = drum.getSampleRateInfo().rateScale * 0.0002;
        const double expected = std::log(3e-05 / 0.01) / std::log(1.0 - release);
        EXPECT_NEAR((double)samples, expected, 2.0) << sr;
        if (sr == 44100.0f)
        {
            EXPECT_NEAR((double)samples, 29043.0, 2.0);
        }
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
    EXPECT_FALSE(claves.isActive());

    for (int i = 0; i < 20000; ++i)
        claves.renderSample();
    EXPECT_NEAR(claves.getLevel(), 0.0, 1e-9);

    // At level 0 a voice still takes its time, in exact silence.
    claves.trigger(1.0f);
    int samples = 0;
    while (claves.isActive())
    {
        ASSERT_LT(std::fabs(claves.renderSample()), 1e-30);
        ++samples;
    }
    EXPECT_GT(samples, 29000);
}
