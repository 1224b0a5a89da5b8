#include "EngineTestHelpers.h"
#include "engine/QuindrelClaves.h"
#include "engine/QuindrelRimShot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using enginetest::claves;
using enginetest::rimShot;

namespace
{
template <typename Voice>
std::vector<double> renderUntilSilent(Voice& voice, float velocity, long limit = 2000000)
{
    voice.trigger(velocity);
    std::vector<double> out;
    while (voice.isActive() && (long)out.size() < limit)
        out.push_back(voice.renderSample());
    return out;
}
} // namespace

TEST(EngineClaves, RingsAtItsTuningAtEveryRate)
{
    for (float sr : enginetest::knownRates)
    {
        for (double tuning : {0.0, 0.5, 1.0})
        {
            QuindrelClaves voice;
            voice.setSampleRate(sr);
            voice.setTuning(tuning);
            voice.setDecay(1.0);
            const auto out = renderUntilSilent(voice, 1.0f);
            const double expected = 2424.0 * quindrel::tuningCurve(tuning);
            EXPECT_NEAR(enginetest::zeroCrossingFrequency(out, 0, out.size(), sr), expected, expected * 0.005)
                << "tuning " << tuning << " at " << sr;
        }
    }
}

TEST(EngineClaves, VelocityScalesAndDecayLengthens)
{
    QuindrelClaves loud, soft;
    for (auto* voice : {&loud, &soft})
    {
        voice->setSampleRate(44100.0f);
        voice->setTuning(0.5);
        voice->setDecay(0.5);
    }
    const auto a = renderUntilSilent(loud, 1.0f);
    const auto b = renderUntilSilent(soft, 0.5f);
    ASSERT_GT(a.size(), 1000u);
    for (size_t i = 0; i < 1000; ++i)
        ASSERT_NEAR(b[i], 0.5 * a[i], 1e-12) << "the claves is linear in velocity, sample " << i;

    // The ring's length follows the damping: at Decay 0 it is gone after 2000
    // samples, at Decay 1 it is still clearly there.
    auto lateLevel = [](double decay)
    {
        QuindrelClaves voice;
        voice.setSampleRate(44100.0f);
        voice.setDecay(decay);
        const auto out = renderUntilSilent(voice, 1.0f);
        return enginetest::peakOf(std::vector<double>(out.begin() + 2000, out.begin() + 3000));
    };
    EXPECT_LT(lateLevel(0.0), 1e-6);
    EXPECT_GT(lateLevel(1.0), 0.1);
}

TEST(EngineRimShot, ShapedOutputStaysBoundedAndEnds)
{
    for (float sr : enginetest::knownRates)
    {
        for (float velocity : {0.3779527559055118f, 1.0f, 1.623f})
        {
            QuindrelRimShot voice;
            voice.setSampleRate(sr);
            voice.setTuning(0.5);
            voice.setDecay(0.5);
            const auto out = renderUntilSilent(voice, velocity);
            EXPECT_FALSE(voice.isActive()) << sr;
            for (double y : out)
                ASSERT_TRUE(std::isfinite(y));
            // The shaper stays within -1..0, so the envelope-scaled wave never
            // exceeds the velocity drive 2.645 v; the filters add some overshoot.
            const double peak = enginetest::peakOf(out);
            EXPECT_GT(peak, 0.05 * velocity) << sr;
            EXPECT_LT(peak, 2.645 * velocity * 2.0) << sr;
        }
    }
}

TEST(EngineRimShot, VelocityZeroIsSilent)
{
    QuindrelRimShot voice;
    voice.setSampleRate(44100.0f);
    const auto out = renderUntilSilent(voice, 0.0f);
    EXPECT_FALSE(out.empty());
    EXPECT_LT(enginetest::peakOf(out), 1e-15);
}

TEST(EngineRimShot, TuningShiftsTheSpectrumUp)
{
    // More zero crossings for a higher tuning: both resonators move together.
    auto crossings = [](double tuning)
    {
        QuindrelRimShot voice;
        voice.setSampleRate(44100.0f);
        voice.setTuning(tuning);
        voice.setDecay(0.5);
        const auto out = renderUntilSilent(voice, 1.0f);
        int count = 0;
        for (size_t i = 1; i < std::min<size_t>(out.size(), 2000); ++i)
            count += (out[i - 1] <= 0.0 && out[i] > 0.0) ? 1 : 0;
        return count;
    };
    EXPECT_GT(crossings(1.0), crossings(0.0));
}
