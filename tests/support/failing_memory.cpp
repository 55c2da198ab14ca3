// An operator new that can fail.
#include "support/failing_memory.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

namespace ostrand::testing {
namespace {

constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max ();
/// Allocations that are still served; the one that finds 0 fails.
std::atomic<std::int64_t> left{never};

/// The memory, or null when it is this one's turn to fail.
void* take (std::size_t size, std::size_t alignment) {
    if (left.load (std::memory_order_relaxed) != never && left.fetch_sub (1) == 0) return nullptr;
    size = std::max (size, std::size_t{1});
    if (alignment <= alignof (std::max_align_t)) return std::malloc (size);
    return std::aligned_alloc (alignment, (size + alignment - 1) / alignment * alignment);
}

} // namespace

FailingMemory::FailingMemory (std::uint64_t served) { left = static_cast<std::int64_t> (served); }
FailingMemory::~FailingMemory () { left = never; }
bool FailingMemory::failed () const { return left.load () < 0; }

} // namespace ostrand::testing

void* operator new (std::size_t size) {
    void* const memory = ostrand::testing::take (size, 1);
    if (memory == nullptr) throw std::bad_alloc ();
    return memory;
}
void* operator new (std::size_t size, std::align_val_t alignment) {
    void* const memory = ostrand::testing::take (size, static_cast<std::size_t> (alignment));
    if (memory == nullptr) throw std::bad_alloc ();
    return memory;
}
void* operator new (std::size_t size, const std::nothrow_t&) noexcept {
    return ostrand::testing::take (size, 1);
}
void operator delete (void* memory) noexcept { std::free (memory); }
void operator delete (void* memory, const std::nothrow_t&) noexcept { std::free (memory); }
void operator delete (void* memory, std::size_t) noexcept { std::free (memory); }
void operator delete (void* memory, std::align_val_t) noexcept { std::free (memory); }
void operator delete (void* memory, std::size_t, std::align_val_t) noexcept { std::free (memory); }
