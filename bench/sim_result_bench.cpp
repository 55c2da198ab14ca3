// Writing a result file beside zlib's one thread at the same level, on the same text, in turns:
// least wall times. `zlib_ratio` says how many times faster ours is, `size_ratio` how much larger
// the file. And counts as text beside the library's to_chars.
#include "base/platform.h"
#include "measure.h"
#include "sim/decimal_lines.h"
#include "sim/result_head.h"
#include "sim/result_writer.h"

#include <array>
#include <benchmark/benchmark.h>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <vector>
#include <zlib.h>

namespace ostrand::sim {
namespace {

constexpr std::uint32_t n_species = 5;
constexpr std::uint32_t n_simul = 20;
constexpr std::uint32_t n_points = 20000;

/// 20 simulations of 5 species over 20,000 s. Counts wander as a stochastic run's do, or stay.
void fill (ModelTables& tables, Grid& grid, bool flat) {
    for (std::uint32_t s = 0; s < n_species; ++s) {
        auto species = std::make_unique<ModelSpecies> ();
        species->name = "species" + std::to_string (s);
        species->displayed = true;
        species->colour = 0xFF000000;
        tables.species.push_back (std::move (species));
        grid.recorded.push_back (s);
    }
    grid.n_simul = n_simul;
    grid.n_points = n_points;
    grid.series_block = std::make_unique<std::uint32_t[]> (n_simul * n_species * n_points);
    std::uint64_t random = 1;
    std::uint32_t* point = grid.series_block.get ();
    for (std::uint32_t series = 0; series < n_simul * n_species; ++series) {
        double count = 40000 + 3000.0 * series;
        for (std::uint32_t t = 0; t < n_points; ++t) {
            random = random * 6364136223846793005U + 1442695040888963407U;
            const double step = static_cast<double> (random >> 40) / 16777216.0 - 0.5;
            if (!flat) count += step * std::sqrt (count);
            *point++ = static_cast<std::uint32_t> (count);
        }
    }
}

/// The same text as one stream, formatted and compressed by one thread in pieces of 256 KiB.
std::size_t write_by_zlib (const std::string& path, const ModelTables& tables, const Grid& grid) {
    constexpr std::size_t piece_size = 1 << 18;
    gzFile file = gzopen (path.c_str (), "wb");
    gzbuffer (file, piece_size);
    std::string piece = format_head (tables, {.n_simul = n_simul, .n_points = n_points});
    for (std::size_t i = 0; i < std::size_t{n_simul} * n_species * n_points; ++i) {
        std::array<char, line_room> line{};
        char* const end =
            std::to_chars (line.data (), line.data () + line.size (), grid.series_block[i]).ptr;
        *end = '\n';
        piece.append (line.data (), end + 1);
        if (piece.size () < piece_size) continue;
        gzwrite (file, piece.data (), static_cast<unsigned> (piece.size ()));
        piece.clear ();
    }
    gzwrite (file, piece.data (), static_cast<unsigned> (piece.size ()));
    gzclose (file);
    return std::filesystem::file_size (path);
}

void write_beside_zlib (benchmark::State& state, bool flat) {
    ModelTables tables;
    Grid grid;
    fill (tables, grid, flat);
    const std::string stem =
        (temporary_directory () / ("ostrand-bench-" + std::to_string (process_id ()))).string ();
    bench::Least ours;
    bench::Least one;
    bench::Least theirs;
    bench::Least our_core; // processor time of all threads
    bench::Least their_core;
    std::string error;
    std::size_t their_size = 0;
    for (auto _ : state) {
        ours.add (bench::wall_seconds,
                  [&] { write_result (stem + ".gz", tables, grid, false, error); });
        theirs.add (bench::wall_seconds,
                    [&] { their_size = write_by_zlib (stem + ".other.gz", tables, grid); });
        one.add (bench::wall_seconds,
                 [&] { write_result (stem + ".gz", tables, grid, true, error); });
        our_core.add (bench::process_seconds,
                      [&] { write_result (stem + ".gz", tables, grid, false, error); });
        their_core.add (bench::process_seconds,
                        [&] { write_by_zlib (stem + ".other.gz", tables, grid); });
    }
    const auto our_size = static_cast<double> (std::filesystem::file_size (stem + ".gz"));
    for (const char* ending : {".gz", ".other.gz"}) std::filesystem::remove (stem + ending);
    state.counters["threads"] = processor_count ();
    state.counters["zlib_ratio"] = theirs.seconds () / ours.seconds ();
    state.counters["zlib_ratio_one_thread"] = theirs.seconds () / one.seconds ();
    state.counters["size_ratio"] = our_size / static_cast<double> (their_size);
    state.counters["ns_per_line"] = ours.seconds () * 1e9 / (n_simul * n_species * n_points);
    state.counters["core_ratio"] = their_core.seconds () / our_core.seconds ();
}
void write_wandering (benchmark::State& state) { write_beside_zlib (state, false); }
void write_flat (benchmark::State& state) { write_beside_zlib (state, true); }
BENCHMARK (write_wandering)->Unit (benchmark::kMillisecond)->Iterations (7)->UseRealTime ();
BENCHMARK (write_flat)->Unit (benchmark::kMillisecond)->Iterations (7)->UseRealTime ();

/// bits  of the counts at most
void lines_beside_to_chars (benchmark::State& state) {
    const auto bits = static_cast<unsigned> (state.range (0));
    std::vector<std::uint32_t> counts (1 << 18);
    std::uint64_t random = 1;
    for (std::uint32_t& count : counts) {
        random = random * 6364136223846793005U + 1442695040888963407U;
        count = static_cast<std::uint32_t> (random >> 32) >> (32 - bits);
    }
    std::vector<char> text (counts.size () * line_room);
    bench::Least ours;
    bench::Least theirs;
    for (auto _ : state) {
        ours.add (bench::thread_seconds, [&] {
            char* end = text.data ();
            for (const std::uint32_t count : counts) end = put_line (end, count);
            benchmark::DoNotOptimize (end);
        });
        theirs.add (bench::thread_seconds, [&] {
            char* end = text.data ();
            for (const std::uint32_t count : counts) {
                end = std::to_chars (end, end + line_room, count).ptr;
                *end++ = '\n';
            }
            benchmark::DoNotOptimize (end);
        });
    }
    const auto lines = static_cast<double> (counts.size ());
    state.counters["ns_per_line"] = ours.seconds () * 1e9 / lines;
    state.counters["to_chars_ratio"] = theirs.seconds () / ours.seconds ();
}
BENCHMARK (lines_beside_to_chars)->Arg (8)->Arg (17)->Arg (21)->Arg (32)->Iterations (20);

} // namespace
} // namespace ostrand::sim
