#include "EngineTestHelpers.h"
#include "engine/DrumMachineCore.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using enginetest::peakOf;

namespace
{
std::vector<double> renderPulse(DrumMachineCore& core, int samples)
{
    std::vector<double> out((size_t) samples);
    for (auto& y : out)
        y = core.renderTriggerPulse();
    return out;
}

// Index of the largest rise (sign +1) or fall (sign -1) from one sample to the next.
size_t largestStep(const std::vector<double>& signal, double sign)
{
    size_t best = 1;
    for (size_t i = 1; i < signal.size(); ++i)
        best = sign * (signal[i] - signal[i - 1]) > sign * (signal[best] - signal[best - 1]) ? i : best;
    return best;
}
} // namespace

// The pulse rises about 60 samples after the trigger and falls back about
// 0.018 of its period P = sr / 1.1 later; it stops after P / 2. A silent
// engine has the pulse as well.
TEST(EngineTriggerPulse, EdgesFallWhereThePeriodPutsThemAndTheAccentTrackDrivesItToo)
{
    for (float sr : { 44100.0f, 96000.0f })
    {
        DrumMachineCore core;
        core.setSampleRate(sr);
        core.setTriggerOutEnabled(true);
        core.trigger(0, 1.0f);
        const double period = sr * 0.9090909090909091;
        const auto pulse = renderPulse(core, (int) period);

        const size_t rise = largestStep(pulse, 1.0);
        const size_t fall = largestStep(pulse, -1.0);
        EXPECT_EQ(rise, 59u) << sr;
        EXPECT_EQ(fall, (size_t) std::lround(period - std::trunc(period * 0.982) + 60.1)) << sr;
        EXPECT_GT(pulse[rise] - pulse[rise - 1], 0.2);
        EXPECT_LT(pulse[fall] - pulse[fall - 1], -0.2);
        EXPECT_LT(peakOf({ pulse.begin(), pulse.begin() + 40 }), 0.01) << "the foot is too high";
        EXPECT_LT(std::fabs(pulse.back()), 1e-6) << "the pulse should have died away";
    }

    // The accent track drives the pulse too (whether other instruments leave it idle is heard on the plug-in's output).
    QuindrelCore core;
    core.setTriggerOutEnabled(true);
    core.triggerOutSource = DrumMachineCore::accentTrack;
    core.trigger(DrumMachineCore::accentTrack, 1.0f);
    EXPECT_GT(peakOf(renderPulse(core, 2000)), 0.2) << "the accent track drives the pulse too";
}
