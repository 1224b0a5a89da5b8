#pragma once

#include "engine/QuindrelInstrument.h"
#include "engine/SignalBlocks.h"

// The congas: a resonator struck by a short pulse through a high-pass and a
// half-wave rectifier. The velocity scales only the strike, so the length of
// the ring does not depend on it. The three leaves differ only in their base
// frequency and damping. Threads as QuindrelInstrument; the knob setters run on
// any thread, as single stores the next sample reads.
class QuindrelConga : public QuindrelInstrument
{
public:
    using QuindrelInstrument::renderSample;
    double renderSample() override;
    void setSampleRate(float sampleRate) override;
    void trigger(float velocity) override;

    void setTuning(double x);
    void setDecay(double x);

protected:
    QuindrelConga(double baseFrequencyHz, double baseDampingValue);
    ~QuindrelConga() = default;

private:
    const double baseFrequency;
    const double baseDamping;

    double tuningKnob = 0.0;
    double decayKnob = 0.0;
    double tuning = 0.0;
    double decayFactor = 0.0;
    int pulseCountdown = 0;
    double pulseTarget = 0.0;
    double pulse = 0.0; // p
    double pulseRate = 0.0;
    double drive = 0.0;
    quindrel::Hp1 pulseHighPass;
    quindrel::Svf resonator;
};

class QuindrelLowConga final : public QuindrelConga
{
public:
    QuindrelLowConga()
        : QuindrelConga(190.0, 0.023)
    {
    }
};

class QuindrelMidConga final : public QuindrelConga
{
public:
    QuindrelMidConga()
        : QuindrelConga(285.0, 0.028)
    {
    }
};

class QuindrelHiConga final : public QuindrelConga
{
public:
    QuindrelHiConga()
        : QuindrelConga(400.0, 0.03)
    {
    }
};
