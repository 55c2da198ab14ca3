// Helper threads.
#include "base/workers.h"

#include "base/report.h"

#include <utility>

namespace ostrand {

WorkerThreads::~WorkerThreads () { join_all (); }

bool WorkerThreads::start (std::function<void ()> work) {
    try {
        // The place in the list comes first: a thread that runs must not get lost.
        threads_.emplace_back ();
        threads_.back () =
            std::thread ([this, work = std::move (work), target = message_target ()] {
                try {
                    const MessageScope messages (target);
                    work ();
                } catch (...) {
                    const std::lock_guard guard (lock_);
                    if (!first_fault_) first_fault_ = std::current_exception ();
                }
            });
        return true;
    } catch (const std::exception&) { // no thread, or no memory for one
        if (!threads_.empty () && !threads_.back ().joinable ()) threads_.pop_back ();
        return false;
    }
}

void WorkerThreads::join_all () {
    for (std::thread& thread : threads_) thread.join ();
    threads_.clear ();
}

void WorkerThreads::join () {
    join_all ();
    if (first_fault_) std::rethrow_exception (std::exchange (first_fault_, nullptr));
}

} // namespace ostrand
