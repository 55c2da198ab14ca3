// What a sweep costs beside its simulations, for the model of docs/scaling.md: processor time to
// plan, to hand out, to keep a record, to pack and to write.
#include "base/disk.h"
#include "measure.h"
#include "sweep/coordinator.h"
#include "sweep/sweep_result.h"
#include "sweep/sweep_run.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ostrand::sweep {
namespace {

/// Twenty enzyme reactions in a chain, three species displayed, a hundred points.
std::string chain () {
    std::string text = "duration = 100; display (s0x, s10x, s20x); [s0x] = 1 mM;";
    for (int i = 0; i < 20; ++i) {
        const std::string n = std::to_string (i);
        text += " [e" + n + "x] = 1 uM; e" + n + "x : s" + n + "x -> s" + std::to_string (i + 1) +
                "x | 100 uM - 100;";
    }
    return text;
}

/// The same for a moment only: all is overhead.
std::string moment () { return chain () + "duration = 1;"; }

std::unique_ptr<SweepPlan> plan_of (const std::string& text, std::uint32_t replicates) {
    std::string fault;
    auto plan = SweepPlan::read (text, {.replicates = replicates}, fault);
    if (!plan) throw std::runtime_error (fault);
    return plan;
}

void planning (benchmark::State& state) {
    const auto replicates = static_cast<std::uint32_t> (state.range (0));
    bench::Least least;
    for (auto _ : state) {
        least.add (bench::thread_seconds, [&] { plan_of (chain (), replicates); });
    }
    state.counters["seconds"] = least.seconds ();
    state.counters["ns_per_simulation"] = least.seconds () * 1e9 / replicates;
}
BENCHMARK (planning)->Arg (1000)->Arg (1'000'000)->Iterations (3)->Unit (benchmark::kMillisecond);

/// Portions of 32 simulations: what a coordinator spends on handing one out and keeping its record,
/// and on a byte of it.
void keeping (benchmark::State& state) {
    constexpr std::uint32_t simulations = 32 * 1000;
    const auto plan = plan_of (chain (), simulations);
    bench::Least out;
    bench::Least keep;
    std::uint64_t bytes = 0;
    std::uint64_t records = 0;
    for (auto _ : state) {
        const std::unique_ptr<Journal> journal = Journal::temporary ();
        if (!journal->begin (plan->identity ())) throw std::runtime_error (journal->error ());
        Ledger ledger (plan->identity (), plan->units ());
        Coordinator coordinator (*plan, *journal, ledger, 32, 1000);
        std::vector<NumberedTask> tasks;
        out.add (bench::thread_seconds, [&] {
            while (auto task = coordinator.next ()) tasks.push_back (std::move (*task));
        });
        std::vector<std::string> contents;
        bytes = 0;
        for (const NumberedTask& task : tasks) {
            SeriesRecord record;
            record.first_simulation = task.task.first_simulation;
            record.simulations = static_cast<std::uint32_t> (task.task.simulations);
            record.points = plan->n_points ();
            record.time_steps = plan->time_steps ();
            record.counts.assign (task.task.simulations * plan->identity ().lines_each (), 5);
            contents.push_back (record.to_bytes ());
            bytes += contents.back ().size ();
        }
        records = contents.size ();
        keep.add (bench::thread_seconds, [&] {
            for (std::size_t i = 0; i < contents.size (); ++i) {
                coordinator.take (RecordKind::series, contents[i]);
                coordinator.done (tasks[i].number, 0.15);
            }
        });
    }
    state.counters["us_per_task_out"] = out.seconds () * 1e6 / static_cast<double> (records);
    state.counters["us_per_record_kept"] = keep.seconds () * 1e6 / static_cast<double> (records);
    state.counters["ns_per_byte_kept"] = keep.seconds () * 1e9 / static_cast<double> (bytes);
}
BENCHMARK (keeping)->Iterations (3)->Unit (benchmark::kMillisecond);

/// Whole sweeps on one thread: of a moment (overhead only) and with its simulations.
void whole (benchmark::State& state) {
    const auto replicates = static_cast<std::uint32_t> (state.range (0));
    const bool long_enough = state.range (1) != 0;
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path () / "ostrand-sweep-bench";
    std::filesystem::create_directories (folder);
    const std::string model = (folder / "m.ssa").string ();
    std::string error;
    if (!write_file (model, long_enough ? chain () : moment (), error)) {
        throw std::runtime_error (error);
    }
    bench::Least least;
    std::uintmax_t size = 0;
    for (auto _ : state) {
        SweepRequest request;
        request.model = model;
        request.out = (folder / "r.gz").string ();
        request.choice.replicates = replicates;
        request.threads = 1;
        least.add (bench::process_seconds, [&] {
            SweepRun run (request);
            if (!run.run ().done ()) throw std::runtime_error ("the sweep failed");
        });
        size = std::filesystem::file_size (request.out);
    }
    std::filesystem::remove_all (folder);
    state.counters["us_per_simulation"] = least.seconds () * 1e6 / replicates;
    state.counters["bytes_per_simulation"] = static_cast<double> (size) / replicates;
}
BENCHMARK (whole)
    ->Args ({100'000, 0})
    ->Args ({256, 1})
    ->Iterations (3)
    ->Unit (benchmark::kMillisecond);

/// The result out of packed units, by the byte of it.
void writing (benchmark::State& state) {
    const auto plan = plan_of (chain (), 20'000); // twelve units
    const std::filesystem::path path =
        std::filesystem::temp_directory_path () / "ostrand-sweep-bench.gz";
    std::vector<UnitRecord> units;
    for (std::uint64_t i = 0; i < plan->units ().count (); ++i) {
        std::vector<std::uint32_t> counts (plan->units ().unit (i).size ());
        std::uint32_t x = 1;
        for (std::uint32_t& count : counts) count = (x = x * 1664525 + 1013904223) >> 22;
        units.push_back (deflated_unit (plan->identity (), i, counts));
    }
    bench::Least least;
    std::uintmax_t size = 0;
    for (auto _ : state) {
        least.add (bench::thread_seconds, [&] {
            OutputFile file (path);
            write_gzip_result (
                file, path.string (), plan->identity (), units.size (),
                [&] (std::uint64_t i, std::string&) { return std::optional (units[i].text); }, {});
        });
        size = std::filesystem::file_size (path);
    }
    std::filesystem::remove (path);
    state.counters["ns_per_byte"] = least.seconds () * 1e9 / static_cast<double> (size);
    state.counters["bytes_per_line"] =
        static_cast<double> (size) /
        static_cast<double> (plan->identity ().n_simul () * plan->identity ().lines_each ());
}
BENCHMARK (writing)->Iterations (3)->Unit (benchmark::kMillisecond);

/// Packing a unit, by the line.
void packing (benchmark::State& state) {
    const auto plan = plan_of (chain (), 20'000);
    std::vector<std::uint32_t> counts (plan->units ().unit (0).size ());
    std::uint32_t x = 1;
    std::uint32_t level = 300'000;
    for (std::uint32_t& count : counts) {
        x = x * 1664525 + 1013904223;
        count = level -= x >> 26; // a series that falls by chance
        if (level < 100) level = 300'000;
    }
    bench::Least least;
    for (auto _ : state) {
        least.add (bench::thread_seconds, [&] {
            benchmark::DoNotOptimize (deflated_unit (plan->identity (), 0, counts));
        });
    }
    state.counters["ns_per_line"] = least.seconds () * 1e9 / static_cast<double> (counts.size ());
}
BENCHMARK (packing)->Iterations (3)->Unit (benchmark::kMillisecond);

} // namespace
} // namespace ostrand::sweep
