#pragma once

#include "parameters/RealtimeAsyncUpdater.h"
#include "parameters/RelaxedAtomic.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <cmath>

// Turns a running count of samples into step events. Block processing ticks it
// once per sample on the audio thread; each tick says whether the state changed
// in that sample. A plain clock alternates between state 0 (a step begins) and
// state 1 (the step's pulse ends); -1 means no state yet.
//
// The clock knows nothing of patterns: only a position in quarter-note beats,
// a tempo, the steps per beat and a pulse width. Starts, stops and state
// changes are flagged atomically and delivered, coalesced, to the listeners on
// the message thread. Fields are public because block processing drives the
// clocks directly (it marks them for an update when a tap arrives, for one).
class Clock : public RealtimeAsyncUpdater
{
public:
    // Observers served on the message thread. They must not read the clock's
    // fields: they ask the sequencer instead.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void clockStateChanged(Clock&) {} // after a start or a stop
        virtual void clockTicked(Clock&) {}       // after one or more changes of state
    };

    explicit Clock(const juce::String& clockName = {});
    ~Clock() override;

    void handleAsyncUpdate() override;

    // Audio thread: called once for every sample, running or not. True if the
    // state changed in this sample.
    virtual bool tick()
    {
        if (!running)
            return false;
        if (needsUpdate)
            scheduleNextChange();
        return advance();
    }

    virtual bool isOnState() const { return state == 0; }
    virtual bool isOffState() const { return state == 1; }

    // Whether the position lies nearer the step just begun than the next one;
    // exactly halfway counts as near the next. Places a live tap.
    virtual bool isNearPreviousStep() const;

    // Audio thread. Both rewind to position 0 and state -1; each does nothing
    // if the clock already runs (start) or is already stopped (stop).
    void start();
    void stop();

    // Audio thread: starts from position 0 whether or not the clock runs.
    void restart()
    {
        running = false;
        start();
    }

    // Audio thread. Equal values change nothing, so these may be called every
    // block and every step.
    void setSampleRate(double newRate) { setAndMark(sampleRate, newRate); }
    void setTempo(double newBpm) { setAndMark(bpm, newBpm); }
    void setStepsPerBeat(double newStepsPerBeat) { setAndMark(stepsPerBeat, newStepsPerBeat); }
    void setPulseWidth(double newPulseWidth) { setAndMark(pulseWidth, newPulseWidth); }
    void setPosition(double newPosition) { setAndMark(position, newPosition); }

    // Message thread.
    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    double position = 0.0; // quarter-note beats; the host's ppq may be written here
    double sampleRate = 44100.0;
    double bpm = 0.0;
    double stepsPerBeat = 4.0;
    double pulseWidth = 0.5; // fraction of a step before the off state
    double beatsPerSample = 0.0;
    int samplesToChange = 0;
    int state = -1;
    int nextState = 0;
    RelaxedAtomic<bool> running{ false }; // read by the panel too
    bool needsUpdate = true;
    bool firstTick = false; // the last change of state left state -1
    bool tickedNow = false;
    juce::String name;
    std::atomic<int> startStopPending{ 0 };
    std::atomic<int> tickPending{ 0 };
    juce::ListenerList<Listener> listeners;

protected:
    // A fraction of a step by which a position written from outside may land
    // past a boundary without that step being lost or played twice.
    static constexpr double toleranceInSteps = 0.005;

    // Audio thread: the countdown from the current position to `target` beats.
    int samplesUntil(double target, double samplesPerBeat) const
    {
        return saturatedCount(std::ceil((target - position) * samplesPerBeat));
    }

    static int saturatedCount(double samples);

    // Audio thread: fires a due change, then moves one sample on.
    bool advance()
    {
        bool changed = false;
        tickedNow = false;
        if (samplesToChange == 0 && (state == -1 || state != nextState))
        {
            firstTick = state == -1;
            state = nextState;
            tickPending.exchange(1);
            tickedNow = true;
            triggerAsyncUpdateFromAnyThread();
            changed = true;
        }
        --samplesToChange;
        position += beatsPerSample;
        if (samplesToChange < 0)
            needsUpdate = true;
        return changed;
    }

    // Audio thread: clears needsUpdate and returns the samples per beat, after
    // storing its reciprocal as the advance per tick.
    double beginUpdate()
    {
        needsUpdate = false;
        const double samplesPerBeat = sampleRate * 60.0 / bpm;
        beatsPerSample = 1.0 / samplesPerBeat;
        return samplesPerBeat;
    }

    void setAndMark(double& field, double value)
    {
        if (field != value)
        {
            field = value;
            needsUpdate = true;
        }
    }

private:
    void scheduleNextChange();
    void rewind(bool shouldRun);

    JUCE_DECLARE_NON_COPYABLE(Clock)
};
