#include "engine/QuindrelCowBell.h"

#include <cmath>

double QuindrelCowBell::decayFactorForKnob(double x)
{
    return std::exp(4.158883083319521 * (1.0 - x)) * 0.14285714286308415 + 0.8571428571313702;
}

void QuindrelCowBell::setTuning(double x)
{
    tuningKnob = x;
    updateTuning();
}

void QuindrelCowBell::setDecay(double x)
{
    decayKnob = x;
    decayFactor = decayFactorForKnob(x);
}

void QuindrelCowBell::updateTuning()
{
    // 543.5 Hz and 806.5 Hz at the middle of the knob. The phases run on.
    const double sr = sampleRateInfo.sampleRate;
    baseFrequency = (tuningKnob + 0.5) * 210.1;
    oscillator1.period = sr / (baseFrequency * 2.58686);
    oscillator1.threshold = std::trunc(oscillator1.period * 0.4375);
    oscillator2.period = sr / (baseFrequency * 3.8386482);
    oscillator2.threshold = std::trunc(oscillator2.period * 0.4354);
}

void QuindrelCowBell::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);

    const double w = 5064.247357586746 / sampleRateInfo.sampleRate; // 806 Hz
    highPass.designHighPass(w, std::sin(w) * 0.16666666666666666);
    highPass.clear();

    smoothA = smoothB = 0.0;
    oscillator1.phase = oscillator2.phase = 0.0;
    updateTuning();
    decayFactor = decayFactorForKnob(decayKnob);
}

void QuindrelCowBell::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double k = sampleRateInfo.rateScale;

    amplitude = (double) (velocity * 2.645f);
    countdown = sampleRateInfo.sampleRate * 0.00097;
    gate = 1.0;
    fast = 0.0;
    slow = 0.0;
    fastRate = k * 0.025;
    slowRate = k * 0.025;
    // The oscillators are not reset: they stand still between notes.
}

double QuindrelCowBell::renderSample()
{
    double raw = 0.0;

    if (active)
    {
        const double k = sampleRateInfo.rateScale;

        const double o1 = oscillator1.updateOutput();
        oscillator1.advance();
        const double o2 = oscillator2.updateOutput();
        oscillator2.advance();

        const double n = std::trunc(countdown);
        countdown -= 1.0;
        if (n == 0.0)
        {
            gate = 0.0;
            fastRate = decayFactor * k * 0.003;
            slowRate = decayFactor * k * 0.00022;
        }

        quindrel::relax(fast, gate, fastRate);
        quindrel::relax(slow, gate, slowRate);
        const double e = slow * 0.15 + fast;

        // A slow rise on the positive half, a fast small swing on the negative.
        double pA = e * amplitude * o1;
        double cA = k * 0.1;
        if (pA < 0.0)
        {
            pA = pA * 0.077;
            cA = k * 0.7;
        }
        quindrel::relax(smoothA, pA, cA);

        // 0.12 rather than 0.1 for the second voice, on purpose.
        double pB = e * amplitude * o2;
        double cB = k * 0.12;
        if (pB < 0.0)
        {
            pB = pB * 0.077;
            cB = k * 0.7;
        }
        quindrel::relax(smoothB, pB, cB);

        const double y = highPass.process(smoothA + smoothB);
        raw = level * y * 0.4;
    }

    return finishSample(raw);
}
