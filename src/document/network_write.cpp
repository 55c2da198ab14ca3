// The records of a network in native text: compartments, nodes, arcs.
#include "document/markup.h"
#include "document/network.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <string_view>

namespace ostrand::document {
namespace {

/// The numbers of a record, one blank between them, which go out together.
class Fields {
  public:
    explicit Fields (std::string_view front) {
        end_ = std::copy (front.begin (), front.end (), buffer_.data ());
    }
    Fields& operator<< (std::integral auto value) {
        separate ();
        end_ = put_int (end_, static_cast<long long> (value));
        return *this;
    }
    Fields& operator<< (float value) {
        separate ();
        end_ = put_number (end_, value);
        return *this;
    }
    Fields& color (unsigned value) {
        separate ();
        end_ = put_color (end_, value);
        return *this;
    }
    void append_to (std::string& out) const {
        out.append (buffer_.data (), static_cast<std::size_t> (end_ - buffer_.data ()));
    }

  private:
    static constexpr std::size_t most_fields = 8;

    void separate () {
        if (!first_) *end_++ = ' ';
        first_ = false;
    }
    std::array<char, most_fields*(longest_number + 1)> buffer_;
    char* end_;
    bool first_ = true;
};

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
    if (!lost && (field->x () != 0 || field->y () != 0)) {
        (Fields ("(") << field->x () << field->y ()).append_to (to.out);
        to.out += ')';
    }
}

/// Room for the records of a network at once, as large as they mostly are.
void make_room (PrintState& to, const Network& network) {
    constexpr std::size_t mean_record = 44;
    const auto arcs = static_cast<std::size_t> (network.count_arcs ());
    const std::size_t objects =
        static_cast<std::size_t> (network.nb_nodes () + network.nb_comp ()) + arcs;
    to.numbering.make_room (objects);
    to.out.reserve (to.out.size () + objects * mean_record);
}

void print_text (PrintState& to, const Char* text, int depth) {
    if (text == nullptr) {
        to.out += '-';
    } else {
        text->fprint (to, depth);
    }
}

} // namespace

void Compart::sprint (PrintState& to, float dx, float dy) const {
    Fields fields ("[C");
    fields << to.numbering.add (*this) << shape_ << x_ + dx << y_ + dy << width_ << get_height ();
    fields.color (color_).append_to (to.out);
    print_text (to, label_.get (), -1);
    const char* separator = "{";
    for (const int value : user_values_) {
        to.out += separator;
        append_int (to.out, value);
        separator = *separator == '{' ? ":" : "+";
    }
    to.out += "}]";
}

void Compart::fprint (PrintState& to, int depth) const {
    to.start_record (depth);
    sprint (to, 0, 0);
}

void Node::print (PrintState& to, float dx, float dy, int depth) const {
    to.start_record (depth);
    Fields fields ("[S");
    fields << to.numbering.add (*this) << nb_arcs () << x_ + dx << y_ + dy;
    (fields.color (color_).color (bg_color_) << type_).append_to (to.out);
    to.joins = nested () != nullptr;
    print_text (to, label_.get (), depth > 0 ? depth + 1 : -1);
    to.joins = false;
    print_text (to, residu_.get (), -1);
    if (foggy ()) to.out += 'F';
    if (!selectable ()) to.out += '.';
    if (calyx_display_) to.out += '%';
    if (is_on_many_planes ()) to.out += ';';
    if (user_data_) to.out += settled_user_data (*user_data_);
    to.out += ']';
}

bool Node::is_on_many_planes () const {
    if (multi_conc_ || !label_ || network_ == nullptr) return multi_conc_;
    const std::string& displayed = network_->multi_name ();
    return !displayed.empty () && name () == displayed;
}

void Node::sprint (PrintState& to, float dx, float dy) const { print (to, dx, dy, -1); }

void Node::fprint (PrintState& to, int depth) const { print (to, 0, 0, depth); }

void Arque::fprint (PrintState& to, int depth) const {
    if (source_ == nullptr || dest_ == nullptr) return;
    print (to, {this, to.numbering.of (this), to.numbering.of (dest_)}, depth);
}

void Arque::print (PrintState& to, const NumberedArc& numbered, int depth) const {
    to.start_record (depth);
    Fields fields ("[A");
    fields << numbered.id;
    fields.color (color_) << type_ << thickness () << to.numbering.of (source_) << numbered.dest;
    fields.append_to (to.out);
    if (foggy ()) to.out += 'F';
    print_field (to, label_.get (), false);
    print_field (to, residu_.get (), false);
    // Without the first of them the second would be read in its place.
    if (stoech_src_ || stoech_dest_) print_field (to, stoech_src_.get (), true);
    if (stoech_dest_) print_field (to, stoech_dest_.get (), true);
    to.out += ']';
}

void Network::print (PrintState& to, float dx, float dy, int depth) const {
    const bool joins = to.joins; // the arcs stand in the record around this one
    to.joins = false;
    const bool without_arcs = joins && to.without_arcs;
    const bool is_alone = to.numbering.next () == 1;
    std::vector<NumberedArc> outer;
    if (!joins) {
        outer.swap (to.arcs);
        make_room (to, *this);
    }
    const int below = depth < 0 ? depth : depth + 1;

    to.start_record (depth);
    (Fields ("[N") << nb_nodes () << nb_comp () << align_ << to_int (x_) << to_int (y_))
        .append_to (to.out);
    for (const auto& c : comps_) {
        to.start_record (below);
        c->sprint (to, dx, dy);
    }
    for (const auto& n : nodes_) n->print (to, dx, dy, below);
    if (!joins) {
        print_arcs (to, below, is_alone);
        to.arcs.swap (outer);
    } else if (!without_arcs) {
        for (const auto& n : nodes_) {
            for (const auto& a : n->arcs_) to.arcs.push_back ({a.get (), to.numbering.add (*a)});
        }
    }
    to.out += ']';
}

/// First the arcs of networks that joined, which have their numbers, then the network's own.
void Network::print_arcs (PrintState& to, int depth, bool is_alone) const {
    ArcOrder order (*this, to.numbering, is_alone);
    const auto print_next = [&] (NumberedArc a) {
        if (order.goes_now (a)) a.arc->print (to, a, depth);
    };
    // Texts of arcs may hold networks, whose arcs are gathered in `arcs` meanwhile.
    std::vector<NumberedArc> joined;
    joined.swap (to.arcs);
    for (const NumberedArc& a : joined) print_next (a);
    for (const auto& n : nodes_) {
        for (const auto& a : n->arcs_) print_next ({a.get (), to.numbering.add (*a)});
    }
    for (const NumberedArc& a : order.held_back ()) a.arc->print (to, a, depth);
}

void Network::sprint (PrintState& to, float dx, float dy) const { print (to, dx, dy, -1); }

void Network::fprint (PrintState& to, int depth) const { print (to, 0, 0, depth); }

} // namespace ostrand::document
