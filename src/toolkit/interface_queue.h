// Calls that any thread hands over to the interface thread.
// Layer: toolkit.
#pragma once
#include <deque>
#include <functional>
#include <mutex>

namespace ostrand::toolkit {

/// A queue of tasks that is filled from any thread and run on one, in the order in which they came.
///
/// A task may outlive what it was made for: it must itself look whether that is still there, as by
/// a std::weak_ptr.
class InterfaceQueue {
  public:
    using Task = std::function<void ()>;
    /// Makes the interface thread call `run` soon; called from any thread. False when it could not
    /// be told: the next task tries again.
    using Wake = std::function<bool ()>;

    explicit InterfaceQueue (Wake wake) : wake_ (std::move (wake)) {}
    InterfaceQueue (const InterfaceQueue&) = delete;
    InterfaceQueue& operator= (const InterfaceQueue&) = delete;

    /// Adds a task, from any thread.
    void post (Task task);

    /// Runs the oldest task, and wakes once more when others wait; on the interface thread only. So
    /// events are handled between tasks, and a task that runs an event loop of its own (a dialog)
    /// does not hold up those behind it.
    void run ();

  private:
    void wake ();

    Wake wake_;
    std::mutex mutex_;
    std::deque<Task> tasks_; // guarded by mutex_
    bool woken_ = false;     // guarded: the interface thread was told and has not come yet
};

/// The process's queue, run by the toolkit's event loop. The first call must be the interface
/// thread's.
InterfaceQueue& interface_queue ();

} // namespace ostrand::toolkit
