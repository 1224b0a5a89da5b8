#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The bass drum: a resonator kicked by a short trigger pulse, its tuning pulled
// up by an envelope at the start of the note, then an exponential wave shaper,
// a tone low-pass and a DC-blocking high-pass. Threads as QuindrelInstrument;
// the knob setters run on any thread, as single stores the next sample reads.
class QuindrelBassDrum final : public QuindrelInstrument
{
public:
    QuindrelBassDrum() = default;

    using QuindrelInstrument::renderSample;
    double renderSample() override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTone(double x);
    void setDecay(double x);
    void setSweep(double x);

    // Knob curves, x in 0 to 1.
    static double toneCutoffForKnob(double x); // Hz
    static double dampingForKnob(double x);    // q of the resonator
    static double sweepRateForKnob(double x);  // Hz, before the velocity

    // The pitch envelope: rises for about 4.3 ms, then falls along a cubic to 0.
    double getEnvelope() const noexcept { return envelope; }

private:
    void updateTone();
    void updateDecay();
    void updateSweep();

    double toneKnob = 0.0;
    double decayKnob = 0.0;
    double sweepKnob = 0.0;
    double toneCutoff = 0.0;
    double damping = 0.0;
    double sweepRate = 0.0;
    double toneCoefficient = 0.0;

    double attackCountdown = 0.0;
    double pulseCountdown = 0.0;
    double attackGate = 0.0;
    double amplitude = 0.0;
    double riseValue = 0.0;
    double riseRate = 0.0;
    double pulse = 0.0;
    double pulseRate = 0.0;
    double envelope = 0.0;
    double curve1 = 0.0;
    double curve2 = 0.0;
    double curve3 = 0.0;
    int finished = 0;

    quindrel::Hp1 sweepHighPass; // fed with the negated envelope
    quindrel::Svf resonator;
    double toneLowPassState = 0.0;
    quindrel::Hp1 outHighPass;
};
