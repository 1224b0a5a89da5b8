#pragma once

#include "engine/SampleRateInfo.h"

// Base of the seventeen drum voices. It holds what they share: the sample-rate
// record, the one-voice gate, the smoothed level and the peak follower that
// decides when a voice has ended. A concrete voice overrides one renderSample
// form (no input, one shared source, or two), setSampleRate and trigger.
//
// The destructor is protected and not virtual: a voice is never deleted through
// this class, only through its own, so the compiler rejects the one way to get
// it wrong. renderSample and trigger run on the audio thread; setSampleRate
// outside rendering; setLevel on any thread, as one store read by the next sample.
class QuindrelInstrument
{
public:
    QuindrelInstrument() = default;
    QuindrelInstrument(const QuindrelInstrument&) = delete;
    QuindrelInstrument& operator=(const QuindrelInstrument&) = delete;

    // Audio thread. The base forms are silent and leave the state alone.
    virtual double renderSample();
    virtual double renderSample(double input);
    virtual double renderSample(double input1, double input2);

    // Recomputes everything that depends on the rate. A sounding voice keeps
    // sounding, with its filters emptied by the concrete class.
    virtual void setSampleRate(float sampleRate);

    // Audio thread: starts the voice.
    virtual void trigger(float velocity);

    virtual void setLevel(double newLevel);

    bool isActive() const noexcept { return active; }
    double getLevel() const noexcept { return level; }
    const SampleRateInfo& getSampleRateInfo() const noexcept { return sampleRateInfo; }

protected:
    ~QuindrelInstrument() = default;

    // Audio thread: the common end of every sample. Relaxes the level, applies
    // it to the raw value r, runs the peak follower and ends the voice once the
    // follower has fallen below the threshold. Knob smoothing of a voice belongs
    // right beside this call and uses levelSmoothing.
    double finishSample(double raw) noexcept;

    SampleRateInfo sampleRateInfo;
    bool active = false;
    double levelTarget = 1.0;
    double level = 1.0; // L
    double levelSmoothing = 0.0;
    double peakFollower = 0.0;
    double lastPeak = 0.5;
    double peakRelease = 0.0;
};
