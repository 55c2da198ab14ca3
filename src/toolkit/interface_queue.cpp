// Calls that any thread hands over to the interface thread.
#include "toolkit/interface_queue.h"

#include <FL/Fl.H>
#include <utility>

namespace ostrand::toolkit {

void InterfaceQueue::wake () {
    if (wake_ ()) return;
    const std::lock_guard lock (mutex_);
    woken_ = false;
}

void InterfaceQueue::post (Task task) {
    {
        const std::lock_guard lock (mutex_);
        tasks_.push_back (std::move (task));
        if (std::exchange (woken_, true)) return;
    }
    wake ();
}

void InterfaceQueue::run () {
    Task task;
    bool more = false;
    {
        const std::lock_guard lock (mutex_);
        woken_ = false;
        if (tasks_.empty ()) return;
        task = std::move (tasks_.front ());
        tasks_.pop_front ();
        more = !tasks_.empty ();
        woken_ = more;
    }
    if (more) wake ();
    task ();
}

InterfaceQueue& interface_queue () {
    static InterfaceQueue queue (
        [] { return Fl::awake ([] (void*) { interface_queue ().run (); }, nullptr) == 0; });
    static const int listening = Fl::lock (); // from now on the event loop hears other threads
    static_cast<void> (listening);
    return queue;
}

} // namespace ostrand::toolkit
