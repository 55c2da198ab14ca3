// Every entry of the menus and every button of the tool bar, by a click of the mouse.
#include "shell/menu_choice.h"

#include "editor/commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace ostrand::testing {
namespace {

using editor::Command;
using editor::CommandRow;
using editor::Menu;
using ::testing::HasSubstr;

/// Commands that were clicked in this case.
std::set<Command>& clicked () {
    static std::set<Command> all;
    return all;
}

/// A case clicks every entry of a menu but those that it names: which are off, or have a case of
/// their own.
void expect_all_of (Menu menu, const std::set<Command>& others = {}) {
    for (const CommandRow& row : editor::command_rows ()) {
        if (row.menu != menu || others.contains (row.code)) continue;
        EXPECT_TRUE (clicked ().contains (row.code)) << row.label;
    }
}

void choose (const Editor& editor, Command command) {
    choose_entry (editor, command);
    clicked ().insert (command);
}

/// The command asks in a window of this title, which Escape closes.
void expect_window (const Editor& editor, Command command, const char* title,
                    bool has_field = false) {
    // On a busy machine the second click of a choice can come before its menu.
    const auto is_shown = [&] { return editor.has_window (title); };
    for (int tries = 0; tries < 3 && !is_shown (); ++tries) {
        choose (editor, command);
        if (wait_until (is_shown, 5)) break;
        editor.click (600, canvas_y - 3); // closes a menu
    }
    EXPECT_TRUE (is_shown ()) << title;
    editor.display ().input ({"search", "--onlyvisible", "--name", std::string ("^") + title + "$",
                              "windowmove", "--sync", "400", "300", "mousemove", "--window", "%1",
                              "60", "12"});
    pause (60);
    // The dialogs of the editor itself stay beside other windows: a click gives them the keys.
    if (has_field) editor.click_in (title, 250, 20);
    editor.key ("Escape");
    if (!editor.loses_window (title)) ADD_FAILURE () << title << " stays";
    editor.move (300, 300);
    pause (120); // the desktop's choosers keep the mouse a moment longer than their window
}

/// The command writes a record.
void expect_record (const Editor& editor, Command command) {
    const std::string before = editor.undo_file ();
    choose (editor, command);
    EXPECT_TRUE (wait_until ([&] { return editor.undo_file () != before; }, 3))
        << editor::command_row (command).label;
}

constexpr const char* drawing =
    "# Lattrix: 1.2\n[N5 0 2 8 8\n[S1 1 60 200 0 3 13{glc}-]\n[S2 0 250 220 0 3 13{g6p}-]\n"
    "[S3 0 60 300 0 3 9{P}-]\n[S4 0 200 300 0 3 9{P}-]\n[S5 0 330 300 0 3 9{Q}-]\n"
    "[A6 0 272 2 1 2{}{}]\n]\n";

TEST (menus, every_entry_of_view_does_its_part) {
    Editor editor;
    editor.start ({editor.home ().write ("a.net", drawing)}, "a.net");
    expect_window (editor, Command::gui_background, "Color Selection");
    choose (editor, Command::zoom_out);
    choose (editor, Command::zoom_reset);
    choose (editor, Command::zoom_in);
    for (const CommandRow& row : editor::command_rows ())
        if (row.menu == Menu::view && row.form == editor::CommandForm::toggle)
            choose (editor, row.code);
    choose (editor, Command::deterministic);
    choose (editor, Command::save_settings);
    const auto settings = [&] { return file_text (editor.home () / ".lattrix_rc"); };
    ASSERT_TRUE (
        wait_until ([&] { return std::filesystem::exists (editor.home () / ".lattrix_rc"); }));
    for (const char* const row :
         {"zoom=\"105\"", "use_annotation=\"false\"", "dark_mode=\"true\"", "boundary=\"false\"",
          "mousehelp=\"false\"", "kinetics=\"false\"", "stoichiometry=\"true\"",
          "default_yes=\"true\"", "emacs_keys=\"true\"", "grid=\"true\"", "smart_move=\"false\"",
          "smart_dialog=\"true\"", "guides=\"false\"", "snap_to_guides=\"true\"",
          "animate=\"false\"", "arrange_opened=\"false\"", "simulation=\"ODE\""})
        EXPECT_THAT (settings (), HasSubstr (row));
    expect_all_of (Menu::view);
    choose (editor, Command::stochastic);
    choose (editor, Command::save_settings);
    EXPECT_TRUE (wait_until (
        [&] { return settings ().find ("simulation=\"SSA\"") != std::string::npos; }, 3));
}

TEST (menus, every_entry_of_edit_does_its_part) {
    Editor editor;
    editor.start ({editor.home ().write ("a.net", drawing)}, "a.net");
    expect_record (editor, Command::align_nodes);
    expect_record (editor, Command::arrange);
    expect_record (editor, Command::color_reactants);
    choose (editor, Command::undo);
    choose (editor, Command::redo);
    choose (editor, Command::share_clones); // those of a file are shared already
    choose (editor, Command::select_all);
    expect_record (editor, Command::fog_selection);
    expect_record (editor, Command::unfog_selection);
    expect_record (editor, Command::duplicate);
    choose (editor, Command::copy);
    expect_record (editor, Command::paste);
    expect_record (editor, Command::cut);
    expect_window (editor, Command::find_reactant, "Search Reactant", true);
    expect_all_of (Menu::edit);
}

TEST (menus, every_entry_of_file_does_its_part) {
    // The desktop's own file choosers leave memory to the system.
    const Environment no_leaks ("ASAN_OPTIONS", "detect_leaks=0");
    Editor editor;
    const std::string file = editor.home ().write ("a.net", drawing);
    editor.start ({file}, "a.net");
    expect_window (editor, Command::load_file, "Load");
    expect_window (editor, Command::open_file, "Open");
    expect_window (editor, Command::insert_file, "Insert");
    expect_window (editor, Command::save_as, "Save as");
    expect_window (editor, Command::save_user_manual, "Save User Manual");
    expect_window (editor, Command::export_pdf, "PDF Export");
    expect_window (editor, Command::export_svg, "SVG Export");
    expect_window (editor, Command::insert_picture, "Ostrand"); // no text is edited
    expect_window (editor, Command::export_png, "PNG Export");
    expect_window (editor, Command::export_all_tabs, "Export all tabs");
    expect_window (editor, Command::export_standard_sbml, "SBML Export");
    ASSERT_TRUE (wait_until ([&] {
        editor.click (new_molecule_x, tool_bar_y);
        pause (300);
        return editor.has_window ("a.net\\*");
    }));
    choose (editor, Command::save_file);
    ASSERT_TRUE (editor.shows_window ("a.net"));
    EXPECT_THAT (file_text (file), HasSubstr ("molecule"));
    expect_record (editor, Command::reopen_file);
    choose (editor, Command::new_tab);
    ASSERT_TRUE (editor.shows_window ("Ostrand"));
    EXPECT_EQ (editor.undo_file_count (), 2);
    choose (editor, Command::close_tab);
    EXPECT_TRUE (editor.shows_window ("a.net"));
    choose (editor, Command::quit);
    EXPECT_EQ (editor.program ().wait (), 0);
    expect_all_of (Menu::file, {Command::save_settings});
}

TEST (menus, every_entry_of_simulation_formula_and_help_does_its_part) {
    Editor editor;
    editor.start ({editor.home ().write ("a.net", drawing)}, "a.net");
    expect_window (editor, Command::set_duration, "Duration", true);
    expect_window (editor, Command::reactions_per_gate, "#Reactions/Gate \\(1 -> 7\\)", true);
    expect_window (editor, Command::extract_gates, "Extract Gates");
    choose (editor, Command::about);
    EXPECT_TRUE (editor.shows_window ("About Ostrand"));
    editor.click_in ("About Ostrand", 310, 402); // Close
    choose (editor, Command::documentation);
    EXPECT_TRUE (editor.shows_window ("Ostrand Documentation"));
    choose (editor, Command::show_left_out);
    expect_all_of (Menu::help);
    expect_all_of (Menu::simulation, {Command::stochastic, Command::deterministic,
                                      Command::start_simulation, Command::stop_simulation});
    expect_all_of (Menu::formula, {Command::enter_formula, Command::previous_implementation,
                                   Command::next_implementation});
    EXPECT_TRUE (editor.program ().running ());
}

TEST (menus, every_entry_of_tools_does_its_part) {
    Editor editor;
    editor.start ({}, "Ostrand");
    for (const Command command :
         {Command::new_protein, Command::new_molecule, Command::new_gene, Command::new_receptor,
          Command::new_complex, Command::new_reaction, Command::new_round_compartment,
          Command::new_oval_compartment})
        expect_record (editor, command);
    // Clicked, they are on; the next click makes a label with both.
    choose (editor, Command::bold);
    choose (editor, Command::italic);
    expect_record (editor, Command::new_molecule);
    EXPECT_TRUE (wait_until (
        [&] { return editor.undo_file ().find ("F>molecule}") != std::string::npos; }, 3));
    expect_all_of (Menu::tool_bar,
                   {Command::font_face, Command::font_size, Command::text_colour,
                    Command::add_substrate, Command::add_product, Command::new_tab});
    EXPECT_TRUE (editor.program ().running ());
}

TEST (tool_bar, every_button_makes_its_object) {
    Editor editor;
    editor.start ({}, "Ostrand");
    constexpr int first_x = 13;
    constexpr int width = 25;
    constexpr int compartments_x = 518;
    const std::pair<int, const char*> buttons[] = {
        {first_x, "protein"},          {first_x + width, "molecule"},
        {first_x + 2 * width, "gene"}, {first_x + 3 * width, "receptor"},
        {first_x + 4 * width, "{A}"},  {new_reaction_x, "{E}"},
        {compartments_x, "[C1 8 "},    {compartments_x + width, "[C2 12 "},
    };
    for (const auto& [x, word] : buttons) {
        editor.click (x, tool_bar_y);
        EXPECT_TRUE (wait_until (
            [&, what = word] { return editor.undo_file ().find (what) != std::string::npos; }, 3))
            << word;
    }
}

TEST (tool_bar, lists_of_letters_choose_what_is_typed_and_kept) {
    Editor editor;
    editor.start ({}, "Ostrand");
    constexpr int arrows_x[] = {293, 343, 493}; // of faces, sizes, colours
    constexpr int bold_x = 367;
    constexpr int italic_x = 392;
    choose (editor, Command::save_settings);
    const auto settings = [&] { return file_text (editor.home () / ".lattrix_rc"); };
    ASSERT_TRUE (
        wait_until ([&] { return std::filesystem::exists (editor.home () / ".lattrix_rc"); }));
    std::string before = settings ();
    for (const int x : arrows_x) {
        editor.click (x, tool_bar_y);
        pause (100);
        editor.key ("Down");
        editor.key ("Return");
        pause (60);
        choose (editor, Command::save_settings);
        EXPECT_TRUE (wait_until ([&] { return settings () != before; }, 3)) << x;
        before = settings ();
    }
    editor.click (bold_x, tool_bar_y);
    editor.click (italic_x, tool_bar_y);
    editor.click (new_molecule_x, tool_bar_y);
    EXPECT_TRUE (wait_until (
        [&] { return editor.undo_file ().find (">molecule}") != std::string::npos; }, 3));
}

TEST (tool_bar, a_substrate_and_a_product_go_to_the_selected_reaction) {
    Editor editor;
    editor.start ({editor.home ().write ("a.net", drawing)}, "a.net");
    constexpr int square_x = 163;
    constexpr int square_y = 218;
    constexpr int substrate_x = 592;
    constexpr int product_x = 617;
    for (const int x : {substrate_x, product_x}) {
        editor.click (square_x, canvas_y + square_y);
        pause (400); // the next click is no second one
        const std::string before = editor.undo_file ();
        editor.click (x, tool_bar_y);
        EXPECT_TRUE (wait_until ([&] { return editor.undo_file () != before; }, 3)) << x;
        pause (300);
    }
}

TEST (menus, a_simulation_is_started_and_stopped) {
    Editor editor;
    const std::string model = "duration = 400000; [a] = 1 mM, 2 mM, 3 mM; [E] = 1 mM; "
                              "display (a); E : a -> b | 1 mM - 0.5; E : b -> a | 1 mM - 0.5;";
    editor.start ({editor.home ().write ("a.ssa", model)}, "a.ssa");
    choose (editor, Command::start_simulation);
    const auto goes_on = [&] { return std::filesystem::exists (editor.home () / "_tmp_.ssa"); };
    EXPECT_TRUE (wait_until (goes_on));
    choose (editor, Command::stop_simulation);
    EXPECT_TRUE (wait_until ([&] { return !goes_on (); }));
    EXPECT_FALSE (std::filesystem::exists (editor.home () / "_data_.gz"));
    EXPECT_TRUE (editor.program ().running ());
    // Who leaves meanwhile stops it, too.
    choose (editor, Command::start_simulation);
    ASSERT_TRUE (wait_until (goes_on));
    choose (editor, Command::quit);
    EXPECT_EQ (editor.program ().wait (), 0);
    EXPECT_THAT (editor.home ().names (),
                 ::testing::Not (::testing::Contains (::testing::HasSubstr ("_tmp_"))));
    EXPECT_THAT (editor.home ().names (),
                 ::testing::Not (::testing::Contains (::testing::HasSubstr ("_data_"))));
}

} // namespace
} // namespace ostrand::testing
