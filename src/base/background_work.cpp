// Threads of background work.
#include "base/background_work.h"

#include "base/report.h"

#include <condition_variable>
#include <exception>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

namespace ostrand {
namespace {

/// A thread and whether it has done its last step.
struct WorkThread {
    std::thread thread;
    std::shared_ptr<std::atomic<bool>> gone = std::make_shared<std::atomic<bool>> (false);
};

/// All process-wide state of background work: threads that have answered and may still be giving
/// memory back. They are joined when others come, and when the process ends.
class LeavingThreads {
  public:
    ~LeavingThreads () {
        for (WorkThread& one : threads_) one.thread.join ();
    }
    /// Takes a list of one, so that nothing has to be allocated.
    void add (std::list<WorkThread>& one) {
        const std::lock_guard guard (lock_);
        threads_.remove_if ([] (WorkThread& old) {
            if (!old.gone->load ()) return false;
            old.thread.join ();
            return true;
        });
        threads_.splice (threads_.end (), one);
    }

  private:
    std::mutex lock_;
    std::list<WorkThread> threads_;
};

LeavingThreads& leaving_threads () {
    static LeavingThreads threads;
    return threads;
}

} // namespace

/// What the maker's thread and the work's threads share.
struct BackgroundWork::State {
    std::shared_ptr<LongWork> work;
    WorkListener listener;
    std::stop_source stop;
    std::list<WorkThread> thread{1};

    std::mutex lock; // of what follows
    std::condition_variable told;
    std::optional<Outcome> outcome;
    bool listener_told = false; // of the end
    std::vector<std::string> messages;

    /// Where the work's messages go.
    MessageTarget target = make_message_target ([this] (std::string_view text) {
        {
            const std::lock_guard guard (lock);
            messages.emplace_back (text);
        }
        if (listener.on_message) listener.on_message ();
    });

    Outcome begin () {
        const MessageScope scope (target);
        return work->begin (stop.get_token ());
    }

    void end (Outcome how) {
        {
            const std::lock_guard guard (lock);
            outcome = std::move (how);
        }
        if (listener.on_end) listener.on_end ();
        const std::lock_guard guard (lock);
        listener_told = true;
        told.notify_all ();
    }
};

BackgroundWork::BackgroundWork (std::shared_ptr<LongWork> work, WorkListener listener)
    : state_ (std::make_shared<State> ()) {
    leaving_threads (); // from now on there, so that it outlives the thread
    state_->work = std::move (work);
    state_->listener = std::move (listener);
    try {
        state_->thread.front ().thread =
            std::thread ([state = state_, gone = state_->thread.front ().gone] () mutable {
                state->end (state->begin ());
                state->work->tidy ();
                state.reset ();
                gone->store (true);
            });
    } catch (const std::exception&) {
        state_->thread.clear ();
        state_->end (Outcome::failure ("no thread can be started"));
    }
}

BackgroundWork::~BackgroundWork () {
    stop ();
    wait ();
    if (!state_->thread.empty ()) leaving_threads ().add (state_->thread);
}

bool BackgroundWork::has_thread () const { return !state_->thread.empty (); }

void BackgroundWork::stop () { state_->stop.request_stop (); }

std::optional<Outcome> BackgroundWork::outcome () const {
    const std::lock_guard guard (state_->lock);
    return state_->outcome;
}

Outcome BackgroundWork::wait () const {
    std::unique_lock guard (state_->lock);
    state_->told.wait (guard, [this] { return state_->listener_told; });
    return *state_->outcome;
}

const Progress& BackgroundWork::progress () const { return state_->work->progress (); }

std::vector<std::string> BackgroundWork::take_messages () {
    const std::lock_guard guard (state_->lock);
    return std::exchange (state_->messages, {});
}

} // namespace ostrand
