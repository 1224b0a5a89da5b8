#include "EngineTestHelpers.h"
#include "engine/QuindrelConga.h"
#include "engine/QuindrelTom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <type_traits>
#include <vector>

using namespace enginetest;

namespace
{
// Toms hear a skin noise; congas take no input.
template <typename Voice>
Signal renderNote(Voice& voice, float velocity, size_t n, std::function<double()> noise = {})
{
    voice.trigger(velocity);
    if constexpr (std::is_base_of_v<QuindrelTom, Voice>)
        return render(
            voice, n, noise ? noise : []
                          { return 0.0; });
    return render(voice, n);
}

// Rings each knob end and checks the pitch (base frequency times the tuning
// curve) and the decay: the resonator's amplitude falls by sqrt(1 - g q) per
// sample, so the peaks of the ring fall along a line of that slope in log scale.
template <typename Voice>
void checkRing(const char* name, double baseFrequency, double baseDamping)
{
    for (float sr : { 44100.0f, 96000.0f })
        for (double tuning : { 0.0, 0.5, 1.0 })
            for (double decay : { 0.0, 1.0 })
            {
                Voice voice;
                voice.setSampleRate(sr);
                voice.setTuning(tuning);
                voice.setDecay(decay);
                if constexpr (std::is_base_of_v<QuindrelTom, Voice>)
                    voice.setSnappy(0.0);

                const double f = baseFrequency * quindrel::tuningCurve(tuning);
                const double g = 2.0 * std::sin(quindrel::pi * f / sr);
                const double slope = std::log(1.0 - g * baseDamping * quindrel::decayCurve(decay)) / 2.0;
                const auto from = (size_t) (sr * 0.005f); // after the kick
                const auto to = from + (size_t) (-5.0 / slope);
                const auto out = renderNote(voice, 1.0f, to + 1);
                const auto where = std::string(name) + " tuning " + std::to_string(tuning) + " decay " + std::to_string(decay) + " at " + std::to_string((int) sr);
                EXPECT_NEAR(zeroCrossingFrequency(out, from, to, sr), f, f * 0.01) << where;

                size_t first = 0, last = 0; // the first and last peaks of the ring
                for (size_t i = from; i < to; ++i)
                    if (std::fabs(out[i]) >= std::fabs(out[i - 1]) && std::fabs(out[i]) > std::fabs(out[i + 1]))
                        (first == 0 ? first : last) = i;
                ASSERT_GT(last, first) << where;
                EXPECT_NEAR(std::log(std::fabs(out[last] / out[first])) / (double) (last - first), slope, std::fabs(slope) * 0.03) << where;
            }
}
} // namespace

TEST(EngineTomConga, RingPitchAndDecayFollowTheKnobs)
{
    checkRing<QuindrelLowConga>("low conga", 190.0, 0.023);
    checkRing<QuindrelMidConga>("mid conga", 285.0, 0.028);
    checkRing<QuindrelHiConga>("hi conga", 400.0, 0.03);
    checkRing<QuindrelLowTom>("low tom", 86.0, 0.04);
    checkRing<QuindrelMidTom>("mid tom", 140.0, 0.045);
    checkRing<QuindrelHiTom>("hi tom", 186.0, 0.045);
}

// The note is linear in the velocity (the conga's scales the strike, the tom's
// the height of the pulse and of the noise) and the tom's skin is noise times
// Snappy: gone at 0, half as loud at 0.5 as at 1.
TEST(EngineTomConga, VelocityAndSnappyScaleLinearly)
{
    auto conga = [](float velocity)
    {
        QuindrelMidConga voice;
        voice.setSampleRate(48000.0f);
        return renderNote(voice, velocity, 20000);
    };
    auto tom = [](float velocity, double snappy, bool withNoise = true)
    {
        QuindrelMidTom voice;
        voice.setSampleRate(48000.0f);
        voice.setSnappy(snappy);
        return renderNote(voice, velocity, 20000, withNoise ? std::function<double()>(Noise{ 7 }) : std::function<double()>());
    };
    const auto congaFull = conga(1.0f), congaHalf = conga(0.5f);
    const auto tomFull = tom(1.0f, 1.0), tomHalf = tom(0.5f, 1.0);
    const auto plain = tom(1.0f, 0.0, false), halfSkin = tom(1.0f, 0.5);
    EXPECT_EQ(tom(1.0f, 0.0), plain) << "at Snappy 0 the noise must not reach the output";
    for (size_t i = 0; i < plain.size(); ++i)
    {
        ASSERT_NEAR(congaHalf[i], 0.5 * congaFull[i], 1e-12) << "conga velocity, sample " << i;
        ASSERT_NEAR(tomHalf[i], 0.5 * tomFull[i], 1e-12) << "tom velocity, sample " << i;
        ASSERT_NEAR(halfSkin[i] - plain[i], 0.5 * (tomFull[i] - plain[i]), 1e-12) << "tom snappy, sample " << i;
    }
    EXPECT_GT(peakOf(congaFull), 0.5);
    EXPECT_GT(std::fabs(tomFull[10000] - plain[10000]) + std::fabs(tomFull[10001] - plain[10001]), 1e-3) << "the skin should still sound";
    EXPECT_LT(peakOf(tom(0.0f, 1.0)), 1e-15) << "velocity 0";
}
