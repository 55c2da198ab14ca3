// Every field of two documents held against one another.
#pragma once
#include "document/network.h"
#include "document/picture.h"

#include <map>
#include <string>

namespace ostrand::testing {

/// Tells the first place where two documents differ; empty when they are the same in every field,
/// places of the layout included. What only a view sets (selection, marks of a search) is left out.
class DeepDifference {
  public:
    /// with_ids  objects must have the same ids too
    explicit DeepDifference (bool with_ids = false) : with_ids_ (with_ids) {}

    std::string of (const document::Network& a, const document::Network& b) {
        pair_objects (a, b);
        const std::string found = networks (a, b);
        if (!found.empty ()) return found;
        return a.multi_name () == b.multi_name () ? "" : "multi_name";
    }

  private:
    using GraphBase = document::GraphBase;
    using Char = document::Char;

    /// Which object of the second stands where one of the first stands.
    void pair_objects (const document::Network& a, const document::Network& b) {
        if (a.nb_nodes () != b.nb_nodes () || a.nb_comp () != b.nb_comp ()) return;
        for (std::size_t i = 0; i < a.comps ().size (); ++i) {
            partner_[a.comps ()[i].get ()] = b.comps ()[i].get ();
        }
        for (std::size_t i = 0; i < a.nodes ().size (); ++i) {
            const document::Node& n = *a.nodes ()[i];
            const document::Node& m = *b.nodes ()[i];
            partner_[&n] = &m;
            for (std::size_t j = 0; j < n.arcs ().size () && j < m.arcs ().size (); ++j) {
                partner_[n.arcs ()[j].get ()] = m.arcs ()[j].get ();
            }
            if (n.nested () != nullptr && m.nested () != nullptr) {
                pair_objects (*n.nested (), *m.nested ());
            }
        }
    }
    bool are_partners (const GraphBase* a, const GraphBase* b) const {
        if (a == nullptr || b == nullptr) return a == b;
        const auto found = partner_.find (a);
        return found != partner_.end () && found->second == b;
    }

    std::string networks (const document::Network& a, const document::Network& b) {
        if (a.x () != b.x () || a.y () != b.y ()) return "origin of a network";
        if (a.align () != b.align ()) return "align of a network";
        if (a.foggy () != b.foggy ()) return "fog of a network";
        if (a.get_width () != b.get_width () || a.get_height () != b.get_height ()) {
            return "size of a network";
        }
        if (a.nb_nodes () != b.nb_nodes ()) return "number of nodes";
        if (a.nb_comp () != b.nb_comp ()) return "number of compartments";
        for (std::size_t i = 0; i < a.comps ().size (); ++i) {
            const std::string found = comparts (*a.comps ()[i], *b.comps ()[i]);
            if (!found.empty ()) return found + " of compartment " + std::to_string (i);
        }
        for (std::size_t i = 0; i < a.nodes ().size (); ++i) {
            const std::string found = nodes (*a.nodes ()[i], *b.nodes ()[i]);
            if (!found.empty ()) return found + " of node " + std::to_string (i);
        }
        return {};
    }

    std::string objects (const GraphBase& a, const GraphBase& b) {
        if (a.x () != b.x () || a.y () != b.y ()) return "place";
        if (a.color () != b.color ()) return "colour";
        if (a.foggy () != b.foggy ()) return "fog";
        if (a.selectable () != b.selectable ()) return "selectable";
        if (a.thickness () != b.thickness ()) return "thickness";
        if (with_ids_ && a.id () != b.id ()) return "id";
        const std::string label = texts (a.label (), b.label ());
        if (!label.empty ()) return label + " of the label";
        const std::string residu = texts (a.residu (), b.residu ());
        return residu.empty () ? "" : residu + " of the residu";
    }

    std::string comparts (const document::Compart& a, const document::Compart& b) {
        if (a.shape () != b.shape ()) return "shape";
        if (a.width () != b.width () || a.height () != b.height ()) return "size";
        if (a.user_values () != b.user_values ()) return "user values";
        return objects (a, b);
    }

    std::string nodes (const document::Node& a, const document::Node& b) {
        if (a.bg_color () != b.bg_color ()) return "fill";
        if (a.type () != b.type ()) return "type";
        if ((a.user_data () == nullptr) != (b.user_data () == nullptr)) return "user data";
        if (a.user_data () != nullptr && *a.user_data () != *b.user_data ()) return "user data";
        if (a.calyx_display () != b.calyx_display ()) return "display mark";
        if (a.multi_conc () != b.multi_conc ()) return "mark of many planes";
        if (!are_partners (a.compart (), b.compart ())) return "compartment";
        if (!are_partners (a.master (), b.master ())) return "master";
        if (a.get_width () != b.get_width () || a.get_height () != b.get_height ()) return "size";
        if (a.nb_arcs () != b.nb_arcs ()) return "number of arcs";
        for (std::size_t i = 0; i < a.arcs ().size (); ++i) {
            const std::string found = arcs (*a.arcs ()[i], *b.arcs ()[i]);
            if (!found.empty ()) return found + " of arc " + std::to_string (i);
        }
        return objects (a, b);
    }

    std::string arcs (const document::Arque& a, const document::Arque& b) {
        if (a.type () != b.type ()) return "type";
        if (!are_partners (a.dest (), b.dest ())) return "destination";
        if (a.side () != b.side ()) return "side";
        if (!(a.geometry () == b.geometry ())) return "geometry";
        const std::string src = texts (a.stoech_src (), b.stoech_src ());
        if (!src.empty ()) return src + " of the stoichiometry of the source";
        const std::string dest = texts (a.stoech_dest (), b.stoech_dest ());
        if (!dest.empty ()) return dest + " of the stoichiometry of the destination";
        return objects (a, b);
    }

    std::string texts (const Char* a, const Char* b) {
        if (a == nullptr || b == nullptr) return a == b ? "" : "presence";
        if (a->kind () != b->kind ()) return "kind";
        if (a->x () != b->x () || a->y () != b->y ()) return "place";
        if (a->foggy () != b->foggy ()) return "fog";
        if (a->get_width () != b->get_width () || a->get_ascent () != b->get_ascent () ||
            a->get_descent () != b->get_descent ()) {
            return "size";
        }
        switch (a->kind ()) {
        case document::CharKind::line:
            return lines (static_cast<const document::Line&> (*a),
                          static_cast<const document::Line&> (*b));
        case document::CharKind::network:
            return networks (static_cast<const document::Network&> (*a),
                             static_cast<const document::Network&> (*b));
        case document::CharKind::picture: {
            const auto& p = static_cast<const document::Picture&> (*a);
            const auto& q = static_cast<const document::Picture&> (*b);
            return p.path () == q.path () && p.align () == q.align () ? "" : "picture";
        }
        default: return "kind";
        }
    }

    std::string lines (const document::Line& a, const document::Line& b) {
        if (a.count () != b.count ()) return "number of letters";
        if (a.font () != b.font () || a.color () != b.color ()) return "style at the front";
        for (std::size_t i = 0; i < a.chars ().size (); ++i) {
            const document::StdChar& c = a.chars ()[i];
            const document::StdChar& d = b.chars ()[i];
            const std::string where = " of letter " + std::to_string (i);
            if (c.code != d.code) return "code" + where;
            if (c.font != d.font) return "font" + where;
            if (c.color != d.color) return "colour" + where;
            if (c.foggy != d.foggy) return "fog" + where;
            for (const auto& [e, f] : {std::pair<const Char*, const Char*>{c.sub (), d.sub ()},
                                       std::pair<const Char*, const Char*>{c.sup (), d.sup ()},
                                       std::pair<const Char*, const Char*>{c.item (), d.item ()}}) {
                const std::string found = texts (e, f);
                if (!found.empty ()) return found + " of a part" + where;
            }
        }
        return {};
    }

    bool with_ids_;
    std::map<const GraphBase*, const GraphBase*> partner_;
};

} // namespace ostrand::testing
