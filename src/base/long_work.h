// Long work: what may take more than a moment is an object that can be stopped, tells how far it is
// and says how it ended. Simulation, gate extraction and formula search are such objects;
// background_work.h runs one on a thread of its own.
// Layer: base.
#pragma once
#include <atomic>
#include <cstdint>
#include <stop_token>
#include <string>
#include <utility>

namespace ostrand {

/// How long work ended.
struct Outcome {
    enum class End {
        done,
        stopped, // somebody asked for it; what the work makes is as if it had never begun
        failed,
    };
    End end = End::done;
    std::string reason; // why it failed, one line for the user; empty otherwise

    static Outcome success () { return {}; }
    static Outcome stop () { return {End::stopped, {}}; }
    static Outcome failure (std::string why) { return {End::failed, std::move (why)}; }

    bool done () const { return end == End::done; }
    bool stopped () const { return end == End::stopped; }
    bool failed () const { return end == End::failed; }
};

/// The reason of a failure for want of memory. Short enough to need none itself.
inline constexpr const char* out_of_memory = "out of memory";

/// How far long work is. The work's threads write it, any thread reads it at any time; neither ever
/// waits. Numbers that belong together may be a moment apart.
class Progress {
  public:
    /// There is so much to do, and nothing of it is done. The unit is the work's own.
    void expect (std::uint64_t total);
    /// So much more is done.
    void add_progress (std::uint64_t amount) {
        done_.fetch_add (amount, std::memory_order_relaxed);
    }
    /// For work whose amount is only estimated: the part that is done, 0 to 1. Never goes back.
    void estimate (double fraction);
    /// So many results more: gates, networks.
    void add_results (std::uint64_t more) { results_.fetch_add (more, std::memory_order_relaxed); }
    void set_results (std::uint64_t results) {
        results_.store (results, std::memory_order_relaxed);
    }

    /// The part that is done, 0 to 1; 0 while nobody knows how much there is to do.
    float progress_fraction () const;
    std::uint64_t amount_done () const { return done_.load (std::memory_order_relaxed); }
    std::uint64_t amount_expected () const { return expected_.load (std::memory_order_relaxed); }
    std::uint64_t results () const { return results_.load (std::memory_order_relaxed); }

  private:
    // Written often by all threads of the work, so apart from what they read.
    alignas (64) std::atomic<std::uint64_t> done_{0};
    alignas (64) std::atomic<std::uint64_t> expected_{0};
    std::atomic<std::uint64_t> results_{0};
};

/// One piece of long work. Two of them share nothing that changes, so each may run on a thread of
/// its own.
class LongWork {
  public:
    LongWork () = default;
    virtual ~LongWork () = default;
    LongWork (const LongWork&) = delete;
    LongWork& operator= (const LongWork&) = delete;

    /// Does all of the work on the calling thread and on threads that it makes and joins. To be
    /// called once. A stop is answered within 50 ms. Throws nothing: what goes wrong, also on a
    /// helper thread, is the outcome. Whoever called tells the user the reason of a failure, which
    /// has not been reported; what a reader remarks on its way goes to report_message.
    Outcome run (const std::stop_token& stop = {});

    /// The same in two steps, for whoever wants the outcome before large memory is given back:
    /// after `begin` follows `tidy`, which may take its time.
    Outcome begin (const std::stop_token& stop);
    /// Frees what nobody asks for any more; results stay.
    virtual void tidy () {}

    /// May be read by any thread, before, while and after the work runs.
    virtual const Progress& progress () const { return progress_; }

  protected:
    /// The work itself; may throw. A stop that was asked for is looked at often enough.
    virtual Outcome work (const std::stop_token& stop) = 0;

    Progress progress_;
};

} // namespace ostrand
