// One sweep from its model to its result, apart from who works on it: plan, leftover, journal, and
// the result at the end. Threads and ranks share it.
// Layer: sweep.
#pragma once
#include "base/disk.h"
#include "base/long_work.h"
#include "sweep/journal.h"
#include "sweep/ledger.h"
#include "sweep/sweep_plan.h"

#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

/// What a sweep is asked for.
struct SweepRequest {
    std::string model; // path
    std::string out;   // path of the result or of the shard; "-" for standard output
    SweepChoice choice;
    bool resume = false;
    unsigned threads = 0; // 0: as many as there are processors
    bool show_progress = false;
};

class SweepJob {
  public:
    explicit SweepJob (SweepRequest request);
    /// Without a result the journal stays when it holds anything.
    ~SweepJob ();
    SweepJob (const SweepJob&) = delete;
    SweepJob& operator= (const SweepJob&) = delete;

    /// Reads the model and takes the journal: begins one, or goes on with a leftover. A leftover
    /// that is not gone on with is told of. A refusal changes nothing on disk.
    Outcome open (const std::stop_token& stop);

    /// From here on after a successful `open`.
    const SweepRequest& request () const { return request_; }
    const std::string& model_text () const { return model_text_; }
    const SweepPlan& plan () const { return *plan_; }
    Journal& journal () { return *journal_; }
    Ledger& ledger () { return *ledger_; }

    /// Writes the result, when all of it is there, and removes the journal.
    Outcome write (const std::stop_token& stop);

    /// What to tell a user whose sweep did not come to its end: how to go on, or that nothing is
    /// left. Empty before a sweep has begun.
    std::string way_on () const;

  private:
    Outcome read_model (const std::stop_token& stop);
    Outcome open_journal ();
    Outcome resume ();
    bool enter (RecordKind kind, std::string_view content, const RecordPlace& place);
    bool note_result (const OutputFile& file);
    void remove_unfinished () const;

    SweepRequest request_;
    std::string model_text_;
    std::unique_ptr<SweepPlan> plan_;
    std::unique_ptr<Journal> journal_;
    std::unique_ptr<Ledger> ledger_;
    std::vector<std::string> unfinished_; // names of results that killed sweeps left beside it
    bool begun_ = false;                  // the journal is ours
    bool kept_ = false;                   // and not removed
};

/// Where the journal of a result lies.
std::filesystem::path journal_path (const std::filesystem::path& out);

} // namespace ostrand::sweep
