// Searches that are stopped or fail for want of memory.
#include "base/background_work.h"
#include "formula/made_up.h"
#include "formula/parse.h"
#include "formula/tectrix.h"
#include "formula/variants.h"
#include "support/failing_memory.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace ostrand::formula {
namespace {

/// YES gates from each of many species to each other one: more paths than anybody walks.
std::string yes_clique (int species) {
    std::string text;
    for (int from = 0; from < species; ++from) {
        for (int to = 0; to < species; ++to) {
            if (from == to) continue;
            const std::string a = "s" + std::to_string (from);
            const std::string b = "s" + std::to_string (to);
            text += "E/S;1;" + a + ";1;" + b +
                    ";YES;ENZ;1;e;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;" + a + b + ";0;;SUBS;1;" +
                    a + ";;PROD;1;" + b + ";;ENZY;1;" + a + b + "e;INHI;0;REACEND;\n";
        }
    }
    return text;
}

/// Gates for every operator, so that all variants of a formula of eight names are grown.
std::string any_gate () {
    std::string text;
    for (const char* type : {"AND", "OR", "ANDNOT", "ORNOT"}) {
        text += std::string ("E/S;8;a;b;c;d;e;f;g;h;1;out;") + type +
                ";ENZ;1;e1;ELNEC;0;ELABS;0;REACTIONS;0;\n";
    }
    return text;
}

std::unique_ptr<Library> library_of (const std::string& text) {
    auto library = std::make_unique<Lib_v1> ();
    library->read (text);
    return library;
}

constexpr const char* wide_formula = "!a+b+!c+d+!e+f+!g";

TEST (formula_stop, ends_the_walk) {
    FormulaSearch search (library_of (yes_clique (16)),
                          {.base = {}, .formula = "s0", .output = "s15"});
    std::stop_source stop;
    std::thread stopper ([&] {
        while (search.progress ().results () == 0) std::this_thread::yield ();
        stop.request_stop ();
    });
    EXPECT_TRUE (search.run (stop.get_token ()).stopped ());
    stopper.join ();
}

TEST (formula_stop, at_any_moment_of_growing_gives_no_variants) {
    const OperatorPtr root = FormCreator ().parse (wide_formula);
    int abandoned = 0;
    for (int i = 0; i < 12; ++i) {
        std::stop_source stop;
        std::thread stopper ([&stop, i] {
            std::this_thread::sleep_for (std::chrono::milliseconds (2 * i));
            stop.request_stop ();
        });
        VariantGrowth growth ({.stop = stop.get_token ()});
        growth.grow (root);
        stopper.join ();
        if (growth.growth () != Growth::abandoned) {
            EXPECT_GT (growth.trees ().size (), 1000U);
        }
        abandoned += growth.growth () == Growth::abandoned ? 1 : 0;
    }
    EXPECT_GT (abandoned, 0);
}

TEST (formula_stop, ends_loading_and_indexing) {
    const testing::TemporaryFolder folder;
    std::string text;
    for (int i = 0; i < 3000; ++i) text += any_gate ();
    folder.write ("big_gates.csv", text);
    std::stop_source stop;
    stop.request_stop ();
    FormulaSearch search ({.base = (folder / "big").string (), .formula = "a+b", .output = "out"});
    EXPECT_TRUE (search.run (stop.get_token ()).stopped ());
    EXPECT_TRUE (search.result ().implementations.empty ());
}

TEST (formula_search, in_the_background_is_watched_and_gives_its_result) {
    auto search = std::make_shared<FormulaSearch> (
        library_of (yes_clique (6)), SearchRequest{.base = {}, .formula = "s0", .output = "s5"});
    BackgroundWork background (search);
    EXPECT_TRUE (background.wait ().done ());
    EXPECT_EQ (background.progress ().progress_fraction (), 1.0F);
    SearchResult result = std::move (search->result ());
    EXPECT_EQ (background.progress ().results (), result.implementations.size ());
    EXPECT_EQ (result.implementations.size (), 65U); // the ways that see no species twice
    EXPECT_NE (implementation_text (result, 0), "");
}

TEST (formula_search, in_the_background_has_room_for_the_longest_circuits) {
    std::string text;
    for (int i = 0; i < 4000; ++i) {
        const std::string from = i == 0 ? "a" : "s" + std::to_string (i - 1);
        text += "E/S;1;" + from + ";1;s" + std::to_string (i) +
                ";YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;\n";
    }
    auto search = std::make_shared<FormulaSearch> (
        library_of (text), SearchRequest{.base = {}, .formula = "a", .output = "s3999"});
    EXPECT_TRUE (BackgroundWork (search).wait ().done ());
    EXPECT_EQ (search->result ().implementations.size (), 1U);
}

TEST (formula_search, two_go_on_at_once) {
    auto endless = std::make_shared<FormulaSearch> (
        library_of (yes_clique (16)), SearchRequest{.base = {}, .formula = "s0", .output = "s15"});
    BackgroundWork first (endless);
    auto quick = std::make_shared<FormulaSearch> (
        library_of (yes_clique (4)), SearchRequest{.base = {}, .formula = "s0", .output = "s3"});
    EXPECT_TRUE (BackgroundWork (quick).wait ().done ());
    first.stop ();
    EXPECT_TRUE (first.wait ().stopped ());
}

TEST (formula_search, what_cannot_be_read_is_a_failure_with_its_reason) {
    const testing::TemporaryFolder folder;
    const std::string base = (folder / "none").string ();
    ::testing::internal::CaptureStdout ();
    FormulaSearch none ({.base = base, .formula = "a", .output = "b"});
    EXPECT_EQ (none.run ().reason, "cannot read '" + base + "_gates.csv'");
    EXPECT_EQ (::testing::internal::GetCapturedStdout (),
               "CSVReader: Impossible d'ouvrir le fichier en lecture.\n");
    const testing::CaughtMessages messages;
    FormulaSearch deep (library_of (""),
                        {.base = {}, .formula = std::string (1000, '!') + "a", .output = "b"});
    EXPECT_EQ (deep.run ().reason, "The formula is nested deeper than 1000 operators.");
    EXPECT_TRUE (messages.all.empty ()); // told by whoever asked
}

TEST (formula_search, a_gate_file_without_end_is_a_failure) {
    const testing::TemporaryFolder folder;
    std::filesystem::create_symlink ("/dev/zero", folder / "zero_gates.csv");
    setenv ("OSTRAND_INPUT_BOUND", "70000", 1);
    const std::string base = (folder / "zero").string ();
    FormulaSearch search ({.base = base, .formula = "a", .output = "b"});
    EXPECT_EQ (search.run ().reason,
               "'" + base + "_gates.csv' has more than 70000 bytes, the most that is read");
    unsetenv ("OSTRAND_INPUT_BOUND");
}

TEST (formula_memory, wherever_it_ends_the_search_fails_with_a_reason) {
    const testing::TemporaryFolder folder;
    folder.write ("made_gates.csv", made_up::gate_file (5, {.species = 8,
                                                            .reactions = 30,
                                                            .gates = 60,
                                                            .yes_percent = 20,
                                                            .absent_percent = 10,
                                                            .inhibitor_percent = 20,
                                                            .loose_inputs = false,
                                                            .three_inputs = true}));
    const SearchRequest request{
        .base = (folder / "made").string (), .formula = "(m1 + m2) . !m3", .output = "m4"};
    int failures = 0;
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        FormulaSearch search (request);
        Outcome outcome;
        {
            const testing::FailingMemory memory (served);
            outcome = search.run ();
            failed = memory.failed ();
        }
        ASSERT_FALSE (outcome.stopped ());
        ASSERT_EQ (outcome.reason, outcome.failed () ? "out of memory" : "") << served;
        failures += outcome.failed () ? 1 : 0;
    }
    EXPECT_GT (failures, 100);
}

} // namespace
} // namespace ostrand::formula
