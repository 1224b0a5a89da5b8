#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace
{
std::atomic<long> allocations{ 0 };
std::atomic<int> counting{ 0 };

void* allocate(std::size_t size)
{
    if (counting.load(std::memory_order_relaxed) > 0)
        allocations.fetch_add(1, std::memory_order_relaxed);

    if (void* p = std::malloc(size == 0 ? 1 : size))
        return p;

    throw std::bad_alloc();
}
} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try
    {
        return allocate(size);
    }
    catch (...)
    {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept { return operator new(size, tag); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

ScopedAllocationCounter::ScopedAllocationCounter()
    : start(allocations.load())
{
    ++counting;
}

ScopedAllocationCounter::~ScopedAllocationCounter()
{
    --counting;
}

long ScopedAllocationCounter::count() const
{
    return allocations.load() - start;
}
