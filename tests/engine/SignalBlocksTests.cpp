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

TEST(EngineSignalBlocks, RelaxAndFallApproachTheirTargetGeometrically)
{
    double e = 0.0;
    for (int i = 0; i < 10; ++i)
        relax(e, 1.0, 0.5);
    EXPECT_NEAR(e, 1.0 - std::pow(0.5, 10), 1e-15);

    double f = 1.0;
    fall(f, 0.25);
    EXPECT_DOUBLE_EQ(f, 0.75);

    // The anti-denormal constant keeps a fallen value from reaching the subnormal range.
    double g = 1e-300;
    for (int i = 0; i < 2000; ++i)
        fall(g, 0.5);
    EXPECT_TRUE(std::fpclassify(g) == FP_NORMAL || g == 0.0) << g;
}

namespace
{
// Steady-state gain of a filter for a constant (DC) and an alternating (Nyquist) input.
template <typename Filter>
std::pair<double, double> dcAndNyquistGain(Filter filter)
{
    Filter copy = filter;
    double dc = 0.0, nyquist = 0.0;
    for (int i = 0; i < 20000; ++i)
        dc = filter.process(1.0);
    for (int i = 0; i < 20000; ++i)
        nyquist = std::fabs(copy.process(i % 2 == 0 ? 1.0 : -1.0));
    return {dc, nyquist};
}
} // namespace

TEST(EngineSignalBlocks, OnePoleFiltersPassAndBlockTheRightEnds)
{
    Hp1 hp;
    hp.design(50.0, 44100.0);
    EXPECT_NEAR(hp.a, std::exp(-twoPi * 50.0 / 44100.0), 1e-15);
    auto [hpDc, hpNyquist] = dcAndNyquistGain(hp);
    EXPECT_NEAR(hpDc, 0.0, 1e-9) << "high-pass lets DC through";
    EXPECT_NEAR(hpNyquist, 1.0, 1e-9);

    Lp1 lp;
    lp.design(2000.0, 44100.0);
    auto [lpDc, lpNyquist] = dcAndNyquistGain(lp);
    EXPECT_NEAR(lpDc, 1.0, 1e-9) << "low-pass changes the DC level";
    EXPECT_LT(lpNyquist, 0.2);
}

TEST(EngineSignalBlocks, BiquadDesignsHaveTheirShapes)
{
    const double w = twoPi * 1000.0 / 44100.0;
    const double alpha = std::sin(w) * 0.5;

    Biquad hp;
    hp.designHighPass(w, alpha);
    auto [hpDc, hpNyquist] = dcAndNyquistGain(hp);
    EXPECT_NEAR(hpDc, 0.0, 1e-9);
    EXPECT_NEAR(hpNyquist, 1.0, 1e-9);

    Biquad lp;
    lp.designLowPass(w, alpha);
    auto [lpDc, lpNyquist] = dcAndNyquistGain(lp);
    EXPECT_NEAR(lpDc, 1.0, 1e-9);
    EXPECT_NEAR(lpNyquist, 0.0, 1e-9);

    Biquad bp;
    bp.designBandPass(w, alpha);
    auto [bpDc, bpNyquist] = dcAndNyquistGain(bp);
    EXPECT_NEAR(bpDc, 0.0, 1e-9);
    EXPECT_NEAR(bpNyquist, 0.0, 1e-9);

    // Unity gain at the centre frequency.
    double peak = 0.0;
    for (int i = 0; i < 44100; ++i)
    {
        const double y = bp.process(std::sin(w * i));
        if (i > 22050)
            peak = std::fmax(peak, std::fabs(y));
    }
    EXPECT_NEAR(peak, 1.0, 1e-3);
}

TEST(EngineSignalBlocks, ResonatorRingsAtItsTuning)
{
    for (double sr : {44100.0, 192000.0})
    {
        for (double f : {47.5, 440.0, 2424.0})
        {
            Svf svf;
            const double g = 2.0 * std::sin(pi * f / sr);
            std::vector<double> ring((size_t)sr);
            for (size_t i = 0; i < ring.size(); ++i)
                ring[i] = svf.process(i == 0 ? 1.0 : 0.0, g, 0.0001);
            EXPECT_NEAR(enginetest::zeroCrossingFrequency(ring, 0, ring.size(), sr), f, f * 0.002)
                << f << " Hz at " << sr;
        }
    }
}

TEST(EngineSignalBlocks, SquareOscillatorFrequencyAndDuty)
{
    SquareOscillator osc;
    osc.setUp(44100.0, 0.0018399288200720838, 0.4375); // 543.5 Hz

    int rising = 0, high = 0;
    double previous = -0.5;
    for (int i = 0; i < 44100; ++i)
    {
        const double y = osc.updateOutput();
        osc.advance();
        ASSERT_TRUE(y == 0.5 || y == -0.5) << y;
        rising += (previous < 0.0 && y > 0.0) ? 1 : 0;
        high += y > 0.0 ? 1 : 0;
        previous = y;
    }
    EXPECT_NEAR(rising, 543.5, 1.0);
    // High above the threshold, up to one sample past the period before the wrap.
    EXPECT_NEAR(high / 44100.0, (osc.period - osc.threshold + 1.0) / osc.period, 0.005);
}
