#include "sequencer/Clock.h"

#include <limits>

Clock::Clock(const juce::String& clockName)
    : name(clockName)
{
}

Clock::~Clock()
{
    cancelPendingUpdate();
}

void Clock::handleAsyncUpdate()
{
    // Several ticks between two deliveries arrive as one call.
    if (startStopPending.exchange(0) != 0)
        listeners.call([this](Listener& l)
                       { l.clockStateChanged(*this); });
    if (tickPending.exchange(0) != 0)
        listeners.call([this](Listener& l)
                       { l.clockTicked(*this); });
}

void Clock::start()
{
    if (!running)
        rewind(true);
}

void Clock::stop()
{
    if (running)
        rewind(false);
}

void Clock::rewind(bool shouldRun)
{
    needsUpdate = true;
    position = 0.0;
    state = -1;
    running = shouldRun;
    startStopPending.exchange(1);
    triggerAsyncUpdateFromAnyThread();
}

int Clock::saturatedCount(double samples)
{
    // With no tempo yet a wait is infinite (or undefined): the change never
    // comes. The lower bound leaves room for the decrement after each tick.
    constexpr double most = (double) std::numeric_limits<int>::max();
    constexpr double least = (double) (std::numeric_limits<int>::min() + 1);
    if (!(samples < most))
        return std::numeric_limits<int>::max();
    if (samples < least)
        return std::numeric_limits<int>::min() + 1;
    return (int) samples;
}

bool Clock::isNearPreviousStep() const
{
    const double stepLen = 1.0 / stepsPerBeat;
    const double next = std::ceil(position / stepLen) * stepLen;
    return next - position > position - (next - stepLen);
}

void Clock::scheduleNextChange()
{
    const double spb = beginUpdate();
    const double stepLen = 1.0 / stepsPerBeat;
    const double tol = stepLen * toleranceInSteps;
    const double next = std::ceil(position / stepLen) * stepLen;
    const double stepStart = next - stepLen;
    const double pulseEnd = stepStart + pulseWidth * stepLen;
    const double nextPulseEnd = next + pulseWidth * stepLen;

    if (position < 0.0)
    {
        nextState = 0;
        state = -1;
        samplesToChange = -1;
        return;
    }

    if (pulseEnd >= position)
    {
        switch (state)
        {
            case -1:
                nextState = 0;
                samplesToChange = 0;
                break;
            case 0:
                nextState = 1;
                samplesToChange = samplesUntil(pulseEnd, spb);
                break;
            case 1:
                nextState = 0;
                samplesToChange = position > stepStart + tol ? samplesUntil(next, spb) : 0;
                break;
            default:
                break;
        }
    }
    else
    {
        switch (state)
        {
            case -1:
                nextState = 0;
                samplesToChange = 0;
                break;
            case 0:
                nextState = 1;
                samplesToChange = position > next - tol ? samplesUntil(nextPulseEnd, spb) : 0;
                break;
            case 1:
                nextState = 0;
                samplesToChange = samplesUntil(next, spb);
                break;
            default:
                break;
        }
    }
}
