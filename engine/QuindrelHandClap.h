#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The hand clap: the engine's bright noise through a high-pass and two tuned
// resonators, gated by a burst envelope that is struck three times in quick
// succession and a fourth time for longer, beside a slower reverb tail. Unlike
// the other voices its raw output carries the unsmoothed level target, so a
// clap at level 0 is silent at once. Threads as QuindrelInstrument; the knob
// setters run on any thread, as single stores the next sample reads.
class QuindrelHandClap final : public QuindrelInstrument
{
public:
    QuindrelHandClap() = default;

    using QuindrelInstrument::renderSample;
    double renderSample(double input) override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTone(double x);
    void setReverb(double x);

    // 0.0005, 0.0002 and 0.0001 at x = 0, 0.5 and 1: the fall of the tail's
    // attack once the gate is over, before k.
    static double reverbRateForKnob(double x);

    // 0 to 2 for the three quick strikes, 3 for the last, long one.
    int getStage() const noexcept { return stage; }

private:
    void updateTone();

    static constexpr double stageDecay[4] = { 0.006, 0.0054, 0.0053, 0.0008 };

    double toneKnob = 0.0;
    double reverbKnob = 0.0;
    double reverbRate = 0.0;
    double burst = 0.0; // E
    int stage = 0;
    double countdown = 0.0;
    double gate = 0.0;
    double amplitude = 0.0; // A
    double tailAttack = 0.0;
    double tailAttackRate = 0.0;
    double tail = 0.0;
    double tailRate = 0.0;

    double g = 0.0;
    quindrel::Svf resonator1, resonator2;
    // The noise high-pass and the tail low-pass have no anti-denormal term.
    double highPassA = 0.0, highPassB = 0.0;
    double highPassInput = 0.0, highPassState = 0.0;
    double tailLowPassCoefficient = 0.0;
    double tailLowPassState = 0.0;
};
