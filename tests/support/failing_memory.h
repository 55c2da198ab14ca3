// Memory that runs out when a test wants it.
#pragma once
#include <cstdint>
#include <functional>
#include <string>

namespace ostrand::testing {

/// While it lives, one allocation by `new` fails, on whatever thread: the one behind `served`
/// others. A program that includes this file has its own operator new.
class FailingMemory {
  public:
    explicit FailingMemory (std::uint64_t served);
    ~FailingMemory ();
    FailingMemory (const FailingMemory&) = delete;
    FailingMemory& operator= (const FailingMemory&) = delete;

    /// Whether it came to that.
    bool failed () const;
};

/// Does a piece of work again and again, with the first allocation failing, then the second and so
/// on (every one at first, then ever fewer), until it ends without a failure. `work` gives what was
/// wrong, empty when nothing was; that and how many allocations were served is given back at once.
std::string fail_each_allocation (const std::function<std::string ()>& work);

} // namespace ostrand::testing
