// Memory that runs out when a test wants it.
#pragma once
#include <cstdint>

namespace ostrand::testing {

/// While it lives, one allocation by `new` fails, on whatever thread: the one behind `served`
/// others. A program that uses this has its own operator new.
class FailingMemory {
  public:
    explicit FailingMemory (std::uint64_t served);
    ~FailingMemory ();
    FailingMemory (const FailingMemory&) = delete;
    FailingMemory& operator= (const FailingMemory&) = delete;

    /// Whether it came to that.
    bool failed () const;

    /// What to try behind `served`: each of the first hundred allocations, then ever fewer.
    static std::uint64_t next (std::uint64_t served) { return served + 1 + served / 100; }
};

} // namespace ostrand::testing
