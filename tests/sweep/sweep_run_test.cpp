// Whole sweeps: the same bytes whatever the threads, kernels, interruptions and shards.
#include "base/progress.h"
#include "sim/plain_simulator.h"
#include "sweep/merge.h"
#include "sweep/sweep_support.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <thread>

namespace ostrand::sweep {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::TemporaryFolder;

TEST (sweep, the_text_is_that_of_a_plain_run_on_random_models) {
    const TemporaryFolder folder;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const std::string model =
            folder.write ("m.ssa", sim::plain::random_model (seed + 500).text ());
        for (const bool stochastic : {true, false}) {
            const SweepRequest request = request_in (folder, {.stochastic = stochastic});
            ASSERT_EQ (unpacked (bytes_of (request)), plain_result (folder, model, stochastic))
                << "seed " << seed;
        }
        ASSERT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
    }
}

TEST (sweep, threads_and_kernels_change_no_byte) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    for (const bool stochastic : {true, false}) {
        const SweepChoice choice{.replicates = 7, .stochastic = stochastic};
        const std::string expected = bytes_of (request_in (folder, choice, 1));
        ASSERT_THAT (expected, ::testing::Not (HasSubstr ("failed")));
        for (const unsigned threads : {2U, 5U}) {
            EXPECT_EQ (bytes_of (request_in (folder, choice, threads)), expected);
        }
        for (const sim::LaneKernel& kernel : sim::lane_kernels ()) {
            EXPECT_EQ (bytes_of (request_in (folder, choice, 2), {&kernel, 1}), expected)
                << kernel.target << " " << kernel.width;
        }
    }
}

/// Counts of the data lines of a result text, by simulation.
std::vector<std::string> simulations_of (const std::string& text, std::size_t simulations) {
    std::vector<std::string> lines;
    std::istringstream stream (text);
    for (std::string line; std::getline (stream, line);) lines.push_back (line);
    std::istringstream head (lines[0]);
    std::size_t n_simul = 0;
    std::size_t n_displayed = 0;
    std::size_t n_points = 0;
    head >> n_simul >> n_displayed >> n_points;
    EXPECT_EQ (n_simul, simulations);
    std::vector<std::string> each (simulations);
    const std::size_t first = lines.size () - n_simul * n_displayed * n_points;
    for (std::size_t i = first; i < lines.size (); ++i) {
        each[(i - first) / (n_displayed * n_points)] += lines[i] + "\n";
    }
    return each;
}

TEST (sweep, replicates_stand_behind_the_model_s_own_concentrations) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", small_model);
    const std::string plain = plain_result (folder, model, true);
    const std::string text = unpacked (bytes_of (request_in (folder, {.replicates = 3})));
    EXPECT_TRUE (text.starts_with ("36 3 5\na\nff000000\nc\n"));
    EXPECT_THAT (text, HasSubstr ("\n3\na\n3\n602\n1204\n1806\nb\n4\n602\n3011\n5420\n12045\n"
                                  "replicate\n3\n1\n2\n3\n"));
    // The replicate varies fastest, and the first one is the plain run.
    const auto replicated = simulations_of (text, 36);
    const auto single = simulations_of (plain, 12);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ (replicated[3 * i], single[i]);
    for (std::size_t i = 0; i < 36; i += 3) {
        EXPECT_NE (replicated[i], replicated[i + 1]);
        EXPECT_NE (replicated[i], replicated[i + 2]);
        EXPECT_NE (replicated[i + 1], replicated[i + 2]);
    }
}

TEST (sweep, replicates_are_the_first_of_any_larger_number) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    for (const std::optional<std::uint64_t> seed : {std::optional<std::uint64_t> (), {5}}) {
        const auto few = simulations_of (
            unpacked (bytes_of (request_in (folder, {.replicates = 2, .seed = seed}))), 24);
        const auto many = simulations_of (
            unpacked (bytes_of (request_in (folder, {.replicates = 5, .seed = seed}))), 60);
        for (std::size_t i = 0; i < 12; ++i) {
            EXPECT_EQ (few[2 * i], many[5 * i]);
            EXPECT_EQ (few[2 * i + 1], many[5 * i + 1]);
        }
    }
}

TEST (sweep, a_seed_changes_every_simulation) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    const auto of_seed = [&] (const std::optional<std::uint64_t>& seed) {
        return simulations_of (unpacked (bytes_of (request_in (folder, {.seed = seed}))), 12);
    };
    const auto without = of_seed (std::nullopt);
    const auto zero = of_seed (0);
    const auto one = of_seed (1);
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_NE (without[i], zero[i]);
        EXPECT_NE (zero[i], one[i]);
    }
    EXPECT_EQ (of_seed (1), one);
}

TEST (sweep, models_without_data_have_their_head) {
    const TemporaryFolder folder;
    for (const char* text : {"", "duration = 3; [a] = 1 uM, 2 uM;", "display (a); [a] = 1 uM;"}) {
        const std::string model = folder.write ("m.ssa", text);
        EXPECT_EQ (unpacked (bytes_of (request_in (folder))), plain_result (folder, model, true));
        EXPECT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
    }
}

TEST (sweep, simulations_of_several_units_and_units_of_several_simulations_fit_together) {
    const TemporaryFolder folder;
    // 1.2 million lines each: two units; nothing reacts, so that it is quick.
    std::string model = folder.write (
        "m.ssa", "duration = 400000; [a] = 5 uM, 7 uM; x -> y | 1; display (a, x, y);");
    EXPECT_EQ (unpacked (bytes_of (request_in (folder))), plain_result (folder, model, true));
    // 100,000 lines each: six to a unit.
    model = folder.write ("m.ssa", "duration = 50000; [a] = 1 uM -> 13 uM : 1 uM; x -> y | 1; "
                                   "display (a, x);");
    EXPECT_EQ (unpacked (bytes_of (request_in (folder))), plain_result (folder, model, true));
}

// ---- going on ------------------------------------------------------------------------------

/// Stops a sweep after so long; true when it was stopped before its end.
bool stop_after (const SweepRequest& request, std::chrono::microseconds delay,
                 std::span<const sim::LaneKernel> kernels = sim::lane_kernels ()) {
    std::stop_source stop;
    SweepRun run (request, kernels);
    std::thread stopper ([&] {
        std::this_thread::sleep_for (delay);
        stop.request_stop ();
    });
    const Outcome outcome = run.run (stop.get_token ());
    stopper.join ();
    EXPECT_FALSE (outcome.failed ()) << outcome.reason;
    return outcome.stopped ();
}

TEST (sweep, stops_at_random_moments_change_no_byte) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", std::string (small_model) + "duration = 60;");
    const SweepChoice choice{.replicates = 11, .seed = 3};
    const std::string expected = bytes_of (request_in (folder, choice));
    std::mt19937 random (4);
    int stops = 0;
    for (int round = 0; round < 4; ++round) {
        std::filesystem::remove (folder / "r.gz");
        // Each go with other threads.
        for (int go = 0;; ++go) {
            SweepRequest request = request_in (folder, choice, 1 + random () % 4);
            request.resume = true;
            if (!stop_after (request, std::chrono::microseconds (random () % 60'000))) break;
            ++stops;
            EXPECT_FALSE (std::filesystem::exists (folder / "r.gz"));
        }
        ASSERT_EQ (testing::file_text (folder / "r.gz"), expected);
        ASSERT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
    }
    EXPECT_GT (stops, 0);
}

TEST (sweep, a_machine_with_other_lanes_may_go_on) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", std::string (small_model) + "duration = 60;");
    for (const bool stochastic : {true, false}) {
        const SweepChoice choice{.replicates = 11, .stochastic = stochastic, .seed = 3};
        const std::string expected = bytes_of (request_in (folder, choice));
        std::mt19937 random (5);
        int stops = 0;
        std::set<unsigned> widths;
        while (stops < 30) {
            std::filesystem::remove (folder / "r.gz");
            for (;;) {
                // A machine that has one kernel only.
                const sim::LaneKernel& kernel =
                    sim::lane_kernels ()[random () % sim::lane_kernels ().size ()];
                SweepRequest request = request_in (folder, choice, 1 + random () % 2);
                request.resume = true;
                const std::chrono::microseconds delay (random () % 30'000);
                if (!stop_after (request, delay, {&kernel, 1})) break;
                widths.insert (kernel.width);
                ++stops;
            }
            ASSERT_EQ (testing::file_text (folder / "r.gz"), expected);
        }
        EXPECT_GT (widths.size (), 1U);
    }
}

/// Of each simulation of a leftover, so that there is time to stop it; under sanitizers everything
/// takes longer.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::uint64_t points_each = 1000;
#else
constexpr std::uint64_t points_each = 3000;
#endif

/// A sweep that was stopped, with something kept.
struct leftover : ::testing::Test {
    void SetUp () override {
        folder.write ("m.ssa", std::string (small_model) +
                                   "duration = " + std::to_string (points_each) + ";");
        // Stopped twice, so that it is more than one record.
        for (const std::uint64_t points : {200U, 400U}) {
            std::stop_source stop;
            SweepRequest request = request_in (folder);
            request.resume = points > 200;
            SweepRun run (request);
            std::thread stopper ([&] {
                while (run.progress ().amount_done () < points) std::this_thread::yield ();
                stop.request_stop ();
            });
            ASSERT_TRUE (run.run (stop.get_token ()).stopped ());
            stopper.join ();
            way_on = run.way_on ();
        }
        kept = testing::file_text (journal ());
        ASSERT_FALSE (kept.empty ());
    }
    std::filesystem::path journal () const { return folder / "r.gz.sweep"; }
    /// The failure of another sweep that wants to go on.
    std::string refusal (SweepRequest request) const {
        request.resume = true;
        SweepRun run (std::move (request));
        const Outcome outcome = run.run ();
        EXPECT_EQ (run.way_on (), "");
        return outcome.failed () ? outcome.reason : "(went on)";
    }
    TemporaryFolder folder;
    std::string way_on;
    std::string kept;
};

TEST_F (leftover, it_is_told_how_to_go_on) {
    EXPECT_EQ (way_on, "what was finished is kept in '" + journal ().string () +
                           "'; the same command with --resume goes on");
}

TEST_F (leftover, what_does_not_fit_is_refused_and_nothing_is_lost) {
    const auto expect_refused = [this] (const SweepRequest& request, const std::string& why) {
        EXPECT_EQ (refusal (request), "cannot go on with '" + journal ().string () + "': " + why);
        EXPECT_EQ (testing::file_text (journal ()), kept);
        EXPECT_FALSE (std::filesystem::exists (folder / "r.gz"));
    };
    expect_refused (request_in (folder, {.replicates = 2}), "it has 1 replicates, not 2");
    expect_refused (request_in (folder, {.stochastic = false}), "it is of the stochastic engine");
    expect_refused (request_in (folder, {.seed = 1}), "it is without a seed, not of seed 1");
    expect_refused (request_in (folder, {.shard = Shard{1, 2}}),
                    "it is of the whole sweep, not of shard 1/2");
    SweepRequest request = request_in (folder);
    request.model = folder.write ("other.ssa", small_model);
    expect_refused (request, "it is of another model");
    std::filesystem::remove (folder / "other.ssa");
    // A byte of the first record behind the identity.
    const std::size_t at =
        journal_mark.size () + 2 * frame_head + frame_tail +
        plan_of (std::string (small_model) + "duration = " + std::to_string (points_each) + ";")
            ->identity ()
            .to_bytes ()
            .size () +
        2;
    std::string damaged = kept;
    damaged[at] = static_cast<char> (damaged[at] ^ 1);
    std::ofstream (journal (), std::ios::binary) << damaged;
    kept = damaged;
    expect_refused (request_in (folder), "it is damaged");
}

TEST_F (leftover, a_remark_and_other_threads_do_not_matter) {
    folder.write ("m.ssa", "// a remark\n" + std::string (small_model) +
                               "duration = " + std::to_string (points_each) + ";");
    SweepRequest request = request_in (folder, {}, 3);
    request.resume = true;
    std::stop_source stop;
    stop.request_stop ();
    SweepRun run (request);
    EXPECT_TRUE (run.run (stop.get_token ()).stopped ());
    EXPECT_GE (testing::file_text (journal ()).size (), kept.size ());
}

TEST_F (leftover, without_resume_it_is_told_and_begun_anew) {
    folder.write ("m.ssa", small_model);
    const testing::CaughtMessages messages;
    const std::string bytes = bytes_of (request_in (folder));
    EXPECT_EQ (messages.joined (), "'" + journal ().string () +
                                       "' holds an unfinished sweep, which --resume would have "
                                       "gone on with; beginning anew\n");
    EXPECT_EQ (unpacked (bytes), plain_result (folder, (folder / "m.ssa").string (), true));
    EXPECT_FALSE (std::filesystem::exists (journal ()));
}

TEST_F (leftover, one_in_other_hands_is_refused) {
    const Journal held (journal ());
    EXPECT_EQ (refusal (request_in (folder)),
               "another sweep is working on '" + journal ().string () + "'");
    EXPECT_EQ (testing::file_text (journal ()), kept);
}

TEST_F (leftover, what_was_finished_is_not_done_again) {
    // Stopped when 400 points were there: the next go begins with at least as many, and
    // counts all the others once.
    SweepRequest request = request_in (folder);
    request.resume = true;
    SweepRun run (request);
    std::uint64_t least = ~std::uint64_t{0};
    std::atomic<bool> ended{false};
    std::thread watcher ([&] {
        while (!ended) {
            // Before it is expected, nothing is done either.
            if (run.progress ().amount_expected () == 0) continue;
            const std::uint64_t done = run.progress ().amount_done ();
            if (done > 0) least = std::min (least, done);
            std::this_thread::yield ();
        }
    });
    EXPECT_TRUE (run.run ().done ());
    ended = true;
    watcher.join ();
    EXPECT_GE (least, 400U);
    EXPECT_EQ (run.progress ().amount_done (), 12 * points_each);
}

TEST (sweep_progress, the_line_tells_speed_and_time_left) {
    EXPECT_EQ (sweep_progress_text (0, 1000, 0, 0.0), progress_bar (0, 24) + "   0 %");
    EXPECT_EQ (sweep_progress_text (250, 1000, 0, 5.0),
               progress_bar (0.25, 24) + "  25 %  50 simulated s/s  15 s left");
    // What an earlier go has finished tells nothing of the speed.
    EXPECT_EQ (sweep_progress_text (750, 1000, 500, 5.0),
               progress_bar (0.75, 24) + "  75 %  50 simulated s/s  5 s left");
    EXPECT_EQ (sweep_progress_text (500, 1000, 500, 5.0), progress_bar (0.5, 24) + "  50 %");
    EXPECT_EQ (sweep_progress_text (1000, 1000, 0, 5.0), progress_bar (1, 24) + " 100 %  writing");
}

TEST (sweep, resume_without_a_leftover_runs_it_whole) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    const std::string expected = bytes_of (request_in (folder));
    std::filesystem::remove (folder / "r.gz");
    SweepRequest request = request_in (folder);
    request.resume = true;
    EXPECT_EQ (bytes_of (request), expected);
}

TEST (sweep, a_file_in_the_way_is_no_leftover_and_stays) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    folder.write ("r.gz.sweep", "my notes");
    for (const bool resume : {false, true}) {
        SweepRequest request = request_in (folder);
        request.resume = resume;
        EXPECT_EQ (bytes_of (request), "(failed: '" + (folder / "r.gz.sweep").string () +
                                           "' is in the way: it is no unfinished sweep)");
        EXPECT_EQ (testing::file_text (folder / "r.gz.sweep"), "my notes");
    }
}

TEST (sweep, faults_are_outcomes_and_leave_nothing) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", "duration = 2; a -> b;");
    folder.write ("r.gz", "old");
    SweepRequest request = request_in (folder);
    EXPECT_EQ (bytes_of (request), "(failed: " + request.model + ": '|' expected, got ';')");
    request.model = (folder / "none.ssa").string ();
    EXPECT_EQ (bytes_of (request), "(failed: Cannot open '" + request.model + "')");
    request.model = folder.write ("m.ssa", "[a] = 0 mM -> 127 mM : 1 mM; [b] = 0 mM -> 127 mM : 1 "
                                           "mM; display (a);");
    request.choice.replicates = 300'000;
    EXPECT_EQ (bytes_of (request),
               "(failed: " + request.model +
                   ": too many simulations: 16384 combinations of concentrations with 300000 "
                   "replicates, 4294967295 simulations can be had)");
    request.choice.replicates = 1;
    request.out = (folder / "nowhere" / "r.gz").string ();
    EXPECT_EQ (bytes_of (request),
               "(failed: Cannot write '" + request.out + "': No such file or directory)");
    request.out = folder.path ().string ();
    EXPECT_EQ (bytes_of (request), "(failed: Cannot write '" + request.out + "': it is a folder)");
    request.out = "/dev/full";
    EXPECT_EQ (bytes_of (request), "(failed: Cannot write '/dev/full': No space left on device)");
    request.resume = true;
    EXPECT_EQ (bytes_of (request), "(failed: --resume needs an output that is a file; nothing is "
                                   "kept beside '/dev/full')");
    EXPECT_EQ (testing::file_text (folder / "r.gz"), "old");
    EXPECT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
}

TEST (sweep, the_result_goes_where_a_link_leads) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    std::filesystem::create_directory (folder / "there");
    std::filesystem::create_symlink (std::filesystem::path ("there") / "x.gz", folder / "r.gz");
    const std::string bytes = bytes_of (request_in (folder));
    EXPECT_TRUE (std::filesystem::is_symlink (folder / "r.gz"));
    EXPECT_EQ (testing::file_text (folder / "there" / "x.gz"), bytes);
    EXPECT_EQ (unpacked (bytes), plain_result (folder, (folder / "m.ssa").string (), true));
}

// ---- shards --------------------------------------------------------------------------------

std::string shard_name (unsigned index) { return "s" + std::to_string (index); }

/// All shards of a sweep, as files s1, s2, ... in the folder.
std::vector<std::string> make_shards (const TemporaryFolder& folder, SweepChoice choice,
                                      unsigned count, unsigned threads = 2) {
    std::vector<std::string> paths;
    for (unsigned i = 1; i <= count; ++i) {
        choice.shard = Shard{i, count};
        SweepRequest request = request_in (folder, choice, 1 + (i + threads) % 3);
        request.out = (folder / shard_name (i)).string ();
        EXPECT_THAT (bytes_of (request), ::testing::StartsWith ("ostrand shard 1\n"));
        paths.push_back (request.out);
    }
    return paths;
}

std::string merged (const TemporaryFolder& folder, const std::vector<std::string>& shards) {
    const std::string out = (folder / "merged.gz").string ();
    const Outcome outcome = ShardMerge (out, shards).run ();
    return outcome.failed () ? "(failed: " + outcome.reason + ")" : testing::file_text (out);
}

TEST (shards, any_number_in_any_order_become_the_one_file) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    std::mt19937 random (1);
    for (const SweepChoice& choice :
         {SweepChoice{.replicates = 5}, SweepChoice{.stochastic = false, .seed = 2}}) {
        const std::string expected = bytes_of (request_in (folder, choice));
        for (const unsigned count : {1U, 2U, 3U, 7U, 100U}) {
            std::vector<std::string> shards = make_shards (folder, choice, count);
            std::shuffle (shards.begin (), shards.end (), random);
            ASSERT_EQ (merged (folder, shards), expected) << count;
        }
    }
}

TEST (shards, those_that_cut_units_and_those_that_hold_whole_ones_fit_together) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", "duration = 50000; [a] = 1 uM -> 23 uM : 1 uM; x -> y | 1; "
                           "display (a, x);");
    const std::string expected = bytes_of (request_in (folder));
    for (const unsigned count : {2U, 5U}) {
        ASSERT_EQ (merged (folder, make_shards (folder, {}, count)), expected) << count;
    }
}

TEST (shards, a_shard_is_the_same_whatever_the_threads) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    const SweepChoice choice{.replicates = 9, .shard = Shard{2, 3}};
    const std::string one = bytes_of (request_in (folder, choice, 1));
    EXPECT_EQ (bytes_of (request_in (folder, choice, 5)), one);
}

struct merging : ::testing::Test {
    void SetUp () override {
        folder.write ("m.ssa", small_model);
        shards = make_shards (folder, {.replicates = 2}, 3);
        folder.write ("merged.gz", "old");
    }
    void expect_refused (const std::vector<std::string>& paths, const std::string& why) const {
        EXPECT_EQ (merged (folder, paths), "(failed: " + why + ")");
        EXPECT_EQ (testing::file_text (folder / "merged.gz"), "old");
    }
    static std::string quoted_path (const std::string& path) { return "'" + path + "'"; }
    TemporaryFolder folder;
    std::vector<std::string> shards;
};

TEST_F (merging, missing_and_doubled_shards_are_refused) {
    expect_refused ({shards[0], shards[2]}, "shard 2/3 is missing");
    expect_refused ({shards[1], shards[2]}, "shard 1/3 is missing");
    expect_refused ({shards[0], shards[1]}, "shard 3/3 is missing");
    const std::string copy = (folder / "copy").string ();
    std::filesystem::copy_file (shards[1], copy);
    expect_refused ({shards[0], shards[1], copy, shards[2]},
                    "shard 2/3 is there twice: " + quoted_path (copy));
}

TEST_F (merging, foreign_shards_are_refused) {
    const auto replace_second = [this] (const SweepChoice& choice, const std::string& model) {
        SweepRequest request = request_in (folder, choice);
        request.model = model;
        request.out = (folder / "x").string ();
        bytes_of (request);
        return std::vector<std::string>{shards[0], request.out, shards[2]};
    };
    const std::string model = (folder / "m.ssa").string ();
    const std::string begin = quoted_path ((folder / "x").string ()) + " does not go with " +
                              quoted_path (shards[0]) + ": ";
    expect_refused (replace_second ({.replicates = 2, .seed = 1, .shard = Shard{2, 3}}, model),
                    begin + "it is of seed 1, not without a seed");
    expect_refused (replace_second ({.replicates = 2, .shard = Shard{2, 4}}, model),
                    begin + "it is one of 4");
    const std::string other = folder.write ("o.ssa", std::string (small_model) + "a -> d | 0.001;");
    expect_refused (replace_second ({.replicates = 2, .shard = Shard{2, 3}}, other),
                    begin + "it is of another model");
    expect_refused (replace_second ({.replicates = 2}, model),
                    quoted_path ((folder / "x").string ()) + " is no shard, or damaged");
    expect_refused ({shards[0], model, shards[2]},
                    quoted_path (model) + " is no shard, or damaged");
    const std::string none = (folder / "none").string ();
    expect_refused ({shards[0], none, shards[2]},
                    "Cannot open " + quoted_path (none) + ": No such file or directory");
}

TEST_F (merging, a_shard_with_any_changed_or_missing_byte_is_refused) {
    const std::string whole = testing::file_text (shards[1]);
    const auto refused = [&] (const std::string& bytes) {
        std::ofstream (shards[1], std::ios::binary | std::ios::trunc) << bytes;
        const std::string outcome = merged (folder, shards);
        return outcome.starts_with ("(failed: ") &&
               testing::file_text (folder / "merged.gz") == "old";
    };
    for (std::size_t size = 0; size < whole.size (); size += 1 + size / 40) {
        ASSERT_TRUE (refused (whole.substr (0, size))) << size;
    }
    ASSERT_TRUE (refused (whole.substr (0, whole.size () - 1)));
    std::mt19937 random (1);
    for (int i = 0; i < 200; ++i) {
        std::string changed = whole;
        const std::size_t at = random () % whole.size ();
        changed[at] = static_cast<char> (changed[at] ^ 1 << random () % 8);
        ASSERT_TRUE (refused (changed)) << at;
    }
    ASSERT_TRUE (refused (whole + "x"));
    ASSERT_TRUE (refused (whole + whole.substr (whole.size () - 50)));
}

TEST_F (merging, the_shards_stay_and_may_not_be_the_output) {
    const std::string first = testing::file_text (shards[0]);
    const Outcome outcome = ShardMerge (shards[0], shards).run ();
    EXPECT_EQ (outcome.reason, quoted_path (shards[0]) + " is one of the shards");
    EXPECT_EQ (testing::file_text (shards[0]), first);
    EXPECT_THAT (merged (folder, shards), ::testing::Not (HasSubstr ("failed")));
    EXPECT_EQ (testing::file_text (shards[0]), first);
}

TEST_F (merging, an_output_that_takes_nothing_is_told) {
    EXPECT_EQ (ShardMerge ("/dev/full", shards).run ().reason,
               "Cannot write '/dev/full': No space left on device");
}

} // namespace
} // namespace ostrand::sweep
