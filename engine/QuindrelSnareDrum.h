#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The snare drum: two tuned resonators for the body and a gated noise path for
// the snares, fed with the engine's bright noise tap. Threads as
// QuindrelInstrument; the knob setters run on any thread.
class QuindrelSnareDrum final : public QuindrelInstrument
{
public:
    QuindrelSnareDrum() = default;

    using QuindrelInstrument::renderSample;
    double renderSample(double input) override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTone(double x);
    void setDecay(double x);
    void setSnappy(double x);

    // Knob curves, x in 0 to 1.
    static double bodyGainForKnob(double x); // share of the second resonator
    static double toneGainForKnob(double x); // gain of the drum sum
    static double decayRateForKnob(double x);

private:
    void updateTone();
    void updateDecay();

    double toneKnob = 0.0;
    double snappyKnob = 0.0;
    double decayKnob = 0.0;
    double bodyGainTarget = 0.0;
    double bodyGain = 0.0;
    double snappy = 0.0;
    double decayRate = 0.0;
    double toneGainTarget = 0.0;
    double toneGain = 0.0;

    int pulseCountdown = 0;
    double pulseTarget = 0.0; // T
    double amplitude = 0.0;   // A
    int envelopeCountdown = 0;
    double envelopeTarget = 0.0;
    double pulse = 0.0;
    double pulseRate = 0.0;
    double noiseEnvelope = 0.0;
    double noiseEnvelopeRate = 0.0;
    double noiseGate = 0.0;

    quindrel::Hp1 pulseHighPass;
    double g1 = 0.0, q1 = 0.0;
    quindrel::Svf bodyResonator;
    double g2 = 0.0, q2 = 0.0;
    quindrel::Svf secondResonator;
    quindrel::Hp1 noiseHighPass;
    double g3 = 0.0, q3 = 0.0;
    quindrel::Svf noiseFilter;
};
