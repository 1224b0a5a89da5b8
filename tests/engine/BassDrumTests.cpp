#include "EngineTestHelpers.h"
#include "engine/QuindrelBassDrum.h"
#include "engine/QuindrelClaves.h"
#include "engine/QuindrelRimShot.h"

#include <gtest/gtest.h>

using namespace enginetest;

// The rise of the bass drum's pitch envelope lasts sr * 0.0043 samples; the
// fall is a cubic that reaches 0 after the smallest n with n(n+1)(n+2)/6 >=
// 12500 / k^3: 42 samples at 44.1 kHz and 71 at 88.2 kHz, so 41 and 70 above 0.
TEST(EngineBassDrum, PitchEnvelopeLengthsRestingRingAndRetrigger)
{
    for (const auto& [sr, rise, fall] : { std::tuple{ 44100.0f, 189, 41 }, { 88200.0f, 379, 70 } })
    {
        QuindrelBassDrum drum;
        drum.setSampleRate(sr);
        drum.trigger(1.0f);
        int rising = 0, falling = 0;
        double previous = 0.0;
        for (int i = 0; i < 10000; ++i, previous = drum.getEnvelope())
        {
            drum.renderSample();
            falling += (falling > 0 || drum.getEnvelope() < previous) && drum.getEnvelope() > 0.0 ? 1 : 0;
            rising += falling == 0 ? 1 : 0;
        }
        EXPECT_TRUE(rising == rise && falling == fall && previous == 0.0) << sr << ": " << rising << " up, " << falling << " down, ends at " << previous;
    }

    // The ring settles near its resting frequency; a retrigger keeps the earlier ring.
    for (float sr : { 44100.0f, 96000.0f })
    {
        auto core = makeEngine(sr);
        core->setParameter(19, 1.0f); // longest decay
        core->trigger(bassDrum, 1.0f);
        const auto out = renderVoice(*core, bassDrum, (int) sr);
        // 47.5 Hz at rest, plus what is left of the sweep.
        EXPECT_NEAR(zeroCrossingFrequency(out, (size_t) (sr * 0.25f), out.size(), sr), 48.0, 2.0) << sr;
    }

    // A retrigger restarts the envelope, but the earlier ring sounds on.
    QuindrelBassDrum fresh, retriggered;
    fresh.setSampleRate(44100.0f);
    retriggered.setSampleRate(44100.0f);
    retriggered.trigger(1.0f);
    render(retriggered, 100);
    fresh.trigger(1.0f);
    retriggered.trigger(1.0f);
    double difference = 0.0;
    for (int i = 0; i < 50; ++i)
    {
        difference += std::fabs(fresh.renderSample() - retriggered.renderSample());
        ASSERT_DOUBLE_EQ(fresh.getEnvelope(), retriggered.getEnvelope()) << "at sample " << i;
    }
    EXPECT_GT(difference, 0.1) << "the earlier ring should still sound";
}

TEST(EngineClaves, RingsAtItsTuningAtEveryRateAndDecayLengthensTheRing)
{
    for (float sr : knownRates)
        for (double tuning : { 0.0, 0.5, 1.0 })
        {
            QuindrelClaves voice;
            voice.setSampleRate(sr);
            voice.setTuning(tuning);
            voice.setDecay(1.0);
            const auto out = renderUntilSilent(voice, 1.0f);
            const double expected = 2424.0 * quindrel::tuningCurve(tuning);
            EXPECT_NEAR(zeroCrossingFrequency(out, 0, out.size(), sr), expected, expected * 0.005) << "tuning " << tuning << " at " << sr;
        }

    // At Decay 0 the ring is gone after 2000 samples, at Decay 1 it is still clearly there.
    auto lateLevel = [](double decay)
    {
        QuindrelClaves voice;
        voice.setSampleRate(44100.0f);
        voice.setDecay(decay);
        return peakOf(renderUntilSilent(voice, 1.0f), 2000, 3000);
    };
    EXPECT_LT(lateLevel(0.0), 1e-6);
    EXPECT_GT(lateLevel(1.0), 0.1);
}

TEST(EngineRimShot, ShapedOutputStaysBoundedAndEnds)
{
    for (float sr : knownRates)
    {
        for (float velocity : { 0.3779527559055118f, 1.0f, 1.623f })
        {
            QuindrelRimShot voice;
            voice.setSampleRate(sr);
            const auto out = renderUntilSilent(voice, velocity);
            // The shaper stays within -1..0, so the wave never exceeds the drive
            // 2.645 v by much; the filters add some overshoot. NaN fails both.
            EXPECT_TRUE(!voice.isActive() && peakOf(out) > 0.05 * velocity && peakOf(out) < 2.645 * velocity * 2.0) << sr << ", velocity " << velocity << ": " << peakOf(out);
        }
        // Velocity 0: the resonators ring inside, but nothing comes out.
        QuindrelRimShot silent;
        silent.setSampleRate(sr);
        EXPECT_LT(peakOf(renderUntilSilent(silent, 0.0f)), 1e-15) << sr;
    }
}
