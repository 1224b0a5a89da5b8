#include "EngineTestHelpers.h"

#include <gtest/gtest.h>

#include <cmath>

// Every voice with all knobs at both ends and the middle, soft, normal and
// over-full velocities, at each known rate: no NaN, infinity or subnormal comes
// out, and every voice ends by its follower.
TEST(EngineVoices, EveryVoiceStaysFiniteAndEnds)
{
    for (float sr : enginetest::knownRates)
    {
        for (float knob : { 0.0f, 0.5f, 1.0f })
        {
            for (float velocity : { 0.0f, 0.378f, 1.4f })
            {
                QuindrelCore core;
                core.setSampleRate(sr);
                for (int id = 0; id <= 58; ++id)
                    core.setParameter(id, id < DrumMachineCore::numInstruments || id == 58 ? 1.0f : knob);
                for (int voice = 0; voice < enginetest::voiceCount; ++voice)
                    core.trigger(voice, velocity);

                enginetest::Frame frame{};
                const long limit = (long) (sr * 10.0f);
                long frames = 0;
                for (bool sounding = true; sounding && frames < limit; ++frames)
                {
                    core.renderFrame(frame.data());
                    sounding = false;
                    for (int voice = 0; voice < enginetest::voiceCount; ++voice)
                    {
                        const double y = frame[(size_t) voice];
                        ASSERT_TRUE(std::isfinite(y) && std::fpclassify(y) != FP_SUBNORMAL)
                            << "voice " << voice << " gives " << y << " at frame " << frames << ", " << sr << " Hz, knobs " << knob << ", velocity " << velocity;
                        sounding = sounding || core.getInstrument(voice).isActive();
                    }
                }
                EXPECT_LT(frames, limit) << "a voice did not end at " << sr << " Hz, knobs " << knob << ", velocity " << velocity;
            }
        }
    }
}
