#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The rim shot: two resonators whose combination passes a hard exponential
// shaper, an envelope and a high-pass. Threads as QuindrelInstrument; the knob
// setters run on any thread.
class QuindrelRimShot final : public QuindrelInstrument
{
public:
    QuindrelRimShot() = default;

    using QuindrelInstrument::renderSample;
    double renderSample() override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTuning(double x);
    void setDecay(double x);

private:
    void updateTuning();
    void updateDecay();

    double tuningKnob = 0.0;
    double decayKnob = 0.0;
    double gLow = 0.0, qLow = 0.0;
    double gHigh = 0.0, qHigh = 0.0;
    quindrel::Svf lowResonator;
    quindrel::Svf highResonator;
    double decayFactor = 0.0;
    double amplitude = 0.0; // A
    double pulseLow = 0.0;
    double pulseLowRate = 0.0;
    double pulseHigh = 0.0;
    double pulseHighRate = 0.0;
    double envelope = 0.0; // E
    double envelopeTarget = 0.0;
    double envelopeRate = 0.0;
    double countdown = 0.0;

    // One-pole high-pass on the shaped signal, without the anti-denormal term.
    double shapedHpA = 0.0, shapedHpB = 0.0;
    double shapedHpInput = 0.0, shapedHpState = 0.0;
    quindrel::Biquad outHighPass;
};
