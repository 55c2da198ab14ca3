// What all long work has in common.
#include "base/long_work.h"

#include <algorithm>
#include <exception>
#include <new>

namespace ostrand {
namespace {

/// Steps into which an estimated amount is cut.
constexpr double estimate_steps = 1 << 20;

} // namespace

void Progress::expect (std::uint64_t total) {
    done_.store (0, std::memory_order_relaxed);
    expected_.store (total, std::memory_order_relaxed);
}

void Progress::estimate (double fraction) {
    expected_.store (static_cast<std::uint64_t> (estimate_steps), std::memory_order_relaxed);
    // Threads that estimate side by side may come here in any order; what was told never goes back.
    const auto steps =
        static_cast<std::uint64_t> (std::clamp (fraction, 0.0, 1.0) * estimate_steps);
    std::uint64_t told = done_.load (std::memory_order_relaxed);
    while (told < steps && !done_.compare_exchange_weak (told, steps, std::memory_order_relaxed)) {
    }
}

float Progress::progress_fraction () const {
    const std::uint64_t expected = amount_expected ();
    if (expected == 0) return 0;
    return static_cast<float> (
        std::min (static_cast<double> (amount_done ()) / static_cast<double> (expected), 1.0));
}

Outcome LongWork::begin (const std::stop_token& stop) {
    try {
        return work (stop);
    } catch (const std::bad_alloc&) {
        return Outcome::failure (out_of_memory);
    } catch (const std::exception& fault) {
        try {
            return Outcome::failure (fault.what ());
        } catch (const std::bad_alloc&) { // no room even for the reason
            return Outcome::failure (out_of_memory);
        }
    }
}

Outcome LongWork::run (const std::stop_token& stop) {
    Outcome outcome = begin (stop);
    tidy ();
    return outcome;
}

} // namespace ostrand
