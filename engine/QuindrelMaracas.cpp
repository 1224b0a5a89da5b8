#include "engine/QuindrelMaracas.h"

#include <cmath>

void QuindrelMaracas::setTone(double x)
{
    toneKnob = x;
    updateTone();
}

void QuindrelMaracas::updateTone()
{
    const double f = std::fmin(10009.0 * (toneKnob + 0.5), quindrel::cornerLimit * sampleRateInfo.nyquist);
    const double t = std::tan(quindrel::pi * f / sampleRateInfo.sampleRate);
    const double n = 1.0 / (t * 0.6666666666666666 + t * t + 1.0);
    highPass.b0 = n;
    highPass.b1 = -2.0 * n;
    highPass.b2 = n;
    highPass.a1 = 2.0 * (t * t - 1.0) * n;
    highPass.a2 = (1.0 - t * 0.6666666666666666 + t * t) * n;
}

void QuindrelMaracas::setSampleRate(float sampleRate)
{
    QuindrelInstrument::setSampleRate(sampleRate);

    // 10009 Hz whatever the knob says; the next trigger applies the knob.
    const double w = 62888.401739560475 / sampleRateInfo.sampleRate;
    highPass.designHighPass(w, std::sin(w) * 0.3333333333333333);
    highPass.clear();
}

void QuindrelMaracas::trigger(float velocity)
{
    QuindrelInstrument::trigger(velocity);
    const double k = sampleRateInfo.rateScale;

    amplitude = (double) (velocity * 2.645f);
    gate = 1.0;
    countdown = sampleRateInfo.sampleRate * 0.02;
    attack = 0.0;
    attackRate = k * 0.003;
    envelope = 0.0;
    envelopeRate = k * 0.01;
    updateTone();
}

double QuindrelMaracas::renderSample(double input)
{
    double raw = 0.0;

    if (active)
    {
        const double c = countdown;
        countdown = c - 1.0;
        if (!(c > 0.0))
        {
            gate = 0.0;
            // Grows with the rate instead of following k, so the release is far
            // shorter in seconds at high rates. Kept as it is.
            attackRate = sampleRateInfo.rateRatio * 0.02;
        }

        const double m = envelope * 1.1;

        // The positive half of the noise is bent, the negative half passes.
        double shaped = input;
        if (shaped > 0.0)
        {
            const double y = shaped + 1.0;
            shaped = 1.5 * y - 0.5 * (y * y * y) - 1.0;
        }

        const double x = -(amplitude * shaped * m);
        const double f = highPass.process(x);
        raw = level * f * (-3.85);

        quindrel::relax(attack, gate, attackRate);
        quindrel::relax(envelope, attack, envelopeRate);
    }

    return finishSample(raw);
}
