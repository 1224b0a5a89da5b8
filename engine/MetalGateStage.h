#pragma once

#include <cmath>

// The non-linear gate stage that turns the shared metal bank into the cymbal
// and hi hat sounds. An exponential bend of the band-passed bank signal is
// gated by an envelope into a leaky state whose negative side is squashed.
// The model is written for 192 kHz: its output is scaled by 192000/sr, so the
// loudness of the voices depends on the rate, which is kept on purpose.
// Audio thread throughout.
namespace quindrel
{
struct MetalGateConstants
{
    double a;    // steepness of the bend
    double s;    // drive of the bend into the state, negative
    double c;    // leak per sample at 44.1 kHz, scaled by k
    double gain; // of the bend term
    double n;    // squash of a negative state
};

// Fed by the high band: both hi hats and cymbal stages A and B.
constexpr MetalGateConstants metalGateHigh{ 1000.0, -0.002, 0.3, 1.7, 0.01 };
// Fed by the low band: cymbal stage C.
constexpr MetalGateConstants metalGateLow{ 300.0, -0.01, 0.1, 0.7, 0.1 };

// Near 0 for small u, towards -1 for large positive u, -a u - 1 for large
// negative u. 0/0 at u = 0 exactly, which the ever-running bank never gives.
inline double metalBend(double u, double a) noexcept
{
    return (a * u) / (std::exp(a * u) - 1.0) - 1.0;
}

struct MetalGateStage
{
    double z = 0.0;

    // One step with a bend value B computed by metalBend for the same constants,
    // envelope e and rate scale k. Returns the state, before the 192 kHz scaling.
    double process(double bend, double e, const MetalGateConstants& g, double k) noexcept
    {
        const double d = g.s * e * bend;
        // The envelope drives the state, with a bias that grows fast at high level.
        z = (1.0 - g.c * k) * z + (e * e * e * 0.01 + 0.05) * e + g.gain * d;
        if (z < 0.0)
            z = z * g.n;
        return z;
    }
};

// The output scale of the stages, R = 192000/sr.
inline double metalGateScale(double sampleRate) noexcept
{
    return 192000.0 / sampleRate;
}
} // namespace quindrel
