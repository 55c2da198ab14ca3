// Gates of a model, formulas over them, and their networks in tabs.
#include "bench.h"

#include "base/background_work.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using test::Bench;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Strings = std::vector<std::string>;
namespace fs = std::filesystem;

constexpr const char* extracting = "Extracting gates, please wait...";
constexpr const char* searching = "Searching implementations, please wait...";

/// An editor beside a copy of the example of glycolysis.
struct formula_command : ::testing::Test {
    formula_command () {
        fs::copy_file (testing::source_path ("examples/glycolysis-upper.xml"), model);
        fs::current_path (b.folder.path ());
    }
    void extract () {
        b.world.file_answers = {{model.string ()}};
        b.run (Command::extract_gates);
    }
    bool asked (const std::string& question) const {
        return std::ranges::any_of (b.world.questions, [&question] (const std::string& q) {
            return q.starts_with (question);
        });
    }
    void enter (const std::string& formula, const std::string& output) {
        b.world.formula_entered (formula, output);
    }
    bool is_active (Command command) const { return b.bench->entry (command).active; }
    std::string gate_text () const { return testing::file_text (gates); }

    Bench b;
    fs::path model = b.folder / "upper.xml";
    fs::path gates = b.folder / "upper_gates.csv";
};

TEST_F (formula_command, extraction_makes_the_gates_and_offers_the_metabolites_by_name) {
    EXPECT_FALSE (is_active (Command::enter_formula));
    extract ();
    ASSERT_EQ (b.world.file_questions.size (), 1U);
    EXPECT_EQ (b.world.file_questions[0].prompt, "Extract Gates: ");
    EXPECT_EQ (b.world.file_questions[0].title, "Extract Gates");
    EXPECT_EQ (b.world.file_questions[0].filter, "*.xml");
    EXPECT_TRUE (asked (extracting));
    EXPECT_TRUE (fs::exists (gates));
    EXPECT_FALSE (fs::exists (b.folder / "tmp_kinetics.csv"));
    EXPECT_THAT (b.world.formula_inputs,
                 ElementsAre ("ATP", "DHAP", "F16BP", "F6P", "G6P", "GAP", "Glucose"));
    EXPECT_THAT (b.world.formula_outputs, ElementsAre ("ADP", "DHAP", "F16BP", "F26BP", "F6P",
                                                       "G6P", "GAP", "Glucose", "Pi"));
    EXPECT_TRUE (is_active (Command::enter_formula));
    EXPECT_FALSE (is_active (Command::next_implementation));
}

TEST_F (formula_command, gates_newer_than_their_model_are_taken_whatever_the_depth) {
    extract ();
    const auto made = fs::last_write_time (gates);
    b.world.questions.clear ();
    b.world.value_answers = {"5"};
    b.run (Command::reactions_per_gate);
    extract ();
    EXPECT_FALSE (asked (extracting));
    EXPECT_EQ (fs::last_write_time (gates), made);
    // A model that was saved since is another one.
    fs::last_write_time (model, made + std::chrono::seconds (1));
    extract ();
    EXPECT_TRUE (asked (extracting));
}

TEST_F (formula_command, reactions_per_gate_lie_between_1_and_7) {
    for (const char* const refused : {"0", "8", "-2", "x", "", "99999999999", "5x", "6.9"}) {
        b.world.value_answers = {refused};
        b.run (Command::reactions_per_gate);
        EXPECT_EQ (b.bench->formulas ().depth, 3) << refused;
    }
    for (const int taken : {1, 7}) {
        b.world.value_answers = {std::to_string (taken)};
        b.run (Command::reactions_per_gate);
        EXPECT_EQ (b.bench->formulas ().depth, taken);
    }
    EXPECT_THAT (b.world.questions.back (), ::testing::StartsWith ("#Reactions/Gate (1 -> 7): |"));
}

TEST_F (formula_command, a_model_that_cannot_be_read_is_told_and_the_gates_of_before_are_gone) {
    extract ();
    b.world.file_answers = {{(b.folder / "none.xml").string ()}};
    b.run (Command::extract_gates);
    EXPECT_THAT (b.world.alerts,
                 ElementsAre ("'" + (b.folder / "none.xml").string () + "': format error"));
    EXPECT_FALSE (is_active (Command::enter_formula));
}

TEST_F (formula_command, nothing_happens_without_a_choice_of_a_model) {
    extract ();
    b.world.file_answers.clear ();
    b.run (Command::extract_gates);
    EXPECT_TRUE (is_active (Command::enter_formula));
}

TEST_F (formula_command, a_cancelled_extraction_leaves_no_gates_or_those_of_before) {
    b.world.at_work = [] (BackgroundWork& work) { work.stop (); };
    extract ();
    EXPECT_EQ (b.world.status, "The extraction was stopped.");
    EXPECT_FALSE (fs::exists (gates));
    EXPECT_FALSE (is_active (Command::enter_formula));
    b.world.at_work = nullptr;
    extract ();
    const std::string before = gate_text ();
    fs::last_write_time (model, fs::last_write_time (gates) + std::chrono::seconds (1));
    b.world.at_work = [] (BackgroundWork& work) { work.stop (); };
    extract ();
    EXPECT_EQ (gate_text (), before);
    EXPECT_FALSE (fs::exists (b.folder / "tmp_kinetics.csv"));
}

TEST_F (formula_command, gates_that_cannot_be_written_are_told) {
    fs::create_directory (gates);
    fs::last_write_time (gates, fs::last_write_time (model) - std::chrono::seconds (5));
    extract ();
    EXPECT_THAT (b.world.status, HasSubstr ("upper_gates.csv"));
    EXPECT_FALSE (is_active (Command::enter_formula));
}

TEST_F (formula_command, a_formula_becomes_networks_each_a_step_from_the_next) {
    extract ();
    b.run (Command::enter_formula);
    EXPECT_EQ (b.world.formula_dialogs, 1);
    enter ("ATP . G6P", "GAP");
    EXPECT_TRUE (asked (searching));
    EXPECT_THAT (b.world.status, HasSubstr ("implementation"));
    EXPECT_EQ (b.bench->tabs ().count (), 2);
    EXPECT_EQ (b.bench->window_title (), "implementation.ssa*");
    EXPECT_THAT (b.text (), HasSubstr ("PFK"));
}

TEST_F (formula_command, steps_replace_the_network_after_a_question_and_end_at_both_ends) {
    fs::copy_file (testing::source_path ("examples/pentose-salvage.xml"), model,
                   fs::copy_options::overwrite_existing);
    extract ();
    enter ("E4P", "Ru5P"); // of which there are two
    EXPECT_EQ (b.world.status, "2 implementations found\n");
    EXPECT_TRUE (is_active (Command::next_implementation));
    EXPECT_FALSE (is_active (Command::previous_implementation));
    const std::string first = b.text ();
    b.world.yes_no_answers = {true};
    b.run (Command::next_implementation);
    EXPECT_TRUE (asked ("Network not saved, still proceed"));
    const std::string second = b.text ();
    EXPECT_NE (second, first);
    EXPECT_EQ (b.bench->window_title (), "implementation.xml*");
    EXPECT_FALSE (is_active (Command::next_implementation));
    EXPECT_TRUE (is_active (Command::previous_implementation));
    // Who says no keeps what is shown; the step is taken.
    b.world.yes_no_answers = {false};
    b.run (Command::previous_implementation);
    EXPECT_EQ (b.text (), second);
    EXPECT_TRUE (is_active (Command::next_implementation));
    // A network that is not modified is not even asked about.
    b.canvas ().set_modified (false);
    b.world.questions.clear ();
    b.run (Command::next_implementation);
    EXPECT_THAT (b.world.questions, IsEmpty ());
    EXPECT_EQ (b.text (), second);
}

TEST_F (formula_command, no_formula_and_one_that_no_gates_compute_are_told) {
    extract ();
    for (const char* const none : {"", "  \t "}) {
        enter (none, "GAP");
        EXPECT_EQ (b.world.status, "A boolean formula must be entered.");
    }
    enter ("ADP . Pi", "Glucose");
    EXPECT_EQ (b.world.status, "No implementation found for Glucose = ADP . Pi");
    EXPECT_EQ (b.bench->tabs ().count (), 1);
}

TEST_F (formula_command, gates_that_went_since_they_were_made_are_told) {
    extract ();
    fs::remove (gates);
    enter ("ATP . G6P", "GAP");
    EXPECT_THAT (b.world.status, HasSubstr ("upper_gates.csv"));
    EXPECT_EQ (b.bench->tabs ().count (), 1);
    EXPECT_TRUE (b.bench->tabs ().at (0).network ().nodes ().empty ());
}

TEST_F (formula_command, gates_that_change_during_a_search_are_read_whole_or_not_at_all) {
    extract ();
    const std::string whole = gate_text ();
    enter ("ATP . G6P", "GAP");
    const std::string expected = b.text ();
    for (const std::string& meanwhile : {std::string (), whole.substr (0, whole.size () / 2),
                                         std::string ("no gates\n"), whole + whole}) {
        std::ofstream (gates) << whole;
        b.world.at_work = [&] (BackgroundWork&) { std::ofstream (gates) << meanwhile; };
        const int tabs = b.bench->tabs ().count ();
        enter ("ATP . G6P", "GAP");
        if (b.bench->tabs ().count () == tabs) { // it came too late for the old ones
            EXPECT_FALSE (b.world.status.empty ());
        } else {
            EXPECT_EQ (b.text (), expected);
        }
        EXPECT_TRUE (is_active (Command::enter_formula));
    }
}

TEST_F (formula_command, a_cancelled_search_changes_nothing) {
    extract ();
    b.world.at_work = [] (BackgroundWork& work) { work.stop (); };
    const std::string before = b.text ();
    enter ("ATP . G6P", "GAP");
    EXPECT_LE (b.bench->tabs ().count (), 2); // it may have been done before
    if (b.bench->tabs ().count () == 1) {
        EXPECT_EQ (b.world.status, "The search was stopped.");
        EXPECT_EQ (b.text (), before);
        EXPECT_FALSE (is_active (Command::next_implementation));
    }
}

TEST_F (formula_command, with_all_tabs_taken_the_network_goes_into_the_one_on_top) {
    extract ();
    while (b.bench->add_tab (std::nullopt) != AddTab::full) {
    }
    const int tabs = b.bench->tabs ().count ();
    enter ("ATP . G6P", "GAP");
    EXPECT_EQ (b.bench->tabs ().count (), tabs);
    EXPECT_THAT (b.text (), HasSubstr ("PFK"));
    EXPECT_EQ (b.world.status, "Too much tabs: cannot create a new one");
}

} // namespace
} // namespace ostrand::editor
