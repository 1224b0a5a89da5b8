#pragma once

#include <juce_events/juce_events.h>

#include <functional>

// A juce::Timer that calls a function, for classes that need a second timer
// beside the one they inherit. Message thread.
class CallbackTimer : public juce::Timer
{
public:
    explicit CallbackTimer(std::function<void()> callbackToUse)
        : callback(std::move(callbackToUse))
    {
    }

    ~CallbackTimer() override { stopTimer(); }

    void timerCallback() override { callback(); }

private:
    std::function<void()> callback;
};
