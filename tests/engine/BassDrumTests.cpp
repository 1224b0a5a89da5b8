#include "EngineTestHelpers.h"
#include "engine/QuindrelBassDrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using enginetest::bassDrum;

// Samples of the rise (until the envelope first goes down) and of the fall
// while the envelope is above 0.
std::pair<int, int> envelopePhases(float sampleRate)
{
    QuindrelBassDrum drum;
    drum.setSampleRate(sampleRate);
    drum.trigger(1.0f);
    int rise = 0, fall = 0;
    double previous = 0.0;
    for (int i = 0; i < 10000; ++i)
    {
        drum.renderSample();
        const double e = drum.getEnvelope();
        fall += (fall > 0 || e < previous) && e > 0.0 ? 1 : 0;
        rise += fall == 0 ? 1 : 0;
        previous = e;
    }
    EXPECT_EQ(previous, 0.0) << "the envelope should end at 0";
    return { rise, fall };
}

// The rise lasts sr * 0.0043 samples; the fall is a cubic that reaches 0 after
// the smallest n with n(n+1)(n+2)/6 >= 12500 / k^3: 42 samples at 44.1 kHz and
// 71 at 88.2 kHz, so 41 and 70 samples above 0.
TEST(EngineBassDrum, PitchEnvelopeLengthsInSamples)
{
    EXPECT_EQ(envelopePhases(44100.0f), std::make_pair(189, 41));
    EXPECT_EQ(envelopePhases(88200.0f), std::make_pair(379, 70));
}

TEST(EngineBassDrum, RingSettlesNearItsRestingFrequency)
{
    for (float sr : { 44100.0f, 96000.0f })
    {
        auto core = enginetest::makeEngine(sr);
        core->setParameter(19, 1.0f); // longest decay
        core->trigger(bassDrum, 1.0f);
        const auto out = enginetest::renderVoice(*core, bassDrum, (int) sr);
        // 47.5 Hz at rest, plus what is left of the sweep.
        const double f = enginetest::zeroCrossingFrequency(out, (size_t) (sr * 0.25f), out.size(), sr);
        EXPECT_GT(f, 46.0) << sr;
        EXPECT_LT(f, 50.0) << sr;
    }
}

TEST(EngineBassDrum, RetriggerRestartsTheEnvelopeButKeepsTheRing)
{
    QuindrelBassDrum fresh, retriggered;
    fresh.setSampleRate(44100.0f);
    retriggered.setSampleRate(44100.0f);

    retriggered.trigger(1.0f);
    for (int i = 0; i < 100; ++i)
        retriggered.renderSample();
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
