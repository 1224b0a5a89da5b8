#include "engine/QuindrelHandClap.h"

#include <cmath>

double QuindrelHandClap::reverbRateForKnob(double x)
{
    return (std::exp(-2.1972245772713475 * x) * 0.04500000000040698 + 0.004999999999567403) * 0.01;
}

void QuindrelHandClap::setTone(double x)
{
    toneKnob = x;
    updateTone();
}

void QuindrelHandClap::setReverb(double x)
{
    reverbKnob = x;
    reverbRate = reverbRateForKnob(x);
}

void QuindrelHandClap::updateTone()
{
    // 930 Hz at the middle of the knob, for both resonators
    g = 2.0 * std::sin(quindrel::pi * (toneKnob + 0.5) * 930.0 / sampleRateInfo.sampleRate);
}

void QuindrelHandClap::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    const double sr = sampleRateInfo.sampleRate;

    burst = 0.0;
    stage = 0;

    updateTone();
    resonator1.clear();
    resonator2.clear();

    highPassA = std::exp(-quindrel::twoPi * 7300.0 / sr);
    highPassB = (highPassA + 1.0) / 2.0;
    highPassInput = highPassState = 0.0;
    tailLowPassCoefficient = std::exp(-quindrel::twoPi * 700.0 / sr);
    tailLowPassState = 0.0;

    reverbRate = reverbRateForKnob(reverbKnob);
}

void QuindrelHandClap::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double k = sampleRateInfo.rateScale;

    amplitude = (double) (velocity * 2.645f);
    countdown = sampleRateInfo.sampleRate * 0.00097;
    gate = 1.0;
    burst = 0.4;
    stage = 0;
    tailAttack = 0.0;
    tailAttackRate = k * 0.4;
    tailRate = k * 0.0022;
    // The tail is not reset: a new clap goes on from the old tail's height.
}

double QuindrelHandClap::renderSample(double input)
{
    constexpr double q = 0.9;
    double raw = 0.0;

    if (active)
    {
        const double k = sampleRateInfo.rateScale;

        const double c = countdown;
        countdown = c - 1.0;
        // Written afresh at each sample past the end, so the Reverb knob acts
        // while the clap sounds.
        if (!(c > 0.0))
        {
            gate = 0.0;
            tailAttackRate = reverbRate * k;
        }

        // About 0 at E = 0 and 0.8337 at E = 0.4; the constant is tanh(1.2).
        const double s = 0.5 * (std::tanh((burst - 0.2) * 6.0) + 0.833654607);

        const double h = (input - highPassInput) * highPassB + highPassA * highPassState;
        highPassInput = input;
        highPassState = h;

        const double b1 = resonator1.process(h * 8.0, g, q);
        const double b2 = resonator2.process(b1, g, q);
        const double u = (b2 + b1) * 0.8;

        const double lc = tailLowPassCoefficient;
        const double l = (1.0 - lc) * u + lc * tailLowPassState;
        tailLowPassState = l;

        tailAttack = tailAttack - (tailAttack - gate) * tailAttackRate;
        tail = tail - (tail - tailAttack) * tailRate;

        raw = (u * s * 2.0 + tail * l * 0.15) * amplitude * levelTarget;

        burst = (1.0 - stageDecay[stage] * k) * burst;

        // Stages 0 and 1 run until the burst has fallen to 0.02, stage 2 is cut
        // short at 0.1, and the last one, from 0.25, never advances.
        const int st = stage;
        if ((burst <= 0.02 && st != 3) || (burst <= 0.1 && st == 2))
        {
            stage = st + 1;
            burst = stage == 3 ? 0.25 : 0.4;
        }
    }

    return finishSample(raw);
}
