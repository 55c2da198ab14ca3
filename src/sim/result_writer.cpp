// The result file.
#include "sim/result_writer.h"

#include "base/disk.h"
#include "base/platform.h"
#include "base/workers.h"
#include "sim/result_head.h"
#include "sim/result_units.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <span>
#include <string_view>
#include <vector>

namespace ostrand::sim {
namespace {

/// A part of the result that one thread compresses.
struct Piece {
    std::span<const std::uint32_t> counts; // of the whole unit
    std::size_t index = 0;                 // among those of the unit
    std::size_t count = 1;
    std::string_view front;
};

std::vector<Piece> cut_pieces (const Grid& grid, std::string_view head) {
    const std::uint64_t lines_each = std::uint64_t{grid.recorded.size ()} * grid.n_points;
    const ResultUnits units (grid.n_simul, lines_each);
    std::vector<Piece> pieces;
    for (std::uint64_t i = 0; i < units.count (); ++i) {
        const ResultUnit unit = units.unit (i);
        // Simulations lie behind each other, as the file has them.
        const std::span<const std::uint32_t> counts (
            grid.series_block.get () + unit.first_simulation * lines_each + unit.first_line,
            unit.size ());
        const std::size_t count = piece_count (counts);
        for (std::size_t p = 0; p < count; ++p) {
            pieces.push_back ({counts, p, count, i == 0 && p == 0 ? head : std::string_view ()});
        }
    }
    if (pieces.empty ()) pieces.push_back ({{}, 0, 1, head});
    return pieces;
}

/// Threads compress pieces side by side and write them in their order, each when its turn comes.
class PieceWriter {
  public:
    PieceWriter (const std::vector<Piece>& pieces, OutputFile& file, const std::stop_token& stop)
        : pieces_ (pieces), stop_ (stop),
          member_ ([&file] (std::string_view bytes) { return file.write (bytes); }) {}

    /// What every thread does.
    void work () {
        try {
            for (std::size_t i = next_.fetch_add (1); i < pieces_.size () && !ended_;
                 i = next_.fetch_add (1)) {
                const Piece& piece = pieces_[i];
                append (i, deflate_piece (piece.counts, piece.index, piece.count, piece.front));
            }
        } catch (...) {
            const std::lock_guard guard (lock_);
            ended_ = true;
            turn_.notify_all ();
            throw;
        }
    }

    /// True when all was written. To be called when the threads have ended.
    bool finish () { return !ended_ && written_ == pieces_.size () && member_.finish (); }

  private:
    void append (std::size_t index, const DeflatedText& text) {
        std::unique_lock guard (lock_);
        turn_.wait (guard, [&] { return written_ == index || ended_; });
        if (!ended_) ended_ = stop_.stop_requested () || !member_.append (text);
        ++written_;
        turn_.notify_all ();
    }

    const std::vector<Piece>& pieces_;
    const std::stop_token& stop_;
    std::atomic<std::size_t> next_{0};
    std::mutex lock_;
    std::condition_variable turn_;
    GzipMember member_;
    std::size_t written_ = 0;
    std::atomic<bool> ended_{false};
};

} // namespace

ResultStatus write_result (const std::string& out, const ModelTables& tables, const Grid& grid,
                           bool sequential, std::string& error, const std::stop_token& stop) {
    OutputFile file = out == "-" ? OutputFile::standard_output () : OutputFile (out, stop);
    if (!file.ok ()) {
        error = file.error ();
        // Standard output that is closed is a result lost, not a name that cannot be created.
        return out == "-" ? ResultStatus::lost : ResultStatus::not_created;
    }
    const std::string head = format_head (
        tables,
        {.n_simul = grid.n_simul, .n_points = grid.n_points, .n_var_conc = grid.n_var_conc});
    const std::vector<Piece> pieces = cut_pieces (grid, head);
    PieceWriter writer (pieces, file, stop);
    WorkerThreads helpers;
    const std::size_t threads =
        sequential ? 1 : std::min (pieces.size (), static_cast<std::size_t> (processor_count ()));
    for (std::size_t started = 1; started < threads; ++started) {
        if (!helpers.start ([&writer] { writer.work (); })) break;
    }
    writer.work ();
    helpers.join ();
    if (writer.finish () && file.commit ()) return ResultStatus::written;
    error = file.error ();
    return file.stopped () || stop.stop_requested () ? ResultStatus::stopped : ResultStatus::lost;
}

} // namespace ostrand::sim
