#include "EngineTestHelpers.h"
#include "engine/QuindrelHandClap.h"
#include "engine/QuindrelMaracas.h"

#include <gtest/gtest.h>

using namespace enginetest;

namespace
{
// 50 ms of maracas, the tone moved to toneLater (if given) a quarter of the
// way in. Alternating at half the rate, the input passes the high-pass and the
// shaper unchanged, so the output shows the envelope alone.
Signal renderMaracas(float sampleRate, double toneLater = -1.0)
{
    QuindrelMaracas voice;
    voice.setSampleRate(sampleRate);
    voice.setTone(0.5);
    voice.trigger(1.0f);
    Signal out((size_t) (sampleRate * 0.05f));
    for (size_t i = 0; i < out.size(); ++i)
    {
        if (toneLater >= 0.0 && i == out.size() / 4)
            voice.setTone(toneLater);
        out[i] = voice.renderSample(i % 2 == 0 ? -0.5 : 0.0);
    }
    return out;
}

// Sample positions at which the clap's burst is struck again, at 44.1 kHz.
std::vector<int> clapStageStarts()
{
    QuindrelHandClap clap;
    clap.setSampleRate(44100.0f);
    Noise noise;
    clap.trigger(1.0f);
    std::vector<int> starts;
    for (int i = 1; clap.isActive(); ++i)
    {
        const int before = clap.getStage();
        clap.renderSample(noise());
        if (clap.getStage() != before)
            starts.push_back(i);
    }
    return starts;
}
} // namespace

TEST(EngineMaracas, ReleaseIsFarShorterInSecondsAtHighRatesAndToneActsAtOnce)
{
    // The release grows with the rate (0.02 at 44.1 kHz, 0.087 at 192 kHz)
    // instead of following k: 1 ms after the 20 ms burst the envelope has
    // fallen much further at 192 kHz.
    auto fallAfterOneMillisecond = [](float sr)
    {
        const auto out = renderMaracas(sr);
        const auto gateEnd = (size_t) (sr * 0.02f), later = gateEnd + (size_t) (sr * 0.001f);
        return peakOf(out, later - 8, later) / peakOf(out, gateEnd - 8, gateEnd);
    };
    EXPECT_GT(fallAfterOneMillisecond(44100.0f), 0.75);
    EXPECT_LT(fallAfterOneMillisecond(192000.0f), 0.65);

    // Moved during a note, the tone changes the sound from that sample on.
    const auto steady = renderMaracas(44100.0f), moved = renderMaracas(44100.0f, 1.0);
    const size_t change = steady.size() / 4;
    EXPECT_TRUE(std::equal(steady.begin(), steady.begin() + (long) change, moved.begin())) << "changed before the knob moved";
    EXPECT_GT(std::fabs(steady[change] - moved[change]), 1e-6);
}

TEST(EngineHandClap, StagesStrikeAtTheirTimesRestartOnRetriggerAndLevelZeroIsSilentAtOnce)
{
    // Stages 0 and 1 fall from 0.4 to 0.02, stage 2 only to 0.1, stage 3 never ends.
    const auto starts = clapStageStarts();
    EXPECT_EQ(starts, (std::vector<int>{ 498, 498 + 554, 498 + 554 + 261 }));

    QuindrelHandClap clap;
    clap.setSampleRate(44100.0f);
    clap.trigger(1.0f);
    render(clap, 1200, []
           { return 0.1; });
    ASSERT_EQ(clap.getStage(), 2);
    clap.trigger(1.0f);
    render(clap, 497, []
           { return 0.1; });
    EXPECT_EQ(clap.getStage(), 0) << "a retrigger starts over with a full burst";

    // At level 0 a trigger is silent at once: the smoothed level is still near
    // 1, but the clap carries the target itself.
    Noise noise;
    clap.setLevel(0.0);
    clap.trigger(1.0f);
    EXPECT_EQ(peakOf(render(clap, 2000, std::ref(noise))), 0.0);
    EXPECT_GT(clap.getLevel(), 0.01);
    EXPECT_TRUE(clap.isActive()) << "a silent clap still takes its time";
}

TEST(EngineHandClap, ReverbActsOnTheTailOfASoundingClap)
{
    // The peak of the tail alone, well after the last burst, with the Reverb
    // knob moved to `later` 2000 samples into the note.
    auto tailPeak = [](double reverb, double later)
    {
        QuindrelHandClap clap;
        clap.setSampleRate(44100.0f);
        clap.setReverb(reverb);
        Noise noise;
        clap.trigger(1.0f);
        render(clap, 2000, std::ref(noise));
        clap.setReverb(later);
        return peakOf(render(clap, 28000, std::ref(noise)), 18000);
    };
    const double shortTail = tailPeak(0.0, 0.0), longTail = tailPeak(1.0, 1.0), turnedUp = tailPeak(0.0, 1.0);
    EXPECT_GT(longTail, 3.0 * shortTail);
    EXPECT_TRUE(turnedUp > 1.5 * shortTail && turnedUp < longTail) << shortTail << ", " << turnedUp << ", " << longTail;
}
