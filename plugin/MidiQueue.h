#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

// Incoming MIDI of the block, read one sample at a time by block processing.
// Events stamped at or past the end of a block are carried over into the next
// block with their stamp reduced by the block's length. Two buffers swap roles
// at each block, so nothing is allocated once they have grown to their working
// size. Audio thread, but for prepare().
class MidiQueue
{
public:
    MidiQueue();

    // Reserves room and forgets everything queued.
    void prepare(int expectedEventBytes = 4096);

    // Adds the host's events of this block to the current buffer, skipping
    // those stamped below 0, and starts reading from the first event.
    void addBlock(const juce::MidiBuffer& events);

    // True and the message if an event is due at this sample. Call repeatedly
    // until it returns false; events come in buffer order.
    bool nextEventAt(int sample, juce::MidiMessage& result);

    // Keeps the events at or past numSamples for the next block, moved back by
    // numSamples, and starts reading from the first of them.
    void rollOver(int numSamples);

    // Starts reading the current buffer from its first event.
    void rewind();

    bool isEmpty() const { return current->isEmpty(); }

private:
    juce::MidiBuffer bufferA, bufferB;
    juce::MidiBuffer* current = &bufferA;
    juce::MidiBuffer* other = &bufferB;
    juce::MidiBufferIterator iterator;
    bool hasEvent = false;
    bool eventWaiting = false;
    int eventSample = -1;
    juce::MidiMessage message;
};
