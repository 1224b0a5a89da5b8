#include "engine/QuindrelRimShot.h"

#include <algorithm>
#include <cmath>

void QuindrelRimShot::setTuning(double x)
{
    tuningKnob = x;
    updateTuning();
}

void QuindrelRimShot::setDecay(double x)
{
    decayKnob = x;
    updateDecay();
}

void QuindrelRimShot::updateTuning()
{
    // 442 Hz and 1745 Hz at the middle of the knob
    const double t = quindrel::tuningCurve(tuningKnob);
    const double sr = sampleRateInfo.sampleRate;
    gLow = 2.0 * std::sin(1388.5839528866886 * t / sr);
    gHigh = 2.0 * std::sin(5482.079180514189 * t / sr);
}

void QuindrelRimShot::updateDecay()
{
    decayFactor = quindrel::decayCurve(decayKnob);
    qLow = decayFactor * 0.15;
    qHigh = decayFactor * 0.1;
}

void QuindrelRimShot::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    const double sr = sampleRateInfo.sampleRate;

    shapedHpA = std::exp(-quindrel::twoPi * 10000.0 / sr);
    shapedHpB = (shapedHpA + 1.0) / 2.0;
    shapedHpInput = shapedHpState = 0.0;

    const double w = 3581.4156250923643 / sr; // 570 Hz
    outHighPass.designHighPass(w, std::sin(w) * 0.16666666666666666);
    outHighPass.clear();

    lowResonator.clear();
    highResonator.clear();
    envelopeTarget = 0.0;

    updateTuning();
    updateDecay();
}

void QuindrelRimShot::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double k = sampleRateInfo.rateScale;

    amplitude = (double) (velocity * 2.645f);
    envelopeTarget = 1.0;
    countdown = sampleRateInfo.sampleRate * 0.00097;
    envelope = 0.0;
    envelopeRate = k * 0.09;
    pulseLow = 1.0;
    pulseLowRate = k * 0.04;
    pulseHigh = 1.0;
    pulseHighRate = k * 0.5;
}

double QuindrelRimShot::renderSample()
{
    double raw = 0.0;

    if (active)
    {
        const double k = sampleRateInfo.rateScale;

        const double c = countdown;
        countdown = c - 1.0;
        // Runs at every sample past the end; it writes the same values each time.
        if (!(c > 0.0))
        {
            envelopeTarget = 0.0;
            envelopeRate = k * 0.005;
            pulseLowRate = k * 0.4;
        }

        const double c1 = std::clamp(lowResonator.process(pulseLow * 0.5, gLow, qLow) * 2.5, -1.0, 1.0);
        const double c2 = highResonator.process(pulseHigh, gHigh, qHigh) * 1.25;

        // Only the negative part of the sum passes; it saturates towards -1.
        double s = (c1 * 0.5 - c2 * 4.5) * 0.2;
        if (s >= 0.0)
            s = 0.0;
        s = std::exp(s * 50.0) - 1.0;

        const double w = amplitude * envelope * s;
        const double hp = (w - shapedHpInput) * shapedHpB + shapedHpA * shapedHpState;
        shapedHpInput = w;
        shapedHpState = hp;

        // The high frequencies are added only in the deep part of the wave.
        const double x = w < -0.5 ? w + hp : w;
        const double y = outHighPass.process(x);
        raw = level * y * (-0.5);

        envelope = envelope - ((envelope - envelopeTarget) * envelopeRate) + quindrel::antiDenormal;
        quindrel::fall(pulseLow, pulseLowRate);
        quindrel::fall(pulseHigh, pulseHighRate);
    }

    return finishSample(raw);
}
