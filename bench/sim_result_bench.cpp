// Writing a result file beside gzip -6 of the same text. Each round runs both; `ratio` is ours over
// theirs, median of the rounds.
#include "base/platform.h"
#include "base/process.h"
#include "sim/result_writer.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <fstream>
#include <vector>

namespace ostrand::sim {
namespace {

double seconds_since (std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double> (std::chrono::steady_clock::now () - start).count ();
}

/// 20 simulations of 5 species over 20,000 s, counts that wander as a stochastic run's do.
void fill (ModelTables& tables, Grid& grid) {
    for (int s = 0; s < 5; ++s) {
        auto species = std::make_unique<ModelSpecies> ();
        species->name = "species" + std::to_string (s);
        species->displayed = true;
        species->colour = 0xFF000000;
        tables.species.push_back (std::move (species));
    }
    grid.n_simul = 20;
    grid.n_points = 20000;
    grid.series_block = std::make_unique<std::uint32_t[]> (20 * 5 * 20000);
    std::uint64_t random = 1;
    std::uint32_t* point = grid.series_block.get ();
    for (int series = 0; series < 100; ++series) {
        double count = 40000 + 3000.0 * series;
        for (int t = 0; t < 20000; ++t) {
            random = random * 6364136223846793005U + 1442695040888963407U;
            count += (static_cast<double> (random >> 40) / 16777216.0 - 0.5) * std::sqrt (count);
            *point++ = static_cast<std::uint32_t> (count);
        }
    }
    for (std::size_t i = 0; i < 20; ++i) {
        Simulation simulation;
        simulation.all_pt = {grid.series_block.get () + i * 5 * 20000, 5 * 20000};
        grid.simulations.push_back (simulation);
    }
}

void write_beside_gzip (benchmark::State& state) {
    ModelTables tables;
    Grid grid;
    fill (tables, grid);
    const std::filesystem::path folder = temporary_directory ();
    const std::string stem =
        (folder / ("ostrand-bench-" + std::to_string (process_id ()))).string ();
    std::string text;
    format_result (tables, grid, [&text] (std::string_view piece) {
        text += piece;
        return true;
    });
    std::ofstream (stem + ".txt", std::ios::binary) << text;
    std::vector<double> ratios;
    std::string error;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now ();
        write_result (stem + ".gz", tables, grid, error);
        const double ours = seconds_since (start);
        state.SetIterationTime (ours);
        start = std::chrono::steady_clock::now ();
        ChildProcess ({"sh", "-c", "gzip -6 <\"$0.txt\" >\"$0.other.gz\"", stem}).wait ();
        ratios.push_back (ours / seconds_since (start));
    }
    for (const char* ending : {".txt", ".gz", ".other.gz"}) std::filesystem::remove (stem + ending);
    std::sort (ratios.begin (), ratios.end ());
    state.counters["ratio"] = ratios[ratios.size () / 2];
    state.SetBytesProcessed (static_cast<std::int64_t> (text.size ()) *
                             static_cast<std::int64_t> (state.iterations ()));
}
BENCHMARK (write_beside_gzip)->UseManualTime ()->Unit (benchmark::kMillisecond)->Iterations (7);

} // namespace
} // namespace ostrand::sim
