// Searches and extractions that are stopped, fail for want of memory, or cannot write.
#include "base/background_work.h"
#include "gates/builders.h"
#include "gates/front_end.h"
#include "support/failing_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace ostrand::gates {
namespace {

using namespace testing_builders;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::TemporaryFolder;

/// One enzyme with so many substrates that the games of one output outlast any patience.
std::vector<Reaction> wide_network () {
    std::vector<std::string> substrates;
    for (int i = 0; i < 45; ++i) substrates.push_back ("S" + std::to_string (i));
    return {reaction ("r", substrates, {"P"}, {"E"})};
}

/// Sixty reactions that all touch each other: more circuits than anybody tries.
std::vector<Reaction> dense_network () {
    std::vector<Reaction> reactions;
    for (int i = 0; i < 60; ++i) {
        reactions.push_back (reaction ("r" + std::to_string (i), {"A", "M" + std::to_string (i)},
                                       {"B", "M" + std::to_string (i + 1)}, {}));
    }
    return reactions;
}

std::vector<Reaction> small_network () {
    return {reaction ("r1", {"A"}, {"B"}, {"E"}, {"I"}),
            reaction ("r2", {"B", "X"}, {"C"}, {"F"}, {}, true)};
}

/// Asks for a stop after some milliseconds.
class StopSoon {
  public:
    explicit StopSoon (int milliseconds)
        : thread_ ([this, milliseconds] {
              std::this_thread::sleep_for (std::chrono::milliseconds (milliseconds));
              stop_.request_stop ();
          }) {}
    ~StopSoon () { thread_.join (); }
    StopSoon (const StopSoon&) = delete;
    StopSoon& operator= (const StopSoon&) = delete;
    std::stop_token token () const { return stop_.get_token (); }

  private:
    std::stop_source stop_;
    std::thread thread_;
};

TEST (search_stop, ends_the_games_of_one_circuit_and_the_walk_over_many) {
    // Of the last one every game is played singly.
    const char* const odd = "GATE;ODD;2;1;\n#;0;0;0;\n#;0;2;0;\n#;2;0;0;\n#;1;1;1;\n";
    for (const auto& network : {wide_network (), dense_network ()}) {
        const EquationGraph graph = graph_of (network);
        for (const std::string_view text : {builtin_catalogue_text (), std::string_view (odd)}) {
            const Catalogue catalogue = load_catalogue (text, 1, 1);
            for (const int threads : {1, 3}) {
                const StopSoon stop (20);
                const SearchOutcome outcome = search_gates (
                    graph, {&catalogue}, {.limit = 7, .threads = threads, .stop = stop.token ()});
                EXPECT_TRUE (outcome.stopped);
            }
        }
    }
}

TEST (search_stop, ends_the_estimate_of_the_work_too) {
    const EquationGraph graph = graph_of (dense_network ());
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
    std::stop_source stop;
    stop.request_stop ();
    SearchProgress progress;
    EXPECT_TRUE (search_gates (graph, {&catalogue},
                               {.limit = 60, .progress = &progress, .stop = stop.get_token ()})
                     .stopped);
}

TEST (search_stop, that_comes_at_any_moment_gives_all_gates_or_none) {
    const EquationGraph graph = graph_of (small_network ());
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
    const auto whole = search_gates (graph, {&catalogue}, {}).jobs[0].gates.size ();
    int stopped = 0;
    for (int i = 0; i < 60; ++i) {
        std::stop_source stop;
        std::thread stopper ([&stop, i] {
            std::this_thread::sleep_for (std::chrono::microseconds (10 * i));
            stop.request_stop ();
        });
        const SearchOutcome outcome =
            search_gates (graph, {&catalogue}, {.threads = 2, .stop = stop.get_token ()});
        stopper.join ();
        if (!outcome.stopped) {
            EXPECT_EQ (outcome.jobs[0].gates.size (), whole);
        }
        stopped += outcome.stopped ? 1 : 0;
    }
    EXPECT_GT (stopped, 0);
}

/// An extraction in a folder of its own.
struct extraction : ::testing::Test {
    ExtractionRequest request (const std::vector<Reaction>& reactions) {
        return {.input_path = folder.write ("m.xml", model_text (reactions)),
                .model_file = {},
                .output_base = (folder / "m").string (),
                .kinetics_path = folder.write ("k.csv", ""),
                .threads = 2};
    }
    TemporaryFolder folder;
};

TEST_F (extraction, that_is_stopped_leaves_the_gate_file_of_before) {
    for (const bool trace : {false, true}) {
        ExtractionRequest asked = request (wide_network ());
        asked.trace = trace;
        asked.verbose = true;
        folder.write ("m_gates.csv", "old");
        const StopSoon stop (20);
        GateExtractor extractor (asked);
        EXPECT_TRUE (extractor.run (stop.token ()).stopped ());
        EXPECT_EQ (testing::file_text (folder / "m_gates.csv"), "old");
        EXPECT_THAT (folder.names (), ElementsAre ("k.csv", "m.xml", "m_gates.csv"));
    }
}

TEST_F (extraction, in_the_background_is_watched_and_stopped) {
    const auto work = std::make_shared<GateExtractor> (request (dense_network ()));
    work->request.depth = 7;
    BackgroundWork background (work);
    while (work->progress ().circuits < 100) std::this_thread::yield ();
    EXPECT_LT (background.progress ().progress_fraction (), 1.0F);
    background.stop ();
    EXPECT_TRUE (background.wait ().stopped ());
    EXPECT_THAT (folder.names (), ElementsAre ("k.csv", "m.xml"));
}

TEST_F (extraction, of_the_front_end_takes_its_table_away_and_tells_that_it_is_done) {
    const std::filesystem::path before = std::filesystem::current_path ();
    std::filesystem::current_path (folder.path ());
    const std::string small = folder.write ("s.xml", model_text (small_network ()));
    GateFrontEnd front_end (small);
    {
        const auto work = std::make_shared<FrontEndExtraction> (front_end, 3);
        BackgroundWork background (work);
        EXPECT_TRUE (background.wait ().done ());
        EXPECT_EQ (background.progress ().progress_fraction (), 1.0F);
    }
    EXPECT_TRUE (front_end.extracted);
    GateFrontEnd endless (folder.write ("d.xml", model_text (dense_network ())));
    const StopSoon stop (20);
    EXPECT_TRUE (FrontEndExtraction (endless, 7).run (stop.token ()).stopped ());
    EXPECT_FALSE (endless.extracted);
    std::filesystem::current_path (before);
    EXPECT_THAT (folder.names (), ElementsAre ("d.xml", "s.xml", "s_gates.csv"));
}

TEST_F (extraction, without_room_for_the_table_has_gates_and_is_a_failure) {
    const std::filesystem::path before = std::filesystem::current_path ();
    std::filesystem::create_directory (folder / "work");
    std::filesystem::create_directory (folder / "work/tmp_kinetics.csv"); // in its way
    std::filesystem::current_path (folder / "work");
    GateFrontEnd front_end (folder.write ("s.xml", model_text (small_network ())));
    const Outcome outcome = FrontEndExtraction (front_end, 3).run ();
    std::filesystem::current_path (before);
    EXPECT_EQ (outcome.reason,
               "cannot write 'tmp_kinetics.csv': Is a directory; the gates have no kinetics");
    EXPECT_TRUE (front_end.extracted);
    EXPECT_THAT (folder.names (), ElementsAre ("s.xml", "s_gates.csv", "work"));
}

TEST_F (extraction, that_cannot_write_something_says_all_of_it) {
    ExtractionRequest asked = request (small_network ());
    asked.output_base = (folder / "no/m").string ();
    asked.verbose = asked.trace = true;
    asked.partition_count = 1;
    GateExtractor extractor (asked);
    const Outcome outcome = extractor.run ();
    const auto lost = [&] (const std::string& ending) {
        return "cannot write '" + asked.output_base + ending + "': No such file or directory";
    };
    EXPECT_THAT (extractor.lost, ElementsAre (lost ("_N1_N1.txt"), lost (".txt"), lost (".csv"),
                                              lost ("_gates.csv")));
    EXPECT_TRUE (outcome.failed ());
    EXPECT_THAT (outcome.reason, HasSubstr (lost (".txt") + "; " + lost (".csv")));
}

TEST_F (extraction, for_which_memory_ends_anywhere_fails_and_leaves_the_old_file) {
    const ExtractionRequest asked = request (small_network ());
    int failures = 0;
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        folder.write ("m_gates.csv", "old");
        GateExtractor extractor (asked);
        Outcome outcome;
        {
            const testing::FailingMemory memory (served);
            outcome = extractor.run ();
            failed = memory.failed ();
        }
        ASSERT_FALSE (outcome.stopped ());
        ASSERT_EQ (testing::file_text (folder / "m_gates.csv") == "old", outcome.failed ());
        ASSERT_EQ (outcome.reason, outcome.failed () ? "out of memory" : "") << served;
        failures += outcome.failed () ? 1 : 0;
    }
    EXPECT_GT (failures, 100);
    EXPECT_THAT (folder.names (), ElementsAre ("k.csv", "m.xml", "m_gates.csv"));
}

TEST_F (extraction, by_the_front_end_for_which_memory_ends_anywhere_leaves_no_table) {
    const std::filesystem::path before = std::filesystem::current_path ();
    std::filesystem::current_path (folder.path ());
    const std::string path = folder.write ("m.xml", model_text (small_network ()));
    GateFrontEnd front_end (path);
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        front_end.extracted = false;
        FrontEndExtraction work (front_end, 3);
        Outcome outcome;
        {
            const testing::FailingMemory memory (served);
            outcome = work.run ();
            failed = memory.failed ();
        }
        ASSERT_EQ (front_end.extracted, outcome.done ()) << served << outcome.reason;
        ASSERT_FALSE (std::filesystem::exists (folder / "tmp_kinetics.csv")) << served;
    }
    std::filesystem::current_path (before);
    EXPECT_THAT (folder.names (), ElementsAre ("m.xml", "m_gates.csv"));
}

TEST_F (extraction, in_which_a_helper_thread_runs_out_of_memory_fails_on_all) {
    // Far more circuits than can be stored without an allocation on each of the threads.
    const EquationGraph graph = graph_of (dense_network ());
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
    for (const std::uint64_t served : {500U, 5000U, 20000U}) {
        const testing::FailingMemory memory (served);
        EXPECT_THROW (search_gates (graph, {&catalogue}, {.limit = 7, .threads = 4}),
                      std::bad_alloc);
    }
}

TEST_F (extraction, whose_model_catalogue_or_table_has_no_end_fails_with_a_message) {
    setenv ("OSTRAND_INPUT_BOUND", "100000", 1);
    const std::string message = "'/dev/zero' has more than 100000 bytes, the most that is read";
    ExtractionRequest asked = request (small_network ());
    asked.input_path = "/dev/zero";
    EXPECT_EQ (GateExtractor (asked).run ().reason, message);
    asked = request (small_network ());
    asked.gate_file = "/dev/zero";
    EXPECT_EQ (GateExtractor (asked).run ().reason, message);
    asked = request (small_network ());
    asked.kinetics_path = "/dev/zero";
    EXPECT_EQ (GateExtractor (asked).run ().reason, message);
    EXPECT_EQ (GateFrontEnd ("/dev/zero").model_file.fault, message);
    unsetenv ("OSTRAND_INPUT_BOUND");
    EXPECT_THAT (folder.names (), ElementsAre ("k.csv", "m.xml"));
}

} // namespace
} // namespace ostrand::gates
