#include "engine/DrumMachineCore.h"

#include "engine/SignalBlocks.h"

#include <cmath>

DrumMachineCore::DrumMachineCore(DrumMachine* ownerToUse)
    : owner(ownerToUse)
{
    // The record already stands at 44100; the pulse follows it.
    resetPulse();
}

void DrumMachineCore::setParameter(int, float)
{
}

void DrumMachineCore::trigger(int instrument, float)
{
    if (triggerOutEnabled && instrument == triggerOutSource)
        // Not a whole number, so that t + 1 never meets 0 where the quotient is 0/0;
        // the band-limited foot of the first impulse rises about 60 samples early.
        pulsePosition = -60.1;
}

void DrumMachineCore::setSampleRate(float sampleRate)
{
    sampleRateInfo.fill((double) sampleRate);
    resetPulse();
}

void DrumMachineCore::renderFrame(double*)
{
}

void DrumMachineCore::setTriggerOutEnabled(bool enabled)
{
    triggerOutEnabled = enabled;
    resetPulse();
}

void DrumMachineCore::resetPulse()
{
    const double sr = sampleRateInfo.sampleRate;
    pulsePeriod = sr * 0.9090909090909091;
    pulseHarmonics = (double) ((float) (2.0 * std::trunc(pulsePeriod * 0.5)) + 1.0f);
    pulseDelay = std::trunc(pulsePeriod * 0.982);
    // Left at P the pulse is idle.
    pulsePosition = pulsePeriod;
    pulseImpulse = 0.0;
    pulseIntegrator = 0.0;
    pulseCentre = 0.0;
}

double DrumMachineCore::renderTriggerPulse()
{
    const double p = pulsePeriod;
    const double m = pulseHarmonics;
    const double t = pulsePosition;

    // A pair of band-limited impulses of opposite sign, about 0.018 P apart,
    // integrated into a pulse. It stops once t has passed P / 2.
    if (p * 0.5 > t)
    {
        const double t1 = t + 1.0;
        const double t2 = pulseDelay + t;
        const double d = std::sin(quindrel::pi * m * t1 / p) / (m * std::sin(quindrel::pi * t1 / p)) - std::sin(quindrel::pi * m * t2 / p) / (m * std::sin(quindrel::pi * t2 / p));
        pulseImpulse = d;
        pulseIntegrator = (pulseIntegrator + d) * 0.997;
        pulsePosition = t1;
    }

    pulseCentre -= sampleRateInfo.rateScale * 0.001 * (pulseCentre - pulseIntegrator) + quindrel::antiDenormal;
    return (pulseIntegrator - pulseCentre) * 0.25;
}
