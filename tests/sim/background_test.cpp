// Runs in the background, stopped ones, and runs for which memory does not suffice.
#include "sim/background.h"
#include "sim/run.h"
#include "sim/sim_support.h"
#include "support/failing_memory.h"

#include "base/file_lock.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

namespace ostrand::sim {
namespace {

using ::testing::ElementsAre;
using testing::TemporaryFolder;

constexpr const char* short_model =
    "duration = 2; [a] = 1 uM, 2 uM; a -> b | 0 ; display (b, a);\n";
/// Far more work than any test waits for.
constexpr const char* endless_model = "duration = 400000; [a] = 1 mM, 2 mM, 3 mM; display (a); "
                                      "a -> b | 0.0000001 ; b -> a | 0.0000003 ;";

/// A stand-in for the viewer, which notes how it was called, and waits while "wait" exists.
std::string write_viewer (const TemporaryFolder& folder) {
    const std::string viewer =
        folder.write ("viewer", "#!/bin/sh\nhere=$(dirname \"$0\")\necho \"$@\" >\"$here/called\"\n"
                                "while [ -e \"$here/wait\" ]; do sleep 0.01; done\n");
    chmod (viewer.c_str (), 0755);
    return viewer;
}

struct background : ::testing::Test {
    BackgroundRequest request (const char* text, const std::string& number = "") {
        return {.model = folder.write ("_tmp_" + number + ".ssa", text),
                .out = (folder / ("_data_" + number + ".gz")).string (),
                .executable = viewer};
    }
    TemporaryFolder folder;
    std::string viewer = write_viewer (folder);
};

/// What the run calls when its outcome is there.
void note_done (void* argument) { *static_cast<std::atomic<bool>*> (argument) = true; }

TEST_F (background, a_run_deletes_the_model_and_starts_the_viewer) {
    const BackgroundRequest asked = request (short_model);
    std::atomic<bool> done{false};
    const auto run = run_model_async (asked.model.c_str (), asked.out.c_str (), viewer.c_str (),
                                      note_done, &done, true, true);
    EXPECT_TRUE (run->wait ().done ());
    EXPECT_TRUE (done);
    EXPECT_EQ (run->viewer ().wait (), 0);
    EXPECT_EQ (testing::file_text (folder / "called"), "-v " + asked.out + " -d -r\n");
    EXPECT_THAT (folder.names (), ElementsAre ("_data_.gz", "called", "viewer"));
    EXPECT_EQ (run->progress_fraction (), 1.0F);
}

TEST_F (background, the_viewer_is_not_waited_for) {
    folder.write ("wait", "");
    BackgroundRun run (request (short_model));
    EXPECT_TRUE (run.wait ().done ());
    EXPECT_TRUE (run.viewer ().is_running ());
    std::filesystem::remove (folder / "wait");
    EXPECT_EQ (run.viewer ().wait (), 0);
    EXPECT_FALSE (run.viewer ().is_running ());
}

TEST_F (background, the_result_is_locked_until_the_viewer_has_ended) {
    folder.write ("wait", "");
    const BackgroundRequest asked = request (short_model);
    ChildProcess shown;
    {
        BackgroundRun run (asked);
        EXPECT_TRUE (run.wait ().done ());
        shown = run.viewer ();
    }
    EXPECT_TRUE (is_locked (asked.out));
    shown.kill ();
    shown.wait ();
    // What the script of this viewer had started ends a moment later.
    EXPECT_TRUE (testing::wait_until ([&] { return !is_locked (asked.out); }));
}

TEST_F (background, a_bad_model_is_deleted_too_and_no_viewer_starts) {
    const BackgroundRequest asked = request ("nonsense");
    std::atomic<bool> done{false};
    const auto run = run_model_async (asked.model.c_str (), asked.out.c_str (), viewer.c_str (),
                                      note_done, &done, false, false);
    const Outcome outcome = run->wait ();
    EXPECT_TRUE (outcome.failed ());
    EXPECT_EQ (outcome.reason, "'->' or '+' expected, got 'EOF'");
    EXPECT_TRUE (done);
    EXPECT_FALSE (run->viewer ().started ());
    EXPECT_THAT (folder.names (), ElementsAre ("viewer"));
}

TEST_F (background, a_model_that_is_not_there_and_a_viewer_that_is_not_are_failures) {
    BackgroundRequest asked = request (short_model);
    asked.model = (folder / "none").string ();
    EXPECT_EQ (BackgroundRun (asked).wait ().reason, "Cannot open '" + asked.model + "'");
    asked = request (short_model);
    asked.executable = "/nowhere/ostrand";
    EXPECT_EQ (BackgroundRun (asked).wait ().reason,
               "Cannot start '/nowhere/ostrand': No such file or directory");
    EXPECT_TRUE (std::filesystem::exists (asked.out)); // the result is not lost
}

TEST_F (background, a_result_that_cannot_be_created_is_a_failure_of_a_run_that_counts_as_done) {
    BackgroundRequest asked = request (short_model);
    asked.out = "/nowhere/_data_.gz";
    BackgroundRun run (asked);
    EXPECT_EQ (run.wait ().reason, "Cannot write '/nowhere/_data_.gz': No such file or directory");
    EXPECT_EQ (run.viewer ().wait (), 0); // it is started all the same, and says so too
    const std::string model = folder.write ("again.ssa", short_model);
    EXPECT_TRUE (run_model (model.c_str (), asked.out.c_str (), false, false, false, true));
}

TEST_F (background, a_stopped_run_leaves_no_file_and_starts_no_viewer) {
    BackgroundRun run (request (endless_model));
    while (run.progress_fraction () == 0) std::this_thread::yield ();
    EXPECT_FALSE (run.finished ());
    run.stop ();
    EXPECT_TRUE (run.wait ().stopped ());
    EXPECT_FALSE (run.viewer ().started ());
    EXPECT_THAT (folder.names (), ElementsAre ("viewer"));
}

TEST_F (background, a_run_that_is_let_go_is_stopped) {
    {
        const BackgroundRun run (request (endless_model));
        while (run.progress_fraction () == 0) std::this_thread::yield ();
    }
    EXPECT_THAT (folder.names (), ElementsAre ("viewer"));
}

TEST_F (background, a_stop_at_any_moment_leaves_all_or_nothing) {
    for (int i = 0; i < 40; ++i) {
        BackgroundRun run (request (short_model));
        std::this_thread::sleep_for (std::chrono::microseconds (i * 150));
        run.stop ();
        const Outcome outcome = run.wait ();
        EXPECT_FALSE (outcome.failed ()) << outcome.reason;
        EXPECT_EQ (run.viewer ().started (), outcome.done ());
        EXPECT_EQ (std::filesystem::exists (folder / "_data_.gz"), outcome.done ());
        EXPECT_FALSE (std::filesystem::exists (folder / "_tmp_.ssa"));
        if (outcome.done ()) run.viewer ().wait ();
        std::filesystem::remove (folder / "_data_.gz");
    }
}

TEST_F (background, two_runs_go_on_at_once_under_different_names) {
    BackgroundRun endless (request (endless_model));
    BackgroundRun second (request (short_model, "2"));
    EXPECT_TRUE (second.wait ().done ());
    second.viewer ().wait ();
    EXPECT_FALSE (endless.finished ());
    EXPECT_EQ (testing::unzipped_file (folder / "_data_2.gz").substr (0, 6), "2 2 2\n");
    endless.stop ();
    EXPECT_TRUE (endless.wait ().stopped ());
}

/// The result of a text in a process of its own, so to speak.
std::string result_of (const TemporaryFolder& folder, const std::string& name, const char* text,
                       bool with_another) {
    const std::string model = folder.write (name + ".ssa", text);
    const std::string out = (folder / (name + ".gz")).string ();
    SimulatorState state;
    SimulationRun run ({.model = model, .out = out}, state);
    std::thread other;
    SimulatorState others;
    if (with_another) {
        other = std::thread ([&] {
            const std::string beside = folder.write (name + "-beside.ssa", short_model);
            SimulationRun ({.model = beside, .out = beside + ".gz"}, others).run ();
        });
    }
    EXPECT_TRUE (run.run ().done ());
    if (other.joinable ()) other.join ();
    return testing::unzipped_file (out);
}

TEST_F (background, what_goes_on_beside_a_run_changes_none_of_its_counts) {
    const char* const text = "duration = 3; [a] = 1 uM -> 4 uM : 1 uM; a -> b | 0.0003 ;"
                             "e : b -> c | 10 uM - 30; [e] = 1 uM; display (a, b, c);";
    EXPECT_EQ (result_of (folder, "alone", text, false), result_of (folder, "both", text, true));
}

TEST (run_stop, engines_end_within_a_simulated_second) {
    // One recorded point is half a billion applications of steps: minutes for a sanitizer.
    std::string text = "duration = 400000; [a] = 1 mM; ";
    for (int i = 0; i < 2000; ++i) text += "a -> b | 0.00000001 ; ";
    for (const bool stochastic : {true, false}) {
        ModelTables tables;
        ASSERT_TRUE (read_model (text, tables));
        SeedSequence seeds;
        Grid grid;
        ASSERT_TRUE (prepare_run (tables, seeds, std::uint64_t{1} << 30, grid));
        Progress progress;
        std::stop_source stop;
        const LaneModel model{tables.steps, tables.n_species (), stochastic};
        std::thread runner (
            [&] { run_simulations (model, grid, false, &progress, stop.get_token ()); });
        while (progress.amount_done () == 0) std::this_thread::yield ();
        stop.request_stop ();
        runner.join ();
        EXPECT_LT (progress.amount_done (), 1000U);
    }
}

TEST (run_stop, a_stop_that_is_there_from_the_start_does_nothing_at_all) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", short_model);
    const std::string out = folder.write ("r.gz", "old");
    std::stop_source stop;
    stop.request_stop ();
    SimulatorState state;
    EXPECT_TRUE (
        SimulationRun ({.model = model, .out = out}, state).run (stop.get_token ()).stopped ());
    EXPECT_EQ (testing::file_text (out), "old");
    EXPECT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
}

TEST (run_stop, reading_preparing_and_writing_end_with_a_stop_and_report_nothing) {
    std::stop_source stopped;
    stopped.request_stop ();
    const testing::CaughtMessages messages;
    std::string text = "duration = 1;";
    for (int i = 0; i < 1000; ++i) text += " a -> b | 1;";
    ModelTables tables;
    EXPECT_FALSE (read_model (text, tables, stopped.get_token ()));
    EXPECT_FALSE (read_model ("//" + std::string (10'000'000, ' '), tables, stopped.get_token ()));
    EXPECT_FALSE (read_model (std::string (10'000'000, ' '), tables, stopped.get_token ()));
    tables.reset ();
    ASSERT_TRUE (read_model ("duration = 1; [a] = 1 uM, 2 uM; display (a);", tables));
    SeedSequence seeds;
    Grid grid;
    EXPECT_FALSE (prepare_run (tables, seeds, 1 << 20, grid, stopped.get_token ()));
    ASSERT_TRUE (prepare_run (tables, seeds, 1 << 20, grid));
    const TemporaryFolder folder;
    std::string error;
    EXPECT_EQ (
        write_result ((folder / "r").string (), tables, grid, false, error, stopped.get_token ()),
        ResultStatus::stopped);
    EXPECT_TRUE (folder.names ().empty ());
    EXPECT_TRUE (messages.all.empty ());
}

TEST (run_memory, wherever_it_ends_the_run_fails_and_the_old_result_stays) {
    const TemporaryFolder folder;
    const std::string model =
        folder.write ("m.ssa", "duration = 1; [a] = 1 uM -> 3 uM : 1 uM; e : a -> b | 1 uM - 10;"
                               "display (a, b); e : x | 3 uM; linked (a, e);");
    const std::string out = (folder / "r.gz").string ();
    int failures = 0;
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        folder.write ("r.gz", "old");
        SimulatorState state;
        SimulationRun run ({.model = model, .out = out}, state);
        Outcome outcome;
        {
            const testing::FailingMemory memory (served);
            outcome = run.run ();
            failed = memory.failed ();
        }
        ASSERT_FALSE (outcome.stopped ());
        ASSERT_EQ (testing::file_text (out) == "old", outcome.failed ()) << served;
        ASSERT_EQ (outcome.reason.empty (), outcome.done ()) << served;
        failures += outcome.failed () ? 1 : 0;
    }
    EXPECT_GT (failures, 50);
    EXPECT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
}

TEST (run_memory, wherever_it_ends_in_the_background_nothing_is_left) {
    const TemporaryFolder folder;
    const std::string viewer = write_viewer (folder);
    int failures = 0;
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        const BackgroundRequest request{.model = folder.write ("_tmp_.ssa", short_model),
                                        .out = (folder / "_data_.gz").string (),
                                        .executable = viewer};
        std::unique_ptr<BackgroundRun> run;
        {
            const testing::FailingMemory memory (served);
            try {
                run = std::make_unique<BackgroundRun> (request);
                run->wait ();
            } catch (const std::bad_alloc&) {
                // There was no run.
            }
            failed = memory.failed ();
        }
        if (!run) continue;
        const Outcome outcome = run->wait ();
        ASSERT_EQ (outcome.reason.empty (), outcome.done ()) << served;
        ASSERT_FALSE (std::filesystem::exists (folder / "_tmp_.ssa")) << served;
        if (run->viewer ().started ()) run->viewer ().wait ();
        failures += outcome.failed () ? 1 : 0;
    }
    EXPECT_GT (failures, 50);
}

} // namespace
} // namespace ostrand::sim
