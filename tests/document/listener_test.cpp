// Who looks is told: a listener that holds a plain pointer to everything in a document never holds
// one to something that has gone. The sanitizers see every pointer that is followed too late.
#include "document/markup.h"
#include "document/network_listener.h"
#include "document/random_edits.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>

namespace ostrand::document {
namespace {

using testing::Dice;
using testing::RandomDocument;
using testing::RandomEdits;

/// Everything in a document: objects and texts, nested ones and parts of texts too.
class Contents {
  public:
    explicit Contents (const Network& network) { list (network); }
    std::set<Char*> all;

  private:
    void list (const Network& network) {
        for (const auto& c : network.comps ()) list (*c);
        for (const auto& n : network.nodes ()) {
            list (*n);
            for (const auto& a : n->arcs ()) list (*a);
        }
    }
    void list (GraphBase& object) {
        all.insert (&object);
        for (Char* const text : object.texts ()) list_text (text);
    }
    void list_text (Char* text) {
        if (text == nullptr) return;
        all.insert (text);
        if (text->kind () == CharKind::network) list (static_cast<Network&> (*text));
        if (text->kind () != CharKind::line) return;
        for (const StdChar& entry : static_cast<const Line&> (*text).chars ()) {
            if (!entry.parts) continue;
            list_text (entry.parts->sub.get ());
            list_text (entry.parts->sup.get ());
            list_text (entry.parts->item.get ());
        }
    }
};

/// Holds a pointer to everything and lets go of what it is told of.
class Holder : public NetworkListener {
  public:
    explicit Holder (Network& network) : network_ (network) {
        network.set_listener (this);
        take_all ();
    }
    ~Holder () override {
        if (!gone_) network_.set_listener (nullptr);
    }
    /// What came since the last time is held too.
    void take_all () { held_ = Contents (network_).all; }
    /// The first thing held that is in the document no more; empty when there is none.
    std::string dangling () const {
        const Contents now (network_);
        for (Char* const c : held_) {
            if (!now.all.contains (c)) return "something is held that has left";
        }
        return "";
    }
    bool holds_nothing () const { return held_.empty (); }
    bool holds (Char* c) const { return held_.contains (c); }
    std::size_t size () const { return held_.size (); }
    int strangers () const { return strangers_; }
    /// The document goes, and its listener with it.
    void document_goes () { gone_ = true; }

    void object_leaves (GraphBase& object) override {
        for (Char* const text : object.texts ()) EXPECT_FALSE (held_.contains (text));
        if (object.kind () == CharKind::node) {
            for (const auto& a : static_cast<Node&> (object).arcs ()) {
                EXPECT_FALSE (held_.contains (a.get ()));
            }
        }
        let_go (object);
    }
    void text_leaves (Char& text) override { let_go (text); }

  private:
    void let_go (Char& c) {
        c.get_width (); // it is whole
        std::string words;
        c.text (words);
        if (held_.erase (&c) == 0) ++strangers_;
    }

    Network& network_;
    std::set<Char*> held_;
    int strangers_ = 0;
    bool gone_ = false;
};

/// Something of everything: reactions each way, arcs on arcs, scripts, a picture in a text, a
/// nested network with an arc from outside, a compartment.
std::unique_ptr<Network> something_of_everything () {
    auto network = read_network (
        "[N4 1 2 8 8[C1 8 0 0 400 300 4{cell}]"
        "[S2 1 50 50 0 3 13{A_{i}^{+}}{P}][S3 1 150 50 0 3 13{B}-][S4 1 100 20 0 3 9{E}-]"
        "[S5 0 300 50 0 3 9[N1 0 2 0 0[S6 0 10 10 0 3 13{in_{1}}-]]-]"
        "[A7 0 272 2 2 3{K_{off}}{K_{on}}][A8 0 272 2 3 2][A9 0 1025 2 4 7]]");
    EXPECT_TRUE (network);
    Node& e = *network->nodes ()[2];
    e.connect (*e.arcs ()[0], arc::inhibition); // an arc on the catalysis
    network->nodes ()[1]->connect (*network->nodes ()[3]->nested ()->nodes ()[0], arc::reaction);
    e.label_line ()->insert_before (0, std::make_unique<Picture> ("none.png", 9, 9), 67, 0);
    network->update_shared_nodes ();
    network->find_nodes (Line ("A", 67, 0));
    network->layout ();
    return network;
}

/// Takes one thing away: an object by its removal, a text from where it stands.
void take_away (Char& thing) {
    if (thing.kind () == CharKind::node || thing.kind () == CharKind::arque ||
        thing.kind () == CharKind::compart) {
        static_cast<GraphBase&> (thing).destroy ();
        return;
    }
    if (thing.parent () != nullptr && thing.parent ()->kind () == CharKind::line) {
        auto& line = static_cast<Line&> (*thing.parent ());
        for (int i = 0; i < line.count (); ++i) {
            if (line.sub (i) == &thing) return line.set_script (i, false, nullptr);
            if (line.sup (i) == &thing) return line.set_script (i, true, nullptr);
            if (line.chars ()[static_cast<std::size_t> (i)].item () == &thing) {
                line.replace (i, i + 1, "");
                return;
            }
        }
        FAIL () << "a part that its line does not have";
    }
    GraphBase* const object = thing.kind () == CharKind::network
                                  ? static_cast<Network&> (thing).holder ()
                                  : thing.find_object ();
    ASSERT_NE (object, nullptr);
    if (object->label () == &thing) return object->take_label (nullptr);
    if (object->residu () == &thing) return object->take_residu (nullptr);
    auto& arc = static_cast<Arque&> (*object);
    if (arc.stoech_src () == &thing) return arc.take_stoech_src (nullptr);
    arc.take_stoech_dest (nullptr);
}

/// All things in one order of this process and of every other one.
std::vector<Char*> in_order (const Network& network) {
    std::vector<Char*> list;
    const auto texts_of = [&list] (const GraphBase& g) {
        for (Char* const text : g.texts ()) {
            if (text == nullptr) continue;
            list.push_back (text);
            if (text->kind () != CharKind::line) continue;
            for (const StdChar& entry : static_cast<const Line&> (*text).chars ()) {
                if (!entry.parts) continue;
                if (entry.parts->sub) list.push_back (entry.parts->sub.get ());
                if (entry.parts->sup) list.push_back (entry.parts->sup.get ());
                if (entry.parts->item) list.push_back (entry.parts->item.get ());
            }
        }
    };
    const auto add = [&list, &texts_of] (GraphBase& g) {
        list.push_back (&g);
        texts_of (g);
    };
    const auto walk = [&add] (const Network& inner, const auto& self) -> void {
        for (const auto& c : inner.comps ()) add (*c);
        for (const auto& n : inner.nodes ()) {
            add (*n);
            for (const auto& a : n->arcs ()) add (*a);
            if (n->nested () != nullptr) self (*n->nested (), self);
        }
    };
    walk (network, walk);
    return list;
}

TEST (Listener, hears_of_everything_in_every_order_of_three) {
    const std::size_t count = in_order (*something_of_everything ()).size ();
    ASSERT_GT (count, 25U);
    for (std::size_t first = 0; first < count; ++first) {
        for (std::size_t second = 0; second < count; ++second) {
            const std::size_t third = (first * 7 + second * 3) % count;
            const auto network = something_of_everything ();
            Holder holder (*network);
            const std::vector<Char*> things = in_order (*network);
            for (const std::size_t i : {first, second, third}) {
                if (!holder.holds (things[i])) continue; // it left with another one
                take_away (*things[i]);
                ASSERT_FALSE (holder.holds (things[i])) << first << ", " << second;
                ASSERT_EQ (holder.dangling (), "") << first << ", " << second;
            }
            ASSERT_EQ (holder.strangers (), 0);
        }
    }
}

TEST (Listener, hears_of_everything_until_nothing_is_left) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        const auto network = something_of_everything ();
        Holder holder (*network);
        std::vector<Char*> things = in_order (*network);
        Dice dice (seed);
        for (std::size_t i = things.size (); i > 1; --i) {
            std::swap (things[i - 1],
                       things[static_cast<std::size_t> (dice.below (static_cast<int> (i)))]);
        }
        for (Char* const thing : things) {
            if (!holder.holds (thing)) continue;
            take_away (*thing);
            ASSERT_FALSE (holder.holds (thing)) << seed;
            ASSERT_EQ (holder.dangling (), "") << seed;
            network->layout ();
        }
        EXPECT_TRUE (holder.holds_nothing ());
        EXPECT_EQ (holder.strangers (), 0);
        EXPECT_TRUE (network->is_empty ());
    }
}

TEST (Listener, hears_of_random_documents_that_go_object_by_object) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->update_shared_nodes ();
        Holder holder (*network);
        Dice dice (seed);
        while (!network->is_empty ()) {
            const std::vector<Char*> things = in_order (*network);
            take_away (
                *things[static_cast<std::size_t> (dice.below (static_cast<int> (things.size ())))]);
            ASSERT_EQ (holder.dangling (), "") << seed;
        }
        EXPECT_TRUE (holder.holds_nothing ()) << seed;
        EXPECT_EQ (holder.strangers (), 0) << seed;
    }
}

TEST (Listener, holds_nothing_that_left_by_any_edit) {
    for (std::uint32_t seed = 0; seed < 150; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->layout ();
        Holder holder (*network);
        RandomEdits edits (seed);
        for (int step = 0; step < 60; ++step) {
            const char* const made = edits.edit (*network);
            ASSERT_EQ (holder.dangling (), "") << seed << ": " << made;
            if (edits.dice ().one_in (10)) {
                network->settle ();
                ASSERT_EQ (holder.dangling (), "") << seed << ": settle";
            }
            holder.take_all ();
        }
    }
}

TEST (Listener, hears_of_what_a_network_that_is_merged_brought) {
    const auto network = something_of_everything ();
    Holder holder (*network);
    const auto husk = network->insert_text ("[N1 0 2 8 8[S1 0 9 9 0 3 13{new}-]]");
    ASSERT_TRUE (husk);
    EXPECT_EQ (holder.dangling (), "");
    holder.take_all ();
    Node* const merged = network->nodes ().back ().get ();
    EXPECT_TRUE (holder.holds (merged));
    merged->destroy ();
    EXPECT_FALSE (holder.holds (merged));
}

TEST (Listener, hears_of_a_node_that_is_detached_and_not_of_what_becomes_of_it) {
    const auto network = something_of_everything ();
    Holder holder (*network);
    Node* const n = network->nodes ()[0].get ();
    Char* const script = n->label_line ()->sub (0);
    ASSERT_TRUE (holder.holds (script));
    std::unique_ptr<Node> taken = network->detach_node (*n);
    EXPECT_FALSE (holder.holds (n));
    EXPECT_FALSE (holder.holds (script));
    EXPECT_EQ (holder.strangers (), 0);
    taken->set_label ("other"); // nobody is told
    taken.reset ();
    EXPECT_EQ (holder.strangers (), 0);
}

TEST (Listener, hears_of_a_whole_document_that_goes) {
    auto network = something_of_everything ();
    Holder holder (*network);
    holder.document_goes ();
    network.reset ();
    EXPECT_TRUE (holder.holds_nothing ());
    EXPECT_EQ (holder.strangers (), 0);
}

TEST (Listener, of_one_document_hears_nothing_of_another) {
    const auto one = something_of_everything ();
    const auto other = something_of_everything ();
    const Holder holder (*one);
    const std::size_t held = holder.size ();
    while (!other->is_empty ()) {
        take_away (*in_order (*other).front ());
    }
    EXPECT_EQ (holder.size (), held);
    EXPECT_EQ (holder.strangers (), 0);
}

TEST (Listener, that_went_is_not_told) {
    const auto network = something_of_everything ();
    { const Holder holder (*network); }
    EXPECT_EQ (network->listener (), nullptr);
    network->nodes ()[0]->destroy ();
}

} // namespace
} // namespace ostrand::document
