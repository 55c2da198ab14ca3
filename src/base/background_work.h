// Long work on a thread of its own.
// Layer: base.
#pragma once
#include "base/long_work.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ostrand {

/// Called ON THE WORK'S THREADS, one call at a time, to wake a sleeping event loop and nothing
/// else: neither may wait for the thread that made the work. Both may be empty.
struct WorkListener {
    std::function<void ()> on_message = {}; // behind each message
    std::function<void ()> on_end = {};     // when the outcome is there
};

/// Runs long work beside the thread that made it, which looks now and then (on a timer, say) at
/// `progress`, `take_messages` and `outcome`, and calls `stop` when the user wants that. Nothing is
/// called back but the listener. None of the calls waits, but for `wait` and the destructor.
class BackgroundWork {
  public:
    /// Starts the work, which is kept until it is done and tidied up; its results may be read once
    /// `outcome` is there. Where the system gives no thread the outcome is a failure at once, and
    /// the constructor itself tells the listener.
    explicit BackgroundWork (std::shared_ptr<LongWork> work, WorkListener listener = {});
    /// Stops the work and waits for its answer. Large memory is given back behind that.
    ~BackgroundWork ();
    BackgroundWork (const BackgroundWork&) = delete;
    BackgroundWork& operator= (const BackgroundWork&) = delete;

    /// Asks the work to end soon. It may come too late to change the outcome.
    void stop ();

    /// How it ended; nothing while it goes on.
    std::optional<Outcome> outcome () const;
    bool finished () const { return outcome ().has_value (); }
    /// Waits until it has ended.
    Outcome wait () const;

    const Progress& progress () const;

    /// What the work has reported since the last call, in order.
    std::vector<std::string> take_messages ();

  protected:
    /// False where the system gave no thread: the work never begins.
    bool has_thread () const;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace ostrand
