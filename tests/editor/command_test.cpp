// The table of commands: every row on a rich drawing, undone and done again; both sets of
// shortcuts.
#include "bench.h"

#include "editor/document_files.h"
#include "editor/popup_menus.h"

#include "support/recording_device.h"
#include <fstream>

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace ostrand::editor {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;

/// What a command may need to do anything.
void prepare (Bench& b, int with) {
    switch (with) {
    case 1: b.click (b.on (b.node ("glc"))); break;
    case 2: b.click (b.on (b.arc ("glc"))); break;
    case 3: b.click (b.on_letter (b.node ("glc"), 0)); break;
    case 4: b.run (Command::select_all); break;
    case 5:
        for (const auto& n : b.network ().nodes ())
            if (n->nested () != nullptr) b.click (b.at (n->extent ().x + 1, n->y ()));
        break;
    default: break;
    }
    b.world.clipboard = "[N1 0 2 8 8\n[S1 0 50 60 0 3 13{new}-]\n]";
    b.world.value_answers = {"7"};
    b.world.file_answers = {{(b.folder / "answer.net").string ()}};
    b.world.yes_no_answers = {true, true, true};
    b.world.colour_answers = {0x123456};
}

TEST (command_table, whatever_a_row_does_is_undone_and_done_again) {
    std::set<Command> wrote;
    for (const CommandRow& row : command_rows ()) {
        if (row.run == nullptr) continue;
        // These leave the process, the folder of the settings, or the thread.
        if (row.code == Command::start_simulation || row.code == Command::save_settings) continue;
        for (int with = 0; with <= 5; ++with) {
            Bench b;
            std::ofstream (b.folder / "answer.net") << "[N1 0 2 8 8\n[S1 0 5 6 0 3 13{other}-]\n]";
            b.open_rich ();
            prepare (b, with);
            const std::string label (row.label);
            const std::string before = b.text ();
            Canvas& on = b.canvas ();
            const std::int32_t place = on.history ().position ();
            b.run (row.code);
            if (&on != &b.canvas ()) b.bench->select_tab (0);
            if (row.code == Command::undo || row.code == Command::redo) continue;
            const std::string after = b.text ();
            if (on.history ().position () == place) {
                EXPECT_EQ (after, before) << label << with;
                continue;
            }
            wrote.insert (row.code);
            on.undo ();
            EXPECT_EQ (b.text (), before) << label << with;
            on.redo ();
            EXPECT_EQ (b.text (), after) << label << with;
            EXPECT_EQ (b.undo_and_redo (), "") << label << with;
        }
    }
    // Those that change a document did so in one of the states at least.
    for (const Command code : {Command::open_file,
                               Command::insert_file,
                               Command::cut,
                               Command::paste,
                               Command::duplicate,
                               Command::align_nodes,
                               Command::color_reactants,
                               Command::fog_selection,
                               Command::arrange,
                               Command::new_protein,
                               Command::new_molecule,
                               Command::new_gene,
                               Command::new_receptor,
                               Command::new_complex,
                               Command::bold,
                               Command::italic,
                               Command::new_round_compartment,
                               Command::new_oval_compartment,
                               Command::new_reaction,
                               Command::add_substrate,
                               Command::add_product})
        EXPECT_TRUE (wrote.contains (code)) << command_row (code).label;
}

TEST (command_table, rows_stand_in_the_order_of_their_codes) {
    ASSERT_EQ (command_rows ().size (), static_cast<std::size_t> (command_count));
    for (int i = 0; i < command_count; ++i)
        EXPECT_EQ (static_cast<int> (command_rows ()[static_cast<std::size_t> (i)].code), i);
}

TEST (command_table, no_shortcut_of_a_set_is_there_twice) {
    for (const ShortcutSet set : {ShortcutSet::standard, ShortcutSet::emacs}) {
        for (const CommandRow& row : command_rows ()) {
            const Shortcut& shortcut = shortcut_of (row, set);
            if (!shortcut.is_set ()) continue;
            EXPECT_EQ (command_for (shortcut, set), row.code) << row.label;
        }
    }
    EXPECT_EQ (command_for ({.ctrl = true, .key = 's'}, ShortcutSet::standard), Command::save_file);
    EXPECT_EQ (command_for ({.ctrl = true, .key = 's'}, ShortcutSet::emacs),
               Command::find_reactant);
}

TEST (commands, a_new_species_goes_into_the_selected_complex) {
    Bench b;
    b.open_rich ();
    prepare (b, 5);
    b.run (Command::new_gene);
    EXPECT_EQ (b.network ().nb_nodes (), 10);
    const document::Network* inner = nullptr;
    for (const auto& n : b.network ().nodes ())
        if (n->nested () != nullptr) inner = n->nested ();
    ASSERT_EQ (inner->nb_nodes (), 3);
    EXPECT_EQ (inner->nodes ().back ()->x (), 40);
    EXPECT_EQ (inner->nodes ().back ()->y (), 30);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (commands, a_new_species_stands_in_view_in_the_style_on_show) {
    Bench b;
    b.bench->set_font_size (6);
    b.bench->set_text_colour (4);
    b.network ().set_origin (8, 8);
    b.run (Command::new_protein);
    EXPECT_EQ (b.node ("protein").x (), 192);
    EXPECT_EQ (b.node ("protein").y (), 42);
    EXPECT_EQ (b.node ("protein").bg_color (), 247U);
    EXPECT_EQ (b.node ("protein").label_line ()->chars ().front ().color, 4U);
    EXPECT_EQ (document::size_index (b.node ("protein").label_line ()->chars ().front ().font), 6U);
    b.network ().set_origin (300, 300);
    b.run (Command::new_molecule);
    EXPECT_EQ (b.node ("molecule").x (), 30);
    EXPECT_EQ (b.node ("molecule").y (), 30);
}

TEST (commands, a_new_reaction_is_three_nodes_and_two_arcs_left_selected) {
    Bench b;
    b.run (Command::new_reaction);
    EXPECT_EQ (b.network ().nb_nodes (), 3);
    EXPECT_EQ (b.selected ().size (), 3U);
    EXPECT_EQ (b.canvas ().mode, Mode::free);
    EXPECT_EQ (b.node ("s").x (), 192);
    EXPECT_EQ (b.node ("s").y (), 88);
    EXPECT_EQ (b.node ("p").x (), 325);
    EXPECT_EQ (b.node ("E").x (), 256);
    EXPECT_EQ (b.node ("E").y (), 42);
    EXPECT_EQ (b.arc ("s").type (), 272U);
    EXPECT_EQ (b.arc ("E").type (), 32U);
    EXPECT_EQ (b.records (), Strings{"snapshot"});
    b.canvas ().undo ();
    EXPECT_TRUE (b.canvas ().is_empty ());
}

TEST (commands, further_reactants_of_a_reversible_reaction_are_reversible) {
    Bench b;
    b.open_rich ();
    b.run (Command::add_substrate); // no reaction is selected
    EXPECT_EQ (b.record_count (), 1U);
    b.click (b.on (b.arc ("g6p")));
    b.run (Command::add_substrate);
    b.run (Command::add_product);
    EXPECT_EQ (b.arc ("sub").type (), 529U);
    EXPECT_EQ (b.arc ("prod").type (), 1041U);
    EXPECT_EQ (b.node ("sub").x (), b.node ("g6p").x ());
    EXPECT_EQ (b.node ("sub").y (), b.node ("g6p").y () + 40);
}

TEST (commands, alignment_of_what_is_in_line_writes_nothing) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 1 50 60 0 3 13{a}-]\n[S2 0 250 60 0 3 13{b}-]\n"
                 "[A3 0 272 2 1 2--]\n]");
    b.run (Command::align_nodes);
    EXPECT_EQ (b.record_count (), 1U);
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (commands, a_node_33_units_out_of_line_is_not_snapped_and_at_32_it_is) {
    for (const int off : {32, 33}) {
        Bench b;
        b.open_text ("[N2 0 2 8 8\n[S1 1 50 60 0 3 13{a}-]\n[S2 0 250 " +
                     std::to_string (60 + off) + " 0 3 13{b}-]\n[A3 0 272 2 1 2--]\n]");
        b.click (b.on (b.node ("b"), test::shift));
        EXPECT_EQ (b.node ("b").y (), off == 32 ? 60 : 93) << off;
    }
}

TEST (commands, fog_spreads_and_is_undone) {
    Bench b;
    b.open_rich ();
    b.run (Command::fog_selection); // nothing is selected
    EXPECT_EQ (b.record_count (), 1U);
    b.click (b.on (b.node ("G")));
    b.run (Command::fog_selection);
    EXPECT_TRUE (b.node ("G").foggy ());
    b.run (Command::fog_selection); // is so already
    EXPECT_EQ (b.record_count (), 3U);
    b.canvas ().undo ();
    EXPECT_FALSE (b.node ("G").foggy ());
    b.canvas ().redo ();
    EXPECT_TRUE (b.node ("G").foggy ());
    b.run (Command::unfog_selection);
    EXPECT_FALSE (b.node ("G").foggy ());
}

TEST (commands, hits_of_a_search_are_marked_beside_the_lifts_where_they_lie) {
    Bench b;
    b.open_text ("[N3 0 2 8 8\n[S1 0 100 100 0 3 13{ATP}-]\n[S2 0 100 1800 0 3 13{ATP}-]\n"
                 "[S3 0 100 2000 0 3 13{ADP}-]\n]");
    const auto marks = [&b] {
        testing::RecordingDevice pixels;
        testing::RecordingDevice scaled;
        b.canvas ().prepare_paint ();
        b.canvas ().paint (pixels, scaled, 0);
        const auto colour = std::ranges::find (pixels.calls, "color ff900000");
        return pixels.calls.end () - colour; // the colour and one rectangle for each hit
    };
    EXPECT_EQ (marks (), 0);
    b.run (Command::find_reactant);
    b.world.open_search->changed ("ATP");
    EXPECT_EQ (marks (), 3);
    b.world.open_search->ended ("ATP");
    EXPECT_EQ (marks (), 0);
}

TEST (commands, a_tab_is_closed_by_a_command_too) {
    Bench b;
    b.run (Command::new_tab);
    EXPECT_EQ (b.bench->tabs ().count (), 2);
    b.run (Command::close_tab);
    EXPECT_EQ (b.bench->tabs ().count (), 1);
    b.world.yes_no_answers = {true};
    b.run (Command::close_tab);
    EXPECT_TRUE (b.world.ended);
}

TEST (commands, a_simulation_is_stopped_by_a_command_only_while_one_runs) {
    const Bench b;
    EXPECT_FALSE (b.bench->entry (Command::stop_simulation).active);
}

TEST (commands, a_search_tells_how_many_and_shows_the_first) {
    Bench b;
    b.open_text ("[N3 0 2 8 8\n[S1 0 50 60 0 3 13{ATP}-]\n[S2 0 3000 2000 0 3 13{dATP}-]\n"
                 "[S3 0 250 60 0 3 13{glc}-]\n]");
    b.run (Command::find_reactant);
    ASSERT_TRUE (b.world.open_search);
    b.world.open_search->changed ("AT");
    EXPECT_EQ (b.world.status, "2 occurrences found");
    EXPECT_EQ (b.network ().x (), 8); // the first is in view
    b.world.open_search->step (true);
    EXPECT_EQ (b.world.status, "occurrence 2 of 2");
    EXPECT_EQ (b.network ().x (), 900 / 2 - 3000);
    EXPECT_EQ (b.network ().y (), 600 / 2 - 2000);
    b.world.open_search->changed ("dATP");
    EXPECT_EQ (b.world.status, "1 occurrence found");
    b.world.open_search->changed ("xyz");
    EXPECT_EQ (b.world.status, "0 occurrence found");
    b.world.open_search->ended ("xyz");
    EXPECT_EQ (b.world.status, "");
    EXPECT_EQ (b.record_count (), 1U);
    for (const auto& n : b.network ().nodes ()) EXPECT_EQ (n->highlight, document::no_highlight);
    b.run (Command::find_reactant);
    EXPECT_EQ (b.world.open_search->initial, "xyz");
}

TEST (commands, a_picture_needs_a_letter_and_a_readable_file) {
    Bench b;
    b.open_rich ();
    b.run (Command::insert_picture);
    EXPECT_EQ (b.world.alerts, (Strings{"Pictures can only be put in a label.\n"
                                        "Select a character in a line before."}));
    b.click (b.on_letter (b.node ("G"), 0));
    b.world.file_answers = {{(b.folder / "none.png").string ()}};
    b.run (Command::insert_picture);
    EXPECT_EQ (b.world.alerts.back (), "Picture '" + (b.folder / "none.png").string () +
                                           "'\ncannot be loaded (bad format or unreadable file)");
    EXPECT_EQ (b.record_count (), 1U);
}

TEST (commands, a_model_text_is_seen_from_its_beginning) {
    Bench b;
    const std::string path = b.folder.write (
        "m.ssa", "[a] = 1 mM; [E] = 1 mM; E : a -> b | 1 mM - 0.5; E : c -> a | 1 mM - 0.5;");
    ASSERT_TRUE (open_file (b.canvas (), path));
    bool is_above = false;
    for (const auto& node : b.network ().nodes ()) {
        const document::Extent seen = node->extent ().moved (b.network ().x (), b.network ().y ());
        EXPECT_GE (seen.x, 9);
        EXPECT_GE (seen.y, 9);
        is_above = is_above || node->extent ().y < 0;
    }
    EXPECT_TRUE (is_above); // enzymes, above the row of their reactions
    // What a native file tells is kept.
    b.open_text ("[N1 0 2 10 10\n[S1 0 50 -60 0 3 13{glc}-]\n]");
    EXPECT_EQ (b.network ().y (), 10);
}

TEST (commands, a_duration_is_what_the_text_begins_with) {
    Bench b;
    b.world.value_answers = {"25", "abc"};
    b.run (Command::set_duration);
    EXPECT_EQ (b.canvas ().duration (), 25);
    b.run (Command::set_duration);
    EXPECT_EQ (b.canvas ().duration (), 0);
}

TEST (commands, a_concentration_is_checked_in_the_dialog_and_not_in_the_line) {
    for (const auto& [text, sound] :
         {std::pair{"12 mM", true}, std::pair{"12 uM", true}, std::pair{"12 km", false}}) {
        for (const bool checked : {true, false}) {
            Bench b;
            b.open_rich ();
            b.world.values_are_checked = checked;
            b.world.value_answers = {text};
            b.click (b.on (b.node ("G")), 2);
            const bool taken = b.node ("G").user_data () != nullptr;
            EXPECT_EQ (taken, sound || !checked) << text;
            EXPECT_EQ (b.world.status.empty (), sound || !taken) << text;
        }
    }
}

TEST (commands, a_style_changes_the_selected_letters_or_the_one_at_the_cursor) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 90 60 0 3 9{abc}-]\n]");
    b.bench->toggle_bold (); // no text is edited
    EXPECT_EQ (b.record_count (), 1U);
    b.bench->toggle_bold ();
    b.click (b.on_letter (*b.network ().nodes ().front (), 1));
    b.bench->toggle_bold ();
    EXPECT_EQ (b.records ().back (), "labels 1 {a<75F>b<67F>c}{}");
    document::Line& line = *b.canvas ().selection.edit_line ();
    line.select_all ();
    b.bench->set_text_colour (1);
    EXPECT_EQ (b.records ().back (), "labels 1 {<75F><1C>abc}{}");
    b.bench->set_text_colour (1);
    EXPECT_EQ (b.record_count (), 3U); // is so already
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (commands, the_style_at_the_end_of_a_text_writes_no_record) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 90 60 0 3 9{abc}-]\n]");
    b.click (b.on_letter (*b.network ().nodes ().front (), 1));
    b.key ('e', test::ctrl);
    b.bench->toggle_bold ();
    EXPECT_EQ (b.record_count (), 1U);
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (commands, zoom_goes_by_5_percent_from_10_to_200_and_resets) {
    Bench b;
    for (int i = 0; i < 30; ++i) b.run (Command::zoom_in);
    EXPECT_EQ (b.canvas ().view.zoom (), 2.0F);
    b.run (Command::zoom_out);
    EXPECT_FLOAT_EQ (b.canvas ().view.zoom (), 1.95F);
    for (int i = 0; i < 50; ++i) b.run (Command::zoom_out);
    EXPECT_EQ (b.canvas ().view.zoom (), 0.1F);
    b.run (Command::zoom_reset);
    EXPECT_EQ (b.canvas ().view.zoom (), 1.0F);
}

TEST (commands, new_tabs_take_the_settings_of_the_start) {
    Preferences preferences;
    preferences.grid = true;
    preferences.zoom = 50;
    preferences.boundary = false;
    Bench b (preferences);
    b.run (Command::show_grid);
    b.run (Command::zoom_reset);
    b.run (Command::dark_mode);
    b.run (Command::new_tab);
    EXPECT_TRUE (b.canvas ().show_grid);
    EXPECT_FALSE (b.canvas ().show_boundary);
    EXPECT_EQ (b.canvas ().view.zoom (), 0.5F);
    EXPECT_TRUE (document::document_state ().dark_mode);
    EXPECT_TRUE (b.bench->entry (Command::show_grid).checked);
    b.bench->select_tab (0);
    EXPECT_FALSE (b.bench->entry (Command::show_grid).checked);
}

} // namespace
} // namespace ostrand::editor
