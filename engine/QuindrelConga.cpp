#include "engine/QuindrelConga.h"

#include <cmath>

QuindrelConga::QuindrelConga(double baseFrequencyHz, double baseDampingValue)
    : baseFrequency(baseFrequencyHz)
    , baseDamping(baseDampingValue)
{
}

void QuindrelConga::setTuning(double x)
{
    tuningKnob = x;
    tuning = quindrel::tuningCurve(x);
}

void QuindrelConga::setDecay(double x)
{
    decayKnob = x;
    decayFactor = quindrel::decayCurve(x);
}

void QuindrelConga::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    pulseHighPass.design(900.0, sampleRateInfo.sampleRate);
    pulseHighPass.clear();
    resonator.clear();
    setTuning(tuningKnob);
    setDecay(decayKnob);
}

void QuindrelConga::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    pulseCountdown = (int) std::trunc(sampleRateInfo.sampleRate * 0.00097);
    pulse = 0.0;
    pulseRate = sampleRateInfo.rateScale * 0.99;
    drive = (double) (velocity * 2.645f);
    pulseTarget = 1.0;
}

double QuindrelConga::renderSample()
{
    double raw = 0.0;

    if (active)
    {
        const double k = sampleRateInfo.rateScale;

        // The countdown goes on below 0, so the pulse turns down once per note.
        if (pulseCountdown-- == 0)
        {
            pulseTarget = 0.0;
            pulseRate = k * 0.5;
        }

        // The rising pulse, negated, gives the negative kick that passes whole;
        // the positive rebound is cut to a tenth.
        double d = pulseHighPass.process(-pulse);
        if (d > 0.0)
            d = d * 0.1;

        // Tuning is read afresh each sample, so a moving knob bends the ring.
        const double g = 2.0 * std::sin(quindrel::pi * tuning * baseFrequency / sampleRateInfo.sampleRate);
        const double q = decayFactor * baseDamping;
        const double b = resonator.process(drive * d, g, q);
        raw = level * b * 2.289;

        quindrel::relax(pulse, pulseTarget, pulseRate);
    }

    return finishSample(raw);
}
