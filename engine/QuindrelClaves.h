#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The claves: one resonator struck by an exponential pulse. Threads as
// QuindrelInstrument; the knob setters run on any thread.
class QuindrelClaves final : public QuindrelInstrument
{
public:
    QuindrelClaves() = default;

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
    double decayFactor = 0.0;
    double g = 0.0;
    double q = 0.0;
    quindrel::Svf resonator;
    double pulse = 0.0; // also carries the velocity
    double pulseRate = 0.0;
};
