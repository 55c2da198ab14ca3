// Serving ranks.
#include "ranks/rank_server.h"

#include "base/text.h"

#include <optional>
#include <vector>

namespace ostrand::ranks {

RankServer::RankServer (RankLink& link, sweep::Coordinator& coordinator, unsigned threads,
                        Progress& progress)
    : link_ (link), coordinator_ (coordinator), progress_ (progress) {
    for (int rank = 1; rank < link.size (); ++rank) {
        for (std::uint32_t thread = 0; thread < threads; ++thread) active_.emplace (rank, thread);
    }
}

bool RankServer::is_over () const {
    return stop_.stop_requested () || coordinator_.finished () || !coordinator_.failure ().empty ();
}

void RankServer::end (const Place& place) {
    waiting_.erase (place);
    if (active_.erase (place) == 0) return; // told already
    link_.send (place.first, task_tag + static_cast<int> (place.second), {});
}

void RankServer::stop_others () {
    if (stop_told_) return;
    stop_told_ = true;
    std::set<int> ranks;
    for (const Place& place : active_) ranks.insert (place.first);
    for (const int rank : ranks) link_.send (rank, stop_tag, {});
}

/// False when there was none.
bool RankServer::take_message () {
    const std::optional<Message> message = link_.take (any, any);
    if (!message) return false;
    if (message->tag == record_tag) {
        const std::optional<Finished> finished = Finished::from_bytes (message->bytes);
        if (finished) {
            coordinator_.take (finished->kind, finished->content);
            progress_.add_progress (finished->points);
        } else {
            coordinator_.fail ("a message that is none");
        }
        return true;
    }
    const std::optional<Ask> ask = Ask::from_bytes (message->bytes);
    if (!ask) {
        coordinator_.fail ("a message that is none");
        return true;
    }
    const Place place{message->from, ask->thread};
    if (ask->done) coordinator_.done (*ask->done, ask->seconds);
    if (message->tag == ask_tag) {
        waiting_.insert (place);
        return true;
    }
    if (!is_over ()) {
        interrupted_ = format_text ("rank %d was interrupted", message->from);
        stop_.request_stop ();
    }
    end (place);
    return true;
}

/// False when nobody could be answered.
bool RankServer::answer_waiting () {
    bool answered = false;
    while (!waiting_.empty ()) {
        const Place place = *waiting_.begin ();
        if (is_over ()) {
            end (place);
        } else {
            const std::optional<sweep::NumberedTask> task = coordinator_.next ();
            if (!task) return answered;
            waiting_.erase (place);
            link_.send (place.first, task_tag + static_cast<int> (place.second),
                        task_bytes (task->number, task->task));
        }
        answered = true;
    }
    return answered;
}

bool RankServer::serve (std::stop_source stop) {
    using Clock = std::chrono::steady_clock;
    stop_ = std::move (stop);
    std::optional<Clock::time_point> deadline;
    Pause pause;
    while (!active_.empty ()) {
        bool busy = false;
        while (take_message ()) {
            busy = true;
            if (!waiting_.empty ()) answer_waiting ();
        }
        busy = answer_waiting () || busy;
        if (is_over () && !coordinator_.finished ()) stop_others ();
        if (stop_.stop_requested ()) {
            if (!deadline) deadline = Clock::now () + patience;
            if (Clock::now () > *deadline) return false;
        }
        if (busy) {
            pause.reset ();
        } else if (!active_.empty ()) {
            pause.rest ();
        }
    }
    return true;
}

} // namespace ostrand::ranks
