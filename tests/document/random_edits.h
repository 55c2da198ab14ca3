// Edits of a network drawn at random, of every kind that the document knows.
#pragma once
#include "document/link_rules.h"
#include "document/markup.h"
#include "document/network.h"
#include "support/random_document.h"

#include <string>

namespace ostrand::testing {

class RandomEdits {
  public:
    explicit RandomEdits (std::uint32_t seed) : dice_ (seed), random_ (seed + 1) {}

    /// Makes one edit and gives its name.
    const char* edit (document::Network& root) {
        using namespace document;
        Network& network = pick_network (root);
        if (network.nb_nodes () == 0) {
            network.add_node (
                std::make_unique<Node> (place (), place (), node::protein, 3U, "new"));
            return "add to an empty network";
        }
        Node& n = any_node (network);
        Arque* const a = any_arc (network);
        Compart* const c = network.nb_comp () == 0 ? nullptr : pick (network.comps ()).get ();
        switch (dice_.below (35)) {
        case 0:
        case 1:
        case 2: n.set_position (place (), place ()); return "move";
        case 3: n.set_position (n.x () + 1, n.y ()); return "step";
        case 4: n.set_kind (dice_.below (10)); return "kind of a node";
        case 5: return type (n);
        case 6: n.take_label (random_.line (8)); return "label";
        case 7: n.take_residu (dice_.one_in (2) ? random_.line (3) : nullptr); return "residu";
        case 8: n.take_label (nullptr); return "no label";
        case 9: {
            auto inner = std::make_unique<Network> ();
            Node& x = inner->add_node (std::make_unique<Node> (40.0F, 30.0F, node::gene, 7U, "in"));
            Node& y =
                inner->add_node (std::make_unique<Node> (140.0F, 30.0F, node::protein, 7U, "side"));
            x.connect (y, arc::reaction)->set_label ("long text");
            n.take_label (std::move (inner));
            return "label that is a network";
        }
        case 10:
            network.add_node (
                std::make_unique<Node> (place (), place (), node::molecule, 3U, "ATP"));
            return "add";
        case 11: n.destroy (); return "destroy a node";
        case 12: {
            std::unique_ptr<Node> taken = network.detach_node (n);
            for (Arque* const in :
                 std::vector<Arque*> (taken->incoming ().begin (), taken->incoming ().end ())) {
                in->destroy ();
            }
            network.add_node (std::move (taken));
            return "detach and add";
        }
        case 13: n.connect (any_node (network), pick_type ({0x110, 0x111, 0x190})); return "react";
        case 14:
            if (a == nullptr) return "nothing";
            n.connect (*a, pick_type ({0x200, 0x211, 0x401, 0x411, 0x20, 0x30, 0x40, 0x50, 0xC0}));
            return "link";
        case 15: link_objects (n, any_node (network)); return "link by the rules";
        case 16:
            if (a != nullptr) a->destroy ();
            return "destroy an arc";
        case 17:
            if (a != nullptr) {
                a->set_kind (static_cast<int> (
                    pick_type ({0x110, 0x111, 0x190, 0x200, 0x401, 0x20, 0x30, 0x40, 0x50, 0xC0})));
            }
            return "kind of an arc";
        case 18:
            if (a != nullptr && a->dest_node () != nullptr) a->set_dest (&any_node (network));
            return "end of an arc";
        case 19:
            if (a != nullptr) a->take_label (dice_.one_in (3) ? nullptr : random_.line (4));
            return "label of an arc";
        case 20:
            if (a != nullptr) a->take_residu (dice_.one_in (3) ? nullptr : random_.line (4));
            return "residu of an arc";
        case 21:
            if (a != nullptr) a->take_stoech_src (dice_.one_in (3) ? nullptr : random_.line (4));
            return "stoichiometry of the source";
        case 22:
            if (a != nullptr) a->take_stoech_dest (dice_.one_in (3) ? nullptr : random_.line (4));
            return "stoichiometry of the destination";
        case 23:
            if (a != nullptr && a->label_line () != nullptr) {
                a->label_line ()->set_offset (place () / 20, place () / 20);
            }
            return "offset";
        case 24:
            if (a != nullptr) a->kinetic_labels (dice_.one_in (2));
            return "default labels";
        case 25: return type_letters (n, a);
        case 26:
            if (c == nullptr) {
                network.add_compart (dice_.one_in (2) ? 8 : 12, place (), place (), 300, 200);
                return "add a compartment";
            }
            c->drag (static_cast<Edge> (dice_.below (5) - 1), place () / 30, place () / 30);
            return "drag a compartment";
        case 27:
            if (c != nullptr) c->take_label (random_.line (20));
            return "label of a compartment";
        case 28:
            if (c != nullptr) c->destroy ();
            network.check_compartments ();
            return "destroy a compartment";
        case 29: {
            Node& other = any_node (network);
            if (&other != &n && Network::can_fuse (n, other)) network.fuse_nodes (n, other);
            return "fuse";
        }
        case 30:
            if (a != nullptr) network.swap_main_reactant (*a, n);
            return "swap reactants";
        case 31:
            if (a != nullptr && network.can_detach (*a, n)) network.clone_node_for_arc (*a, n);
            return "detach a reactant";
        case 32: network.update_shared_nodes (); return "share";
        case 33:
            if (network.nb_nodes () < 60) {
                std::vector<Node*> chosen{&n};
                if (&any_node (network) != &n) chosen.push_back (&any_node (network));
                if (chosen.back () == &n && chosen.size () > 1) chosen.pop_back ();
                network.duplicate_selection (chosen);
            }
            return "duplicate";
        default: n.set_fog (dice_.one_in (2)); return "fog";
        }
    }

    Dice& dice () { return dice_; }

  private:
    float place () { return static_cast<float> (dice_.below (6000) - 600) / 4; }
    template <typename Item>
    const Item& pick (const std::vector<Item>& list) {
        return list[static_cast<std::size_t> (dice_.below (static_cast<int> (list.size ())))];
    }
    unsigned pick_type (std::initializer_list<unsigned> types) {
        return dice_.pick<unsigned> (types);
    }
    document::Node& any_node (document::Network& network) { return *pick (network.nodes ()); }
    document::Arque* any_arc (document::Network& network) {
        const std::vector<document::Arque*> all = network.all_arcs ();
        return all.empty () ? nullptr : pick (all);
    }
    /// Mostly the outermost one.
    document::Network& pick_network (document::Network& root) {
        document::Network* network = &root;
        while (network->nb_nodes () > 0 && dice_.one_in (3)) {
            for (int i = 0; i < 4; ++i) {
                if (document::Network* const inner = any_node (*network).nested ()) {
                    network = inner;
                    break;
                }
            }
        }
        return *network;
    }
    const char* type (document::Node& n) {
        n.set_type (n.type () ^ document::node::shared_bit);
        return "shared bit";
    }
    /// Keys typed into some text.
    const char* type_letters (document::Node& n, document::Arque* a) {
        using namespace document;
        Line* line = n.label_line ();
        if (a != nullptr && dice_.one_in (2)) line = a->residu ();
        if (line == nullptr) return "nothing";
        TextPlace at{line, dice_.below (line->count ())};
        for (int i = 0; i < 5; ++i) {
            KeyPress press{32 + dice_.below (95), false};
            switch (dice_.below (8)) {
            case 0: press = {keys::down, true}; break;
            case 1: press = {keys::up, true}; break;
            case 2: press = {keys::escape, false}; break;
            case 3: press = {keys::backspace, false}; break;
            case 4: press = {keys::delete_key, false}; break;
            default: break;
            }
            at = at.line->key (press, at.index);
        }
        return "type";
    }

    Dice dice_;
    RandomDocument random_;
};

} // namespace ostrand::testing
