#include "faults/FaultyMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

#include "faults/FaultySeam.h"

namespace {

std::optional<int> before;

}  // namespace

void MemoryFails(std::optional<int> allocationsBefore) {
    before = allocationsBefore;
}

void* operator new(std::size_t size) {
    if (before && SeamCounting() && (*before)-- == 0) {
        throw std::bad_alloc();
    }
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    return std::malloc(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
