#include "EngineTestHelpers.h"
#include "engine/QuindrelBassDrum.h"
#include "engine/QuindrelClaves.h"

#include <gtest/gtest.h>

using namespace enginetest;

// Every voice with all knobs at both ends and the middle, soft, normal and
// over-full velocities, at each known rate and an unknown one: every voice sounds at full velocity,
// no NaN, infinity or subnormal comes out, and every voice ends by its follower.
TEST(EngineVoices, EveryVoiceStaysFiniteAndEnds)
{
    for (float sr : { 32000.0f, 44100.0f, 48000.0f, 88200.0f, 96000.0f, 192000.0f })
        for (float knob : { 0.0f, 0.5f, 1.0f })
            for (float velocity : { 0.0f, 0.378f, 1.4f })
            {
                QuindrelCore core;
                core.setSampleRate(sr);
                for (int id = 0; id <= 58; ++id)
                    core.setParameter(id, id < voiceCount || id == 58 ? 1.0f : knob);
                for (int voice = 0; voice < voiceCount; ++voice)
                    core.trigger(voice, velocity);

                Frame frame{}, peak{};
                const long limit = (long) (sr * 10.0f);
                long frames = 0;
                for (bool sounding = true; sounding && frames < limit; ++frames)
                {
                    core.renderFrame(frame.data());
                    sounding = false;
                    for (int voice = 0; voice < voiceCount; ++voice)
                    {
                        const double y = frame[(size_t) voice];
                        ASSERT_TRUE(std::isfinite(y) && std::fpclassify(y) != FP_SUBNORMAL)
                            << "voice " << voice << " gives " << y << " at frame " << frames << ", " << sr << " Hz, knobs " << knob << ", velocity " << velocity;
                        sounding = sounding || core.getInstrument(voice).isActive();
                        peak[(size_t) voice] = std::fmax(peak[(size_t) voice], std::fabs(y));
                    }
                }
                for (int voice = 0; voice < voiceCount; ++voice)
                    EXPECT_TRUE(velocity < 1.0f || peak[(size_t) voice] > 0.01) << "voice " << voice << " silent at " << sr << " Hz, knobs " << knob << ", velocity " << velocity;
                EXPECT_LT(frames, limit) << "a voice did not end at " << sr << " Hz, knobs " << knob << ", velocity " << velocity;
            }
}

TEST(EngineInstrument, LevelMovesWithAFiveHundredSampleTimeConstantAndQuietVoicesEndByTheFollower)
{
    QuindrelClaves claves;
    claves.setSampleRate(44100.0f);
    claves.setLevel(0.0);

    // The level moves while the voice is silent, too.
    render(claves, 500);
    EXPECT_NEAR(claves.getLevel(), std::exp(-1.0), 0.001);
    render(claves, 20000);
    EXPECT_NEAR(claves.getLevel(), 0.0, 1e-9);

    // At level 0 a voice still takes its time, in (nearly) exact silence.
    const auto out = renderUntilSilent(claves, 1.0f);
    EXPECT_LT(peakOf(out), 1e-30);
    EXPECT_GT(out.size(), 29000u);

    // A voice that stays below the follower's start value ends when the follower, released at k * 0.0002 per sample, falls from 0.01 to 3e-5.
    for (float sr : { 44100.0f, 96000.0f, 192000.0f })
    {
        QuindrelBassDrum drum;
        drum.setSampleRate(sr);
        const auto out = renderUntilSilent(drum, 0.0f);
        EXPECT_EQ(peakOf(out), 0.0) << "velocity 0 must be finite and silent at " << sr;
        EXPECT_TRUE(sr != 44100.0f || out.size() == 29043u) << out.size();
    }
}
