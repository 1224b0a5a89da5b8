#pragma once

#include <atomic>

// A single word that two threads share with no lock: one side writes it whole,
// the other reads it whenever it looks, and nothing else has to be seen in
// order with it (mode flags, pattern numbers, a step of a pattern). Loads and
// stores are relaxed atomics: on the machines we build for they are the plain
// instructions, yet a value is never torn and there is no data race. Unlike
// std::atomic it copies, so that a pattern can be assigned whole; an increment
// is a load and a store, for fields that have one writer. In "c ? field : 0"
// write field.load(): the value converts both ways.
template <typename T>
class RelaxedAtomic
{
public:
    constexpr RelaxedAtomic(T initial = T{}) noexcept
        : value(initial)
    {
    }
    RelaxedAtomic(const RelaxedAtomic& other) noexcept
        : value(other.load())
    {
    }
    RelaxedAtomic& operator=(const RelaxedAtomic& other) noexcept
    {
        store(other.load());
        return *this;
    }
    RelaxedAtomic& operator=(T newValue) noexcept
    {
        store(newValue);
        return *this;
    }

    operator T() const noexcept { return load(); }
    T load() const noexcept { return value.load(std::memory_order_relaxed); }
    void store(T newValue) noexcept { value.store(newValue, std::memory_order_relaxed); }
    T exchange(T newValue) noexcept { return value.exchange(newValue, std::memory_order_relaxed); }

    RelaxedAtomic& operator++() noexcept
    {
        store(load() + 1);
        return *this;
    }
    RelaxedAtomic& operator--() noexcept
    {
        store(load() - 1);
        return *this;
    }

private:
    std::atomic<T> value;
};
