#pragma once

#include "engine/QuindrelInstrument.h"

// The laser gun: a sine whose pitch falls from up to 35 kHz down to 40 Hz, with
// no filter at all. It is the one voice that fades its old note out on a
// retrigger, and a trigger at level 0 does not restart it. Threads as
// QuindrelInstrument; the knob setters run on any thread, as single stores the
// next sample reads.
class QuindrelLaserGun final : public QuindrelInstrument
{
public:
    QuindrelLaserGun() = default;

    using QuindrelInstrument::renderSample;
    double renderSample() override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setDepth(double x);
    void setDecay(double x);
    void setSweep(double x);

    // Knob curves, x in 0 to 1; k is the rate scale.
    static double depthForKnob(double x);               // share of the sweep range
    static double decayRateForKnob(double x, double k); // amplitude envelope, per sample
    static double sweepRateForKnob(double x, double k); // pitch envelope, per sample

private:
    double decayKnob = 0.0;
    double depthKnob = 0.0;
    double sweepKnob = 0.0;
    double depth = 0.0;
    double decayRate = 0.0;
    double sweepRate = 0.0;
    double countdown = 0.0; // samples until the new note starts
    double amplitude = 0.0; // A
    double ampEnvelope = 0.0;
    double sweepEnvelope = 0.0;
    double phase = 0.0; // radians, never wrapped
    double sine = 0.0;
    double hold = 0.0; // what is heard, one sample late
    double holdRate = 0.0;
};
