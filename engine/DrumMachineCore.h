#pragma once

#include "engine/SampleRateInfo.h"

class DrumMachine;

// Base of the sound engine: the sample-rate record and the trigger-out pulse.
// On its own it is a silent engine that renders nothing; QuindrelCore adds the
// instruments. It knows nothing of MIDI, patterns, mute or solo.
//
// Threads: renderFrame, trigger and renderTriggerPulse run on the audio thread;
// setSampleRate, prepare and release from the host's prepare and release calls,
// outside rendering; setParameter on whatever thread changed the parameter,
// as single stores that the next sample reads.
class DrumMachineCore
{
public:
    static constexpr int numInstruments = 17;
    // A sequencer track with no instrument; it can only drive the trigger-out pulse.
    static constexpr int accentTrack = 17;

    // owner is the plug-in that made the engine; it may be null and is not used here.
    explicit DrumMachineCore(DrumMachine* owner = nullptr);
    virtual ~DrumMachineCore() = default;

    DrumMachineCore(const DrumMachineCore&) = delete;
    DrumMachineCore& operator=(const DrumMachineCore&) = delete;

    virtual void prepare() {}
    virtual void release() {}
    virtual void setParameter(int index, float value);

    // Audio thread: fires an instrument (0 to 16) with a velocity that may exceed 1.
    virtual void trigger(int instrument, float velocity);

    virtual void setSampleRate(float sampleRate);

    // Audio thread: one sample of each of the seventeen instruments.
    virtual void renderFrame(double* outputs);

    // Stores the flag and leaves the pulse idle.
    void setTriggerOutEnabled(bool enabled);
    bool isTriggerOutEnabled() const noexcept { return triggerOutEnabled; }

    // Audio thread: the next sample of the trigger-out pulse. Meant to be called
    // once per frame while the pulse is enabled.
    double renderTriggerPulse();

    const SampleRateInfo& getSampleRateInfo() const noexcept { return sampleRateInfo; }
    DrumMachine* getOwner() const noexcept { return owner; }

    // The track (0 to 17) whose triggers restart the pulse; set directly by the caller.
    int triggerOutSource = 0;

protected:
    SampleRateInfo sampleRateInfo;

private:
    void resetPulse();

    bool triggerOutEnabled = false;
    double pulsePeriod = 0.0;    // P, in samples
    double pulseHarmonics = 0.0; // M, odd
    double pulseDelay = 0.0;     // D, whole samples between the two impulses
    double pulsePosition = 0.0;
    double pulseImpulse = 0.0;
    double pulseIntegrator = 0.0;
    double pulseCentre = 0.0;
    DrumMachine* owner = nullptr;
};
