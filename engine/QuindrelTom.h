#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The toms: a resonator struck by a short pulse through a high-pass and a
// half-wave rectifier, plus a skin of band-limited noise (the engine's dark
// noise tap) whose share is the Snappy knob. The velocity sets the height of
// the pulse and of the noise. The three leaves differ only in their base
// frequency and damping. Threads as QuindrelInstrument; the knob setters run on
// any thread, as single stores the next sample reads.
class QuindrelTom : public QuindrelInstrument
{
public:
    using QuindrelInstrument::renderSample;
    double renderSample(double input) override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTuning(double x);
    void setDecay(double x);
    void setSnappy(double x);

protected:
    QuindrelTom(double baseFrequencyHz, double baseDampingValue);
    ~QuindrelTom() = default;

private:
    const double baseFrequency;
    const double baseDamping;
    const double noiseHighPassHz = 353.0;
    const double noiseLowPassHz = 501.0;

    double tuningKnob = 0.0;
    double decayKnob = 0.0;
    double tuning = 0.0;
    double decayFactor = 0.0;
    int pulseCountdown = 0;
    double pulseTarget = 0.0;
    double pulse = 0.0; // p
    double pulseRate = 0.0;
    double g = 0.0;
    double q = 0.0;
    double snappy = 1.0;
    double noiseEnvelope = 0.0;
    double noiseEnvelopeRate = 0.0;
    quindrel::Hp1 pulseHighPass;
    quindrel::Svf resonator;
    quindrel::Hp1 noiseHighPass;
    quindrel::Lp1 noiseLowPass;
};

class QuindrelLowTom final : public QuindrelTom
{
public:
    QuindrelLowTom()
        : QuindrelTom(86.0, 0.04)
    {
    }
};

class QuindrelMidTom final : public QuindrelTom
{
public:
    QuindrelMidTom()
        : QuindrelTom(140.0, 0.045)
    {
    }
};

class QuindrelHiTom final : public QuindrelTom
{
public:
    QuindrelHiTom()
        : QuindrelTom(186.0, 0.045)
    {
    }
};
