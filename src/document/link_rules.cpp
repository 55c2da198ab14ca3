// The rules by which arcs are made, in the order in which they are tried.
#include "document/link_rules.h"

namespace ostrand::document {
namespace {

LinkOutcome made (Node& s, GraphBase& t, unsigned type) {
    Arque* const arc = s.connect (t, type);
    if (s.network () != nullptr) s.network ()->layout ();
    return {arc, nullptr};
}

LinkOutcome link_to_node (Node& s, Node& t) {
    if (Network::count_arcs_to (s, t) + Network::count_arcs_to (t, s) > 1) {
        return {nullptr,
                "No more than two reaction arcs between the same molecular species nodes."};
    }
    if (s.network () != t.network ())
        return {nullptr, "These nodes are not part of the same network."};
    return made (s, t, s.compart () == t.compart () ? arc::reaction : arc::transport);
}

LinkOutcome link_to_arc (Node& s, Arque& t) {
    if (t.source () == &s || Network::arc_from_to (s, t) != nullptr) {
        return {nullptr, "These are already linked."};
    }
    if (s.network () != t.owner_network ()) {
        return {nullptr, "The node and the arc are not part of the same network."};
    }
    if (!is_main_reaction (t.type ())) {
        return {nullptr, "The destination can only be a reaction arc."};
    }
    return made (s, t, s.group () == node::protein_group ? arc::catalysis : arc::substrate);
}

} // namespace

LinkOutcome link_objects (Char& s, GraphBase& t) {
    if (s.kind () != CharKind::node) return {};
    auto& from = static_cast<Node&> (s);
    switch (t.kind ()) {
    case CharKind::node: return link_to_node (from, static_cast<Node&> (t));
    case CharKind::arque: return link_to_arc (from, static_cast<Arque&> (t));
    case CharKind::std_char:
    case CharKind::line:
    case CharKind::picture:
    case CharKind::compart:
    case CharKind::network: break;
    }
    return {};
}

} // namespace ostrand::document
