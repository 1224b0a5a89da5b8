#include "engine/QuindrelLaserGun.h"

#include "engine/SignalBlocks.h"

#include <cmath>

double QuindrelLaserGun::depthForKnob(double x)
{
    // 0, 0.1 and 1 at 0, 0.5 and 1
    return std::exp(4.394449154676355 * x) * 0.012499999999932523 - 0.012499999998941072;
}

double QuindrelLaserGun::decayRateForKnob(double x, double k)
{
    // 0.015k, 0.0007k and 0.00014k at 0, 0.5 and 1
    return (std::exp(-6.480156065054237 * x) * 0.14882823871913825 + 0.0011717612809592545) * k * 0.1;
}

double QuindrelLaserGun::sweepRateForKnob(double x, double k)
{
    // 0.029k, 0.01k and 0.0035k at 0, 0.5 and 1
    return (std::exp(-2.145273604520082 * x) * 0.2888000000010188 + 0.0011999999984554088) * k * 0.1;
}

void QuindrelLaserGun::setDepth(double x)
{
    depthKnob = x;
    depth = depthForKnob(x);
}

void QuindrelLaserGun::setDecay(double x)
{
    decayKnob = x;
    decayRate = decayRateForKnob(x, sampleRateInfo.rateScale);
}

void QuindrelLaserGun::setSweep(double x)
{
    sweepKnob = x;
    sweepRate = sweepRateForKnob(x, sampleRateInfo.rateScale);
}

void QuindrelLaserGun::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    setDepth(depthKnob);
    setDecay(decayKnob);
    setSweep(sweepKnob);
}

void QuindrelLaserGun::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);

    // A muted gun keeps what it was playing.
    if (levelTarget == 0.0)
        return;

    amplitude = (double) (velocity * 2.645f);
    ampEnvelope = 1.0;
    sweepEnvelope = 1.0;
    phase = 0.0;
    countdown = sampleRateInfo.sampleRate * 0.00097;
}

double QuindrelLaserGun::renderSample()
{
    double raw = 0.0;

    if (active)
    {
        const double c = countdown;
        countdown = c - 1.0;

        // For the first 0.97 ms of a note the old one fades out from hold, so a
        // retrigger does not click; then hold follows the sine one sample late.
        if (c > 0.0)
        {
            phase = 0.0;
            holdRate = sampleRateInfo.rateScale * 0.11;
        }
        else
        {
            hold = sine * amplitude * ampEnvelope * level;
        }

        // Unclipped: above half the sample rate the sine folds over.
        const double f = depth * sweepEnvelope * 35050.0 + 40.0;
        sine = std::sin(phase);
        phase = quindrel::twoPi / (sampleRateInfo.sampleRate / f) + phase;

        quindrel::fall(sweepEnvelope, sweepRate);
        quindrel::fall(ampEnvelope, decayRate);
        quindrel::fall(hold, holdRate);
        raw = hold * 0.5;
    }

    return finishSample(raw);
}
