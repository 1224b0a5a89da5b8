#include "parameters/RealtimeAsyncUpdater.h"
#include "support/AllocationCounter.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
struct CountingUpdater : RealtimeAsyncUpdater
{
    void handleAsyncUpdate() override { ++calls; }
    int calls = 0;
};

void pump(int ms) { juce::MessageManager::getInstance()->runDispatchLoopUntil(ms); }
} // namespace

TEST(ParametersRealtimeAsyncUpdater, OtherThreadsOnlyRaiseAFlagThatTheMessageThreadServesAndDestructionCancels)
{
    CountingUpdater updater;

    long allocations = -1;
    std::thread audio([&]
                      {
        ScopedAllocationCounter counter;
        for (int i = 0; i < 1000; ++i)
            updater.triggerAsyncUpdateFromAnyThread();
        allocations = counter.count(); });
    audio.join();

    EXPECT_EQ(allocations, 0);
    EXPECT_FALSE(updater.isUpdatePending()) << "nothing was posted from the other thread";

    pump(50);
    EXPECT_EQ(updater.calls, 1) << "a thousand triggers give one call";

    pump(30);
    EXPECT_EQ(updater.calls, 1) << "the flag was taken";

    // The message thread posts at once.
    updater.triggerAsyncUpdateFromAnyThread();
    EXPECT_TRUE(updater.isUpdatePending());
    pump(10);
    EXPECT_EQ(updater.calls, 2);

    {
        auto gone = std::make_unique<CountingUpdater>();
        std::thread([&]
                    { gone->triggerAsyncUpdateFromAnyThread(); })
            .join();
    } // destroyed with its flag raised: the poller must forget it
    pump(30);
}
