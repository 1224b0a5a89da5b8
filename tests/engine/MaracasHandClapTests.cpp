#include "EngineTestHelpers.h"
#include "engine/QuindrelHandClap.h"
#include "engine/QuindrelMaracas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

using enginetest::peakOf;

namespace
{
// A repeatable white noise in -0.5 to 0.5, as the noise tap gives.
struct TestNoise
{
    uint32_t state = 1;
    double next()
    {
        state = state * 1664525u + 1013904223u;
        return (double) (int32_t) state / 4294967296.0;
    }
};

double peakBetween(const std::vector<double>& signal, size_t from, size_t to)
{
    return peakOf(std::vector<double>(signal.begin() + (long) from, signal.begin() + (long) to));
}

// 50 ms of maracas, the tone moved to toneLater (if given) a quarter of the way in.
std::vector<double> renderMaracas(float sampleRate, double toneLater = -1.0)
{
    QuindrelMaracas voice;
    voice.setSampleRate(sampleRate);
    voice.setTone(0.5);
    voice.trigger(1.0f);
    std::vector<double> out((size_t) (sampleRate * 0.05f));
    for (size_t i = 0; i < out.size(); ++i)
    {
        if (toneLater >= 0.0 && i == out.size() / 4)
            voice.setTone(toneLater);
        // Alternating at half the rate, the input passes the high-pass and the
        // shaper unchanged, so the output shows the envelope alone.
        out[i] = voice.renderSample(i % 2 == 0 ? -0.5 : 0.0);
    }
    return out;
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
        const auto gateEnd = (size_t) (sr * 0.02f);
        const auto later = gateEnd + (size_t) (sr * 0.001f);
        return peakBetween(out, later - 8, later) / peakBetween(out, gateEnd - 8, gateEnd);
    };
    EXPECT_GT(fallAfterOneMillisecond(44100.0f), 0.75);
    EXPECT_LT(fallAfterOneMillisecond(192000.0f), 0.65);

    // Moved during a note, the tone changes the sound from that sample on.
    const auto steady = renderMaracas(44100.0f);
    const auto moved = renderMaracas(44100.0f, 1.0);
    const size_t change = steady.size() / 4;
    for (size_t i = 0; i < change; ++i)
        ASSERT_EQ(steady[i], moved[i]) << "changed before the knob moved, at " << i;
    EXPECT_GT(std::fabs(steady[change] - moved[change]), 1e-6);
}

namespace
{
// Sample positions at which the clap's burst is struck again.
std::vector<int> clapStageStarts(float sampleRate)
{
    QuindrelHandClap clap;
    clap.setSampleRate(sampleRate);
    TestNoise noise;
    clap.trigger(1.0f);
    std::vector<int> starts;
    for (int i = 1; clap.isActive(); ++i)
    {
        const int before = clap.getStage();
        clap.renderSample(noise.next());
        if (clap.getStage() != before)
            starts.push_back(i);
    }
    return starts;
}
} // namespace

TEST(EngineHandClap, StagesStrikeAtTheirTimesAndRestartOnRetrigger)
{
    // Stages 0 and 1 fall from 0.4 to 0.02, stage 2 only to 0.1, stage 3 never ends.
    const auto starts = clapStageStarts(44100.0f);
    ASSERT_EQ(starts.size(), 3u);
    EXPECT_EQ(starts[0], 498);
    EXPECT_EQ(starts[1] - starts[0], 554);
    EXPECT_EQ(starts[2] - starts[1], 261);

    // At other rates the falls are scaled by k, not by the rate.
    const auto fast = clapStageStarts(96000.0f);
    ASSERT_EQ(fast.size(), 3u);
    SampleRateInfo info;
    info.fill(96000.0);
    EXPECT_NEAR(fast[0], std::log(0.05) / std::log(1.0 - 0.006 * info.rateScale), 1.0);

    QuindrelHandClap clap;
    clap.setSampleRate(44100.0f);
    clap.trigger(1.0f);
    for (int i = 0; i < 1200; ++i)
        clap.renderSample(0.1);
    ASSERT_EQ(clap.getStage(), 2);
    clap.trigger(1.0f);
    for (int i = 0; i < 497; ++i)
        clap.renderSample(0.1);
    EXPECT_EQ(clap.getStage(), 0) << "a retrigger starts over with a full burst";
}

TEST(EngineHandClap, LevelTargetZeroIsSilentAtOnce)
{
    QuindrelHandClap clap;
    clap.setSampleRate(44100.0f);
    TestNoise noise;
    clap.trigger(1.0f);
    std::vector<double> loud(2000);
    for (auto& y : loud)
        y = clap.renderSample(noise.next());
    ASSERT_GT(peakOf(loud), 0.1);

    // The smoothed level is still near 1, but the clap carries the target itself.
    clap.setLevel(0.0);
    clap.trigger(1.0f);
    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ(clap.renderSample(noise.next()), 0.0) << "at " << i;
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
        TestNoise noise;
        clap.trigger(1.0f);
        std::vector<double> out(30000);
        for (size_t i = 0; i < out.size(); ++i)
        {
            if (i == 2000)
                clap.setReverb(later);
            out[i] = clap.renderSample(noise.next());
        }
        return peakBetween(out, 20000, 30000);
    };
    const double shortTail = tailPeak(0.0, 0.0), longTail = tailPeak(1.0, 1.0), turnedUp = tailPeak(0.0, 1.0);
    EXPECT_GT(longTail, 3.0 * shortTail);
    EXPECT_TRUE(turnedUp > 1.5 * shortTail && turnedUp < longTail) << shortTail << ", " << turnedUp << ", " << longTail;
}
