// Other programs, started without waiting for them.
// Layer: base.
#pragma once
#include <memory>
#include <string>
#include <vector>

namespace ostrand {

class FileLock;

/// The open files that a child begins with, beside its empty standard input.
struct ChildFiles {
    // Files for the standard streams, made anew; empty where ours are taken.
    std::string output = {};
    std::string error = {};
    /// A lock that the child holds too: it goes when both have let it go. One that is not held is
    /// none.
    const FileLock* shared_lock = nullptr;
};

/// A program that was started beside this one. It goes on when this object goes and when this
/// process ends, and leaves no zombie whether or not anybody asks for it.
class ChildProcess {
  public:
    /// No program.
    ChildProcess () = default;
    /// Starts a program with an argument vector; no shell looks at it. `arguments[0]` is its path,
    /// or a name that is looked for in PATH. It gets an empty standard input, the files that it is
    /// to have and no other, and no ignored or blocked signal. started() tells whether that worked.
    explicit ChildProcess (const std::vector<std::string>& arguments, const ChildFiles& files = {});

    bool started () const { return state_ != nullptr; }
    /// Why it could not be started, as the system tells it; empty when it was.
    const std::string& error () const { return error_; }
    /// True until it has ended. Never waits.
    bool is_running () const;
    /// Waits for its end. Gives its exit status, 128 + the signal's number when a signal ended it,
    /// or -1 when it was not started.
    int wait () const;
    /// Ends it at once if it still runs; wait() tells of it as of a signal.
    void kill () const;
    /// Its process id, 0 when it was not started. After its end the system may give it to another.
    int id () const;

  private:
    struct State;
    std::shared_ptr<State> state_; // shared with the thread that waits for the child's end
    std::string error_;
};

} // namespace ostrand
