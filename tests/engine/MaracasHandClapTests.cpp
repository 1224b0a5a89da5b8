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
// A repeatable white noise in -0.5 to 0.5 for voices fed by the noise tap.
struct TestNoise
{
    uint32_t state = 1;
    double next()
    {
        state = state * 1664525u + 1013904223u;
        return (double)(int32_t)state / 4294967296.0;
    }
};

double peakBetween(const std::vector<double>& signal, size_t from, size_t to)
{
    return peakOf(std::vector<double>(signal.begin() + (long)from, signal.begin() + (long)to));
}

std::vector<double> renderMaracas(float sampleRate, double tone, double toneLater = -1.0)
{
    QuindrelMaracas voice;
    voice.setSampleRate(sampleRate);
    voice.setTone(tone);
    voice.trigger(1.0f);
    // A steady input at half the rate shows the envelope alone; the negative
    // half passes the shaper unbent.
    std::vector<double> out((size_t)(sampleRate * 0.05f));
    for (size_t i = 0; i < out.size(); ++i)
    {
        if (toneLater >= 0.0 && i == out.size() / 4)
            voice.setTone(toneLater);
        out[i] = voice.renderSample(i % 2 == 0 ? -0.5 : 0.0);
    }
    return out;
}
} // namespace

TEST(EngineMaracas, ReleaseIsFarShorterInSecondsAtHighRates)
{
    // The release coefficient grows with the rate (0.02 at 44.1 kHz, 0.087 at
    // 192 kHz) instead of following k, so 1 ms after the 20 ms burst the
    // envelope has fallen much further at 192 kHz.
    auto fallAfterOneMillisecond = [](float sr)
    {
        const auto out = renderMaracas(sr, 0.5);
        const auto gateEnd = (size_t)(sr * 0.02f);
        const auto later = gateEnd + (size_t)(sr * 0.001f);
        return peakBetween(out, later - 8, later) / peakBetween(out, gateEnd - 8, gateEnd);
    };
    const double at44 = fallAfterOneMillisecond(44100.0f);
    const double at192 = fallAfterOneMillisecond(192000.0f);
    EXPECT_GT(at44, 0.75);
    EXPECT_LT(at192, 0.65);
}

TEST(EngineMaracas, ToneMovesTheHighPassAtOnce)
{
    // The input's alternation at half the rate passes any high-pass; the
    // brighter the tone, the less of the burst's slower motion remains.
    QuindrelMaracas dark, bright;
    for (auto* voice : {&dark, &bright})
        voice->setSampleRate(44100.0f);
    dark.setTone(0.0);
    bright.setTone(1.0);
    dark.trigger(1.0f);
    bright.trigger(1.0f);
    TestNoise noise;
    double darkEnergy = 0.0, brightEnergy = 0.0;
    for (int i = 0; i < 2000; ++i)
    {
        const double x = noise.next();
        darkEnergy += std::pow(dark.renderSample(x), 2.0);
        brightEnergy += std::pow(bright.renderSample(x), 2.0);
    }
    EXPECT_GT(darkEnergy, 1.5 * brightEnergy);

    // Moved during a note, the knob acts from that sample on.
    const auto steady = renderMaracas(44100.0f, 0.5);
    const auto moved = renderMaracas(44100.0f, 0.5, 1.0);
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
    for (int i = 0; clap.isActive(); ++i)
    {
        const int before = clap.getStage();
        clap.renderSample(noise.next());
        if (clap.getStage() != before)
            starts.push_back(i + 1);
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
    const double k = info.rateScale;
    EXPECT_NEAR(fast[0], std::log(0.05) / std::log(1.0 - 0.006 * k), 1.0);

    QuindrelHandClap clap;
    clap.setSampleRate(44100.0f);
    clap.trigger(1.0f);
    for (int i = 0; i < 1200; ++i)
        clap.renderSample(0.1);
    ASSERT_EQ(clap.getStage(), 2);
    clap.trigger(1.0f);
    EXPECT_EQ(clap.getStage(), 0);
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

TEST(EngineHandClap, ReverbLengthensTheTailEvenDuringTheNote)
{
    auto tailPeak = [](double reverb, double reverbLater)
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
                clap.setReverb(reverbLater);
            out[i] = clap.renderSample(noise.next());
        }
        // Well after the last burst has faded, only the tail is left.
        return peakBetween(out, 20000, 30000);
    };
    const double shortTail = tailPeak(0.0, 0.0);
    const double longTail = tailPeak(1.0, 1.0);
    EXPECT_GT(longTail, 3.0 * shortTail);
    const double turnedUp = tailPeak(0.0, 1.0);
    EXPECT_TRUE(turnedUp > 1.5 * shortTail && turnedUp < longTail) << "the knob should act on a sounding clap: " << shortTail << ", " << turnedUp << ", " << longTail;
}
