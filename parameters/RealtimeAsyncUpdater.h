#pragma once

#include <juce_events/juce_events.h>

#include <atomic>
#include <functional>

// A juce::AsyncUpdater that the audio thread may trigger. JUCE's own trigger
// posts to the message queue, which takes a lock, may grow the queue and
// writes to a pipe; here a trigger from any thread but the message thread
// only raises an atomic flag, and a timer on the message thread turns raised
// flags into ordinary async updates a few milliseconds later. Several triggers
// before then still give one call of handleAsyncUpdate.
class RealtimeAsyncUpdater : public juce::AsyncUpdater
{
public:
    RealtimeAsyncUpdater();
    ~RealtimeAsyncUpdater() override;

    // Any thread. No lock, no allocation, no system call off the message thread.
    void triggerAsyncUpdateFromAnyThread() noexcept;

private:
    class Poller;
    friend class Poller;

    std::atomic<bool> pending{ false };
    juce::SharedResourcePointer<Poller> poller;

    JUCE_DECLARE_NON_COPYABLE(RealtimeAsyncUpdater)
};

// A RealtimeAsyncUpdater that calls a function, for an owner with more than
// one kind of work to hand to the message thread.
class RealtimeAsyncCallback : public RealtimeAsyncUpdater
{
public:
    explicit RealtimeAsyncCallback(std::function<void()> callbackToUse)
        : callback(std::move(callbackToUse))
    {
    }

    void handleAsyncUpdate() override { callback(); }

private:
    std::function<void()> callback;
};
