#include "engine/QuindrelTom.h"

#include <cmath>

QuindrelTom::QuindrelTom(double baseFrequencyHz, double baseDampingValue)
    : baseFrequency(baseFrequencyHz)
    , baseDamping(baseDampingValue)
{
}

void QuindrelTom::setTuning(double x)
{
    tuningKnob = x;
    tuning = quindrel::tuningCurve(x);
    g = 2.0 * std::sin(quindrel::pi * baseFrequency * tuning / sampleRateInfo.sampleRate);
}

void QuindrelTom::setDecay(double x)
{
    decayKnob = x;
    decayFactor = quindrel::decayCurve(x);
    q = baseDamping * decayFactor;
}

void QuindrelTom::setSnappy(double x)
{
    snappy = x;
}

void QuindrelTom::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    const double sr = sampleRateInfo.sampleRate;
    pulseHighPass.design(900.0, sr);
    pulseHighPass.clear();
    resonator.clear();
    noiseHighPass.design(noiseHighPassHz, sr);
    noiseHighPass.clear();
    noiseLowPass.design(noiseLowPassHz, sr);
    noiseLowPass.clear();
    setTuning(tuningKnob);
    setDecay(decayKnob);
}

void QuindrelTom::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double k = sampleRateInfo.rateScale;
    pulseCountdown = (int) std::trunc(sampleRateInfo.sampleRate * 0.00097);
    pulse = 0.0;
    pulseRate = k * 0.99;

    const double height = (double) (velocity * 4.17f);
    pulseTarget = height;
    noiseEnvelope = height;
    noiseEnvelopeRate = k * 0.0002;
}

double QuindrelTom::renderSample(double input)
{
    double raw = 0.0;

    if (active)
    {
        // The countdown goes on below 0, so the pulse turns down once per note.
        if (pulseCountdown-- == 0)
        {
            pulseTarget = 0.0;
            pulseRate = sampleRateInfo.rateScale * 0.5;
        }

        // The rising pulse, negated, gives the negative kick that passes whole;
        // the positive rebound is cut to a tenth.
        double d = pulseHighPass.process(-pulse);
        if (d > 0.0)
            d = d * 0.1;

        const double b = resonator.process(d, g, q);
        const double n = noiseLowPass.process(noiseHighPass.process(input));
        raw = (snappy * noiseEnvelope * n * 0.15 + b) * level * 2.9312000000000005 + quindrel::antiDenormal;

        quindrel::relax(pulse, pulseTarget, pulseRate);
        quindrel::fall(noiseEnvelope, noiseEnvelopeRate);
    }

    return finishSample(raw);
}
