// Which text of which object a line is.
#include "document/markup.h"
#include "document/network.h"
#include "document/text_field.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

TEST (TextField, is_told_for_every_text_of_every_object) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::protein, 3U, "a"));
    Node& b = network.add_node (std::make_unique<Node> (90.0F, 0.0F, node::protein, 3U, "b"));
    Arque& arc = *a.connect (b, arc::reaction);
    a.set_residu ("P");
    arc.kinetic_labels (false);
    arc.kinetic_labels (true);
    Compart& c = network.add_compart (shape::rectangle, 0, 0, 100, 100);
    EXPECT_EQ (field_of (*a.label_line ()), (TextField{&a, FieldKind::label}));
    EXPECT_EQ (field_of (*a.residu ()), (TextField{&a, FieldKind::residu}));
    EXPECT_EQ (field_of (*arc.label_line ()), (TextField{&arc, FieldKind::label}));
    EXPECT_EQ (field_of (*arc.residu ()), (TextField{&arc, FieldKind::residu}));
    EXPECT_EQ (field_of (*arc.stoech_src ()), (TextField{&arc, FieldKind::stoech_src}));
    EXPECT_EQ (field_of (*arc.stoech_dest ()), (TextField{&arc, FieldKind::stoech_dest}));
    EXPECT_EQ (field_of (*c.label_line ()), (TextField{&c, FieldKind::label}));
}

TEST (TextField, of_a_script_is_that_of_the_letters_around_it) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::protein, 3U, "a"));
    a.set_residu ("P");
    a.residu ()->set_script (0, true, std::make_unique<Line> ("2", 66, 0));
    Line& script = *a.residu ()->sup (0);
    script.set_script (0, false, std::make_unique<Line> ("x", 66, 0));
    EXPECT_EQ (field_of (script), (TextField{&a, FieldKind::residu}));
    EXPECT_EQ (field_of (*script.sub (0)), (TextField{&a, FieldKind::residu}));
}

TEST (TextField, inside_a_nested_network_is_that_of_the_node_in_it) {
    const auto network =
        read_network ("[N1 0 2 8 8[S1 0 0 0 0 0 9[N1 0 2 0 0[S2 0 0 0 0 0 9{x}-]]-]]");
    ASSERT_TRUE (network);
    Node& inner = *network->nodes ()[0]->nested ()->nodes ()[0];
    EXPECT_EQ (field_of (*inner.label_line ()), (TextField{&inner, FieldKind::label}));
}

TEST (TextField, of_a_line_that_stands_alone_is_none) {
    const Line alone ("x", 67, 0);
    EXPECT_FALSE (field_of (alone));
    Line with_script ("x", 67, 0);
    with_script.set_script (0, true, std::make_unique<Line> ("2", 66, 0));
    EXPECT_FALSE (field_of (*with_script.sup (0)));
}

} // namespace
} // namespace ostrand::document
