// Working for rank 0.
#include "ranks/rank_worker.h"

#include "base/long_work.h"
#include "base/report.h"
#include "base/workers.h"
#include "sim/lane_kernels.h"
#include "sweep/worker.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ostrand::ranks {
namespace {

using Clock = std::chrono::steady_clock;

/// What the threads of a rank share.
class RankWork {
  public:
    RankWork (RankLink& link, const sweep::SweepPlan& plan, const std::stop_token& interruption)
        : link_ (link), plan_ (plan), interruption_ (interruption),
          on_interruption_ (interruption, [this] { stop_.request_stop (); }) {}

    /// One thread, to its end.
    void run (std::uint32_t thread);

  private:
    void work (std::uint32_t thread);
    /// Looks whether rank 0 wants no more.
    void look_for_stop () {
        if (link_.take (0, stop_tag)) stop_.request_stop ();
    }
    std::optional<Message> wait_for_answer (std::uint32_t thread, bool& left);
    bool keep (sweep::RecordKind kind, std::string_view content);

    RankLink& link_;
    const sweep::SweepPlan& plan_;
    std::stop_token interruption_;
    std::stop_source stop_;
    Progress progress_;
    std::mutex telling_;
    std::uint64_t told_ = 0; // recorded points that rank 0 knows of
    std::stop_callback<std::function<void ()>> on_interruption_;
};

bool RankWork::keep (sweep::RecordKind kind, std::string_view content) {
    Finished finished{0, kind, std::string (content)};
    {
        const std::lock_guard guard (telling_);
        const std::uint64_t recorded = progress_.amount_done ();
        finished.points = recorded - std::exchange (told_, recorded);
    }
    link_.send (0, record_tag, finished.to_bytes ());
    look_for_stop ();
    return true;
}

/// The next task, or nothing: the end. An interrupted thread says so, and waits for its end.
std::optional<Message> RankWork::wait_for_answer (std::uint32_t thread, bool& left) {
    Pause pause;
    for (;;) {
        if (std::optional<Message> answer = link_.take (0, task_tag + static_cast<int> (thread))) {
            if (answer->bytes.empty ()) return std::nullopt;
            if (!left) return answer;
            continue; // it was on its way already
        }
        look_for_stop ();
        if (!left && interruption_.stop_requested ()) {
            left = true;
            link_.send (0, leave_tag, Ask{.thread = thread}.to_bytes ());
        }
        pause.rest ();
    }
}

void RankWork::run (std::uint32_t thread) {
    try {
        work (thread);
    } catch (const std::bad_alloc&) {
        // Rank 0 would wait for this thread.
        std::fprintf (stderr, "ostrand-mpi: rank %d: %s\n", link_.rank (), out_of_memory);
        link_.abort (1);
    }
}

void RankWork::work (std::uint32_t thread) {
    sweep::Worker worker (plan_, sim::lane_kernels (), progress_);
    const auto sink = [this] (sweep::RecordKind kind, std::string_view content) {
        return keep (kind, content);
    };
    Ask ask{.thread = thread};
    bool left = false;
    for (;;) {
        if (!left) link_.send (0, ask_tag, ask.to_bytes ());
        const std::optional<Message> answer = wait_for_answer (thread, left);
        if (!answer) return;
        std::uint64_t number = 0;
        const std::optional<sweep::Task> task = read_task (answer->bytes, number);
        ask = {.thread = thread};
        if (!task) continue;
        const auto start = Clock::now ();
        const bool done = worker.run (*task, sink, stop_.get_token ());
        const std::chrono::duration<double> elapsed = Clock::now () - start;
        if (done) ask = {.thread = thread, .done = number, .seconds = elapsed.count ()};
        look_for_stop ();
    }
}

} // namespace

void work_for_rank_0 (RankLink& link, const Start& start, const std::stop_token& interruption) {
    std::string fault;
    const MessageScope nobody_listens ([] (std::string_view) {}); // rank 0 has told it
    const std::unique_ptr<sweep::SweepPlan> plan =
        sweep::SweepPlan::read (start.model, start.choice, fault);
    if (!plan) link.abort (1); // rank 0 could read it
    RankWork work (link, *plan, interruption);
    WorkerThreads helpers;
    for (std::uint32_t thread = 1; thread < start.threads; ++thread) {
        if (helpers.start ([&work, thread] { work.run (thread); })) continue;
        std::fprintf (stderr, "ostrand-mpi: rank %d cannot start its threads\n", link.rank ());
        link.abort (1);
    }
    work.run (0);
    helpers.join ();
    // A word to stop may have come too late for any thread.
    for (Pause pause;;) {
        const std::optional<Message> message = link.take (0, any);
        if (message && message->tag == goodbye_tag) return;
        if (!message) pause.rest ();
    }
}

} // namespace ostrand::ranks
