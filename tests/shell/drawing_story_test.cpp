// Networks that a user draws from nothing, by mouse and keyboard.
#include "shell/drawing_user.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

namespace ostrand::testing {
namespace {

using ::testing::HasSubstr;

int count (const std::string& text, const std::string& word) {
    int found = 0;
    for (std::size_t at = text.find (word); at != std::string::npos; at = text.find (word, at + 1))
        ++found;
    return found;
}

TEST (drawing_story, upper_glycolysis_from_nothing) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.start ({}, "Ostrand");
    const Drawing draw (editor);
    const int column[] = {100, 280, 460, 640};
    const char* const molecules[] = {"Glc", "G6P", "F6P", "F16BP"};
    const char* const enzymes[] = {"HK", "GPI", "PFK"};
    for (int i = 0; i < 4; ++i) draw.add (new_molecule_x, molecules[i], column[i], 250);
    for (int i = 0; i < 3; ++i)
        draw.add (new_protein_x, enzymes[i], (column[i] + column[i + 1]) / 2, 170);
    for (int i = 0; i < 3; ++i) {
        draw.select (column[i], 250);
        draw.shift_click (column[i + 1], 250);
    }
    for (int i = 0; i < 3; ++i) {
        const int square = (column[i] + column[i + 1]) / 2;
        draw.select (square, 170);
        draw.shift_click (square, 250);
    }
    const std::string text = draw.saved ("upper.net");
    for (const char* const name : molecules)
        EXPECT_THAT (text, HasSubstr (std::string ("{") + name + "}"));
    for (const char* const name : enzymes)
        EXPECT_THAT (text, HasSubstr (std::string ("{") + name + "}"));
    EXPECT_EQ (count (text, "\n[A"), 6); // three reactions, each with its enzyme
    EXPECT_EQ (count (text, " 0 272 "), 3);
    EXPECT_EQ (count (text, " 0 32 "), 3);
}

TEST (drawing_story, a_name_with_a_subscript_a_superscript_and_a_picture) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.home ().write ("dot.png", file_text (source_path ("docs/manual/mouse-keyboard.png")));
    editor.start ({}, "Ostrand");
    const Drawing draw (editor);
    draw.add (new_molecule_x, "Ca", 300, 250);
    for (const char* const key : {"Left", "shift+Up"}) editor.key (key);
    editor.type ("2+");
    for (const char* const key : {"shift+Left", "ctrl+e"}) editor.key (key);
    draw.add (new_molecule_x, "H", 600, 250);
    for (const char* const key : {"Left", "shift+Down"}) editor.key (key);
    editor.type ("2");
    for (const char* const key : {"shift+Left", "ctrl+e"}) editor.key (key);
    editor.type ("O");
    editor.key ("ctrl+shift+i");
    pause (300);
    editor.type ("dot.png");
    editor.key ("Return");
    pause (300);
    // The picture is shown: nothing else on the canvas has its orange.
    EXPECT_TRUE (editor.shows_colour (300, canvas_y, 700, 500, 0xFFA033, 40));
    const std::string text = draw.saved ("rich.net");
    EXPECT_THAT (text, HasSubstr ("[Ea-{<66F>2+}]"));
    EXPECT_THAT (text, HasSubstr ("[EH{<"));
    EXPECT_THAT (text, HasSubstr ("dot.png]"));
}

/// Two reactions that share the ATP between them.
constexpr const char* shared_atp =
    "# Lattrix: 1.2\n[N5 0 2 10 10\n[S1 0 100 150 0 3 13{A}-]\n[S2 0 400 150 0 3 13{B}-]\n"
    "[S3 0 250 300 0 3 13{ATP}-]\n[S4 0 100 450 0 3 13{C}-]\n[S5 0 400 450 0 3 13{D}-]\n"
    "[A6 0 272 2 1 2]\n[A7 0 272 2 4 5]\n[A8 0 512 2 3 6]\n[A9 0 512 2 3 7]\n]\n";

struct Place {
    int x;
    int y;
};

/// Where the molecules of a name stand in the canvas, as a saved text has them.
std::vector<Place> places_of (const std::string& text, const std::string& name) {
    float left = 0;
    float top = 0;
    int unused = 0;
    const std::size_t head = text.find ("[N");
    EXPECT_EQ (std::sscanf (text.c_str () + head, "[N%d %d %d %f %f", &unused, &unused, &unused,
                            &left, &top),
               5);
    std::vector<Place> places;
    for (std::size_t at = text.find ("[S"); at != std::string::npos;
         at = text.find ("[S", at + 1)) {
        float x = 0;
        float y = 0;
        const std::size_t end = text.find ('\n', at);
        if (text.substr (at, end - at).find ("{" + name + "}") == std::string::npos) continue;
        EXPECT_EQ (std::sscanf (text.c_str () + at, "[S%d %d %f %f", &unused, &unused, &x, &y), 4);
        places.push_back ({static_cast<int> (x + left), static_cast<int> (y + top)});
    }
    return places;
}

TEST (drawing_story, a_shared_molecule_is_detached_from_a_reaction_and_fused_again) {
    Editor editor;
    const std::string file = editor.home ().write ("shared.net", shared_atp);
    editor.start ({file}, "shared.net");
    const Drawing draw (editor);
    const auto saved = [&] {
        editor.key ("ctrl+s");
        EXPECT_TRUE (editor.shows_window ("shared.net"));
        return file_text (file);
    };
    const auto modified = [&] { return editor.shows_window ("shared.net\\*"); };
    draw.select (260, 310);
    editor.click (246, canvas_y + 229, "2"); // its line to the upper reaction
    ASSERT_TRUE (modified ());
    const std::string apart = saved ();
    const std::vector<Place> two = places_of (apart, "ATP");
    ASSERT_EQ (two.size (), 2U) << apart;
    EXPECT_EQ (count (apart, " 512 "), 2); // each with its reaction
    // The copy stands a little lower, in front; it is taken where the other one is not.
    editor.click (900, canvas_y + 500);
    pause (300);
    editor.drag (two[1].x + 4, canvas_y + two[1].y + 10, 604, canvas_y + 310);
    ASSERT_TRUE (modified ());
    saved ();
    editor.click (900, canvas_y + 500);
    pause (300);
    editor.drag (604, canvas_y + 310, two[0].x + 4, canvas_y + two[0].y + 10);
    ASSERT_TRUE (modified ());
    const std::string fused = saved ();
    EXPECT_EQ (places_of (fused, "ATP").size (), 1U) << fused;
    EXPECT_EQ (count (fused, " 512 "), 2);
    editor.key ("ctrl+z");
    ASSERT_TRUE (modified ());
    EXPECT_EQ (places_of (saved (), "ATP").size (), 2U);
}

TEST (drawing_story, a_name_with_a_greek_letter) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.start ({}, "Ostrand");
    const Drawing draw (editor);
    constexpr int faces_x = 293; // the arrow of the choice, which shows Arial
    draw.add (new_molecule_x, "IFNa", 300, 250);
    editor.key ("Left"); // the cursor is at the last letter, whose face is chosen
    editor.click (faces_x, tool_bar_y);
    pause (150);
    editor.click (200, tool_bar_y + 56); // Symbol, the third behind Arial
    pause (300);
    draw.saved ("greek.net");
    const std::filesystem::path svg = editor.home () / "greek.svg";
    ASSERT_EQ (run_program ({"ostrand-tool", "convert", (editor.home () / "greek.net").string (),
                             svg.string ()})
                   .status,
               0);
    EXPECT_THAT (file_text (svg), HasSubstr ("\xce\xb1"));
}

TEST (drawing_story, a_new_protein_goes_into_the_complex_that_is_selected) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.start ({}, "Ostrand");
    const Drawing draw (editor);
    constexpr int new_complex_x = 113;
    editor.click (new_complex_x, tool_bar_y);
    pause (300);
    const std::string alone = draw.saved ("complex.net");
    EXPECT_EQ (count (alone, "[N"), 2) << alone; // one in the other
    int unused = 0;
    float left = 0;
    float top = 0;
    float x = 0;
    float y = 0;
    ASSERT_EQ (std::sscanf (alone.c_str () + alone.find ("[N"), "[N%d %d %d %f %f\n[S%d %d %f %f",
                            &unused, &unused, &unused, &left, &top, &unused, &unused, &x, &y),
               9)
        << alone;
    draw.select (static_cast<int> (x + left), static_cast<int> (y + top));
    editor.click (new_protein_x, tool_bar_y);
    ASSERT_TRUE (editor.shows_window ("complex.net\\*"));
    editor.key ("ctrl+s");
    ASSERT_TRUE (editor.shows_window ("complex.net"));
    const std::string text = file_text (editor.home () / "complex.net");
    // One node outside, three inside, which are written before it ends.
    EXPECT_THAT (text, HasSubstr ("[N1 ")) << text;
    EXPECT_THAT (text, HasSubstr ("[N3 ")) << text;
    EXPECT_THAT (text, HasSubstr ("{protein}"));
    editor.key ("ctrl+z");
    ASSERT_TRUE (editor.shows_window ("complex.net\\*"));
    editor.key ("ctrl+s");
    ASSERT_TRUE (editor.shows_window ("complex.net"));
    EXPECT_EQ (count (file_text (editor.home () / "complex.net"), "{protein}"), 0);
}

} // namespace
} // namespace ostrand::testing
