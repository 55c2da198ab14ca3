// Layout object by object against the plain one, which lays out everything from nothing.
#include "document/drawn_network.h"
#include "document/hit_test.h"
#include "document/layout_index.h"
#include "document/paint_style.h"
#include "document/plain_layout.h"
#include "document/random_edits.h"
#include "support/recording_device.h"

#include <gtest/gtest.h>

using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::PlainArc;
using ostrand::testing::PlainLayout;
using ostrand::testing::RandomDocument;
using ostrand::testing::RandomEdits;
using ostrand::testing::RecordingDevice;

namespace {

bool same_place (const Char* a, const Char* b) {
    if (a == nullptr || b == nullptr) return a == b;
    return a->x () == b->x () && a->y () == b->y () && a->get_width () == b->get_width () &&
           a->get_height () == b->get_height ();
}

/// What differs between a network that was laid out step by step and a copy of it that was laid out
/// at once; empty when nothing does. The copy's arcs are held against the plain layout.
std::string difference (const Network& stepwise, const Network& fresh) {
    const PlainLayout plain (fresh);
    if (stepwise.get_width () != fresh.get_width () || fresh.get_width () != plain.width ()) {
        return "width of a network";
    }
    if (stepwise.get_height () != fresh.get_height () || fresh.get_height () != plain.height ()) {
        return "height of a network";
    }
    for (std::size_t i = 0; i < stepwise.comps ().size (); ++i) {
        const Compart& a = *stepwise.comps ()[i];
        const Compart& b = *fresh.comps ()[i];
        if (a.width () != b.width () || !same_place (a.label (), b.label ())) return "compartment";
    }
    for (std::size_t i = 0; i < stepwise.nodes ().size (); ++i) {
        const Node& n = *stepwise.nodes ()[i];
        const Node& m = *fresh.nodes ()[i];
        if (!same_place (&n, &m)) return "size of node " + n.name ();
        if (!same_place (n.label (), m.label ())) return "label of node " + n.name ();
        if (!same_place (n.residu (), m.residu ())) return "residu of node " + n.name ();
        for (std::size_t j = 0; j < n.arcs ().size (); ++j) {
            const Arque& a = *n.arcs ()[j];
            const Arque& b = *m.arcs ()[j];
            const PlainArc& c = plain.of (b);
            if (a.side () != b.side () || b.side () != c.side)
                return "side of an arc of " + n.name ();
            if (a.x () != b.x () || b.x () != c.x || a.y () != b.y () || b.y () != c.y) {
                return "mark of an arc of " + n.name ();
            }
            if (!(a.geometry () == b.geometry ()) || !(b.geometry () == c.geometry)) {
                return "geometry of an arc of " + n.name ();
            }
        }
        if (n.nested () != nullptr) {
            const std::string inner = difference (*n.nested (), *m.nested ());
            if (!inner.empty ()) return inner + " inside " + std::to_string (i);
        }
    }
    return {};
}

TEST (Layout, of_a_new_network_is_the_plain_one) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->layout ();
        ASSERT_EQ (difference (*network, *network), "") << seed;
    }
}

TEST (Layout, after_any_edits_is_that_of_a_fresh_copy) {
    for (std::uint32_t seed = 0; seed < 150; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->layout ();
        RandomEdits edits (seed);
        std::string made;
        for (int step = 0; step < 40; ++step) {
            made = made + edits.edit (*network) + ", ";
            if (edits.dice ().one_in (3)) continue; // several edits before one layout
            network->layout ();
            const auto fresh = network->copy (nullptr);
            fresh->layout ();
            ASSERT_EQ (difference (*network, *fresh), "") << seed << ": " << made;
            made.clear ();
        }
    }
}

TEST (Layout, a_node_that_moved_away_and_back_leaves_no_trace) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->layout ();
        const auto before = network->copy (nullptr);
        before->layout ();
        for (const auto& n : network->nodes ()) {
            const float x = n->x ();
            const float y = n->y ();
            n->set_position (x + 500, y - 300);
            network->layout ();
            n->set_position (x, y);
            network->layout ();
        }
        ASSERT_EQ (difference (*network, *before), "") << seed;
    }
}

TEST (Layout, follows_other_fonts) {
    /// Twice as wide as the usual ones.
    class WideMetrics : public MetricsProvider {
      public:
        FontMetrics measure (unsigned key, int pixel_size) const override {
            FontMetrics metrics = headless_metrics ().measure (key, pixel_size);
            for (float& w : metrics.widths) w *= 2;
            return metrics;
        }
    };
    const WideMetrics wide;
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    Arque& a = drawn.arc (n, drawn.node (300, 100));
    drawn.network.layout ();
    EXPECT_EQ (n.get_width (), 40);
    set_metrics_provider (wide);
    EXPECT_FALSE (drawn.network.is_laid_out ());
    drawn.network.layout ();
    EXPECT_EQ (n.get_width (), 70);
    EXPECT_EQ (a.geometry ().start.x, 135);
    set_metrics_provider (headless_metrics ());
    drawn.network.layout ();
    EXPECT_EQ (a.geometry ().start.x, 120);
}

TEST (Layout, is_asked_for_by_changes_and_by_nothing_else) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    Arque& a = drawn.arc (n, drawn.node (300, 100));
    a.set_label ("k");
    Compart& c = drawn.network.add_compart (8, 0, 0, 400, 300);
    drawn.network.layout ();
    const auto asks = [&drawn] {
        const bool asked = !drawn.network.is_laid_out ();
        drawn.network.layout ();
        return asked;
    };
    EXPECT_FALSE (asks ());
    EXPECT_FALSE (n.set_position (100, 100));
    EXPECT_FALSE (asks ());
    EXPECT_TRUE (n.set_position (101, 100));
    EXPECT_TRUE (asks ());
    EXPECT_TRUE (n.set_color (9)); // its place does not depend on it
    EXPECT_FALSE (asks ());
    EXPECT_TRUE (n.set_type (node::gene));
    EXPECT_TRUE (asks ());
    n.label_line ()->insert_before (0, StdChar ('x', 67, 0));
    EXPECT_TRUE (asks ());
    EXPECT_TRUE (a.label_line ()->set_offset (3, 4));
    EXPECT_TRUE (asks ());
    EXPECT_FALSE (a.label_line ()->set_offset (3, 4));
    EXPECT_FALSE (asks ());
    EXPECT_TRUE (c.set_size (500, 300));
    EXPECT_TRUE (asks ());
    n.get_width ();
    drawn.network.get_height ();
    drawn.network.find_at (100, 100, {});
    drawn.network.find_by_id (3);
    EXPECT_FALSE (asks ());
}

TEST (Layout, size_of_a_network_that_is_not_laid_out_is_that_of_its_objects) {
    DrawnNetwork drawn;
    drawn.node (100, 100);
    EXPECT_EQ (drawn.network.get_width (), 120);
    drawn.network.layout ();
    EXPECT_EQ (drawn.network.get_width (), 120);
    Node& far = drawn.node (500, 300);
    EXPECT_EQ (drawn.network.get_width (), 520);
    EXPECT_EQ (drawn.network.get_height (), 310);
    drawn.network.layout ();
    far.destroy ();
    EXPECT_EQ (drawn.network.get_width (), 120);
    drawn.network.layout ();
    EXPECT_EQ (drawn.network.get_width (), 120);
    EXPECT_EQ (drawn.network.get_height (), 110);
}

TEST (Layout, a_change_inside_a_nested_network_reaches_what_is_around) {
    DrawnNetwork drawn;
    auto made = std::make_unique<Network> ();
    Node& inside = made->add_node (std::make_unique<Node> (40.0F, 30.0F, node::gene, 7U, "in"));
    Node& holder = drawn.node (300, 300);
    holder.take_label (std::move (made));
    Arque& a = drawn.arc (holder, drawn.node (900, 300));
    drawn.network.layout ();
    const float width = holder.get_width ();
    const float start = a.geometry ().start.x;
    inside.set_position (240, 30);
    EXPECT_FALSE (drawn.network.is_laid_out ());
    drawn.network.layout ();
    EXPECT_EQ (holder.get_width (), width + 200);
    EXPECT_EQ (a.geometry ().start.x, start + 100);
}

// The index

/// All that is painted through a window, as calls.
std::string painted (const Network& network, const PaintStyle& style) {
    RecordingDevice device;
    network.paint (device, style, 0, 0);
    return device.joined ();
}

TEST (LayoutIndex, finds_and_paints_what_a_walk_over_all_does) {
    ostrand::testing::RandomDocumentOptions options;
    options.nodes = 150;
    options.arcs = 200;
    for (std::uint32_t seed = 0; seed < 10; ++seed) {
        const auto network = RandomDocument (seed, options).network ();
        network->layout ();
        RandomEdits edits (seed);
        for (int step = 0; step < 15; ++step) {
            edits.edit (*network);
            network->layout ();
            // Something that waits for its layout makes the walk go over all.
            const auto walked = network->copy (nullptr);
            walked->layout ();
            walked->add_node (std::make_unique<Node> (-1e7F, -1e7F, node::protein, 3U, "waits"));
            ASSERT_FALSE (walked->is_laid_out ());
            for (int look = 0; look < 6; ++look) {
                const auto x = static_cast<float> (edits.dice ().below (2200) - 200);
                const auto y = static_cast<float> (edits.dice ().below (2200) - 200);
                PaintStyle style;
                style.stoichiometry = true;
                style.clip = Extent{x, y, x + static_cast<float> (edits.dice ().below (600)),
                                    y + static_cast<float> (edits.dice ().below (600))};
                ASSERT_EQ (painted (*network, style), painted (*walked, style)) << seed;
                const HitQuery query{.stoichiometry = true};
                const Hit hit = network->find_at (x, y, query);
                const Hit plain = walked->find_at (x, y, query);
                ASSERT_EQ (bool (hit), bool (plain)) << seed << " at " << x << ", " << y;
                if (!hit) continue;
                ASSERT_EQ (hit.kind (), plain.kind ());
                ASSERT_EQ (hit.letter, plain.letter);
                ASSERT_EQ (hit.object->x (), plain.object->x ());
                ASSERT_EQ (hit.object->y (), plain.object->y ());
            }
        }
    }
}

TEST (LayoutIndex, finds_links_as_far_away_as_the_label_of_their_catalysis) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100);
    Node& b = drawn.node (400, 100);
    Arque& reaction = drawn.arc (a, b);
    Arque& catalysis = drawn.arc (drawn.node (250, 50), reaction, arc::catalysis);
    Arque& link = drawn.arc (drawn.node (100, 200), reaction, arc::substrate);
    catalysis.set_label ("K");
    for (int i = 0; i < 60; ++i)
        drawn.node (static_cast<float> (i) * 90, 2000); // a grid is worth it
    drawn.network.layout ();
    drawn.network.find_at (0, 0, {}); // the index is there
    catalysis.label_line ()->set_offset (900, 700);
    drawn.network.layout ();
    const Extent far = link.extent ();
    EXPECT_GT (far.right, 900);
    const auto walked = drawn.network.copy (nullptr);
    walked->layout ();
    walked->add_node (std::make_unique<Node> (-1e7F, -1e7F, node::protein, 3U, "waits"));
    PaintStyle style;
    style.clip = Extent{far.right - 5, far.bottom - 5, far.right + 5, far.bottom + 5}.moved (
        drawn.network.x (), drawn.network.y ());
    const std::string shown = painted (drawn.network, style);
    EXPECT_EQ (shown, painted (*walked, style));
    EXPECT_NE (shown, "");
}

TEST (SpatialGrid, finds_every_box_that_meets_another) {
    ostrand::testing::Dice dice (5);
    SpatialGrid grid;
    std::vector<Extent> boxes;
    const auto random_box = [&dice] {
        const auto x = static_cast<float> (dice.below (40000) - 20000);
        const auto y = static_cast<float> (dice.below (40000) - 20000);
        const int largest = dice.pick ({1, 50, 300, 4000, 100000});
        return Extent{x, y, x + static_cast<float> (dice.below (largest)),
                      y + static_cast<float> (dice.below (largest))};
    };
    for (std::uint32_t i = 0; i < 3000; ++i) {
        boxes.push_back (random_box ());
        grid.put (i, boxes.back ());
    }
    for (int round = 0; round < 300; ++round) {
        const auto moved = static_cast<std::uint32_t> (dice.below (3000));
        boxes[moved] = random_box ();
        grid.put (moved, boxes[moved]);
        Extent view = random_box ();
        view.right = view.x + 700;
        view.bottom = view.y + 500;
        std::vector<std::uint32_t> found;
        ASSERT_TRUE (grid.near (view, found));
        EXPECT_LT (found.size (), 2500U);
        std::vector<bool> is_found (boxes.size ());
        for (const std::uint32_t i : found) {
            ASSERT_FALSE (is_found[i]); // once each
            is_found[i] = true;
        }
        for (std::size_t i = 0; i < boxes.size (); ++i) {
            const Extent& b = boxes[i];
            const bool meets =
                b.right >= view.x && b.x <= view.right && b.bottom >= view.y && b.y <= view.bottom;
            ASSERT_TRUE (!meets || is_found[i]) << i;
        }
    }
}

TEST (SpatialGrid, takes_boxes_of_any_size_and_place) {
    const float infinite = std::numeric_limits<float>::infinity ();
    const float no_number = std::numeric_limits<float>::quiet_NaN ();
    SpatialGrid grid;
    std::uint32_t number = 0;
    for (int i = 0; i < 200; ++i) {
        grid.put (number++, {static_cast<float> (i) * 1000, 0, static_cast<float> (i) * 1000, 10});
    }
    const std::uint32_t first_odd = number;
    for (const float x : {infinite, -infinite, no_number, 1e30F, -1e30F}) {
        grid.put (number++, {x, x, x, x});
        grid.put (number++, {0, 0, x, 1});
    }
    std::vector<std::uint32_t> found;
    ASSERT_TRUE (grid.near ({0, 0, 10, 10}, found));
    for (std::uint32_t odd = first_odd; odd < number; ++odd) {
        EXPECT_TRUE (std::find (found.begin (), found.end (), odd) != found.end ());
    }
    EXPECT_FALSE (grid.near ({no_number, 0, 1, 1}, found));
    for (std::uint32_t i = 0; i < number; ++i) grid.take_out (i);
    EXPECT_EQ (grid.size (), 0U);
    found.clear ();
    grid.near ({-1e9F, -1e9F, 1e9F, 1e9F}, found);
    EXPECT_TRUE (found.empty ());
}

TEST (SizeTree, knows_the_farthest_point_at_any_time) {
    ostrand::testing::Dice dice (3);
    SizeTree tree;
    std::vector<Point> points;
    EXPECT_EQ (tree.farthest (), Point{});
    for (int step = 0; step < 3000; ++step) {
        const auto number = static_cast<std::size_t> (dice.below (200));
        if (number >= points.size ()) points.resize (number + 1);
        points[number] = {static_cast<float> (dice.below (1000)),
                          static_cast<float> (dice.below (1000))};
        if (dice.one_in (5)) points[number] = {};
        tree.set (number, points[number]);
        Point farthest;
        for (const Point& p : points) {
            farthest.x = std::max (farthest.x, p.x);
            farthest.y = std::max (farthest.y, p.y);
        }
        ASSERT_EQ (tree.farthest (), farthest);
    }
}

} // namespace
