// What a simulation does without is told once, and leads to where it is.
#include "bench.h"

#include "document/markup.h"

#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using test::Bench;

/// A reaction that nothing catalyses, and a species without a name far to the right.
std::string two_gaps () {
    document::Network made;
    const auto add = [&made] (const char* name, float x) -> document::Node& {
        return made.add_node (
            std::make_unique<document::Node> (x, 60.0F, document::node::molecule, 3U, name));
    };
    document::Node& glc = add ("glc", 50);
    glc.connect (add ("g6p", 250), document::arc::reaction);
    add ("x", 3000).take_label (nullptr);
    document::PrintState state;
    made.fprint (state, 0);
    return state.out;
}

TEST (gap_notice, opens_when_a_run_leaves_something_out_and_names_it) {
    Bench b;
    b.open_text (two_gaps ());
    b.canvas ().gaps.look (b.canvas ());
    EXPECT_TRUE (b.canvas ().gaps.is_open ());
    EXPECT_EQ (b.canvas ().gaps.text (),
               "1 of 2, left out: reaction \"glc\" -> \"g6p\", nothing catalyses it");
}

TEST (gap_notice, is_closed_where_the_model_says_all) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 50 60 0 3 13{glc}-]\n]");
    b.canvas ().gaps.look (b.canvas ());
    EXPECT_FALSE (b.canvas ().gaps.is_open ());
    b.run (Command::show_left_out);
    EXPECT_EQ (b.world.status, "A simulation leaves nothing out");
}

TEST (gap_notice, tells_the_same_things_once) {
    Bench b;
    b.open_text (two_gaps ());
    b.canvas ().gaps.look (b.canvas ());
    b.canvas ().gaps.dismiss ();
    b.canvas ().gaps.look (b.canvas ());
    EXPECT_FALSE (b.canvas ().gaps.is_open ());
    // Another one is news.
    b.run (Command::select_all);
    b.run (Command::duplicate);
    b.canvas ().gaps.look (b.canvas ());
    EXPECT_TRUE (b.canvas ().gaps.is_open ());
}

TEST (gap_notice, leads_to_each_object_in_turns) {
    Bench b;
    b.open_text (two_gaps ());
    b.canvas ().gaps.look (b.canvas ());
    const std::int32_t reaction = b.arc ("glc").id ();
    b.run (Command::show_left_out);
    EXPECT_EQ (b.selected (), std::vector<std::int32_t>{reaction});
    EXPECT_EQ (b.world.status,
               "1 of 2, left out: reaction \"glc\" -> \"g6p\", nothing catalyses it");
    b.run (Command::show_left_out);
    ASSERT_EQ (b.selected ().size (), 1U);
    const document::GraphBase* const other = b.network ().find_by_id (b.selected ().front ());
    EXPECT_EQ (other->x (), 3000);
    EXPECT_LT (b.network ().x (), -1000); // in view
    EXPECT_EQ (b.world.status.substr (0, 8), "2 of 2, ");
    b.run (Command::show_left_out);
    EXPECT_EQ (b.selected (), std::vector<std::int32_t>{reaction});
}

TEST (gap_notice, goes_when_all_is_mended) {
    Bench b;
    b.open_text (two_gaps ());
    b.canvas ().gaps.look (b.canvas ());
    b.run (Command::select_all);
    b.run (Command::cut);
    b.run (Command::show_left_out);
    EXPECT_FALSE (b.canvas ().gaps.is_open ());
    b.run (Command::undo);
    b.run (Command::show_left_out);
    EXPECT_EQ (b.selected ().size (), 1U);
}

} // namespace
} // namespace ostrand::editor
