#include "EngineTestHelpers.h"
#include "engine/SignalBlocks.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace quindrel;

TEST(EngineSignalBlocks, KnobCurvesPassTheirPoints)
{
    EXPECT_NEAR(tuningCurve(0.0), 0.905, 1e-12);
    EXPECT_NEAR(tuningCurve(0.5), 1.0, 1e-12);
    EXPECT_NEAR(tuningCurve(1.0), 1.131, 1e-12);
    EXPECT_NEAR(decayCurve(0.0), 4.0, 1e-12);
    EXPECT_NEAR(decayCurve(0.5), 1.0, 1e-12);
    EXPECT_NEAR(decayCurve(1.0), 0.25, 1e-12);
}

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

TEST(EngineSignalBlocks, FiltersPassAndBlockTheRightEnds)
{
    Hp1 hp1;
    hp1.design(50.0, 44100.0);
    expectDcAndNyquistGain(hp1, 0.0, 1.0, "Hp1");
    Lp1 lp1;
    lp1.design(2000.0, 44100.0);
    expectDcAndNyquistGain(lp1, 1.0, (1.0 - lp1.c) / (1.0 + lp1.c), "Lp1");

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

TEST(EngineSignalBlocks, SquareOscillatorFrequencyAndDuty)
{
    SquareOscillator osc;
    osc.setUp(44100.0, 0.0018399288200720838, 0.4375); // 543.5 Hz

    int rising = 0, high = 0;
    for (int i = 0; i < 44100; ++i)
    {
        const double previous = osc.output;
        const double y = osc.updateOutput();
        osc.advance();
        ASSERT_TRUE(y == 0.5 || y == -0.5) << y;
        rising += (previous < 0.0 && y > 0.0) ? 1 : 0;
        high += y > 0.0 ? 1 : 0;
    }
    EXPECT_NEAR(rising, 543.5, 1.0);
    // High above the threshold, up to one sample past the period before the wrap.
    EXPECT_NEAR(high / 44100.0, (osc.period - osc.threshold + 1.0) / osc.period, 0.005);
}
