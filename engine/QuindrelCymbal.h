#pragma once

#include "engine/MetalGateStage.h"
#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The cymbal: both bands of the metal bank through three gate stages, each on
// its own envelope chain. Stage C (low band) and stage A (high band) make the
// long body, stage B (high band) the bright hit that the Tone knob brings in.
// Threads as QuindrelInstrument; the knob setters run on any thread, as single
// stores the next sample reads.
class QuindrelCymbal final : public QuindrelInstrument
{
public:
    QuindrelCymbal() = default;

    using QuindrelInstrument::renderSample;
    double renderSample(double input1, double input2) override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTone(double x);
    void setDecay(double x);

private:
    void updateDecay();

    double tone = 0.0;
    double decayKnob = 0.0;
    double amplitude = 0.0; // A
    double countdown = 0.0;
    double gate = 0.0;
    double hitEnvelope = 0.0; // E1, drives stage B
    double hitRate = 0.0;
    double fall = 0.0; // E4
    double fallRate = 0.0;
    double fallLag = 0.0; // E5
    double fallLagRate = 0.0;
    double body = 0.0; // E6
    double bodyRate = 0.0;
    double bodyEnvelope = 0.0; // E3 = E5 + E6, drives stage A
    double stageC = 0.0;       // E8
    double stageCLag = 0.0;    // E9
    double stageCLagRate = 0.0;
    double stageCRate = 0.0;
    double stageCEnvelope = 0.0; // E7, drives stage C

    double gateScale = 0.0; // R
    quindrel::MetalGateStage gateA, gateB, gateC;
    quindrel::Biquad highPassC, highPassA, highPassB;
    double lowPassCoefficient = 0.0;
    double lowPassState = 0.0;
};
