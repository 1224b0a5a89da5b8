#include "engine/QuindrelInstrument.h"

#include "engine/SignalBlocks.h"

double QuindrelInstrument::renderSample()
{
    return 0.0;
}

double QuindrelInstrument::renderSample(double)
{
    return 0.0;
}

double QuindrelInstrument::renderSample(double, double)
{
    return 0.0;
}

void QuindrelInstrument::setSampleRate(float sampleRate)
{
    sampleRateInfo.fill((double) sampleRate);
    peakRelease = sampleRateInfo.rateScale * 0.0002;
    levelSmoothing = sampleRateInfo.rateScale * 0.002;
}

void QuindrelInstrument::trigger(float)
{
    active = true;
    // Gives the voice time to get going before the follower could end it.
    peakFollower = 0.01;
}

void QuindrelInstrument::setLevel(double newLevel)
{
    levelTarget = newLevel;
}

double QuindrelInstrument::finishSample(double raw) noexcept
{
    quindrel::relax(level, levelTarget, levelSmoothing);
    const double y = level * raw;

    quindrel::fall(peakFollower, peakRelease);
    const double a = y > 0.0 ? y : -y;
    lastPeak = a;
    if (a > peakFollower)
        peakFollower = a;

    if (peakFollower < 3e-05)
        active = false;

    return y;
}
