// The records of a network in native text: compartments, nodes, arcs.
#include "document/markup.h"
#include "document/network.h"
#include "document/numbers.h"

#include "base/text.h"

#include <unordered_set>

namespace ostrand::document {
namespace {

/// A text of an arc with its offset; "{}" when there is none.
/// reads_back  an empty text is read as one again, so its offset counts; otherwise it is read as
///             none
void print_field (PrintState& to, const Char* field, bool reads_back) {
    if (field == nullptr || field->kind () != CharKind::line) {
        to.out += "{}";
        return;
    }
    const std::size_t before = to.out.size ();
    field->fprint (to, -1);
    const bool lost = !reads_back && to.out.compare (before, std::string::npos, "{}") == 0;
    if (!lost && (field->x != 0 || field->y != 0)) {
        to.out += '(' + number_text (field->x) + ' ' + number_text (field->y) + ')';
    }
}

/// What the user typed, in a form that reads back: a bracket would end the record, and a first
/// letter that is a flag is set off by a blank.
std::string safe_user_data (const std::string& data) {
    std::string safe;
    for (const char c : data) {
        if (c != ']' && c != '\0') safe += c;
    }
    static constexpr std::string_view flags = "F.%;$";
    if (!safe.empty () && flags.find (safe.front ()) != std::string_view::npos) {
        safe.insert (safe.begin (), ' ');
    }
    return safe;
}

/// True when the object's network is `root` or nested in it.
bool is_within (const GraphBase& g, const Network& root) {
    for (const Network* network = g.owner_network (); network != nullptr;
         network = network->holder == nullptr ? nullptr : network->holder->network) {
        if (network == &root) return true;
    }
    return false;
}

/// The arcs of a writing without those whose end, or their end's end, is not written: no record may
/// name what is not there.
void drop_loose_arcs (std::vector<const Arque*>& arcs, const Network& root) {
    std::vector<const Arque*> loose;
    for (const Arque* a : arcs) {
        if (a->dest () == nullptr || !is_within (*a->dest (), root)) loose.push_back (a);
    }
    if (loose.empty ()) return;
    std::unordered_set<const Arque*> all (loose.begin (), loose.end ());
    while (!loose.empty ()) {
        const Arque* a = loose.back ();
        loose.pop_back ();
        for (const Arque* b : a->incoming ()) {
            if (all.insert (b).second) loose.push_back (b);
        }
    }
    std::erase_if (arcs, [&all] (const Arque* a) { return all.contains (a); });
}

} // namespace

void Compart::sprint (PrintState& to, float dx, float dy) const {
    id = take_id ();
    to.out += format_text ("[C%d %d ", id, shape) + number_text (x + dx) + ' ' +
              number_text (y + dy) + ' ' + number_text (width) + ' ' +
              std::to_string (get_height ()) + ' ' + color_text (color);
    if (label) {
        label->fprint (to, -1);
    } else {
        to.out += '-';
    }
    to.out += format_text ("{%d:%d+%d+%d+%d}]", user_values[0], user_values[1], user_values[2],
                           user_values[3], user_values[4]);
}

void Compart::fprint (PrintState& to, int depth) const {
    to.start_record (depth);
    sprint (to, 0, 0);
}

void Node::print (PrintState& to, float dx, float dy, int depth) const {
    id = take_id ();
    to.start_record (depth);
    to.out += format_text ("[S%d %d ", id, nb_arcs ()) + number_text (x + dx) + ' ' +
              number_text (y + dy) + ' ' + color_text (color) + ' ' + color_text (bg_color) + ' ' +
              std::to_string (type);
    if (label) {
        to.joins = nested () != nullptr;
        label->fprint (to, depth > 0 ? depth + 1 : -1);
        to.joins = false;
    } else {
        to.out += '-';
    }
    if (residu) {
        residu->fprint (to, -1);
    } else {
        to.out += '-';
    }
    if (foggy) to.out += 'F';
    if (!selectable) to.out += '.';
    if (calyx_display) to.out += '%';
    const std::string& displayed = document_state ().multi_name;
    if (label && !displayed.empty () && name () == displayed) multi_conc = true;
    if (multi_conc) to.out += ';';
    if (user_data) to.out += safe_user_data (*user_data);
    to.out += ']';
}

void Node::sprint (PrintState& to, float dx, float dy) const { print (to, dx, dy, -1); }

void Node::fprint (PrintState& to, int depth) const { print (to, 0, 0, depth); }

void Arque::fprint (PrintState& to, int depth) const {
    if (source_ == nullptr || dest_ == nullptr) return;
    to.start_record (depth);
    to.out += format_text ("[A%d ", id) + color_text (color) +
              format_text (" %u %d %d %d", type, thickness, source_->id, dest_->id);
    if (foggy) to.out += 'F';
    print_field (to, label.get (), false);
    print_field (to, residu.get (), false);
    // Without the first of them the second would be read in its place.
    if (stoech_src || stoech_dest) print_field (to, stoech_src.get (), true);
    if (stoech_dest) print_field (to, stoech_dest.get (), true);
    to.out += ']';
}

void Network::print (PrintState& to, float dx, float dy, int depth) const {
    const bool joins = to.joins; // the arcs stand in the record around this one
    to.joins = false;
    const bool without_arcs = joins && to.without_arcs;
    std::vector<const Arque*> outer;
    if (!joins) outer.swap (to.arcs);
    const int below = depth < 0 ? depth : depth + 1;

    to.start_record (depth);
    to.out +=
        format_text ("[N%d %d %d %d %d", nb_nodes (), nb_comp (), align, to_int (x), to_int (y));
    for (const auto& c : comps_) {
        to.start_record (below);
        c->sprint (to, dx, dy);
    }
    for (const auto& n : nodes_) n->print (to, dx, dy, below);
    if (!without_arcs) {
        for (const auto& n : nodes_) {
            for (const auto& a : n->arcs_) {
                a->id = take_id ();
                to.arcs.push_back (a.get ());
            }
        }
    }
    if (!joins) {
        drop_loose_arcs (to.arcs, *this);
        for (const Arque* a : arcs_in_file_order (to.arcs)) a->fprint (to, below);
        to.arcs.swap (outer);
    }
    to.out += ']';
}

void Network::sprint (PrintState& to, float dx, float dy) const { print (to, dx, dy, -1); }

void Network::fprint (PrintState& to, int depth) const { print (to, 0, 0, depth); }

} // namespace ostrand::document
