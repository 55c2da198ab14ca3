// Which reactants the path of a reaction leads between.
#include "arrange/mains.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace ostrand::arrange {
namespace {

/// Reactions as "A + B -> C", species by their names.
class Mains : public ::testing::Test {
  protected:
    void react (const std::string& text) {
        std::istringstream words (text);
        Reaction& reaction = graph.reactions.emplace_back ();
        std::vector<int>* side = &reaction.substrates;
        for (std::string word; words >> word;) {
            if (word == "->")
                side = &reaction.products;
            else if (word != "+")
                side->push_back (species (word));
        }
    }
    /// "A -> C" of a reaction; "0" for a side without reactants.
    std::string main_of (std::size_t reaction) const {
        const MainReactants main = main_reactants (graph).at (reaction);
        const auto name = [this] (const std::vector<int>& side, int i) {
            if (i < 0) return std::string ("0");
            const int s = side.at (static_cast<std::size_t> (i));
            return graph.species.at (static_cast<std::size_t> (s)).name;
        };
        const Reaction& r = graph.reactions.at (reaction);
        return name (r.substrates, main.substrate) + " -> " + name (r.products, main.product);
    }
    Graph graph;

  private:
    int species (const std::string& name) {
        const auto found = std::find_if (graph.species.begin (), graph.species.end (),
                                         [&] (const Species& s) { return s.name == name; });
        const auto number = static_cast<int> (found - graph.species.begin ());
        if (found == graph.species.end ()) graph.species.emplace_back ().name = name;
        return number;
    }
};

TEST_F (Mains, cofactors_are_not_wherever_they_are_written) {
    react ("ATP + Glc -> ADP + G6P");
    react ("x_NADPH_ch + BPGA_ch -> x_NADP_ch + GAP_ch + Pi_ch");
    react ("SBP -> Pi + S7P");
    EXPECT_EQ (main_of (0), "Glc -> G6P");
    EXPECT_EQ (main_of (1), "BPGA_ch -> GAP_ch");
    EXPECT_EQ (main_of (2), "SBP -> S7P");
}

TEST_F (Mains, among_cofactors_the_first_ones_are) {
    react ("ATP -> ADP + Pi");
    EXPECT_EQ (main_of (0), "ATP -> ADP");
}

TEST_F (Mains, the_order_in_which_a_side_is_written_holds_among_equals) {
    react ("A + B -> C + D");
    react ("B + A -> D + C");
    EXPECT_EQ (main_of (0), "A -> C");
    EXPECT_EQ (main_of (1), "B -> D");
}

TEST_F (Mains, what_a_reaction_leaves_unchanged_is_not) {
    react ("Kinase + S -> Kinase + SP");
    react ("2P + DNA -> DNA + RNA");
    EXPECT_EQ (main_of (0), "S -> SP");
    EXPECT_EQ (main_of (1), "2P -> RNA");
}

TEST_F (Mains, an_enzyme_of_many_steps_stands_aside) {
    for (const char* s : {"M1", "M2", "M3", "M4"}) {
        const std::string name = s;
        react ("E + " + name + " -> E_" + name);
        react ("E_" + name + " -> E + x" + name);
    }
    EXPECT_EQ (main_of (0), "M1 -> E_M1");
    EXPECT_EQ (main_of (1), "E_M1 -> xM1");
}

TEST_F (Mains, an_arc_leads_to_another_species_where_there_is_one) {
    react ("A -> A + A + B");
    react ("A -> A");
    EXPECT_EQ (main_of (0), "A -> B");
    EXPECT_EQ (main_of (1), "A -> A");
}

TEST_F (Mains, a_side_may_be_empty) {
    react ("-> ATP + B");
    react ("ATP + B ->");
    react ("->");
    EXPECT_EQ (main_of (0), "0 -> B");
    EXPECT_EQ (main_of (1), "B -> 0");
    EXPECT_EQ (main_of (2), "0 -> 0");
}

TEST_F (Mains, species_that_are_not_there_and_sides_of_hundreds_do_no_harm) {
    Reaction& strange = graph.reactions.emplace_back ();
    strange.substrates = {-1, 99};
    strange.products = {7};
    EXPECT_EQ (main_reactants (graph).at (0).substrate, 0);
    std::string biomass = "A";
    for (int i = 0; i < 400; ++i) biomass += " + s" + std::to_string (i);
    react (biomass + " -> Biomass");
    EXPECT_EQ (main_of (1), "A -> Biomass");
}

} // namespace
} // namespace ostrand::arrange
