#pragma once

#include <atomic>

// Counts calls of the global operator new while a scope is active, so that a
// test can prove a real-time path allocates nothing. Counts on every thread.
class ScopedAllocationCounter
{
public:
    ScopedAllocationCounter();
    ~ScopedAllocationCounter();

    long count() const;

private:
    long start;
};
