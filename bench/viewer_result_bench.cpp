// Loading a result file beside zcat of the same file. Each round runs both; `ratio` is ours over
// theirs, median of the rounds.
#include "base/platform.h"
#include "base/process.h"
#include "viewer/result_data.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <vector>
#include <zlib.h>

namespace ostrand::viewer {
namespace {

double seconds_since (std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double> (std::chrono::steady_clock::now () - start).count ();
}

/// A result of 20 simulations of 5 species over 20,000 s: counts that wander as a stochastic run's
/// do.
std::string sample_text () {
    std::string text = "20 5 20000\n";
    for (int s = 0; s < 5; ++s) text += "species" + std::to_string (s) + "\nff000000\n";
    text += "0\n";
    std::uint64_t random = 1;
    for (int series = 0; series < 100; ++series) {
        double count = 40000 + 3000.0 * series;
        for (int t = 0; t < 20000; ++t) {
            random = random * 6364136223846793005U + 1442695040888963407U;
            count += (static_cast<double> (random >> 40) / 16777216.0 - 0.5) * std::sqrt (count);
            text += std::to_string (static_cast<long> (count)) + "\n";
        }
    }
    return text;
}

void load_beside_zcat (benchmark::State& state) {
    const std::string path =
        (temporary_directory () / ("ostrand-bench-" + std::to_string (process_id ()) + ".gz"))
            .string ();
    const std::string text = sample_text ();
    gzFile out = gzopen (path.c_str (), "wb6");
    gzwrite (out, text.data (), static_cast<unsigned> (text.size ()));
    gzclose (out);
    std::vector<double> ratios;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now ();
        ResultData data;
        gzFile in = gzopen (path.c_str (), "rb");
        load_result (&data, in);
        gzclose (in);
        const double ours = seconds_since (start);
        state.SetIterationTime (ours);
        start = std::chrono::steady_clock::now ();
        ChildProcess ({"sh", "-c", "zcat \"$0\" >/dev/null", path}).wait ();
        ratios.push_back (ours / seconds_since (start));
        if (data.error) state.SkipWithError ("does not load");
    }
    std::filesystem::remove (path);
    std::sort (ratios.begin (), ratios.end ());
    state.counters["ratio"] = ratios[ratios.size () / 2];
    state.SetBytesProcessed (static_cast<std::int64_t> (text.size ()) *
                             static_cast<std::int64_t> (state.iterations ()));
}
BENCHMARK (load_beside_zcat)->UseManualTime ()->Unit (benchmark::kMillisecond)->Iterations (7);

} // namespace
} // namespace ostrand::viewer
