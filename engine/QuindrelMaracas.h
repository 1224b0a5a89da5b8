#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The maracas: one burst of the engine's bright noise, bent on its positive
// half, shaped by a two-stage envelope and high-passed. Threads as
// QuindrelInstrument; setTone runs on any thread.
class QuindrelMaracas final : public QuindrelInstrument
{
public:
    QuindrelMaracas() = default;

    using QuindrelInstrument::renderSample;
    double renderSample(double input) override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTone(double x);

private:
    // The high-pass at 10009 (x + 0.5) Hz with Q 1.5; histories are kept.
    void updateTone();

    double toneKnob = 0.0;
    quindrel::Biquad highPass;
    double countdown = 0.0;
    double gate = 0.0;
    double attack = 0.0;
    double attackRate = 0.0;
    double envelope = 0.0;
    double envelopeRate = 0.0;
    double amplitude = 0.0; // A
};
