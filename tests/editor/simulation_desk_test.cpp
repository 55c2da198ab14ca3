// Runs beside the editor: their files, their viewers, and what goes wrong with them.
#include "bench.h"

#include "editor/simulation_desk.h"

#include "base/file_lock.h"
#include "base/process.h"
#include "support/full_disk.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ostrand::editor {
namespace {

using test::Bench;
using testing::CaughtMessages;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::TemporaryFolder;
using testing::wait_until;
namespace fs = std::filesystem;

constexpr const char* short_model = "duration = 2; [a] = 1 uM; a -> b | 0; display (b);\n";
constexpr const char* endless_model = "duration = 400000; [a] = 1 mM, 2 mM, 3 mM; display (a); "
                                      "a -> b | 0.0000001 ; b -> a | 0.0000003 ;";

/// A stand-in for the viewer: it waits while there is a file "open" and then removes its result.
std::string write_viewer (const TemporaryFolder& folder) {
    const std::string viewer =
        folder.write ("viewer", "#!/bin/sh\nhere=$(dirname \"$0\")\necho $$ >>\"$here/viewers\"\n"
                                "while [ -e \"$here/open\" ]; do sleep 0.01; done\nrm -f \"$2\"\n");
    chmod (viewer.c_str (), 0755);
    return viewer;
}

struct simulation_desk : ::testing::Test {
    void TearDown () override {
        close_viewers ();
        for (const std::string& line : viewers ())
            wait_until ([&] { return kill (std::stoi (line), 0) != 0; });
    }
    void close_viewers () const { fs::remove (folder / "open"); }
    /// Process ids of the viewers that were started.
    std::vector<std::string> viewers () const {
        std::istringstream lines (fs::exists (folder / "viewers")
                                      ? testing::file_text (folder / "viewers")
                                      : std::string ());
        std::vector<std::string> all;
        for (std::string line; std::getline (lines, line);) all.push_back (line);
        return all;
    }
    SimulationDesk desk () const { return {runs.path ().string (), viewer}; }
    bool starts (SimulationDesk& desk, const char* model = short_model) {
        return desk.start (model, true, false, error);
    }
    /// Runs it to its end, and waits until its viewer is there.
    bool shows (SimulationDesk& desk) {
        const std::size_t before = viewers ().size ();
        return starts (desk) && wait_until ([&] { return desk.poll (); }) &&
               wait_until ([&] { return viewers ().size () > before; });
    }

    TemporaryFolder folder;
    TemporaryFolder runs; // where the files of runs lie
    std::string viewer = write_viewer (folder);
    CaughtMessages messages;
    std::string error;
};

TEST_F (simulation_desk, files_of_later_runs_have_numbers) {
    EXPECT_EQ (run_files ("f", 1).model, "f/_tmp_.ssa");
    EXPECT_EQ (run_files ("f", 1).result, "f/_data_.gz");
    EXPECT_EQ (run_files ("f", 2).model, "f/_tmp_2.ssa");
    EXPECT_EQ (run_files ("f", 12).result, "f/_data_12.gz");
}

TEST_F (simulation_desk, one_run_at_a_time) {
    SimulationDesk one = desk ();
    EXPECT_FALSE (one.progress ());
    ASSERT_TRUE (starts (one, endless_model));
    EXPECT_TRUE (one.progress ());
    EXPECT_FALSE (starts (one));
    EXPECT_EQ (error, "a simulation goes on");
    one.stop ();
    EXPECT_TRUE (wait_until ([&] { return one.poll (); }));
    EXPECT_THAT (messages.all, ElementsAre ("The simulation was stopped."));
    EXPECT_THAT (runs.names (), IsEmpty ());
    EXPECT_TRUE (viewers ().empty ());
    EXPECT_TRUE (starts (one));
    EXPECT_TRUE (wait_until ([&] { return one.poll (); }));
}

TEST_F (simulation_desk, a_run_is_over_when_its_desk_is_closed) {
    SimulationDesk one = desk ();
    ASSERT_TRUE (starts (one, endless_model));
    one.end ();
    EXPECT_FALSE (one.running ());
    EXPECT_THAT (runs.names (), IsEmpty ());
    EXPECT_TRUE (shows (one));
}

TEST_F (simulation_desk, several_viewers_are_open_each_on_a_result_of_its_own) {
    folder.write ("open", "");
    SimulationDesk one = desk ();
    ASSERT_TRUE (shows (one));
    ASSERT_TRUE (shows (one));
    EXPECT_THAT (runs.names (), ElementsAre ("_data_.gz", "_data_2.gz"));
    close_viewers ();
    EXPECT_TRUE (wait_until ([&] { return runs.names ().empty (); }));
    // What a viewer let go is used again.
    ASSERT_TRUE (starts (one, endless_model));
    EXPECT_THAT (runs.names (), ElementsAre ("_tmp_.ssa"));
}

TEST_F (simulation_desk, two_editors_in_one_folder_never_share_files) {
    folder.write ("open", "");
    SimulationDesk one = desk ();
    SimulationDesk other = desk ();
    ASSERT_TRUE (starts (one, endless_model));
    ASSERT_TRUE (starts (other, endless_model));
    EXPECT_THAT (runs.names (), ElementsAre ("_tmp_.ssa", "_tmp_2.ssa"));
    one.stop ();
    ASSERT_TRUE (wait_until ([&] { return one.poll (); }));
    ASSERT_TRUE (shows (one));
    EXPECT_THAT (runs.names (), ElementsAre ("_data_.gz", "_tmp_2.ssa"));
    other.stop ();
    ASSERT_TRUE (wait_until ([&] { return other.poll (); }));
    // The first one's viewer keeps its result, so the other one counts on.
    ASSERT_TRUE (shows (other));
    EXPECT_THAT (runs.names (), ElementsAre ("_data_.gz", "_data_2.gz"));
}

TEST_F (simulation_desk, a_viewer_that_outlives_its_editor_keeps_its_result) {
    folder.write ("open", "");
    {
        SimulationDesk gone = desk ();
        ASSERT_TRUE (shows (gone));
    }
    const std::string shown = testing::file_text (runs / "_data_.gz");
    SimulationDesk next = desk ();
    ASSERT_TRUE (shows (next));
    EXPECT_THAT (runs.names (), ElementsAre ("_data_.gz", "_data_2.gz"));
    EXPECT_EQ (testing::file_text (runs / "_data_.gz"), shown);
}

TEST_F (simulation_desk, a_killed_viewer_leaves_its_result_to_the_next_run) {
    folder.write ("open", "");
    SimulationDesk one = desk ();
    ASSERT_TRUE (shows (one));
    kill (std::stoi (viewers ().front ()), SIGKILL);
    ASSERT_TRUE (wait_until ([&] { return !is_locked (runs / "_data_.gz"); }));
    ASSERT_TRUE (shows (one));
    EXPECT_THAT (runs.names (), ElementsAre ("_data_.gz"));
    EXPECT_THAT (messages.all, IsEmpty ());
}

TEST_F (simulation_desk, a_model_that_is_refused_says_why_and_leaves_nothing) {
    SimulationDesk one = desk ();
    ASSERT_TRUE (starts (one, "a -> ; nonsense ("));
    ASSERT_TRUE (wait_until ([&] { return one.poll (); }));
    EXPECT_FALSE (messages.all.empty ());
    EXPECT_THAT (runs.names (), IsEmpty ());
    EXPECT_TRUE (viewers ().empty ());
    EXPECT_TRUE (shows (one));
}

TEST_F (simulation_desk, a_viewer_that_cannot_be_started_is_told_and_the_result_is_kept) {
    SimulationDesk one (runs.path ().string (), "/nowhere/ostrand");
    ASSERT_TRUE (starts (one));
    ASSERT_TRUE (wait_until ([&] { return one.poll (); }));
    EXPECT_THAT (messages.all,
                 ElementsAre ("Cannot start '/nowhere/ostrand': No such file or directory"));
    EXPECT_THAT (runs.names (), ElementsAre ("_data_.gz"));
}

TEST_F (simulation_desk, a_folder_that_is_not_there_is_told) {
    SimulationDesk none ((runs / "none").string (), viewer);
    EXPECT_FALSE (starts (none));
    EXPECT_EQ (error, "No such file or directory");
    EXPECT_FALSE (none.running ());
    fs::create_directory (runs / "_tmp_.ssa");
    SimulationDesk barred = desk ();
    EXPECT_FALSE (starts (barred));
    EXPECT_EQ (error, "'" + (runs / "_tmp_.ssa").string () + "' is no file");
}

TEST_F (simulation_desk, a_full_disk_is_told_and_leaves_nothing) {
    SimulationDesk one = desk ();
    {
        const testing::FileSizeLimit full (0);
        EXPECT_FALSE (starts (one));
        EXPECT_EQ (error, "File too large");
        EXPECT_THAT (runs.names (), IsEmpty ());
    }
    {
        // The model finds room, the result does not.
        const char* const model = "duration = 900; [a] = 1 mM; a -> b | 0.001; display (a, b);\n";
        const testing::FileSizeLimit full (std::string_view (model).size ());
        ASSERT_TRUE (starts (one, model));
        ASSERT_TRUE (wait_until ([&] { return one.poll (); }));
    }
    EXPECT_THAT (messages.all, ElementsAre ("Cannot write '" + (runs / "_data_.gz").string () +
                                            "': File too large"));
    EXPECT_THAT (runs.names (), IsEmpty ());
    EXPECT_TRUE (shows (one));
}

// The whole way, from the drawing to the status line.

TEST (simulation_command, tells_what_kept_it_from_starting_and_goes_on_when_it_can) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 50 60 0 3 13{glc}-]\n]");
    fs::create_directory (fs::path (b.home ()) / "_tmp_.ssa");
    b.bench->start_simulation ();
    EXPECT_EQ (b.world.status,
               "The simulation cannot be started: '" + b.home () + "/_tmp_.ssa' is no file");
    EXPECT_FALSE (b.bench->simulation_progress ());
    EXPECT_TRUE (b.bench->entry (Command::start_simulation).active);
    fs::remove (fs::path (b.home ()) / "_tmp_.ssa");
    const std::string before = b.text ();
    b.bench->start_simulation ();
    EXPECT_TRUE (b.bench->simulation_progress ());
    EXPECT_FALSE (b.bench->entry (Command::start_simulation).active);
    EXPECT_TRUE (b.bench->entry (Command::stop_simulation).active);
    // A second wish while it goes on is none.
    b.bench->start_simulation ();
    EXPECT_TRUE (wait_until ([&] {
        b.world.pass (0.01);
        return !b.bench->simulation_progress ();
    }));
    EXPECT_TRUE (b.bench->entry (Command::start_simulation).active);
    EXPECT_EQ (b.world.status, "Cannot start '/nonexistent': No such file or directory");
    EXPECT_EQ (b.text (), before);
}

} // namespace
} // namespace ostrand::editor
