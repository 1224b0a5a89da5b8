#include "engine/QuindrelClaves.h"

#include <cmath>

void QuindrelClaves::setTuning(double x)
{
    tuningKnob = x;
    updateTuning();
}

void QuindrelClaves::setDecay(double x)
{
    decayKnob = x;
    updateDecay();
}

void QuindrelClaves::updateTuning()
{
    // 2424 Hz at the middle of the knob
    g = 2.0 * std::sin(7615.220592301658 * quindrel::tuningCurve(tuningKnob) / sampleRateInfo.sampleRate);
}

void QuindrelClaves::updateDecay()
{
    decayFactor = quindrel::decayCurve(decayKnob);
    q = decayFactor * 0.015;
}

void QuindrelClaves::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    resonator.clear();
    pulse = 0.0;
    updateTuning();
    updateDecay();
}

void QuindrelClaves::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    pulse = (double) (velocity * 2.645f);
    pulseRate = sampleRateInfo.rateScale * 0.7;
}

double QuindrelClaves::renderSample()
{
    double raw = 0.0;

    if (active)
    {
        const double b = resonator.process(pulse * 4.3, g, q);
        raw = level * b * 0.181;
        quindrel::fall(pulse, pulseRate);
    }

    return finishSample(raw);
}
