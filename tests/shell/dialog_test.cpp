// Dialogs, the line above the canvas and its list of names, driven by mouse and keyboard.
#include "shell/menu_choice.h"

#include "base/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::testing {
namespace {

using editor::Command;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* one_molecule = "# Lattrix: 1.2\n[N1 0 2 8 8\n[S1 0 60 200 0 3 13{glc}-]\n]\n";
constexpr int molecule_x = 60; // its middle, in the canvas
constexpr int molecule_y = 200;
/// Right of the prompts' labels in the dialogs of one field.
constexpr int field_x = 300;
constexpr int field_y = 16;
/// The names begin below the line, right of the middle of the window.
constexpr int first_name_x = 560;
constexpr int first_name_y = 148;
constexpr int name_height = 16;

/// An answer typed over the present one into a dialog of one field.
void answer (const Editor& editor, const std::string& title, const std::string& text) {
    ASSERT_TRUE (editor.shows_window (title));
    pause (150);
    editor.click_in (title, field_x, field_y);
    editor.key ("ctrl+a");
    editor.type (text);
    editor.key ("Return");
    pause (150);
}

struct dialogs : ::testing::Test {
    void open_molecule () {
        editor.start ({editor.home ().write ("a.net", one_molecule)}, "a.net");
    }
    void ask_concentration () const {
        editor.click (molecule_x + 8, canvas_y + molecule_y + 8, "2");
    }
    /// The editor beside a copy of an example with a metabolic network.
    void start_beside (const char* network) {
        editor.ask_in_the_line ();
        editor.copied_example (network);
        editor.start ({}, "Ostrand");
    }
    void extract (const std::string& beginning_of_name) const {
        choose_entry (editor, Command::extract_gates);
        pause (300);
        editor.type (beginning_of_name);
        editor.key ("Tab");
    }
    std::string undo_file_with (const std::string& word) const {
        wait_until ([&] { return editor.undo_file ().find (word) != std::string::npos; }, 4);
        return editor.undo_file ();
    }
    Editor editor;
};

TEST_F (dialogs, a_concentration_that_cannot_be_read_keeps_the_window_open) {
    open_molecule ();
    const char* const title = "Init. Concentration";
    ask_concentration ();
    answer (editor, title, "much");
    EXPECT_TRUE (editor.has_window (title));
    EXPECT_THAT (editor.undo_file (), Not (HasSubstr ("much")));
    answer (editor, title, "4 uM");
    EXPECT_TRUE (editor.loses_window (title));
    EXPECT_THAT (undo_file_with ("4 uM"), HasSubstr ("4 uM"));
    // Given up, nothing is changed.
    ask_concentration ();
    ASSERT_TRUE (editor.shows_window (title));
    pause (150);
    editor.click_in (title, field_x, field_y);
    editor.type ("77");
    editor.key ("Escape");
    EXPECT_TRUE (editor.loses_window (title));
    EXPECT_THAT (editor.undo_file (), Not (HasSubstr ("77")));
}

TEST_F (dialogs, a_number_takes_digits_only) {
    editor.ask_in_the_line (); // for the name of the file
    open_molecule ();
    choose_entry (editor, Command::smart_dialog); // off: the duration is asked in a window
    choose_entry (editor, Command::set_duration);
    answer (editor, "Duration", "1x2y");
    EXPECT_TRUE (editor.loses_window ("Duration"));
    choose_entry (editor, Command::smart_dialog);
    editor.move (300, 300);
    editor.key ("ctrl+shift+s");
    pause (300);
    editor.type ("b.ssa");
    editor.key ("Return");
    ASSERT_TRUE (editor.shows_window ("b.ssa"));
    EXPECT_THAT (file_text (editor.home () / "b.ssa"), HasSubstr ("duration = 12;"));
}

TEST_F (dialogs, shift_and_an_arrow_write_the_marks_of_a_script) {
    editor.ask_in_the_line ();
    open_molecule ();
    editor.key ("ctrl+shift+s");
    pause (300);
    editor.type ("H");
    editor.key ("shift+Down");
    editor.type ("2");
    editor.key ("End");
    editor.key ("shift+Up");
    editor.type ("x");
    editor.key ("End");
    editor.type (".net");
    editor.key ("Return");
    EXPECT_TRUE (
        wait_until ([&] { return std::filesystem::exists (editor.home () / "H_{2}^{x}.net"); }));
}

TEST_F (dialogs, the_line_asks_before_it_writes_over_a_file) {
    editor.ask_in_the_line ();
    open_molecule ();
    editor.home ().write ("other.net", "mine");
    const auto save_as_other = [&] (const char* last_key) {
        editor.key ("ctrl+shift+s");
        pause (300);
        editor.type ("other.net");
        editor.key ("Return");
        pause (300);
        editor.key (last_key);
        pause (300);
    };
    for (const char* const no : {"Return", "Escape"}) {
        save_as_other (no);
        EXPECT_EQ (file_text (editor.home () / "other.net"), "mine") << no;
    }
    save_as_other ("y");
    editor.key ("Return");
    EXPECT_TRUE (editor.shows_window ("other.net"));
    EXPECT_THAT (file_text (editor.home () / "other.net"), HasSubstr ("glc"));
}

TEST_F (dialogs, enter_means_what_default_yes_says_but_never_overwrites) {
    editor.ask_in_the_line ();
    const std::string file = editor.home ().write ("a.net", one_molecule);
    editor.home ().write ("other.net", "mine");
    editor.start ({file}, "a.net");
    const auto ask_to_reopen = [&] { // a question, since the network is modified
        editor.click (new_molecule_x, tool_bar_y);
        pause (200);
        choose_entry (editor, Command::reopen_file);
        pause (300);
        const std::string before = editor.undo_file ();
        editor.key ("Return");
        pause (300);
        return editor.undo_file () != before;
    };
    EXPECT_FALSE (ask_to_reopen ());
    choose_entry (editor, Command::default_yes);
    EXPECT_TRUE (ask_to_reopen ());
    editor.move (300, 300);
    editor.key ("ctrl+shift+s");
    pause (300);
    editor.type ("other.net");
    editor.key ("Return");
    pause (300);
    editor.key ("Return");
    pause (300);
    EXPECT_EQ (file_text (editor.home () / "other.net"), "mine");
}

TEST_F (dialogs, a_name_is_typed_on_behind_its_completion) {
    editor.ask_in_the_line ();
    for (int i = 0; i < 600; ++i)
        editor.home ().write (format_text ("run_%03d.net", i), one_molecule);
    editor.start ({}, "Ostrand");
    editor.key ("ctrl+o");
    pause (300);
    editor.type ("ru");
    editor.key ("Tab");
    pause (300);
    editor.type ("597");
    editor.key ("Tab");
    EXPECT_TRUE (editor.shows_window ("run_597.net"));
}

TEST_F (dialogs, a_name_of_the_list_is_taken_by_a_click_and_a_folder_is_entered) {
    editor.ask_in_the_line ();
    editor.home ().write ("first.net", one_molecule);
    editor.home ().write ("second.net", one_molecule);
    std::filesystem::create_directory (editor.home () / "models");
    editor.home ().write ("models/inner.net", one_molecule);
    editor.home ().write ("models/outer.net", one_molecule);
    editor.start ({}, "Ostrand");
    editor.key ("ctrl+o");
    pause (300);
    editor.key ("Tab");
    pause (300);
    editor.click (first_name_x, first_name_y + name_height); // "models", behind "first.net"
    pause (300);
    editor.click (first_name_x, first_name_y + name_height); // "outer.net", behind "inner.net"
    EXPECT_TRUE (editor.shows_window ("outer.net"));
}

TEST_F (dialogs, a_formula_is_composed_by_buttons_and_given_up) {
    start_beside ("glycolysis-upper.xml");
    extract ("glyc");
    const char* const title = "Enter Formula";
    const auto formula_is_open = [&] {
        choose_entry (editor, Command::enter_formula);
        return editor.has_window (title);
    };
    ASSERT_TRUE (wait_until (formula_is_open)); // the entry is on when the gates are there
    pause (200);
    constexpr int and_x = 595;
    constexpr int not_x = 609;
    constexpr int sign_y = 20;
    constexpr int formula_x = 200;
    constexpr int formula_y = 53;
    constexpr int cancel_x = 50;
    constexpr int button_y = 86;
    const auto compose = [&] {
        editor.click_in (title, 200, sign_y);
        editor.key ("ctrl+a");
        editor.type ("GAP");
        editor.click_in (title, formula_x, formula_y);
        editor.key ("ctrl+a");
        editor.type ("ATP");
        editor.click_in (title, and_x, sign_y);
        editor.click_in (title, not_x, sign_y);
        editor.click_in (title, not_x, sign_y);
        editor.type ("G6P"); // the buttons leave the keys to the formula
    };
    compose ();
    editor.click_in (title, cancel_x, button_y);
    EXPECT_TRUE (editor.loses_window (title));
    EXPECT_EQ (editor.undo_file_count (), 1);
    choose_entry (editor, Command::enter_formula);
    ASSERT_TRUE (editor.shows_window (title));
    pause (200);
    compose ();
    constexpr int ok_x = 605;
    editor.click_in (title, ok_x, button_y);
    EXPECT_TRUE (editor.shows_window ("implementation.ssa\\*"));
}

TEST_F (dialogs, an_extraction_goes_on_beside_the_interface_and_is_cancelled) {
    start_beside ("tca-shuttles.xml");
    choose_entry (editor, Command::reactions_per_gate);
    pause (300);
    editor.key ("ctrl+a");
    editor.type ("7"); // minutes of work
    editor.key ("Return");
    extract ("tca");
    const char* const title = "Please wait";
    ASSERT_TRUE (editor.shows_window (title));
    const Screenshot first = editor.display ().screenshot ();
    EXPECT_TRUE (wait_until ([&] { // counts and time left
        return editor.display ().screenshot ().pixels != first.pixels;
    }));
    constexpr int cancel_x = 345;
    constexpr int cancel_y = 98;
    editor.click_in (title, cancel_x, cancel_y);
    EXPECT_TRUE (editor.loses_window (title));
    EXPECT_THAT (editor.home ().names (), Not (::testing::Contains (::testing::EndsWith (".csv"))));
    editor.click (new_molecule_x, tool_bar_y);
    EXPECT_THAT (undo_file_with ("molecule"), HasSubstr ("molecule"));
}

TEST_F (dialogs, a_killed_viewer_leaves_the_editor_as_it_is) {
    editor.start ({editor.copied_example ("hexokinase.net")}, "hexokinase.net");
    const auto show_curves = [&] {
        editor.move (300, 300);
        editor.key ("Tab");
        return editor.shows_window ("Stochora");
    };
    ASSERT_TRUE (show_curves ());
    editor.display ().input ({"search", "--onlyvisible", "--name", "^Stochora$", "windowkill"});
    EXPECT_TRUE (editor.loses_window ("Stochora"));
    EXPECT_TRUE (show_curves ()); // on the same file, which the killed one left
    EXPECT_TRUE (editor.has_window ("hexokinase.net"));
    editor.display ().input ({"search", "--onlyvisible", "--name", "^Stochora$", "windowkill"});
}

TEST (start, without_a_home_that_can_be_written_it_says_so_and_ends) {
    const VirtualDisplay display;
    const Environment nowhere ("HOME", "/nonexistent");
    const ProgramResult result = run_program ({"ostrand", "--no-restore"});
    EXPECT_NE (result.status, 0);
    EXPECT_THAT (result.error, HasSubstr ("kill-stack"));
}

} // namespace
} // namespace ostrand::testing
