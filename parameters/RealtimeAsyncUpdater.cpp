#include "parameters/RealtimeAsyncUpdater.h"

// Looks at every updater's flag a few hundred times a second, on the message
// thread. The list changes only when updaters are made or destroyed.
class RealtimeAsyncUpdater::Poller : private juce::Timer
{
public:
    static constexpr int intervalMs = 4;

    Poller() { startTimer(intervalMs); }
    ~Poller() override { stopTimer(); }

    void add(RealtimeAsyncUpdater* updater)
    {
        const juce::ScopedLock sl(lock);
        updaters.add(updater);
    }

    void remove(RealtimeAsyncUpdater* updater)
    {
        const juce::ScopedLock sl(lock);
        updaters.removeFirstMatchingValue(updater);
    }

private:
    void timerCallback() override
    {
        const juce::ScopedLock sl(lock);
        for (auto* updater : updaters)
            if (updater->pending.exchange(false, std::memory_order_acquire))
                updater->triggerAsyncUpdate();
    }

    juce::CriticalSection lock;
    juce::Array<RealtimeAsyncUpdater*> updaters;
};

RealtimeAsyncUpdater::RealtimeAsyncUpdater()
{
    poller->add(this);
}

RealtimeAsyncUpdater::~RealtimeAsyncUpdater()
{
    poller->remove(this);
    cancelPendingUpdate();
}

void RealtimeAsyncUpdater::triggerAsyncUpdateFromAnyThread() noexcept
{
    if (juce::MessageManager::existsAndIsCurrentThread())
        triggerAsyncUpdate();
    else
        pending.store(true, std::memory_order_release);
}
