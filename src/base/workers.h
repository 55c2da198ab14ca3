// Threads that do a part of somebody's work.
// Layer: base.
#pragma once
#include <exception>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

namespace ostrand {

/// Helper threads of one piece of work, made and joined on the thread that does the rest of it.
/// Their messages go where those of that thread go; see MessageScope. An exception that leaves a
/// helper waits for `join` and is thrown there: it never ends the process.
class WorkerThreads {
  public:
    WorkerThreads () = default;
    /// Joins. An exception that nobody asked for is dropped.
    ~WorkerThreads ();
    WorkerThreads (const WorkerThreads&) = delete;
    WorkerThreads& operator= (const WorkerThreads&) = delete;

    /// Starts one more thread. False, with nothing started, when the system gives none: the caller
    /// then does that part itself.
    bool start (std::function<void ()> work);

    /// Waits for all helpers and throws the first exception that left one.
    void join ();

  private:
    void join_all ();

    std::list<std::thread> threads_;
    std::mutex lock_;
    std::exception_ptr first_fault_;
};

} // namespace ostrand
