#include "bench/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

std::atomic<size_t> count{0};

} // namespace

size_t allocationCount()
{
    return count.load(std::memory_order_relaxed);
}

void *operator new(size_t size)
{
    count.fetch_add(1, std::memory_order_relaxed);
    if (void *const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, size_t) noexcept
{
    std::free(memory);
}
