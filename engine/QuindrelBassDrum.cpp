#include "engine/QuindrelBassDrum.h"

#include <cmath>

using quindrel::antiDenormal;

void QuindrelBassDrum::setTone(double x)
{
    toneKnob = x;
    updateTone();
}

void QuindrelBassDrum::setDecay(double x)
{
    decayKnob = x;
    updateDecay();
}

void QuindrelBassDrum::setSweep(double x)
{
    sweepKnob = x;
    updateSweep();
}

double QuindrelBassDrum::toneCutoffForKnob(double x)
{
    // 200, 700 and 2200 Hz at 0, 0.5 and 1
    return x * x * 2000.0 + 200.0;
}

double QuindrelBassDrum::dampingForKnob(double x)
{
    // 0.3, 0.033 and 0.01 at 0, 0.5 and 1
    return std::exp(-4.903508884975746 * x) * 0.2921680327867917 + 0.007831967213314962;
}

double QuindrelBassDrum::sweepRateForKnob(double x)
{
    // 5, 1 and 0.05 at 0, 0.5 and 1
    return std::exp(11.553458178450429 / (x - 2.160964047443686)) * 1049.296197933348;
}

void QuindrelBassDrum::updateTone()
{
    toneCutoff = toneCutoffForKnob(toneKnob);
    toneCoefficient = std::exp(-quindrel::twoPi * toneCutoff / sampleRateInfo.sampleRate);
}

void QuindrelBassDrum::updateDecay()
{
    damping = dampingForKnob(decayKnob);
}

void QuindrelBassDrum::updateSweep()
{
    sweepRate = sweepRateForKnob(sweepKnob);
}

void QuindrelBassDrum::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    const double sr = sampleRateInfo.sampleRate;

    outHighPass.design(50.0, sr);
    outHighPass.clear();
    toneLowPassState = 0.0;

    // Only matters until the first note: every trigger redesigns it.
    sweepHighPass.design(3.0, sr);
    sweepHighPass.clear();

    resonator.clear();

    updateTone();
    updateDecay();
    updateSweep();
}

void QuindrelBassDrum::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double sr = sampleRateInfo.sampleRate;
    const double k = sampleRateInfo.rateScale;

    amplitude = (double) (4.17f * velocity);
    attackCountdown = sr * 0.0043;
    pulseCountdown = sr * 0.00097;
    envelope = riseValue = curve1 = curve2 = curve3 = 0.0;
    finished = 0;
    attackGate = 1.0;
    riseRate = k * 0.1;
    pulse = 0.5;
    pulseRate = k * 0.5;

    // Coefficients only: the ring, the tone and the output filters keep their
    // states, so a retrigger adds to a ringing drum.
    sweepHighPass.design(1000.0, sr);
}

double QuindrelBassDrum::renderSample()
{
    double raw = 0.0;

    if (active)
    {
        const double sr = sampleRateInfo.sampleRate;
        const double k = sampleRateInfo.rateScale;

        const double attackLeft = std::trunc(attackCountdown);
        attackCountdown -= 1.0;
        if (attackLeft == 0.0)
        {
            attackGate = 0.0;
            riseRate = k * 0.06;
            // A hard hit lowers the corner and so holds the sweep longer.
            sweepHighPass.design((1.0 / amplitude) * sweepRate * 10.0, sr);
        }

        const double pulseLeft = std::trunc(pulseCountdown);
        pulseCountdown -= 1.0;
        if (pulseLeft == 0.0)
        {
            pulseRate = k * 0.05;
            pulse = -0.03;
        }

        const double h = sweepHighPass.process(-envelope);

        const double pitch = envelope * 45.0 + h * 35.0;
        const double g = 2.0 * std::sin(quindrel::pi * (pitch + 47.5) / sr);
        const double u = h * 0.1 + pulse * 50.0;
        const double b = resonator.process(u, g, damping);

        // Compresses positive swings and expands negative ones; 0 at b = 0.
        const double w = (std::exp(-(b + 0.1)) - 1.0) - (std::exp(-0.1) - 1.0);

        const double c = toneCoefficient;
        toneLowPassState = (w - 2.0 * pulse) * (1.0 - c) + c * toneLowPassState + antiDenormal;
        const double o = outHighPass.process(toneLowPassState);

        raw = amplitude * level * o * 1.3;

        quindrel::fall(pulse, pulseRate);

        if (attackGate == 1.0)
        {
            quindrel::relax(riseValue, attackGate, riseRate);
            envelope = riseValue;
        }
        else if (finished == 0)
        {
            // A cubic in time; k cubed keeps its length in seconds near constant.
            curve1 += sampleRateInfo.rateScaleCubed * 0.0008;
            curve2 += curve1;
            curve3 += curve2;
            envelope = 1.0 - 0.1 * curve3;
            if (!(envelope > 0.0))
            {
                envelope = 0.0;
                finished = 1;
            }
        }
    }

    return finishSample(raw);
}
