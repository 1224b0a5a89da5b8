#include "EngineTestHelpers.h"
#include "engine/QuindrelCowBell.h"
#include "engine/QuindrelHandClap.h"
#include "engine/QuindrelHiHats.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

using namespace enginetest;

namespace
{
// Amplitude of the component at frequency f, Hann-windowed so that strong
// neighbours don't leak into it.
double amplitudeAt(const std::vector<double>& signal, double f, double sampleRate)
{
    double re = 0.0, im = 0.0, windowSum = 0.0;
    const auto n = (double) signal.size();
    for (size_t i = 0; i < signal.size(); ++i)
    {
        const double w = 0.5 - 0.5 * std::cos(quindrel::twoPi * (double) i / n);
        const double phase = quindrel::twoPi * f * (double) i / sampleRate;
        re += w * signal[i] * std::cos(phase);
        im += w * signal[i] * std::sin(phase);
        windowSum += w;
    }
    return 2.0 * std::hypot(re, im) / windowSum;
}

// True if f stands out clearly from the spectrum a few hertz either side.
bool isSpectralPeak(const std::vector<double>& signal, double f, double sampleRate)
{
    const double at = amplitudeAt(signal, f, sampleRate);
    return at > 5.0 * amplitudeAt(signal, f - 9.0, sampleRate) && at > 5.0 * amplitudeAt(signal, f + 9.0, sampleRate);
}

double rms(const std::vector<double>& signal, size_t from, size_t to)
{
    double sum = 0.0;
    for (size_t i = from; i < to; ++i)
        sum += signal[i] * signal[i];
    return std::sqrt(sum / (double) (to - from));
}

// Samples from the trigger until the voice has last been above 1% of its peak.
size_t audibleLength(const std::vector<double>& signal)
{
    const double threshold = 0.01 * peakOf(signal);
    size_t last = 0;
    for (size_t i = 0; i < signal.size(); ++i)
        if (std::fabs(signal[i]) > threshold)
            last = i;
    return last;
}
} // namespace

// The six oscillators of the shared bank under the cymbal and hats, and the
// cow bell's own two at two tunings.
TEST(EngineMetalVoices, OscillatorsSoundAtTheirFrequencies)
{
    for (float sr : { 44100.0f, 96000.0f })
    {
        QuindrelCore core;
        core.setSampleRate(sr);
        std::vector<double> bank((size_t) sr);
        Frame frame{};
        for (auto& y : bank)
        {
            core.renderFrame(frame.data());
            y = core.getMetalLow();
        }
        for (double f : { 543.499, 806.5, 510.2, 292.4, 361.7, 210.1 })
            EXPECT_TRUE(isSpectralPeak(bank, f, sr)) << "bank " << f << " Hz at " << sr;

        for (double tuning : { 0.5, 1.0 })
        {
            auto engine = makeEngine(sr);
            engine->setParameter(46, (float) tuning);
            engine->trigger(cowBell, 1.0f);
            const auto out = renderVoice(*engine, cowBell, (int) (sr * 0.25f));
            for (double f : { 2.58686, 3.8386482 })
                EXPECT_TRUE(isSpectralPeak(out, (tuning + 0.5) * 210.1 * f, sr)) << "cow bell tuning " << tuning << " at " << sr;
        }
    }
}

TEST(EngineMetalVoices, CymbalToneCrossfadesBodyAndHitAndDecaySetsTheLength)
{
    auto render = [](float tone)
    {
        auto core = makeEngine();
        core->setParameter(51, tone);
        core->trigger(cymbal, 1.0f);
        return renderVoice(*core, cymbal, 66150);
    };
    const auto body = render(0.0f);
    const auto half = render(0.5f);
    const auto hit = render(1.0f);

    // The mix is linear in the knob.
    for (size_t i = 0; i < body.size(); ++i)
        ASSERT_NEAR(half[i], 0.5 * (body[i] + hit[i]), 1e-9) << "at " << i;

    // Late in the note the hit has gone and Tone 1 leaves half the body;
    // early on the hit adds to it.
    EXPECT_NEAR(rms(hit, 44100, 66150) / rms(body, 44100, 66150), 0.5, 0.02);
    EXPECT_GT(rms(hit, 0, 2000) / rms(body, 0, 2000), 0.8);

    // The decay knob sets the length of each metal voice.
    for (const auto& [voice, row] : { std::pair{ cowBell, 47 }, { cymbal, 52 }, { openHiHat, 54 }, { closedHiHat, 56 } })
    {
        size_t lengths[2];
        for (int decay = 0; decay < 2; ++decay)
        {
            auto core = makeEngine();
            core->setParameter(row, (float) decay);
            core->trigger(voice, 1.0f);
            lengths[decay] = audibleLength(renderVoice(*core, voice, 441000));
        }
        EXPECT_TRUE(lengths[0] > 0 && lengths[1] > 2 * lengths[0]) << "voice " << voice << ": " << lengths[0] << " to " << lengths[1];
    }
}

namespace
{
// The open hat's envelope and output, with the closed hat fired at chokeAt
// (if not negative) and the open hat fired again at retriggerAt.
std::pair<Signal, Signal> runOpenHat(int chokeAt, int retriggerAt = -1)
{
    auto core = makeEngine();
    const auto& openHat = dynamic_cast<const QuindrelOpenHiHat&>(core->getInstrument(openHiHat));
    core->trigger(openHiHat, 1.0f);
    Signal envelope, output;
    Frame frame{};
    for (int i = 0; i < 100000; ++i)
    {
        if (i == chokeAt)
            core->trigger(closedHiHat, 1.0f);
        if (i == retriggerAt)
            core->trigger(openHiHat, 1.0f);
        core->renderFrame(frame.data());
        envelope.push_back(openHat.getEnvelope());
        output.push_back(frame[openHiHat]);
    }
    return { envelope, output };
}
} // namespace

TEST(EngineMetalVoices, ClosedHatChokesTheOpenOneAfterItsAttack)
{
    const auto [freeEnvelope, freeOutput] = runOpenHat(-1);
    const int attack = 42; // whole samples of the 0.97 ms at 44.1 kHz

    // Fired during the attack, the choke waits for its end and then shortens the decay.
    const auto [early, earlyOutput] = runOpenHat(10);
    EXPECT_TRUE(std::equal(early.begin(), early.begin() + attack, freeEnvelope.begin())) << "the attack changed";
    EXPECT_LT(early[2000], 0.5 * freeEnvelope[2000]);
    EXPECT_LT(audibleLength(earlyOutput), audibleLength(freeOutput) / 2);

    // Fired during the decay, it acts from the next sample on.
    const auto [late, lateOutput] = runOpenHat(3000);
    EXPECT_TRUE(std::equal(lateOutput.begin(), lateOutput.begin() + 3000, freeOutput.begin())) << "changed before the choke";
    EXPECT_LT(late[3001], freeEnvelope[3001]);
    EXPECT_LT(audibleLength(lateOutput), audibleLength(freeOutput) / 2);

    // A new open hat clears the choke, whether or not one was sounding.
    const auto choked = runOpenHat(3000, 50000).first, unchoked = runOpenHat(-1, 50000).first;
    EXPECT_TRUE(std::equal(choked.begin() + 50000, choked.begin() + 60000, unchoked.begin() + 50000)) << "still choked";
}
