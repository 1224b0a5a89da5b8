#pragma once

#include "sequencer/Clock.h"

// A clock that works on pairs of steps and delays the second step of each pair
// by `shuffle` steps; the first step of the next pair is not moved. States: 0
// first step begins, 1 its pulse ends, 2 second step begins, 3 its pulse ends.
// Pairs are aligned to beat 0 of the clock, not to the pattern. Ticked on the
// audio thread like `Clock`.
class ShuffledClock : public Clock
{
public:
    explicit ShuffledClock(const juce::String& clockName = {});
    ~ShuffledClock() override;

    // Audio thread: once for every sample; true if the state changed.
    bool tick() override
    {
        if (!running)
            return false;
        if (needsUpdate)
            schedulePairChange();
        return advance();
    }

    bool isOnState() const override { return state == 0 || state == 2; }
    bool isOffState() const override { return state == 1 || state == 3; }
    bool isNearPreviousStep() const override;

    // Audio thread; the sequencer gives 0 to 0.8.
    void setShuffle(double newShuffle) { setAndMark(shuffle, newShuffle); }

    double shuffle = 0.0; // delay of every second step, as a fraction of a step

private:
    void schedulePairChange();
};
