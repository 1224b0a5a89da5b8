#include "EngineTestHelpers.h"
#include "engine/QuindrelBassDrum.h"
#include "engine/QuindrelCowBell.h"
#include "engine/QuindrelHandClap.h"
#include "engine/QuindrelHiHats.h"
#include "engine/QuindrelSnareDrum.h"
#include "engine/SignalBlocks.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace quindrel;

namespace
{
// Steady-state gain for a constant and for an alternating input.
template <typename Filter>
void expectDcAndNyquistGain(Filter filter, double dc, double nyquist, const char* name)
{
    Filter alternating = filter;
    double y = 0.0, z = 0.0;
    for (int i = 0; i < 20000; ++i)
    {
        y = filter.process(1.0);
        z = std::fabs(alternating.process(i % 2 == 0 ? 1.0 : -1.0));
    }
    EXPECT_NEAR(y, dc, 1e-9) << name << " at DC";
    EXPECT_NEAR(z, nyquist, 1e-9) << name << " at Nyquist";
}
} // namespace

// Each knob curve at its ends and its middle, as the equations give them.
TEST(EngineSignalBlocks, KnobCurvesPassTheirPointsAndFiltersTheRightEnds)
{
    const struct
    {
        const char* name;
        double (*curve)(double);
        double points[3]; // at 0, 0.5 and 1
        double tolerance; // relative
    } curves[] = {
        { "tuning", tuningCurve, { 0.905, 1.0, 1.131 }, 1e-12 },
        { "decay", decayCurve, { 4.0, 1.0, 0.25 }, 1e-12 },
        { "bass drum tone", QuindrelBassDrum::toneCutoffForKnob, { 200.0, 700.0, 2200.0 }, 1e-9 },
        { "bass drum damping", QuindrelBassDrum::dampingForKnob, { 0.3, 0.033, 0.01 }, 3e-3 },
        { "bass drum sweep", QuindrelBassDrum::sweepRateForKnob, { 5.0, 1.0, 0.05 }, 1e-6 },
        { "snare body", QuindrelSnareDrum::bodyGainForKnob, { 0.0, 0.15, 1.0 }, 1e-9 },
        { "snare tone", QuindrelSnareDrum::toneGainForKnob, { 1.0, 0.5, 0.15 }, 1e-9 },
        { "snare decay", QuindrelSnareDrum::decayRateForKnob, { 5.0, 1.0, 0.2 }, 1e-9 },
        { "open hat decay", QuindrelOpenHiHat::decayRateForKnob, { 0.00032, 0.0001, 0.00006 }, 1e-9 },
        { "closed hat decay", QuindrelClosedHiHat::decayRateForKnob, { 0.004, 0.0013, 0.00032 }, 1e-9 },
        { "cow bell decay", QuindrelCowBell::decayFactorForKnob, { 10.0, 2.0, 1.0 }, 1e-9 },
        { "clap reverb", QuindrelHandClap::reverbRateForKnob, { 0.0005, 0.0002, 0.0001 }, 1e-9 },
    };
    for (const auto& c : curves)
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(c.curve(0.5 * i), c.points[i], std::fmax(c.points[i] * c.tolerance, 1e-12)) << c.name << " at " << 0.5 * i;

    // Filters pass and block the right ends.
    Hp1 hp1;
    hp1.design(50.0, 44100.0);
    expectDcAndNyquistGain(hp1, 0.0, 1.0, "Hp1");
    const double w = twoPi * 1000.0 / 44100.0;
    const double alpha = std::sin(w) * 0.5;
    Biquad hp, lp, bp;
    hp.designHighPass(w, alpha);
    lp.designLowPass(w, alpha);
    bp.designBandPass(w, alpha);
    expectDcAndNyquistGain(hp, 0.0, 1.0, "high-pass");
    expectDcAndNyquistGain(lp, 1.0, 0.0, "low-pass");
    expectDcAndNyquistGain(bp, 0.0, 0.0, "band-pass");

    // The band-pass has unity gain at its centre.
    double peak = 0.0;
    for (int i = 0; i < 44100; ++i)
    {
        const double y = bp.process(std::sin(w * i));
        peak = i > 22050 ? std::fmax(peak, std::fabs(y)) : 0.0;
    }
    EXPECT_NEAR(peak, 1.0, 1e-3);
}
