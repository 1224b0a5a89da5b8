#include "engine/QuindrelCymbal.h"

#include <cmath>

void QuindrelCymbal::setTone(double x)
{
    tone = x;
}

void QuindrelCymbal::setDecay(double x)
{
    decayKnob = x;
    updateDecay();
}

void QuindrelCymbal::updateDecay()
{
    // Taken with the k of the moment; setSampleRate recomputes them.
    const double k = sampleRateInfo.rateScale;
    const double x = decayKnob;
    fallRate = (0.00035 - x * 0.0001) * k;
    bodyRate = (std::exp(-2.5055259369629344 * x) * 0.02450000000009336 + 0.0029999999999678127) * k * 0.01;
    stageCRate = (std::exp(-4.394449154698994 * x) * 0.08100000000008598 + 0.01899999999998158) * k * 0.001;
}

void QuindrelCymbal::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    const double sr = sampleRateInfo.sampleRate;

    gateScale = quindrel::metalGateScale(sr);
    lowPassCoefficient = std::exp(-quindrel::twoPi * 5000.0 / sr);

    const double wC = 17592.91886010284 / sr; // 2800 Hz
    highPassC.designHighPass(wC, std::sin(wC) * 0.25);
    // The two high bands stand at a fixed 8840 Hz: the cymbal has no tuning.
    const double wHigh = 55543.35811546754 / sr;
    highPassA.designHighPass(wHigh, std::sin(wHigh) * 0.3333333333333333);
    highPassB.designHighPass(wHigh, std::sin(wHigh) * 0.06666666666666667);

    highPassC.clear();
    highPassA.clear();
    highPassB.clear();
    lowPassState = 0.0;
    updateDecay();
}

void QuindrelCymbal::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double k = sampleRateInfo.rateScale;

    amplitude = (double) (velocity * 2.645f);
    countdown = sampleRateInfo.sampleRate * 0.00097;
    gate = 1.0;
    hitEnvelope = 0.0;
    hitRate = k * 0.2;
    fall = 1.0;
    fallLag = 0.0;
    fallLagRate = k * 0.003;
    body = 0.0;
    stageC = 1.0;
    stageCLag = 0.0;
    stageCLagRate = k * 0.00025;
    // bodyEnvelope and stageCEnvelope keep their old values for one sample.
}

double QuindrelCymbal::renderSample(double input1, double input2)
{
    double raw = 0.0;

    if (active)
    {
        const double k = sampleRateInfo.rateScale;

        const double n = std::trunc(countdown);
        countdown -= 1.0;
        if (n == 0.0)
        {
            gate = 0.0;
            hitRate = k * 0.0007;
        }

        const auto& low = quindrel::metalGateLow;
        const double zC = gateC.process(quindrel::metalBend(input2, low.a), stageCEnvelope, low, k);
        const double c = lowPassCoefficient;
        lowPassState = (1.0 - c) * highPassC.process(gateScale * zC * 0.2) + c * lowPassState;

        // One bend of the high band serves stages A and B.
        const auto& high = quindrel::metalGateHigh;
        const double bend = quindrel::metalBend(input1, high.a);
        const double yA = highPassA.process(gateScale * gateA.process(bend, bodyEnvelope, high, k));
        const double yB = highPassB.process(gateScale * gateB.process(bend, hitEnvelope, high, k));

        quindrel::relax(hitEnvelope, gate, hitRate);
        quindrel::fall(fall, fallRate);
        quindrel::relax(fallLag, fall, fallLagRate);
        quindrel::relax(body, fallLag, bodyRate);
        bodyEnvelope = body + fallLag;
        quindrel::fall(stageC, stageCRate);
        quindrel::relax(stageCLag, stageC, stageCLagRate);
        stageCEnvelope = std::fmax(stageCLag - 0.01, 0.0);

        // Tone fades the body paths to half and brings in the hit.
        const double t = tone;
        raw = ((yA * 2.4 + lowPassState) * (1.0 - 0.5 * t) + yB * t * 2.0) * amplitude * level * 0.13999999999999999;
    }

    return finishSample(raw);
}
