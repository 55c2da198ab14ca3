// Ctrl-C as a request to stop.
// Layer: base.
#pragma once
#include <memory>
#include <stop_token>

namespace ostrand {

/// While it lives, the first interruption (Ctrl-C, termination, a closed terminal) ends nothing but
/// asks for a stop, so that long work can put away what it has. The second one ends the process as
/// ever. One at a time.
class InterruptionStop {
  public:
    InterruptionStop ();
    ~InterruptionStop ();
    InterruptionStop (const InterruptionStop&) = delete;
    InterruptionStop& operator= (const InterruptionStop&) = delete;

    std::stop_token token () const;
    /// Exit status of a process that ended by the interruption, 128 + the signal's number; 0 when
    /// there was none.
    int status () const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace ostrand
