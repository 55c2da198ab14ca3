// Keys on a canvas: of the view, of texts, of fields, of the selection, behind prefixes.
#include "rich_bench.h"

#include "document/markup.h"
#include "editor/edit_reactants.h"

#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using test::Bench;
namespace keys = document::keys;
using Strings = std::vector<std::string>;

constexpr int home_key = 0xff50;
constexpr int page_up_key = 0xff55;
constexpr int page_down_key = 0xff56;
constexpr int end_key = 0xff57;

struct Rich : test::Rich {
    /// The pointer is over the text of the first reaction.
    document::Line& over_field () {
        document::Line& text = *reaction ().label_line ();
        canvas ().motion (on_text (reaction (), text));
        return text;
    }
};

struct Typed : Bench {
    explicit Typed (const std::string& label = "abc") {
        open_text ("[N1 0 2 8 8\n[S1 0 90 60 0 3 9{" + label + "}-]\n]");
        const document::Node& only = *network ().nodes ().front ();
        click (on_letter (only, only.label_line ()->count () > 2 ? 1 : 0));
    }
    std::string label () {
        const std::vector<std::string> all = records ();
        return all.back ().starts_with ("labels") ? all.back ().substr (9) : "no record";
    }
    document::Line& line () { return *canvas ().selection.edit_line (); }
    void text_key (int code, Modifiers held = {}) { canvas ().key_down ({code, {}, held}); }
};

// The view.

TEST (keys, home_and_end_go_to_the_corners) {
    Bench b;
    b.open_text ("[N2 0 2 -300 -200\n[S1 0 50 60 0 3 13{a}-]\n[S2 0 3000 2000 0 3 13{b}-]\n]");
    b.key (home_key);
    EXPECT_EQ (b.network ().x (), 10);
    EXPECT_EQ (b.network ().y (), 10);
    b.key (end_key);
    EXPECT_EQ (b.network ().x (), 10);
    EXPECT_EQ (b.network ().y (), -(static_cast<float> (b.network ().get_height ()) - 600 + 20));
}

TEST (keys, arrows_scroll_a_tenth_of_the_window_and_stop_at_the_ends) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 0 50 60 0 3 13{a}-]\n[S2 0 3000 2000 0 3 13{b}-]\n]");
    b.key (keys::left); // at the left end already: 8 is left of 10, and goes there
    EXPECT_EQ (b.network ().x (), 10);
    b.key (keys::left);
    EXPECT_EQ (b.network ().x (), 10);
    b.key (keys::right);
    EXPECT_EQ (b.network ().x (), 10 - 90);
    b.key (keys::down);
    EXPECT_EQ (b.network ().y (), 8 - 60);
    b.key (keys::up);
    EXPECT_EQ (b.network ().y (), 8);
    b.key (page_down_key);
    EXPECT_EQ (b.network ().y (), 8 - 580);
    b.key (page_up_key);
    EXPECT_EQ (b.network ().y (), 8);
    for (int i = 0; i < 100; ++i) b.key (keys::right);
    EXPECT_EQ (b.network ().x (), -(b.network ().get_width () - 900 + 20));
    EXPECT_EQ (b.record_count (), 1U);
}

TEST (keys, a_scroll_key_never_moves_against_its_direction) {
    Bench b;
    b.open_text ("[N1 0 2 300 200\n[S1 0 50 60 0 3 13{a}-]\n]");
    for (const auto& [key, x, y] :
         {std::tuple{keys::left, 300.0F, 200.0F}, std::tuple{keys::up, 300.0F, 200.0F}}) {
        b.key (key);
        EXPECT_EQ (b.network ().x (), x);
        EXPECT_EQ (b.network ().y (), y);
    }
    b.network ().set_origin (-2000, -2000);
    b.key (keys::right);
    b.key (keys::down);
    b.key (page_down_key);
    EXPECT_EQ (b.network ().x (), -2000);
    EXPECT_EQ (b.network ().y (), -2000);
}

TEST (keys, ctrl_and_arrows_change_the_tab_in_a_text_too) {
    Typed b;
    b.run (Command::new_tab);
    b.bench->select_tab (0);
    b.key (keys::right, test::ctrl);
    EXPECT_EQ (b.bench->tabs ().active (), 1);
    b.key (keys::left, test::ctrl);
    EXPECT_EQ (b.bench->tabs ().active (), 0);
    EXPECT_EQ (b.canvas ().mode, Mode::text);
}

// Prefixes.

TEST (keys, prefixes_work_under_the_standard_keys_until_the_option_was_switched) {
    Rich b;
    EXPECT_TRUE (b.key ('x', test::ctrl));
    EXPECT_EQ (b.world.status, "^X");
    b.key ('d', test::ctrl);
    EXPECT_TRUE (document::document_state ().dark_mode);
    b.run (Command::emacs_keys);
    b.run (Command::emacs_keys);
    EXPECT_EQ (b.bench->shared ().key_state, KeyState::standard);
    b.key ('x', test::ctrl);
    EXPECT_NE (b.world.status, "^X");
}

TEST (keys, an_unbound_key_behind_a_prefix_is_told_and_the_next_prefix_works) {
    Rich b;
    b.key ('x', test::ctrl);
    b.key ('q', test::ctrl);
    EXPECT_EQ (b.world.status, "Invalid keyboard command");
    b.key (keys::escape_code);
    EXPECT_EQ (b.world.status, "Esc-");
    b.key ('y');
    EXPECT_EQ (b.world.status, "Invalid keyboard command");
    b.key ('x', test::ctrl);
    EXPECT_EQ (b.world.status, "^X");
    b.key ('d', test::ctrl);
    EXPECT_TRUE (document::document_state ().dark_mode);
}

TEST (keys, every_key_behind_control_x_runs_its_command) {
    Rich b;
    std::vector<Command> run;
    b.canvas ().callbacks.on_command = [&run] (Command command) { run.push_back (command); };
    for (const char letter : {'c', 'd', 'f', 'i', 'p', 'r', 's', 'v', 'w'}) {
        b.key ('x', test::ctrl);
        b.key (letter, test::ctrl);
    }
    EXPECT_EQ (run, (std::vector<Command>{Command::quit, Command::dark_mode, Command::open_file,
                                          Command::insert_file, Command::insert_picture,
                                          Command::load_file, Command::save_file,
                                          Command::reopen_file, Command::save_as}));
}

TEST (keys, every_key_behind_escape_runs_its_command_or_scrolls) {
    Rich b;
    std::vector<Command> run;
    b.canvas ().callbacks.on_command = [&run] (Command command) { run.push_back (command); };
    for (const char letter : {'\x1b', '+', '=', '-', '0', 'd', 'k', 's', 'z'}) {
        b.key (keys::escape_code);
        b.key (letter);
    }
    EXPECT_EQ (run,
               (std::vector<Command>{Command::documentation, Command::zoom_in, Command::zoom_in,
                                     Command::zoom_out, Command::zoom_reset, Command::duplicate,
                                     Command::copy, Command::export_svg, Command::export_pdf}));
    b.network ().set_origin (-50, -60);
    b.key (keys::escape_code);
    b.key ('<');
    EXPECT_EQ (b.network ().x (), 10);
    EXPECT_EQ (b.network ().y (), 10);
}

TEST (keys, a_prefix_of_one_tab_ends_in_the_tab_that_gets_the_next_key) {
    Rich b;
    b.key ('x', test::ctrl);
    b.run (Command::new_tab);
    b.key ('d', test::ctrl);
    EXPECT_TRUE (document::document_state ().dark_mode);
}

TEST (keys, ctrl_and_equals_does_again) {
    Rich b;
    b.click (b.on (b.node ("G")));
    b.canvas ().undo ();
    b.canvas ().key_down ({'=', "=", test::ctrl});
    EXPECT_EQ (b.selected ().size (), 1U);
}

TEST (keys, under_emacs_keys_control_letters_scroll_and_shortcuts_go_to_the_menu) {
    Bench b;
    b.open_text ("[N2 0 2 10 10\n[S1 0 50 60 0 3 13{a}-]\n[S2 0 3000 2000 0 3 13{b}-]\n]");
    b.run (Command::emacs_keys);
    EXPECT_TRUE (b.key ('n', test::ctrl));
    EXPECT_EQ (b.network ().y (), 10 - 60);
    EXPECT_TRUE (b.key ('p', test::ctrl));
    EXPECT_EQ (b.network ().y (), 10);
    EXPECT_TRUE (b.key ('f', test::ctrl));
    EXPECT_EQ (b.network ().x (), 10 - 90);
    EXPECT_TRUE (b.key ('b', test::ctrl));
    EXPECT_EQ (b.network ().x (), 10);
    EXPECT_TRUE (b.key ('v', test::ctrl));
    EXPECT_EQ (b.network ().y (), 10 - 580);
    EXPECT_FALSE (b.key ('s', test::ctrl)); // the search, not the save
    EXPECT_EQ (command_for ({.ctrl = true, .key = 's'}, ShortcutSet::emacs),
               Command::find_reactant);
}

TEST (keys, with_alt_no_letter_is_typed) {
    Typed b;
    EXPECT_FALSE (b.canvas ().key_down ({'f', "f", test::alt}));
    EXPECT_EQ (b.records ().size (), 1U);
}

TEST (keys, tab_starts_the_simulation) {
    Rich b;
    std::vector<Command> run;
    b.canvas ().callbacks.on_command = [&run] (Command command) { run.push_back (command); };
    EXPECT_TRUE (b.canvas ().key_down ({0xff09, "\t", {}}));
    EXPECT_EQ (run, (std::vector<Command>{Command::start_simulation}));
}

// The selection.

TEST (keys, arrows_move_the_selection_by_one_unit_each_with_a_record) {
    Rich b;
    b.click (b.on (b.node ("G")));
    b.key (keys::up);
    b.key (keys::left);
    EXPECT_EQ (b.node ("G").x (), 99);
    EXPECT_EQ (b.node ("G").y (), 329);
    EXPECT_EQ (b.added (), (Strings{"selection " + b.id (b.node ("G")), "move 0 -1", "move -1 0"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keys, arrows_on_a_selected_arc_do_nothing) {
    Rich b;
    b.click (b.on (b.arc ("glc")));
    const float x = b.network ().x ();
    EXPECT_FALSE (b.key (keys::right));
    EXPECT_EQ (b.network ().x (), x);
    EXPECT_EQ (b.added ().size (), 1U);
}

TEST (keys, delete_removes_the_selection_in_one_snapshot) {
    for (const int key : {keys::delete_key, keys::backspace, keys::delete_code}) {
        Rich b;
        b.click (b.on (b.node ("glc"))); // the reaction goes with it, and what ends on that
        b.click (b.on (b.arc ("HK"), test::ctrl));
        EXPECT_TRUE (b.canvas ().key_down ({key, {}, {}}));
        EXPECT_EQ (b.network ().nb_nodes (), 9);
        EXPECT_EQ (b.network ().count_arcs (), 2);
        EXPECT_EQ (b.added ().back (), "snapshot");
        EXPECT_EQ (b.canvas ().selection.count (), 0);
        EXPECT_EQ (b.undo_and_redo (), "");
    }
}

TEST (keys, delete_with_an_object_that_is_not_selectable_does_nothing) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 50 60 0 3 13{a}-]\n]");
    b.click (b.on (b.node ("a")));
    b.node ("a").set_selectable (false);
    EXPECT_FALSE (b.key (keys::delete_key));
    EXPECT_EQ (b.network ().nb_nodes (), 1);
}

TEST (keys, cut_with_nothing_selected_cannot_be_chosen) {
    Rich b;
    EXPECT_FALSE (b.bench->entry (Command::cut).active);
    b.click (b.on (b.node ("G")));
    EXPECT_TRUE (b.bench->entry (Command::cut).active);
}

// Fields under the pointer.

TEST (keys, arrows_move_the_field_under_the_pointer_by_one_and_with_shift_by_eight) {
    Rich b;
    document::Line& text = b.over_field ();
    EXPECT_EQ (b.canvas ().selected_field (), &text);
    b.key (keys::right);
    b.key (keys::down, test::shift);
    EXPECT_EQ (text.x (), 1);
    EXPECT_EQ (text.y (), 8);
    const std::string id = b.id (b.arc ("glc"));
    EXPECT_EQ (b.added (), (Strings{"labels " + id + " {0.1}(1 0){}{}{}",
                                    "labels " + id + " {0.1}(1 8){}{}{}"}));
    EXPECT_TRUE (b.canvas ().modified ());
    b.key (keys::escape_code);
    EXPECT_EQ (text.x (), 0);
    EXPECT_EQ (text.y (), 0);
    EXPECT_EQ (b.added ().size (), 3U);
    b.key (keys::escape_code); // it is there already
    EXPECT_EQ (b.added ().size (), 3U);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keys, a_moved_text_that_is_emptied_leaves_the_others_in_the_record) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 1 90 60 0 3 13{a}-]\n[S2 0 390 60 0 3 13{b}-]\n"
                 "[A3 0 272 2 1 2{x}(20 3){yz}]\n]");
    const document::Line& text = *b.arc ("a").label_line ();
    b.click (b.on_text (b.arc ("a"), text));
    ASSERT_EQ (b.canvas ().mode, Mode::text);
    b.key (document::keys::delete_key);
    EXPECT_EQ (b.records ().back (), "labels 3 {}(20 3){yz}{}{}");
    EXPECT_EQ (b.undo_and_redo (), "");
    EXPECT_NE (b.arc ("a").residu (), nullptr);
}

TEST (keys, a_field_without_letters_is_not_moved) {
    Rich b;
    auto& arc = *static_cast<document::Arque*> (b.over_field ().find_object ());
    arc.take_label (document::line_from_markup ("", document::start_font, 0));
    EXPECT_FALSE (move_label (arc, *arc.label_line (), 12, 30));
    EXPECT_EQ (arc.label ()->x (), 0);
}

TEST (keys, delete_takes_the_field_under_the_pointer_away) {
    Rich b;
    b.over_field ();
    b.key (keys::delete_key);
    EXPECT_EQ (b.arc ("glc").label (), nullptr);
    EXPECT_EQ (b.canvas ().selected_field (), nullptr);
    EXPECT_EQ (b.added (), Strings{"labels " + b.id (b.arc ("glc")) + " {}{}{}{}"});
    EXPECT_EQ (b.undo_and_redo (), "");
    b.canvas ().undo ();
    EXPECT_NE (b.arc ("glc").label (), nullptr);
}

TEST (keys, with_something_selected_keys_are_not_the_fields) {
    Rich b;
    b.click (b.on (b.node ("G")));
    const document::Line& text = b.over_field ();
    b.key (keys::right);
    EXPECT_EQ (text.x (), 0);
    EXPECT_EQ (b.node ("G").x (), 101);
}

// Texts.

TEST (keys, letters_are_typed_each_with_a_record) {
    Typed b;
    b.type ("xy");
    EXPECT_EQ (b.records (1), (Strings{"labels 1 {axbc}{}", "labels 1 {axybc}{}"}));
    EXPECT_EQ (b.undo_and_redo (), "");
    EXPECT_EQ (b.canvas ().mode, Mode::selection); // redo ends the editing
}

TEST (keys, letters_of_latin_1_are_typed) {
    Typed b;
    b.canvas ().key_down ({0xe9, "\xC3\xA9", {}});
    EXPECT_EQ (b.label (), "{a\xC3\xA9"
                           "bc}{}");
    EXPECT_EQ (b.undo_and_redo (), "");
    EXPECT_FALSE (Typed ().canvas ().key_down ({0x20ac, "\xE2\x82\xAC", {}})); // the euro is none
}

TEST (keys, control_letters_edit_a_text_under_both_sets) {
    for (const bool emacs : {false, true}) {
        Typed b ("abcdef");
        if (emacs) b.run (Command::emacs_keys);
        b.key ('a', test::ctrl);
        EXPECT_EQ (b.line ().cursor, 0);
        b.key ('e', test::ctrl);
        EXPECT_EQ (b.line ().cursor, 6);
        b.key ('b', test::ctrl);
        EXPECT_EQ (b.line ().cursor, 5);
        b.key ('h', test::ctrl);
        EXPECT_EQ (b.label (), "{abcdf}{}");
        b.key ('b', test::ctrl);
        b.key ('d', test::ctrl);
        EXPECT_EQ (b.label (), "{abcf}{}");
        b.key ('a', test::ctrl);
        b.key ('f', test::ctrl);
        b.key ('k', test::ctrl);
        EXPECT_EQ (b.label (), "{a}{}");
        EXPECT_EQ (b.record_count (), 4U);
        EXPECT_EQ (b.undo_and_redo (), "");
    }
}

TEST (keys, scripts_are_entered_and_left) {
    Typed b;
    b.text_key (keys::down, test::shift);
    b.type ("2");
    EXPECT_EQ (b.label (), "{a[Eb{<66F>2}-]<67F>c}{}");
    b.text_key (keys::left, test::shift);
    EXPECT_EQ (b.line ().cursor, 1);
    b.text_key (keys::up, test::shift);
    b.type ("+");
    EXPECT_EQ (b.label (), "{a[Eb{<66F>2}{+}]<67F>c}{}");
    b.canvas ().key_down ({keys::escape, "\x1b", {}});
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keys, a_script_that_is_entered_again_writes_nothing) {
    Typed b;
    b.text_key (keys::down, test::shift);
    EXPECT_EQ (b.record_count (), 2U);
    b.text_key (keys::left, test::shift);
    b.text_key (keys::down, test::shift);
    EXPECT_EQ (b.record_count (), 2U);
}

TEST (keys, a_selection_typed_over_by_itself_writes_nothing) {
    Typed b ("a");
    b.line ().select_all ();
    b.type ("a");
    EXPECT_EQ (b.record_count (), 1U);
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (keys, delete_edits_the_text_and_not_the_node) {
    Typed b;
    b.key (keys::delete_key);
    EXPECT_EQ (b.label (), "{ac}{}");
    b.key (keys::backspace);
    EXPECT_EQ (b.label (), "{c}{}");
    EXPECT_EQ (b.network ().nb_nodes (), 1);
}

TEST (keys, the_text_of_a_node_may_be_emptied_and_comes_back) {
    Typed b ("a");
    b.line ().select_all ();
    b.key (keys::delete_key);
    EXPECT_EQ (b.label (), "{}{}");
    EXPECT_EQ (b.undo_and_redo (), "");
    EXPECT_NE (b.network ().nodes ().front ()->label (), nullptr); // one line high
}

TEST (keys, a_style_for_letters_that_did_not_come_goes_with_the_edit) {
    Typed b;
    const document::Node& only = *b.network ().nodes ().front ();
    const int height = only.get_height ();
    b.key ('e', test::ctrl);
    b.bench->set_font_size (20);
    b.network ().layout ();
    EXPECT_GT (only.get_height (), height);
    b.click (b.beside ());
    b.network ().layout ();
    EXPECT_EQ (only.get_height (), height);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keys, a_compartment_that_a_long_name_made_wider_stays_so_when_done_again) {
    Bench b;
    b.open_text ("[N1 1 2 8 8\n[C1 12 40 40 60 100 0 8{C}{0:0+0+0+0}]\n[S2 0 70 90 0 3 13{a}-]\n]");
    document::Compart& cell = *b.network ().comps ().front ();
    const auto type_long_and_short = [&] {
        for (int i = 0; i < 30; ++i) b.key ('W');
        for (int i = 0; i < 30; ++i) b.canvas ().key_down ({document::keys::backspace, {}, {}});
    };
    b.canvas ().selection.edit (*cell.label_line (), 0);
    b.canvas ().mode = Mode::text;
    const float width = cell.width ();
    type_long_and_short ();
    EXPECT_GT (cell.width (), 2 * width);
    const std::string text = b.text ();
    b.key ('x');
    b.canvas ().undo ();
    EXPECT_EQ (b.text (), text);
}

TEST (keys, a_label_edit_that_makes_a_clone_is_a_snapshot) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 0 90 60 0 3 13{ab}-]\n[S2 0 190 60 0 3 13{a}-]\n]");
    b.click (b.on_letter (b.node ("ab"), 1));
    b.key (keys::delete_key);
    EXPECT_TRUE (b.network ().nodes ().front ()->is_shared ());
    EXPECT_EQ (b.records (1), Strings{"snapshot"});
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keys, two_proteins_of_one_label_are_clones_until_one_is_removed) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 0 90 60 0 3 9{a}-]\n[S2 0 190 60 0 3 9{a}-]\n]");
    EXPECT_TRUE (b.network ().nodes ()[0]->is_shared ());
    EXPECT_TRUE (b.network ().nodes ()[1]->is_shared ());
    b.run (Command::share_clones); // nothing new
    EXPECT_EQ (b.record_count (), 1U);
    b.click (b.on (*b.network ().nodes ()[1]));
    b.key (keys::delete_key);
    b.run (Command::share_clones);
    EXPECT_FALSE (b.network ().nodes ()[0]->is_shared ());
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keys, the_modifier_keys_light_their_row_of_the_mouse_help) {
    Rich b;
    const auto row = [&b] (bool down, int key, Modifiers held) {
        if (down)
            b.canvas ().key_down ({key, {}, held});
        else
            b.canvas ().key_up ({key, {}, held});
        return b.world.mouse_help_row;
    };
    EXPECT_EQ (row (true, 0xffe1, {}), 1);
    EXPECT_EQ (row (true, 0xffe3, {}), 2);
    EXPECT_EQ (row (true, 0xffe4, test::shift), 3);
    EXPECT_EQ (row (true, 0xffe2, test::ctrl), 3);
    EXPECT_EQ (row (false, 0xffe1, test::ctrl), 2);
    EXPECT_EQ (row (false, 0xffe3, test::shift), 1);
    EXPECT_EQ (row (false, 0xffe3, {}), 0);
}

// The clipboard.

TEST (clipboard, copied_nodes_are_pasted_to_the_right_and_selected) {
    Rich b;
    b.click (b.on (b.node ("glc")));
    b.click (b.on (b.node ("g6p"), test::ctrl));
    b.run (Command::copy);
    EXPECT_TRUE (b.world.clipboard.starts_with ("[N2 "));
    EXPECT_EQ (b.added ().size (), 2U);
    b.run (Command::paste);
    EXPECT_EQ (b.network ().nb_nodes (), 12);
    EXPECT_EQ (b.selected ().size (), 2U);
    EXPECT_EQ (b.added ().back (), "snapshot");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (clipboard, a_network_is_merged_though_a_text_is_edited_and_a_text_only_then) {
    Rich b;
    b.world.clipboard = "plain words";
    b.run (Command::paste);
    const std::string gene = b.id (b.node ("G"));
    b.click (b.on (b.node ("G")));
    b.run (Command::paste);
    EXPECT_EQ (b.added ().size (), 1U);
    b.click (b.on_letter (b.node ("G"), 0));
    b.run (Command::paste);
    EXPECT_EQ (b.added ().back (), "labels " + gene + " {plain wordsG}{}");
    b.world.clipboard = "[N1 0 2 8 8\n[S1 0 50 60 0 3 13{new}-]\n]";
    b.run (Command::paste);
    EXPECT_EQ (b.network ().nb_nodes (), 11);
    EXPECT_EQ (b.added ().back (), "snapshot");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (clipboard, own_letters_are_pasted_as_markup_and_others_as_letters) {
    Typed b ("[Ea{b}-]c");
    b.line ().sel_start = 0;
    b.line ().sel_end = 0;
    b.line ().select_range ();
    b.run (Command::copy);
    b.line ().clear_selection ();
    b.key ('e', test::ctrl);
    b.run (Command::paste);
    EXPECT_EQ (b.label (), "{[Ea{b}-]c[Ea{b}-]}{}");
    b.world.clipboard = "_{2}";
    b.run (Command::paste);
    EXPECT_EQ (b.label (), "{[Ea{b}-]c[Ea{b}-]\\_\\{2\\}}{}");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (clipboard, a_copy_has_no_bound) {
    Bench b;
    std::string text = "[N600 0 2 8 8\n";
    for (int i = 1; i <= 600; ++i)
        text += "[S" + std::to_string (i) + " 0 " + std::to_string (i * 20) + " 60 0 3 13{" +
                std::string (150, 'a') + std::to_string (i) + "}-]\n";
    b.open_text (text + "]");
    b.run (Command::select_all);
    b.run (Command::copy);
    EXPECT_GT (b.world.clipboard.size (), 100000U);
    b.run (Command::paste);
    EXPECT_EQ (b.network ().nb_nodes (), 1200);
}

TEST (clipboard, cut_takes_letters_out_of_a_text) {
    Typed b ("abcdef");
    b.line ().sel_start = 1;
    b.line ().sel_end = 2;
    b.line ().select_range ();
    b.run (Command::cut);
    EXPECT_EQ (b.world.clipboard, "bc");
    EXPECT_EQ (b.label (), "{adef}{}");
}

} // namespace
} // namespace ostrand::editor
