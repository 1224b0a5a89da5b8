#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The cow bell: two square oscillators of its own, a fifth-ish apart, each
// smoothed with a slow positive and a fast negative slope under a two-part
// envelope, then high-passed. Threads as QuindrelInstrument; the knob setters
// run on any thread, as single stores the next sample reads.
class QuindrelCowBell final : public QuindrelInstrument
{
public:
    QuindrelCowBell() = default;

    using QuindrelInstrument::renderSample;
    double renderSample() override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTuning(double x);
    void setDecay(double x);

    // 10, 2 and 1 at x = 0, 0.5 and 1: the factor on both decay rates.
    static double decayFactorForKnob(double x);

private:
    void updateTuning();

    double tuningKnob = 0.0;
    double decayKnob = 0.0;
    double baseFrequency = 0.0;
    double decayFactor = 0.0;
    double amplitude = 0.0; // A
    double countdown = 0.0;
    double gate = 0.0;
    double fast = 0.0;
    double fastRate = 0.0;
    double slow = 0.0;
    double slowRate = 0.0;
    quindrel::SquareOscillator oscillator1, oscillator2;
    double smoothA = 0.0, smoothB = 0.0; // sA, sB
    quindrel::Biquad highPass;
};
