// A whole run: driver and result file.
#include "sim/run.h"
#include "sim/run_progress.h"
#include "sim/sim_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ostrand::sim {
namespace {

using ::testing::HasSubstr;
using testing::TemporaryFolder;

constexpr const char* sweep = "duration = 2; [a] = 1 uM, 2 uM; [h] = 3 uM, 4 uM, 5 uM;\n"
                              "a -> b | 0 ; display (b, a #102030);\n";

/// The result of a text, run as the first of a process.
std::string result_of (std::string_view text) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", text);
    const std::string out = (folder / "r.gz").string ();
    SimulatorState state;
    EXPECT_TRUE (
        SimulationRun ({.model = model, .out = out, .sequential = true}, state).run ().done ());
    return testing::unzipped_file (out);
}

TEST (result, stands_line_by_line) {
    const std::string block = "602\n602\n0\n0\n";
    const std::string second = "1204\n1204\n0\n0\n";
    EXPECT_EQ (result_of (sweep),
               "6 2 2\na\n10203000\nb\ne50b0b00\n2\na\n2\n602\n1204\nh\n3\n1806\n"
               "2409\n3011\n" +
                   block + block + block + second + second + second);
}

TEST (result, a_species_that_is_not_displayed_takes_no_place_but_its_concentrations_are_listed) {
    EXPECT_THAT (result_of (sweep), HasSubstr ("h\n3\n1806\n"));
    EXPECT_EQ (result_of ("duration = 1; [h] = 3 uM, 4 uM;"), "2 0 1\n1\nh\n2\n1806\n2409\n");
}

TEST (result, a_series_of_only_equal_values_is_listed) {
    EXPECT_EQ (result_of ("duration = 1; [h] = 3 uM, 3 uM;"), "2 0 1\n1\nh\n2\n1806\n1806\n");
}

TEST (result, no_display_statement_gives_a_valid_file_without_data) {
    EXPECT_EQ (result_of ("duration = 3; a -> b | 1;"), "1 0 3\n0\n");
}

TEST (result, no_duration_gives_no_points) {
    EXPECT_EQ (result_of ("display (a #000000);"), "1 1 0\na\n0\n0\n");
}

TEST (run, the_result_takes_the_place_of_an_old_file_and_keeps_its_permissions) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", "duration = 1;");
    const std::string out = folder.write ("r.gz", "old");
    chmod (out.c_str (), 0640);
    ASSERT_TRUE (run_model (model.c_str (), out.c_str (), true, false, false, true));
    EXPECT_EQ (testing::unzipped_file (out), "1 0 1\n0\n");
    struct stat status {};
    stat (out.c_str (), &status);
    EXPECT_EQ (status.st_mode & 07777, 0640U);
    EXPECT_THAT (folder.names (), ::testing::ElementsAre ("m.ssa", "r.gz"));
}

TEST (run, a_model_that_cannot_be_opened_fails_without_a_message) {
    const testing::CaughtMessages messages;
    EXPECT_FALSE (run_model ("/nowhere/model", "/tmp/never.gz", true, false, false, true));
    EXPECT_TRUE (messages.all.empty ());
}

TEST (run, a_result_that_cannot_be_created_is_silent_and_counts_as_success) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", "duration = 1;");
    const testing::CaughtMessages messages;
    EXPECT_TRUE (run_model (model.c_str (), "/nowhere/r.gz", true, false, false, true));
    EXPECT_TRUE (run_model (model.c_str (), folder.path ().c_str (), true, false, false, true));
    EXPECT_TRUE (messages.all.empty ());
    EXPECT_THAT (folder.names (), ::testing::ElementsAre ("m.ssa"));
}

TEST (run, a_result_that_cannot_be_written_to_its_end_is_a_failure) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", "duration = 1;");
    const testing::CaughtMessages messages;
    EXPECT_FALSE (run_model (model.c_str (), "/dev/full", true, false, false, true));
    EXPECT_EQ (messages.joined (), "Cannot write '/dev/full': No space left on device\n");
}

TEST (run, the_complex_counter_runs_on_and_each_run_has_its_own_tables) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", "e : s -> p | 1 mM - 1;");
    const std::string bad = folder.write ("bad.ssa", "e : s -> p | 1 mM - 1; x");
    const std::string out = (folder / "r.gz").string ();
    SimulatorState state;
    const auto dump = [&] {
        ::testing::internal::CaptureStderr ();
        EXPECT_TRUE (
            SimulationRun ({.model = model, .out = out, .verbose = true}, state).run ().done ());
        return ::testing::internal::GetCapturedStderr ();
    };
    EXPECT_THAT (dump (), HasSubstr ("init (Fcplx_1) = 0\n\ne + s -> Fcplx_1"));
    EXPECT_THAT (dump (), HasSubstr ("init (Fcplx_2) = 0\n\ne + s -> Fcplx_2"));
    // A fault leaves a later run whole, and what was read before it counts.
    EXPECT_TRUE (SimulationRun ({.model = bad, .out = out}, state).run ().failed ());
    EXPECT_THAT (dump (), HasSubstr ("#simulations = 1, #species = 4, #reactions = 3\n"));
    EXPECT_EQ (state.complex_counter, 4);
}

TEST (run, the_dump_lists_counts_and_steps) {
    const ReadModel model ("[a] = 1 uM, 2 uM; a -> b | 0.5 ; a + b -> c + d | 1e-7 ;"
                           "e : s -> p + q + r | 1 mM - 10;");
    EXPECT_EQ (dump_tables (model.tables),
               "init (a) = 602, 1204\ninit (b) = 0\ninit (c) = 0\ninit (d) = 0\ninit (e) = 0\n"
               "init (s) = 0\ninit (p) = 0\ninit (q) = 0\ninit (r) = 0\ninit (Fcplx_3) = 0\n\n"
               "a -> b [0.5];\na + b -> c + d [1e-07];\ne + s -> Fcplx_3 [0.00245535];\n"
               "Fcplx_3 -> e + s [0.0001];\nFcplx_3 -> e + p + q + r [0.001];\n\n");
}

TEST (run, report_tells_of_the_run_without_the_dump) {
    const TemporaryFolder folder;
    const std::string model = folder.write ("m.ssa", sweep);
    ::testing::internal::CaptureStderr ();
    ASSERT_TRUE (run_model (model.c_str (), (folder / "r.gz").c_str (), true, true, false, true));
    EXPECT_THAT (::testing::internal::GetCapturedStderr (),
                 ::testing::MatchesRegex ("#simulations = 6, #species = 3, #reactions = 1\n\n"
                                          "Simulated time: 2 s, Simulation time: [-0-9.e]+ s\n"));
}

TEST (run, the_progress_line_tells_percent_speed_and_time_left) {
    EXPECT_EQ (progress_text (0, 100, 0.1), "[------------------------]   0 %");
    EXPECT_EQ (progress_text (25, 100, 5),
               "[######------------------]  25 %  5 simulated s/s  15 s left");
}

} // namespace
} // namespace ostrand::sim
