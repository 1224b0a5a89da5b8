#pragma once

#include <cmath>

// The small signal blocks the instruments are written from. Each is a plain
// value type whose step is inline, so an instrument that owns one runs the
// same arithmetic as if the equations were written out in its sample function.
// The order of every operation and each 1e-20 term are part of the sound: the
// 1e-20 keeps recursive states out of the denormal range without touching the
// processor's floating-point mode. All of these run on the audio thread.
namespace quindrel
{
constexpr double pi = 3.141592653589793;
constexpr double twoPi = 6.283185307179586;

// A tone knob asks for a corner that, at rates below 44.1 kHz, may lie past half
// the sample rate, where the bilinear designs turn unstable and a voice runs to
// infinity. The corner stops just short of it; at the five rates the models are
// tuned for no knob reaches this limit, so their sound is untouched.
constexpr double cornerLimit = 0.98; // of half the sample rate
inline double angleBelowNyquist(double w) noexcept { return w < cornerLimit * pi ? w : cornerLimit * pi; }
constexpr double antiDenormal = 1e-20;

// Moves e towards target t by the fraction c of the distance.
inline void relax(double& e, double t, double c) noexcept
{
    e = e - ((e - t) * c + antiDenormal);
}

// Relax towards 0.
inline void fall(double& e, double c) noexcept
{
    e = e - (c * e + antiDenormal);
}

// Knob curve of the tunings: 0.905, 1.0 and 1.131 at x = 0, 0.5 and 1.
inline double tuningCurve(double x) noexcept
{
    return (x * 0.072 + 0.154) * x + 0.905;
}

// Knob curve of the decays: 4, 1 and 0.25 at x = 0, 0.5 and 1.
inline double decayCurve(double x) noexcept
{
    return 4.0 * std::pow(0.0625, x);
}

// One-pole high-pass. The coefficients are public because a few voices design
// them in unusual ways (a pole of one corner with the gain of another).
struct Hp1
{
    double a = 0.0;
    double b = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;

    void design(double frequency, double sampleRate) noexcept
    {
        a = std::exp(-twoPi * frequency / sampleRate);
        b = (a + 1.0) / 2.0;
    }

    void clear() noexcept { x1 = y1 = 0.0; }

    double process(double x) noexcept
    {
        const double y = (x - x1) * b + a * y1 + antiDenormal;
        x1 = x;
        y1 = y;
        return y;
    }
};

// One-pole low-pass.
struct Lp1
{
    double c = 0.0;
    double y1 = 0.0;

    void design(double frequency, double sampleRate) noexcept { c = std::exp(-twoPi * frequency / sampleRate); }

    void clear() noexcept { y1 = 0.0; }

    double process(double x) noexcept
    {
        y1 = (1.0 - c) * x + c * y1 + antiDenormal;
        return y1;
    }
};

// Chamberlin state-variable resonator; returns the band output. g is the
// tuning (usually 2 sin(pi f / sr)) and q the damping feedback, which the
// decay knobs act on directly.
struct Svf
{
    double low = 0.0;
    double band = 0.0;

    void clear() noexcept { low = band = 0.0; }

    double process(double x, double g, double q) noexcept
    {
        const double p = x - q * band + antiDenormal;
        low = g * band + low + antiDenormal;
        const double high = p - low + antiDenormal;
        band = high * g + band + antiDenormal;
        return band;
    }
};

// Direct form I biquad in double precision. w is the angular frequency in
// radians per sample.
struct Biquad
{
    double b0 = 0.0, b1 = 0.0, b2 = 0.0, a1 = 0.0, a2 = 0.0;
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;

    void designHighPass(double w, double alpha) noexcept
    {
        const double n = 1.0 / (1.0 + alpha);
        const double cosW = std::cos(w);
        b0 = (1.0 + cosW) / 2.0 * n;
        b1 = -(1.0 + cosW) * n;
        b2 = b0;
        a1 = -2.0 * cosW * n;
        a2 = (1.0 - alpha) * n;
    }

    void designBandPass(double w, double alpha) noexcept
    {
        const double n = 1.0 / (1.0 + alpha);
        b0 = alpha * n;
        b1 = 0.0;
        b2 = -alpha * n;
        a1 = -2.0 * std::cos(w) * n;
        a2 = (1.0 - alpha) * n;
    }

    void designLowPass(double w, double alpha) noexcept
    {
        const double n = 1.0 / (1.0 + alpha);
        const double cosW = std::cos(w);
        b0 = (1.0 - cosW) / 2.0 * n;
        b1 = (1.0 - cosW) * n;
        b2 = b0;
        a1 = -2.0 * cosW * n;
        a2 = (1.0 - alpha) * n;
    }

    void clear() noexcept { x1 = x2 = y1 = y2 = 0.0; }

    double process(double x) noexcept
    {
        const double y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2 + antiDenormal;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }
};

// Naive square wave of +-0.5. The wrap subtracts the non-whole period, so the
// edges jitter by a sample around the exact frequency; that hardness is wanted.
struct SquareOscillator
{
    double period = 0.0;
    double threshold = 0.0;
    double phase = 0.0;
    double output = 0.5;

    void setUp(double sampleRate, double periodFactor, double duty) noexcept
    {
        period = sampleRate * periodFactor;
        threshold = std::trunc(period * duty);
        phase = 0.0;
        output = 0.5;
    }

    // Output from the phase before the increment.
    double updateOutput() noexcept
    {
        output = phase > threshold ? 0.5 : -0.5;
        return output;
    }

    void advance() noexcept
    {
        const double q = phase;
        phase = q + 1.0;
        if (q > period)
            phase -= period;
    }
};
} // namespace quindrel
