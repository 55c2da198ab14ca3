// What the ranks of a sweep say to each other.
// Rank 0 has the journal and decides who does what; the others ask it for tasks, one thread each,
// and send what they have finished. Every thread ends when rank 0 tells it so, and only then.
// Layer: ranks.
#pragma once
#include "sweep/record.h"
#include "sweep/sweep_plan.h"
#include "sweep/task.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::ranks {

/// Tags of messages.
enum RankTag : int {
    ask_tag = 1,   // to rank 0: a thread wants a task (Ask)
    record_tag,    // to rank 0: something finished (Finished)
    leave_tag,     // to rank 0: a thread was interrupted and wants no more tasks (Ask)
    stop_tag,      // from rank 0: no more tasks; keep what is done and ask again
    goodbye_tag,   // from rank 0: all is over
    task_tag = 16, // from rank 0, plus the thread's number: a task, or nothing: the end
};

/// What rank 0 tells all others at the start; nothing at all when there is nothing to do.
struct Start {
    std::string model; // its text
    sweep::SweepChoice choice;
    std::uint32_t threads = 1; // of each rank

    std::string to_bytes () const;
    static std::optional<Start> from_bytes (std::string_view bytes);
};

/// A thread asks for a task, and tells what came of the one before.
struct Ask {
    std::uint32_t thread = 0;
    std::optional<std::uint64_t> done = {}; // number of the task that was carried out
    double seconds = 0;                     // that it took

    std::string to_bytes () const;
    static std::optional<Ask> from_bytes (std::string_view bytes);
};

/// A record to keep.
struct Finished {
    std::uint64_t points = 0; // recorded by the rank since its message before
    sweep::RecordKind kind{};
    std::string content;

    std::string to_bytes () const;
    static std::optional<Finished> from_bytes (std::string_view bytes);
};

/// A task with its number.
std::string task_bytes (std::uint64_t number, const sweep::Task& task);
std::optional<sweep::Task> read_task (std::string_view bytes, std::uint64_t& number);

} // namespace ostrand::ranks
