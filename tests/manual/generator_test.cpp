// The form of the manual, its chapters, and what a browser needs of it.
#include "manual/generator.h"

#include "base/text.h"
#include "editor/bindings.h"
#include "manual/chapters.h"
#include "manual/lexer.h"
#include "manual/manual_images.h"
#include "manual/paragraphs.h"
#include "support/support.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace ostrand::manual {
namespace {

using editor::ShortcutSet;

const std::string& light_manual () {
    static const std::string text = generate_manual ({.image_directory = "/tmp"});
    return text;
}

int count_of (std::string_view text, std::string_view part) {
    int count = 0;
    for (std::size_t at = text.find (part); at != std::string_view::npos;
         at = text.find (part, at + part.size ())) {
        ++count;
    }
    return count;
}

std::set<std::string> all_matches (const std::string& text, const char* pattern) {
    std::set<std::string> found;
    const std::regex expression (pattern);
    for (std::sregex_iterator i (text.begin (), text.end (), expression), end; i != end; ++i) {
        found.insert ((*i)[1]);
    }
    return found;
}

TEST (manual_form, begins_with_its_head) {
    EXPECT_TRUE (light_manual ().starts_with (
        "<html>\n<head>\n<title>Ostrand online documentation</title>\n</head>\n"
        "<body text=#0 bgcolor=#ffffff link=#00d0d0 vlink=#d0d000>\n"
        "<br><center><font size=4><b>OSTRAND USER MANUAL\n<br>Menubar commands</b></font></center>"
        "<p>"));
}

TEST (manual_form, in_dark_mode_letters_are_white_on_black) {
    const std::string dark = generate_manual ({.dark = true, .image_directory = "/tmp"});
    EXPECT_NE (dark.find ("<body text=#ffffff bgcolor=#0 link=#00d0d0 vlink=#d0d000>\n"),
               std::string::npos);
    // Nothing else depends on it.
    EXPECT_EQ (dark.substr (dark.find ("<br>")),
               light_manual ().substr (light_manual ().find ("<br>")));
}

TEST (manual_form, ends_with_its_tail) {
    EXPECT_TRUE (light_manual ().ends_with ("<p>\n</font>\n</body>\n</html>\n"));
}

TEST (manual_form, menus_mouse_keyboard_and_tail_follow_each_other_without_a_gap) {
    std::string menus;
    auto menu = editor::Menu::tool_bar;
    for (const editor::CommandRow& row : editor::command_rows ()) {
        if (row.menu == editor::Menu::tool_bar) continue;
        if (row.menu != menu) menus += menu_heading (row.menu);
        menu = row.menu;
        menus += command_paragraph (row, ShortcutSet::standard, "/tmp");
    }
    std::string mouse = "<center><font size=4><b>Mouse contextual commands</b></font></center><p>";
    std::string keys = "<center><font size=4=><b>Keyboard commands</b></font></center><p>";
    for (const editor::Binding& binding : editor::bindings ()) {
        (binding.event () == editor::BindingEvent::key ? keys : mouse) +=
            binding_paragraph (binding, "/tmp");
    }
    EXPECT_TRUE (light_manual ().ends_with (menus + mouse + keys + "</font>\n</body>\n</html>\n"));
}

TEST (manual_form, has_a_paragraph_for_every_command_and_binding) {
    for (const editor::CommandRow& row : editor::command_rows ()) {
        EXPECT_EQ (
            count_of (light_manual (), command_paragraph (row, ShortcutSet::standard, "/tmp")), 1)
            << row.label;
    }
    EXPECT_EQ (count_of (light_manual (), "<b>Pointer "),
               static_cast<int> (editor::bindings ().size ()));
}

TEST (manual_form, has_a_heading_for_every_menu_in_order) {
    std::size_t at = 0;
    for (const char* heading :
         {"<h3><u>F</u>ile</h3>", "<h3><u>E</u>dit</h3>", "<h3><u>V</u>iew</h3>",
          "<h3><u>S</u>imulation</h3>", "<h3><u>F</u>ormula</h3>", "<h3><u>H</u>elp</h3>"}) {
        const std::size_t found = light_manual ().find (heading, at);
        ASSERT_NE (found, std::string::npos) << heading;
        at = found;
    }
}

TEST (manual_form, keyboard_heading_stands_once_before_the_first_key) {
    EXPECT_EQ (count_of (light_manual (), "Keyboard commands</b>"), 1);
    const std::string before = light_manual ().substr (0, light_manual ().find ("<font size=4=>"));
    EXPECT_EQ (before.find ("Arrow Key</font>"), std::string::npos);
}

TEST (manual_form, with_the_emacs_set_shows_its_shortcuts_everywhere) {
    const std::string emacs =
        generate_manual ({.shortcuts = ShortcutSet::emacs, .image_directory = "/tmp"});
    EXPECT_NE (emacs, light_manual ());
    EXPECT_NE (emacs.find ("<b>Edit -> Undo</b> (Ctrl+-)"), std::string::npos);
    EXPECT_EQ (emacs.find ("(Ctrl+Z)"), std::string::npos);
    EXPECT_NE (emacs.find ("<u>Q</u>uit (^X^C)</font>"), std::string::npos);
}

TEST (chapters, come_in_reading_order_and_the_tutorial_first) {
    std::vector<std::string> names;
    for (const Chapter& chapter : chapters ()) names.emplace_back (chapter.name);
    EXPECT_THAT (names,
                 ::testing::ElementsAre ("introduction", "tutorial", "drawing", "tool_bar", "files",
                                         "simulation", "curves", "gates", "formulas", "menus"));
}

TEST (chapters, are_plain_ascii_since_the_head_tells_no_encoding) {
    for (const char c : light_manual ()) ASSERT_LT (static_cast<unsigned char> (c), 128);
}

TEST (chapters, leave_no_reference_open) {
    for (const Chapter& chapter : chapters ()) {
        const std::string html = expand_references (chapter.text, ShortcutSet::standard, "");
        EXPECT_EQ (html.find ('@'), std::string::npos)
            << chapter.name << ": " << html.substr (html.find ('@'), 40);
    }
    EXPECT_EQ (light_manual ().find ('@'), std::string::npos);
}

TEST (chapters, show_only_pictures_of_the_table) {
    const auto shown = all_matches (light_manual (), "<img src=/tmp/([^>]*)>");
    EXPECT_GE (shown.size (), 15U);
    for (const std::string& name : shown) {
        EXPECT_TRUE (std::ranges::count (manual_image_names (), name) == 1) << name;
    }
}

TEST (chapters, every_link_leads_to_an_anchor_and_every_anchor_has_one_place) {
    const auto targets = all_matches (light_manual (), "<a href=#([^>]*)>");
    const auto anchors = all_matches (light_manual (), "<a name=([^>]*)>");
    EXPECT_GE (targets.size (), 9U);
    for (const std::string& target : targets) EXPECT_TRUE (anchors.contains (target)) << target;
    for (const std::string& anchor : anchors) {
        EXPECT_EQ (count_of (light_manual (), "<a name=" + anchor + ">"), 1) << anchor;
    }
}

TEST (chapters, every_chapter_is_in_the_contents) {
    const auto targets = all_matches (light_manual (), "<a href=#([^>]*)>");
    for (const Chapter& chapter : chapters ()) {
        const auto anchors = all_matches (std::string (chapter.text), "<a name=([^>]*)>");
        if (chapter.name == "introduction") continue;
        ASSERT_FALSE (anchors.empty ()) << chapter.name;
        EXPECT_TRUE (std::ranges::any_of (anchors, [&] (const std::string& anchor) {
            return targets.contains (anchor);
        })) << chapter.name;
    }
}

TEST (chapters, name_only_files_that_are_there) {
    const auto files = all_matches (light_manual (), "<kbd>(examples/[^<]*)</kbd>");
    EXPECT_GE (files.size (), 3U);
    for (const std::string& file : files) {
        EXPECT_TRUE (std::filesystem::exists (ostrand::testing::source_path (file))) << file;
    }
}

TEST (chapters, speak_of_ostrand_alone) {
    for (const char* other : {"Merivale", "Lattrix"}) {
        EXPECT_EQ (light_manual ().find (other), std::string::npos) << other;
    }
}

/// The elements that a browser would find open or closed out of turn, in the words of this test.
/// "p" and "li" need no end.
std::vector<std::string> unsound_elements (std::string_view html) {
    std::vector<std::string> faults;
    std::vector<std::string> open;
    const std::regex tag ("<(/?)([a-z0-9]+)[^>]*>");
    const std::string text (html);
    const std::set<std::string> without_end{"br", "img", "p"};
    for (std::sregex_iterator i (text.begin (), text.end (), tag), end; i != end; ++i) {
        const std::string name = (*i)[2];
        if (without_end.contains (name)) continue;
        if ((*i)[1].length () == 0) {
            open.push_back (name);
        } else if (open.empty () || open.back () != name) {
            faults.push_back ("</" + name + "> at byte " + std::to_string (i->position ()) +
                              " closes <" + (open.empty () ? "nothing" : open.back ()) + ">");
            return faults;
        } else {
            open.pop_back ();
        }
    }
    for (const std::string& name : open) faults.push_back ("<" + name + "> stays open");
    return faults;
}

TEST (manual_structure, every_element_is_closed_in_turn) {
    EXPECT_THAT (unsound_elements (light_manual ()), ::testing::IsEmpty ());
}

TEST (manual_structure, the_check_itself_sees_what_is_wrong) {
    EXPECT_THAT (unsound_elements ("<b><i></b></i>"), ::testing::Not (::testing::IsEmpty ()));
    EXPECT_THAT (unsound_elements ("<b>"), ::testing::ElementsAre ("<b> stays open"));
    EXPECT_THAT (unsound_elements ("</b>"), ::testing::Not (::testing::IsEmpty ()));
}

TEST (manual_structure, lists_hold_items_only_and_items_stand_in_lists) {
    const std::string text = light_manual ();
    const std::regex tag ("<(/?)(ul|ol|li)[^>]*>");
    std::vector<std::string> open;
    for (std::sregex_iterator i (text.begin (), text.end (), tag), end; i != end; ++i) {
        const std::string name = (*i)[2];
        if ((*i)[1].length () != 0) {
            open.pop_back ();
            continue;
        }
        if (name == "li") {
            ASSERT_TRUE (!open.empty () && open.back () != "li") << i->position ();
        }
        open.push_back (name);
    }
    EXPECT_TRUE (open.empty ());
}

TEST (manual_structure, an_html_reader_finds_no_fault_but_the_end_of_the_outermost_font) {
    const auto is_there = ostrand::testing::run_program ({"/usr/bin/env", "xmllint", "--version"});
    if (is_there.status != 0) GTEST_SKIP () << "xmllint is not installed";
    const auto read = ostrand::testing::run_program (
        {"/usr/bin/env", "xmllint", "--html", "--noout", "-"}, {}, light_manual ());
    // It would complain of unknown, unclosed and wrongly nested elements. By its rules a paragraph
    // ends a "font" around it, so that the last line but two ends one that is closed already.
    EXPECT_EQ (count_of (read.error, "error :"), 1) << read.error;
    EXPECT_NE (read.error.find ("Unexpected end tag : font\n</font>\n"), std::string::npos)
        << read.error;
}

TEST (tutorial, its_networks_are_models_with_the_numbers_that_it_tells) {
    using ostrand::testing::run_program;
    const auto model_of = [] (const char* file) {
        return run_program ({"ostrand-tool", "model", ostrand::testing::source_path (file)}).out;
    };
    const std::string hexokinase = model_of ("examples/hexokinase.net");
    EXPECT_NE (
        hexokinase.find (R"("HK" : "glucose" + "ATP" -> "G6P" + "ADP" | 80 uM, 150 uM - 37.7 ;)"),
        std::string::npos);
    EXPECT_NE (hexokinase.find (R"(["glucose"] = 1 mM -> 5 mM : 1 mM;)"), std::string::npos);
    EXPECT_NE (hexokinase.find (R"(display ("glucose", "G6P", "ATP");)"), std::string::npos);
    const std::string logic = model_of ("examples/gap-logic.net");
    EXPECT_NE (logic.find (R"("PFK1" : "F6P" + "ATP" -> "F16BP" + "ADP" | 100 uM, 710 uM - 152 ;)"),
               std::string::npos);
    EXPECT_NE (logic.find (R"(["G6P"] = 0 mM, 0.5 mM;)"), std::string::npos);
}

TEST (tutorial, its_formula_has_the_one_implementation_that_it_tells) {
    using ostrand::testing::run_program;
    const ostrand::testing::TemporaryFolder folder;
    const std::string model = ostrand::testing::source_path ("examples/glycolysis-upper.xml");
    ASSERT_EQ (
        run_program ({"ostrand-tool", "gates", model, "--output", "gates"}, folder.path ()).status,
        0);
    const auto found =
        run_program ({"ostrand-tool", "formula", "gates", "ATP . G6P", "GAP"}, folder.path ());
    EXPECT_EQ (found.out, "1 implementation found\nALD PFK PGI\n");
}

} // namespace
} // namespace ostrand::manual
