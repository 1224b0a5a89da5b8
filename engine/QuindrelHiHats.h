#pragma once

#include "engine/MetalGateStage.h"
#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// What the two hi hats share: the high band of the metal bank through one gate
// stage and a tunable high-pass, shaped by an envelope that rises for 0.97 ms
// towards the velocity and then falls. Their output carries no level of its
// own, so it is linear in the level. Threads as QuindrelInstrument; the knob
// setters run on any thread, as single stores the next sample reads.
class QuindrelHiHat : public QuindrelInstrument
{
public:
    using QuindrelInstrument::renderSample;
    void trigger(float velocity) override;

    double getEnvelope() const noexcept { return envelope; }

protected:
    QuindrelHiHat() = default;
    ~QuindrelHiHat() = default;

    // The rate-dependent part both hats share; the tone and decay are each hat's own.
    void setUpForRate();
    void designHighPass(double w);

    // Audio thread: steps 2 to 4 of the path - the gate stage on the envelope
    // before its update, the high-pass, then the envelope moves on.
    double gateFilterAndRelax(double input) noexcept;

    double toneKnob = 0.0;
    double decayKnob = 0.0;
    double decayRate = 1.0;      // until the first setSampleRate
    double amplitude = 0.0;      // A
    double envelopeTarget = 0.0; // T
    double envelope = 0.0;       // E
    double envelopeRate = 0.0;
    double countdown = 0.0;
    double gateScale = 0.0; // R
    quindrel::MetalGateStage gate;
    quindrel::Biquad highPass;
};

class QuindrelClosedHiHat final : public QuindrelHiHat
{
public:
    QuindrelClosedHiHat() = default;

    using QuindrelInstrument::renderSample;
    double renderSample(double input) override;
    void setSampleRate(float sampleRate) override;

    void setTone(double x);
    void setDecay(double x);

    static double decayRateForKnob(double x);

private:
    void updateTone();
};

// The open hat can be choked by the closed one: the engine calls choke() when
// the closed hat fires, and the decay then runs with a fast coefficient.
class QuindrelOpenHiHat final : public QuindrelHiHat
{
public:
    QuindrelOpenHiHat() = default;

    using QuindrelInstrument::renderSample;
    double renderSample(double input) override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTone(double x);
    void setDecay(double x);

    // Audio thread. Takes effect once the attack of the current note is over;
    // the next trigger of the open hat clears it.
    void choke() noexcept { chokeValue = 8.0; }

    static double decayRateForKnob(double x);

private:
    void updateTone();

    double chokeValue = 1.0; // only exactly 1.0 means "not choked"
};
