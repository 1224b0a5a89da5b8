#include "engine/QuindrelSnareDrum.h"

#include <cmath>

void QuindrelSnareDrum::setTone(double x)
{
    toneKnob = x;
    updateTone();
}

void QuindrelSnareDrum::setDecay(double x)
{
    decayKnob = x;
    updateDecay();
}

void QuindrelSnareDrum::setSnappy(double x)
{
    snappyKnob = x;
    snappy = x;
}

double QuindrelSnareDrum::bodyGainForKnob(double x)
{
    // 0, 0.15 and 1 at 0, 0.5 and 1
    return std::exp(3.4692021107718554 * x) * 0.03214285714290635 - 0.03214285714214475;
}

double QuindrelSnareDrum::toneGainForKnob(double x)
{
    // 1, 0.5 and 0.15 at 0, 0.5 and 1
    return std::exp(-0.7133498879091811 * x) * 1.6666666666188559 - 0.6666666666160388;
}

double QuindrelSnareDrum::decayRateForKnob(double x)
{
    // 5, 1 and 0.2 at 0, 0.5 and 1
    return std::exp(3.6008475114694884 - 3.218875824868201 * x) * 0.13650287544670278;
}

void QuindrelSnareDrum::updateTone()
{
    bodyGainTarget = bodyGainForKnob(toneKnob);
    toneGainTarget = toneGainForKnob(toneKnob);
}

void QuindrelSnareDrum::updateDecay()
{
    decayRate = decayRateForKnob(decayKnob);
}

void QuindrelSnareDrum::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);
    const double sr = sampleRateInfo.sampleRate;

    pulseTarget = 0.0;
    pulseCountdown = 0;

    g1 = 2.0 * std::sin(534.0707511102648 / sr); // 170 Hz
    q1 = 0.065;
    bodyResonator.clear();

    g2 = 2.0 * std::sin(1068.1415022205297 / sr); // 340 Hz
    q2 = 0.11;
    secondResonator.clear();

    // 2 pi 3400 / sr used directly, without the sine.
    g3 = 21362.83004441059 / sr;
    q3 = 0.9;
    noiseFilter.clear();

    pulseHighPass.design(12000.0, sr);
    pulseHighPass.clear();

    // The pole of 3400 Hz with the gain of the 12000 Hz filter, on purpose.
    noiseHighPass.a = std::exp(-quindrel::twoPi * 3400.0 / sr);
    noiseHighPass.b = pulseHighPass.b;
    noiseHighPass.clear();

    updateTone();
    snappy = snappyKnob;
    updateDecay();
}

void QuindrelSnareDrum::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double sr = sampleRateInfo.sampleRate;
    const double k = sampleRateInfo.rateScale;

    // Only the snare squares its velocity.
    float drive = velocity * 2.645f;
    drive = drive * drive;
    amplitude = (double) drive;
    pulseTarget = amplitude;

    pulseCountdown = (int) std::trunc(sr * 0.00097);
    envelopeCountdown = (int) std::trunc(sr * 0.004);

    envelopeTarget = 1.0;
    pulse = 0.0;
    pulseRate = k * 0.99;
    noiseEnvelope = 0.0;
    noiseEnvelopeRate = k * 0.015;
}

double QuindrelSnareDrum::renderSample(double input)
{
    double raw = 0.0;

    if (active)
    {
        const double k = sampleRateInfo.rateScale;

        // The countdowns go on below 0, so each fires once per note.
        if (pulseCountdown-- == 0)
        {
            pulseTarget = 0.0;
            pulseRate = k * 0.5;
        }
        if (envelopeCountdown-- == 0)
            envelopeTarget = 0.0;

        // Re-evaluated each sample so the Decay knob acts on a sounding drum.
        if (envelopeTarget == 0.0)
            noiseEnvelopeRate = decayRate * k * 0.0005;

        const double h = pulseHighPass.process(pulse);
        const double d1 = bodyResonator.process(h * 20.0 + pulse, g1, q1) + h * 0.5;
        // Struck by the rectangular pulse target, not by the pulse.
        const double b2 = secondResonator.process(pulseTarget, g2, q2);

        // The noise's sign alone shapes the gate: negative samples reset it,
        // positive runs let it rise. No k here, so it is the same at every rate.
        noiseGate = noiseGate - (noiseGate - 1.0) * 0.2;
        if (input < 0.0)
            noiseGate = 0.0;
        noiseGate = noiseEnvelope * noiseGate;

        const double h2 = noiseHighPass.process(noiseGate);
        const double s = noiseFilter.process(amplitude * h2, g3, q3) * 2.0;

        raw = (((bodyGain * b2 * 5.0 + d1) * toneGain * 0.06) - snappy * s) * level;

        quindrel::relax(pulse, pulseTarget, pulseRate);
        quindrel::relax(noiseEnvelope, envelopeTarget, noiseEnvelopeRate);
    }

    quindrel::relax(bodyGain, bodyGainTarget, levelSmoothing);
    quindrel::relax(toneGain, toneGainTarget, levelSmoothing);
    return finishSample(raw);
}
