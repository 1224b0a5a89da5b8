#include "engine/QuindrelHiHats.h"

#include <cmath>

void QuindrelHiHat::setUpForRate()
{
    gateScale = quindrel::metalGateScale(sampleRateInfo.sampleRate);
    // The gate state is kept: it is the memory of earlier hits.
    highPass.clear();
}

void QuindrelHiHat::designHighPass(double w)
{
    w = quindrel::angleBelowNyquist(w);
    highPass.designHighPass(w, std::sin(w) * 0.3333333333333333);
}

void QuindrelHiHat::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double k = sampleRateInfo.rateScale;

    amplitude = (double) (velocity * 2.645f);
    envelopeTarget = amplitude;
    envelope = 0.0;
    countdown = sampleRateInfo.sampleRate * 0.00097;
    envelopeRate = k * 0.2;
}

double QuindrelHiHat::gateFilterAndRelax(double input) noexcept
{
    const auto& constants = quindrel::metalGateHigh;
    const double z = gate.process(quindrel::metalBend(input, constants.a), envelope, constants, sampleRateInfo.rateScale);
    const double y = highPass.process(gateScale * z);
    quindrel::relax(envelope, envelopeTarget, envelopeRate);
    return y;
}

//==============================================================================
double QuindrelClosedHiHat::decayRateForKnob(double x)
{
    // 0.004, 0.0013 and 0.00032 at 0, 0.5 and 1
    return (std::exp(-2.0269089606884894 * x) * 0.423837209300238 - 0.023837209300276788) * 0.01;
}

void QuindrelClosedHiHat::setTone(double x)
{
    toneKnob = x;
    updateTone();
}

void QuindrelClosedHiHat::setDecay(double x)
{
    decayKnob = x;
    decayRate = decayRateForKnob(x);
}

void QuindrelClosedHiHat::updateTone()
{
    // 10200 Hz at the middle of the knob
    designHighPass((toneKnob + 0.5) * 64088.49013323178 / sampleRateInfo.sampleRate);
}

void QuindrelClosedHiHat::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    setUpForRate();
    updateTone();
    decayRate = decayRateForKnob(decayKnob);
}

double QuindrelClosedHiHat::renderSample(double input)
{
    double raw = 0.0;

    if (active)
    {
        const double n = std::trunc(countdown);
        countdown -= 1.0;
        if (n == 0.0)
        {
            envelopeTarget = 0.0;
            envelopeRate = decayRate * sampleRateInfo.rateScale;
        }

        raw = gateFilterAndRelax(input) * 0.44;
    }

    return finishSample(raw);
}

//==============================================================================
double QuindrelOpenHiHat::decayRateForKnob(double x)
{
    // 0.00032, 0.0001 and 0.00006 at 0, 0.5 and 1
    return (std::exp(-3.409496184475471 * x) * 0.2688888888889135 + 0.05111111111139488) * 0.001;
}

void QuindrelOpenHiHat::setTone(double x)
{
    toneKnob = x;
    updateTone();
}

void QuindrelOpenHiHat::setDecay(double x)
{
    decayKnob = x;
    decayRate = decayRateForKnob(x);
}

void QuindrelOpenHiHat::updateTone()
{
    // 8840 Hz at the middle of the knob
    designHighPass(quindrel::twoPi * (toneKnob + 0.5) * 8840.0 / sampleRateInfo.sampleRate);
}

void QuindrelOpenHiHat::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    setUpForRate();
    updateTone();
    decayRate = decayRateForKnob(decayKnob);
}

void QuindrelOpenHiHat::trigger(float velocity)
{
    QuindrelHiHat::trigger(velocity);
    chokeValue = 1.0;
}

double QuindrelOpenHiHat::renderSample(double input)
{
    double raw = 0.0;

    if (active)
    {
        const double k = sampleRateInfo.rateScale;

        // Unlike the closed hat this runs at every sample of the decay, so a
        // choke acts at once - but never before the attack is over.
        const double n = std::trunc(countdown);
        countdown -= 1.0;
        if (n <= 0.0)
        {
            envelopeTarget = 0.0;
            envelopeRate = chokeValue == 1.0 ? decayRate * k : k * 0.001;
        }

        raw = gateFilterAndRelax(input) * 0.22;

        // Overwritten by the branch above from the next sample on once the
        // attack is over; it only matters while a silent note counts down.
        if (envelope < 0.15 && envelopeTarget == 0.0)
            envelopeRate = k * 0.001;
    }

    return finishSample(raw);
}
