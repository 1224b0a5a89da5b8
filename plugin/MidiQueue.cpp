#include "MidiQueue.h"

MidiQueue::MidiQueue()
    : iterator(bufferA.cbegin())
{
}

void MidiQueue::prepare(int expectedEventBytes)
{
    bufferA.clear();
    bufferB.clear();
    bufferA.ensureSize((size_t) expectedEventBytes);
    bufferB.ensureSize((size_t) expectedEventBytes);
    current = &bufferA;
    other = &bufferB;
    rewind();
}

void MidiQueue::addBlock(const juce::MidiBuffer& events)
{
    for (const auto metadata : events)
        if (metadata.samplePosition >= 0)
            current->addEvent(metadata.data, metadata.numBytes, metadata.samplePosition);

    rewind();
}

void MidiQueue::rewind()
{
    iterator = current->cbegin();
    hasEvent = iterator != current->cend();
    eventWaiting = false;
    eventSample = -1;
}

bool MidiQueue::nextEventAt(int sample, juce::MidiMessage& result)
{
    if (!hasEvent)
        return false;

    if (eventWaiting)
    {
        if (eventSample != sample)
            return false;

        eventWaiting = false;
        result = message;
        return true;
    }

    if (iterator == current->cend())
    {
        hasEvent = false;
        return false;
    }

    const auto metadata = *iterator;
    ++iterator;
    message = metadata.getMessage();
    eventSample = metadata.samplePosition;

    if (eventSample != sample)
    {
        eventWaiting = true;
        return false;
    }

    result = message;
    return true;
}

void MidiQueue::rollOver(int numSamples)
{
    other->clear();

    for (const auto metadata : *current)
        if (metadata.samplePosition >= numSamples)
            other->addEvent(metadata.data, metadata.numBytes, metadata.samplePosition - numSamples);

    std::swap(current, other);
    rewind();
}
