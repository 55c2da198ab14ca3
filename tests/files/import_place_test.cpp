// Where the import places reactions, and what it writes.
#include "base/text.h"
#include "files/import.h"
#include "files/import_steps.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace ostrand::files {
namespace {

using ostrand::testing::CaughtMessages;
using ::testing::HasSubstr;

std::string native (std::string_view model) {
    const auto imported = import_text (model);
    EXPECT_TRUE (imported) << model;
    return imported ? imported->native : std::string ();
}

struct Node {
    int id;
    int first;
    int x;
    int y;
    std::string name;
};
struct Arc {
    int id;
    int type;
    int source;
    int dest;
};
struct Drawing {
    std::vector<Node> nodes;
    std::vector<Arc> arcs;

    std::vector<Node> named (const std::string& name) const {
        std::vector<Node> found;
        for (const Node& n : nodes) {
            if (n.name == name) {
                found.push_back (n);
            }
        }
        return found;
    }
    const Node& node (int id) const {
        for (const Node& n : nodes) {
            if (n.id == id) {
                return n;
            }
        }
        ADD_FAILURE () << "no node " << id;
        return nodes.front ();
    }
    /// Direction of the reaction to `product`: "right", "down" ...
    std::string direction_to (const std::string& product) const {
        for (const Arc& a : arcs) {
            if (a.type != 272 || node (a.dest).name != product) {
                continue;
            }
            const Node& s = node (a.source);
            const Node& p = node (a.dest);
            if (s.y == p.y) {
                return p.x > s.x ? "right" : "left";
            }
            if (s.x == p.x) {
                return p.y > s.y ? "down" : "up";
            }
            return "slanted";
        }
        return "missing";
    }
};

Drawing drawing (std::string_view model) {
    Drawing d;
    std::istringstream lines (native (model));
    for (std::string line; std::getline (lines, line);) {
        std::istringstream in (line.substr (std::min<std::size_t> (2, line.size ())));
        if (line.starts_with ("[S")) {
            Node n{};
            in >> n.id >> n.first >> n.x >> n.y;
            const std::size_t open = line.find ('{');
            n.name = line.substr (open + 1, line.find ("}-") - open - 1);
            d.nodes.push_back (n);
        } else if (line.starts_with ("[A")) {
            Arc a{};
            int colour = 0;
            int thickness = 0;
            in >> a.id >> colour >> a.type >> thickness >> a.source >> a.dest;
            d.arcs.push_back (a);
        }
    }
    return d;
}

TEST (ImportPlacement, a_model_without_reactions_is_the_head_only) {
    EXPECT_EQ (native (""), "# Lattrix: 1.2\n[N0 0 2 10 10\n]\n");
    EXPECT_EQ (native ("[a] = 1 mM; duration = 3 ;"), "# Lattrix: 1.2\n[N0 0 2 10 10\n]\n");
}

TEST (ImportPlacement, one_reaction_in_full) {
    EXPECT_EQ (native ("e : a -> b | 10 uM - 5 ; [a] = 2 mM ; display (b);"),
               "# Lattrix: 1.2\n[N3 0 2 10 10\n"
               "[S1 1 60 20 0 #ffff00 13{a}-2 mM]\n"
               "[S2 0 168 20 0 #ffff00 13{b}-%0 uM]\n"
               "[S3 1 114 -30 0 247 9{e}-0 uM]\n"
               "[A4 0 272 2 1 2{<66F><4C>10 uM<67F><0C>}{<66F><4C>5<67F><0C>}{}{}]\n"
               "[A5 0 32 2 3 4{}{}{}{}]\n"
               "]\n");
}

TEST (ImportPlacement, further_substrates_products_and_inhibitors) {
    EXPECT_EQ (native ("e : a + c + d -> b + f | 1 mM, 2 mM, 3 uM - 5 ; e : i | 4 uM ; e : j ;"),
               "# Lattrix: 1.2\n[N8 0 2 10 10\n"
               "[S1 1 60 20 0 #ffff00 13{a}-0 uM]\n"
               "[S2 0 268 20 0 #ffff00 13{b}-0 uM]\n"
               "[S3 1 164 -30 0 247 9{e}-0 uM]\n"
               "[A4 0 272 2 1 2{<66F><4C>1 mM<67F><0C>}{<66F><4C>5<67F><0C>}{}{}]\n"
               "[A5 0 32 2 3 4{}{}{}{}]\n"
               "[S6 1 164 70 0 #ffff00 13{i}-0 uM]\n"
               "[A7 89 48 2 6 3{<66F><4C>4 uM<67F><0C>}{}{}{}]\n"
               "[S8 1 164 70 0 #ffff00 13{j}-0 uM]\n"
               "[A9 89 48 2 8 3{}{}{}{}]\n"
               "[S10 1 120 50 0 #ffff00 13{c}-0 uM]\n"
               "[A11 0 512 2 10 4{<66F><4C>2 mM<67F><0C>}{}{}{}]\n"
               "[S12 1 120 80 0 #ffff00 13{d}-0 uM]\n"
               "[A13 0 512 2 12 4{<66F><4C>3 uM<67F><0C>}{}{}{}]\n"
               "[S14 1 228 50 0 #ffff00 13{f}-0 uM]\n"
               "[A15 0 1025 2 14 4{}{}{}{}]\n"
               "]\n");
}

TEST (ImportPlacement, colours_tell_the_role) {
    const std::string text = native ("input [a]; output [b]; excess [c]; e : a + c -> b + d ;");
    EXPECT_THAT (text, HasSubstr ("0 #7fffbf 13{a}"));
    EXPECT_THAT (text, HasSubstr ("0 #ffb67f 13{b}"));
    EXPECT_THAT (text, HasSubstr ("0 #bf91bf 13{c}"));
    EXPECT_THAT (text, HasSubstr ("0 #ffff00 13{d}"));
}

TEST (ImportPlacement, concentrations_are_lists_or_series) {
    const auto user_data = [] (const std::string& conc) {
        const std::string text = native ("[a] = " + conc + "; e : a -> b ;");
        const std::size_t start = text.find ("{a}-") + 4;
        return text.substr (start, text.find (']', start) - start);
    };
    EXPECT_EQ (user_data ("5 uM"), "5 uM");
    EXPECT_EQ (user_data ("1000 uM"), "1 mM");
    EXPECT_EQ (user_data ("1 mM, 2 mM"), "1 mM, 2 mM");
    EXPECT_EQ (user_data ("1 mM, 2 mM, 3 mM"), "1 mM -> 3 mM : 1 mM");
    EXPECT_EQ (user_data ("1 mM -> 4 mM : 1 mM"), "1 mM -> 4 mM : 1 mM");
    EXPECT_EQ (user_data ("500 uM, 1 mM, 1500 uM"), "500 uM -> 1.5 mM : 500 uM");
    EXPECT_EQ (user_data ("1 mM, 2 mM, 4 mM"), "1 mM, 2 mM, 4 mM");
    EXPECT_EQ (user_data ("2 mM, 2 mM, 2 mM"), "2 mM, 2 mM, 2 mM");
    EXPECT_EQ (user_data ("0 mM, 2 mM"), "0 uM"); // a list ends at its first 0
    EXPECT_EQ (user_data ("1 mM, 0 mM, 2 mM"), "1 mM");
}

TEST (ImportPlacement, a_falling_list_is_a_series_of_negative_step) {
    // A step is a quantity like any other: below 1 mM it is told in uM.
    EXPECT_THAT (native ("[a] = 3 mM, 2 mM, 1 mM; e : a -> b ;"),
                 HasSubstr ("-3 mM -> 1 mM : -1000 uM]"));
    EXPECT_THAT (native ("[a] = 4 mM, 3 mM, 1 mM; e : a -> b ;"), HasSubstr ("-4 mM, 3 mM, 1 mM]"));
}

TEST (ImportPlacement, a_chain_runs_to_the_right) {
    const Drawing d = drawing ("e : a -> b ; e : b -> c ; e : c -> d ;");
    EXPECT_EQ (d.named ("b").size (), 1U);
    EXPECT_EQ (d.named ("a")[0].x, 60);
    EXPECT_EQ (d.named ("b")[0].x, 168);
    EXPECT_EQ (d.named ("d")[0].x, 384);
    EXPECT_EQ (d.direction_to ("d"), "right");
}

TEST (ImportPlacement, lengths_grow_with_names_and_sides) {
    EXPECT_EQ (drawing ("e : abc -> de ;").named ("de")[0].x, 60 + 100 + 4 * 5);
    EXPECT_EQ (drawing ("e : a + b -> c ;").named ("c")[0].x, 60 + 200 + 4 * 2);
    const std::string enzyme (50, 'e');
    EXPECT_EQ (drawing (enzyme + " : a -> b ;").named ("b")[0].x, 60 + 300 + 4 * 2);
}

TEST (ImportPlacement, a_cycle_of_two_closes_on_itself) {
    const Drawing d = drawing ("e : a -> b; e : b -> a;");
    int reactions = 0;
    for (const Arc& a : d.arcs) {
        reactions += a.type == 272 ? 1 : 0;
    }
    EXPECT_EQ (reactions, 2);
    // One of them heads the strip, the other goes on from its product.
    EXPECT_EQ (d.node (1).name, "b");
    EXPECT_EQ (d.named ("a").size (), 1U);
    EXPECT_EQ (d.named ("b").size (), 2U); // the end is a clone of the beginning
}

TEST (ImportPlacement, two_reactions_from_one_substrate_leave_one_node) {
    const Drawing d = drawing ("e : a -> b ; f : a -> c ;");
    EXPECT_EQ (d.named ("a").size (), 1U);
    EXPECT_EQ (d.named ("foo").size (), 0U);
    EXPECT_EQ (d.named ("enz").size (), 0U);
    EXPECT_NE (d.direction_to ("b"), d.direction_to ("c"));
    EXPECT_EQ (d.direction_to ("c"), "right");
    EXPECT_EQ (d.direction_to ("b"), "down");
}

TEST (ImportPlacement, the_head_counts_species_records) {
    EXPECT_THAT (native ("e : a -> b ; f : a -> c ;"), HasSubstr ("[N5 0 2 10 10\n"));
}

TEST (ImportPlacement, five_successors_use_three_sides_and_new_strips) {
    const Drawing d = drawing ("e : s -> a ; e : a -> b1 ; e : a -> b2 ; e : a -> b3 ; "
                               "e : a -> b4 ; e : a -> b5 ;");
    // The rank puts the last statement first.
    EXPECT_EQ (d.direction_to ("b5"), "right");
    EXPECT_EQ (d.direction_to ("b4"), "down");
    EXPECT_EQ (d.direction_to ("b3"), "up");
    EXPECT_EQ (d.direction_to ("b2"), "right");
    EXPECT_EQ (d.direction_to ("b1"), "right");
    EXPECT_EQ (d.named ("a").size (), 3U); // those of the new strips have their own
    EXPECT_GT (d.named ("b2")[0].y, d.named ("b5")[0].y);
}

TEST (ImportPlacement, strips_stand_below_one_another) {
    const Drawing d = drawing ("e : a -> b ; e : c -> d ; e : f -> g ;");
    EXPECT_EQ (d.named ("g")[0].y, 20);
    EXPECT_EQ (d.named ("d")[0].y, 70);
    EXPECT_EQ (d.named ("b")[0].y, 120);
}

TEST (ImportPlacement, strips_leave_room_for_further_substrates_products_and_inhibitors) {
    // Those of a strip stand below it; the next one keeps fifty from the lowest.
    const auto below = [] (const std::string& model) {
        return drawing ("e : a -> b ; " + model).named ("a")[0].y;
    };
    EXPECT_EQ (below ("e : c -> d ;"), 70);
    EXPECT_EQ (below ("e : c -> d + x ;"), 100);
    EXPECT_EQ (below ("e : c -> d + x + y + z ;"), 160);
    EXPECT_EQ (below ("e : c + x + y -> d ;"), 130);
    EXPECT_EQ (below ("f : c -> d ; f : i ;"), 120);
}

TEST (ImportPlacement, what_is_beside_a_reaction_stands_by_its_direction) {
    /// Places of the enzyme from the middle, of p, q from the main substrate, of u, v from the main
    /// product.
    struct Sides {
        int enzyme_x, enzyme_y, p_x, p_y, q_x, q_y, u_x, u_y, v_x, v_y;
        bool operator== (const Sides&) const = default;
    };
    const auto sides = [] (const std::string& model, int x1, int y1, int x2, int y2) {
        const Drawing d = drawing (model);
        const Node enzyme = d.named ("E")[0];
        const Node p = d.named ("p")[0];
        const Node q = d.named ("q")[0];
        const Node u = d.named ("u")[0];
        const Node v = d.named ("v")[0];
        return Sides{enzyme.x - (x1 + x2) / 2,
                     enzyme.y - (y1 + y2) / 2,
                     p.x - x1,
                     p.y - y1,
                     q.x - x1,
                     q.y - y1,
                     u.x - x2,
                     u.y - y2,
                     v.x - x2,
                     v.y - y2};
    };
    const std::string wide = "E : a + p + q -> z + u + v ; ";
    EXPECT_EQ (sides (wide, 60, 20, 268, 20), (Sides{0, -50, 60, 30, 60, 60, -40, 30, -40, 60}));
    const std::string head = "e : s -> a ; ";
    EXPECT_EQ (sides (head + wide + "e : a -> b ; ", 168, 20, 168, 175),
               (Sides{-100, 0, 40, 30, 40, 60, 40, -30, 40, -60})); // down
    EXPECT_EQ (sides (head + wide + "e : a -> b ; e : a -> c ; ", 168, 175, 168, 20),
               (Sides{-100, 0, 40, -30, 40, -60, 40, 30, 40, 60})); // up
    // A chain that arrives at a node whose upper and lower sides are taken comes from the right.
    const std::string circle = "e : h -> a ; e : a -> b ; e : b -> n ; e : n -> b ; "
                               "e : x -> b ; e : y -> b ; E : z + p + q -> b + u + v ; ";
    EXPECT_EQ (sides (circle, 492, 175, 284, 175),
               (Sides{0, -50, -60, 30, -60, 60, 40, 30, 40, 60}));
}

TEST (ImportPlacement, a_merging_chain_is_drawn_towards_the_shared_node) {
    // The longest chain passes n; the other one arrives there from below.
    const Drawing d =
        drawing ("e : a -> b ; e : b -> n ; e : n -> p ; e : p -> q ; e : x -> y ; e : y -> n ;");
    ASSERT_EQ (d.named ("n").size (), 1U);
    const Node n = d.named ("n")[0];
    const Node y = d.named ("y")[0];
    const Node x = d.named ("x")[0];
    EXPECT_TRUE (y.x == n.x || y.y == n.y);
    int ends = 0;
    for (const Arc& a : d.arcs) {
        ends += a.type == 272 && a.dest == n.id ? 1 : 0;
    }
    EXPECT_EQ (ends, 2);
    EXPECT_GT (std::abs (x.y - n.y) + std::abs (x.x - n.x),
               std::abs (y.y - n.y) + std::abs (y.x - n.x));
}

TEST (ImportPlacement, a_product_shared_by_three_reactions) {
    const Drawing d = drawing ("e : a -> a1 ; e : a1 -> n ; e : b -> b1 ; e : b1 -> n ; "
                               "e : c -> c1 ; e : c1 -> n ; e : n -> z ;");
    ASSERT_EQ (d.named ("n").size (), 1U);
    int ends = 0;
    for (const Arc& a : d.arcs) {
        ends += a.type == 272 && a.dest == d.named ("n")[0].id ? 1 : 0;
    }
    EXPECT_EQ (ends, 3);
}

TEST (ImportPlacement, a_species_of_two_components_stands_in_each) {
    // Side substrates do not connect: both reactions have their own c.
    const Drawing d = drawing ("e : a + c -> b ; e : x + c -> y ;");
    EXPECT_EQ (d.named ("c").size (), 2U);
}

TEST (ImportPlacement, every_reaction_is_drawn_once) {
    // Cycles that hang together in many ways: some reaction may be reached by no rule.
    unsigned seed = 7;
    const auto random = [&seed] (unsigned most) {
        seed = seed * 1664525U + 1013904223U;
        return (seed >> 16) % most;
    };
    for (int round = 0; round < 300; ++round) {
        std::string model;
        const unsigned count = 1 + random (24);
        for (unsigned i = 0; i < count; ++i) {
            model += "e : s" + std::to_string (random (10)) + " -> s" +
                     std::to_string (random (10)) + " ;\n";
        }
        const Drawing d = drawing (model);
        unsigned drawn = 0;
        for (const Arc& a : d.arcs) {
            drawn += a.type == 272 ? 1U : 0U;
        }
        EXPECT_EQ (drawn, count) << model;
        std::map<int, int> ids;
        for (const Node& n : d.nodes) {
            EXPECT_EQ (++ids[n.id], 1) << model;
        }
        for (const Arc& a : d.arcs) {
            EXPECT_EQ (++ids[a.id], 1) << model;
            EXPECT_TRUE (ids.count (a.source) == 1 && ids.count (a.dest) == 1) << model;
        }
        EXPECT_TRUE (import_tables ().reactions.empty ());
    }
}

TEST (ImportPlacement, hubs_count_as_reactions) {
    // 4086 statements fit; with the hub of their common substrate it is 4087; a second hub is too
    // much.
    std::string model;
    for (int i = 0; i < 4082; ++i) {
        model += "e : n -> n ;\n";
    }
    CaughtMessages messages;
    EXPECT_TRUE (import_text ("e : a -> n ; e : a -> n ;"));
    EXPECT_TRUE (messages.all.empty ());
    std::string many;
    for (int i = 0; i < 1361; ++i) {
        const std::string name = "e : s" + std::to_string (i) + " -> p ;\n";
        many += name + name + name;
    }
    EXPECT_FALSE (import_text (many));
    ASSERT_EQ (messages.all.size (), 1U);
    EXPECT_EQ (messages.all[0], "Too many reactions");
}

TEST (ImportPlacement, more_than_256_links_are_refused) {
    std::string model = "e : s -> a ;\n";
    for (int i = 0; i < 256; ++i) {
        model += "e : a -> p ;\n";
    }
    EXPECT_TRUE (import_text (model));
    CaughtMessages messages;
    EXPECT_FALSE (import_text (model + "e : a -> p ;\n"));
    EXPECT_FALSE (import_text (std::string ("e : p -> s ;\n") + model + "e : a -> p ;"));
    ASSERT_EQ (messages.all.size (), 2U);
    EXPECT_EQ (messages.all[0], "Too many reactions at 'a' (max = 256).");
    // Likewise of those that start from one node.
    std::string starts;
    for (int i = 0; i < 256; ++i) {
        starts += "e : s -> p ;\n";
    }
    EXPECT_TRUE (import_text (starts));
    EXPECT_FALSE (import_text (starts + "e : s -> p ;\n"));
    EXPECT_EQ (messages.all.back (), "Too many reactions at 's' (max = 256).");
}

TEST (ImportPlacement, more_than_16_inhibitors_are_refused) {
    std::string model = "e : s -> a ;\n";
    for (int i = 0; i < 16; ++i) {
        model += "e : i" + std::to_string (i) + " ;\n";
    }
    EXPECT_TRUE (import_text (model));
    CaughtMessages messages;
    EXPECT_FALSE (import_text (model + "e : j ;\n"));
    ASSERT_EQ (messages.all.size (), 1U);
    EXPECT_EQ (messages.all[0], "Too many inhibitors of 'e' (max = 16).");
}

TEST (ImportPlacement, a_bounded_text_is_refused_when_too_little_room_is_left) {
    CaughtMessages messages;
    EXPECT_FALSE (import_text ("e : a -> b ;", 2047));
    ASSERT_EQ (messages.all.size (), 1U);
    EXPECT_EQ (messages.all[0], "Internal buffer overload");
    EXPECT_TRUE (import_text ("e : a -> b ;", 2048));
}

TEST (ImportPlacement, two_thousand_reactions_import) {
    std::string model;
    for (int i = 0; i < 2000; ++i) {
        model += format_text ("e%d : s%d -> s%d | 1 mM - 2 ;\n", i, i, i + (i % 7 == 0 ? 3 : 1));
    }
    EXPECT_EQ (import_text (model.substr (0, 30)) ? 1 : 0, 0);
    // The enzymes and the species fill most of the 4096 names.
    const Drawing d = drawing (model);
    unsigned drawn = 0;
    for (const Arc& a : d.arcs) {
        drawn += a.type == 272 ? 1U : 0U;
    }
    EXPECT_EQ (drawn, 2000U);
}

TEST (ImportPlacement, very_long_names_overflow_nothing) {
    const std::string name (300000, 'x');
    std::string model;
    for (int i = 0; i < 20; ++i) {
        model += name + " : " + name + std::to_string (i) + " -> " + name + std::to_string (i + 1) +
                 " ;\n";
    }
    EXPECT_TRUE (import_text (model));
}

} // namespace
} // namespace ostrand::files
