// What a network becomes when it is written and read again, brought about in place.
//
// The walk is the writer's: compartments, nodes with what is nested in them, arcs in the order of a
// file. On its way it keeps the style that is running in the text, as the writer has it and as the
// reader understands it, since letters without a style of their own, and the end marks of lines,
// which are never written, take what is running.
#include "document/settle.h"

#include "document/markup.h"
#include "document/network.h"

#include "base/text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace ostrand::document {
namespace {

constexpr unsigned char read_thickness = 2; // of nodes and compartments, whose own is not written

/// A style that runs through a text.
struct RunningStyle {
    unsigned written_font = start_font;
    unsigned read_font = start_font;
    unsigned written_color = 0;
    unsigned read_color = 0;

    void take (unsigned font, unsigned color) {
        if (font != written_font && font != no_font) {
            written_font = font;
            read_font = settled_font (font);
        }
        if (color != written_color && color != no_color) {
            written_color = color;
            read_color = settled_color (color);
        }
    }
};

/// A type as it comes back: numbers are read by way of a float.
unsigned settled_type (unsigned type) { return to_word (static_cast<float> (type)); }

} // namespace

class Settler {
  public:
    explicit Settler (Network& root) : root_ (&root) {}
    void run ();
    /// The texts of one object, as a reader of them alone gets them.
    static void texts_of (GraphBase& g);

  private:
    void network (Network& n, bool fog, bool joins);
    void compart (Compart& c);
    void node (Node& n, bool fog);
    void arcs (Network& owner, bool fog, bool is_alone);
    void reorder (const std::vector<NumberedArc>& order);
    void arc (Arque& a, bool fog);
    void line (Line& l, bool fog);
    void entry (StdChar& e, bool fog, bool& resized);
    void script (Line* l, bool fog, bool is_marked);
    bool read_back (Char* text, bool fog);
    void stoichiometry (Arque& a, std::unique_ptr<Line>& field, bool fog);
    static void offset (Line& l) {
        l.set_offset (settled_number (l.x ()), settled_number (l.y ()));
    }

    Settler () = default;
    Network* root_ = nullptr;
    RunningStyle style_;
    Numbering numbering_;
    std::vector<NumberedArc> arcs_; // of the record that is being walked
    std::string multi_name_;
};

/// A letter or item takes the style that a reader has for it.
void Settler::entry (StdChar& e, bool fog, bool& resized) {
    if (e.is_letter ()) style_.take (e.font, e.color);
    resized = resized || e.font != style_.read_font;
    e.font = style_.read_font;
    e.color = style_.read_color;
    e.foggy = fog;
    if (!e.parts) return;
    if (Char* const item = e.item ()) {
        if (item->kind () == CharKind::line) {
            line (static_cast<Line&> (*item), fog);
        } else if (item->kind () == CharKind::network) {
            network (static_cast<Network&> (*item), fog, false);
        } else {
            item->set_fog (fog);
        }
        return;
    }
    const bool is_marked = !fits_record (e.code);
    script (e.parts->sub.get (), fog, is_marked);
    script (e.parts->sup.get (), fog, is_marked);
}

/// is_marked  written behind a mark, in a font of its own
void Settler::script (Line* l, bool fog, bool is_marked) {
    if (l == nullptr) return;
    const RunningStyle around = style_;
    if (is_marked) {
        style_.written_font = reduced_font (around.written_font);
        style_.read_font = reduced_font (around.read_font);
    }
    line (*l, fog);
    if (is_marked) {
        style_.written_font = around.written_font;
        style_.read_font = around.read_font;
    }
}

void Settler::line (Line& l, bool fog) {
    l.font_ = style_.read_font;
    l.color_ = style_.read_color;
    l.foggy_ = fog;
    bool resized = false;
    for (int i = 0; i + 1 < l.count ();) {
        if (l.at (i).code == end_mark && l.at (i).is_letter ()) {
            l.erase (i, i + 1); // is never written
        } else {
            entry (l.at (i++), fog, resized);
        }
    }
    StdChar& end = l.at (l.count () - 1);
    resized = resized || end.font != style_.read_font;
    end.font = style_.read_font;
    end.color = style_.read_color;
    end.foggy = fog;
    if (resized) l.content_changed ();
}

void Settler::compart (Compart& c) {
    const int number = numbering_.add (c);
    c.set_position (settled_number (c.x ()), settled_number (c.y ()));
    c.set_size (settled_number (c.width ()), static_cast<float> (c.get_height ()));
    c.set_own_color (settled_color (c.color ()));
    c.set_selectable (true);
    c.set_thickness (read_thickness);
    if (Line* const label = c.label_line ()) {
        line (*label, false);
    } else {
        c.take_label (std::make_unique<Line> ("Comp" + std::to_string (number),
                                              document_state ().default_font,
                                              document_state ().default_color));
    }
    if (c.residu () != nullptr) c.take_residu (nullptr);
    c.foggy_ = false;
}

void Settler::node (Node& n, bool fog) {
    numbering_.add (n);
    const bool is_on_many_planes = n.is_on_many_planes ();
    n.set_position (settled_number (n.x ()), settled_number (n.y ()));
    n.set_own_color (0);
    n.set_color (settled_color (n.bg_color ()));
    n.set_type (settled_type (n.type ()));
    n.set_thickness (read_thickness);
    n.foggy_ = n.foggy_ || fog;
    if (Line* const label = n.label_line ()) {
        line (*label, n.foggy_);
    } else if (Network* const inner = n.nested ()) {
        network (*inner, n.foggy_, true);
    } else if (n.label () != nullptr) {
        n.label ()->set_fog (n.foggy_);
    }
    if (n.residu () != nullptr) line (*n.residu (), n.foggy_);
    if (is_on_many_planes) {
        n.set_multi_conc (true);
        multi_name_ = n.name ();
    }
    if (n.user_data () != nullptr) {
        std::string data = settled_user_data (*n.user_data ());
        n.set_user_data (data.empty () ? std::nullopt : std::optional (std::move (data)));
    }
    n.network ()->assign_compart (n);
}

/// What a reader gets of a label or residu of an arc: nothing of an empty one. False when the text
/// goes.
bool Settler::read_back (Char* text, bool fog) {
    if (text == nullptr) return true;
    if (text->kind () != CharKind::line) return false;
    auto& l = static_cast<Line&> (*text);
    line (l, fog);
    offset (l);
    return !l.is_empty ();
}

void Settler::stoichiometry (Arque& a, std::unique_ptr<Line>& field, bool fog) {
    if (!field) {
        a.take_line (field, std::make_unique<Line> ("", style_.read_font, style_.read_color));
    }
    line (*field, fog);
    offset (*field);
}

void Settler::arc (Arque& a, bool fog) {
    a.set_own_color (settled_color (a.color ()));
    a.set_type (settled_type (a.type ()));
    a.set_selectable (true);
    a.foggy_ = a.foggy_ || fog;
    if (!read_back (a.label (), a.foggy_)) a.take_label (nullptr);
    if (!read_back (a.residu (), a.foggy_)) a.take_residu (nullptr);
    const bool has_dest = a.stoech_dest () != nullptr;
    if (a.stoech_src () != nullptr || has_dest) stoichiometry (a, a.stoech_src_, a.foggy_);
    if (has_dest) stoichiometry (a, a.stoech_dest_, a.foggy_);
}

/// Arcs of a node come to stand as they follow one another in the text.
void Settler::reorder (const std::vector<NumberedArc>& order) {
    std::unordered_map<Node*, std::vector<const Arque*>> wanted;
    for (const NumberedArc& a : order) wanted[a.arc->source ()].push_back (a.arc);
    for (auto& [n, arcs] : wanted) {
        std::unordered_map<const Arque*, std::unique_ptr<Arque>> owned;
        bool same = true;
        for (std::size_t i = 0; i < arcs.size (); ++i) {
            same = same && n->arcs_[i].get () == arcs[i];
        }
        if (same) continue;
        for (std::unique_ptr<Arque>& a : n->arcs_) owned[a.get ()] = std::move (a);
        for (std::size_t i = 0; i < arcs.size (); ++i) n->arcs_[i] = std::move (owned[arcs[i]]);
        n->arc_places_good_ = false;
        for (const auto& a : n->arcs_) a->note_side (); // the first of parallel arcs decide
    }
}

void Settler::arcs (Network& owner, bool fog, bool is_alone) {
    std::vector<NumberedArc> order = arcs_;
    to_file_order (order, owner, numbering_, is_alone);
    if (order.size () < arcs_.size ()) {
        std::unordered_set<const Arque*> kept;
        for (const NumberedArc& a : order) kept.insert (a.arc);
        std::vector<Arque*> lost;
        for (const NumberedArc& a : arcs_) {
            if (!kept.contains (a.arc)) lost.push_back (const_cast<Arque*> (a.arc));
        }
        Arque::destroy_all (lost);
    }
    const auto same = [] (const NumberedArc& a, const NumberedArc& b) { return a.arc == b.arc; };
    if (!std::equal (order.begin (), order.end (), arcs_.begin (), arcs_.end (), same)) {
        reorder (order);
    }
    for (const NumberedArc& a : order) arc (const_cast<Arque&> (*a.arc), fog);
}

/// fog    of what holds the network, which its nodes take
/// joins  its arcs stand in the record around it
void Settler::network (Network& n, bool fog, bool joins) {
    n.foggy_ = fog;
    const bool is_alone = numbering_.next () == 1;
    std::vector<NumberedArc> outer;
    if (!joins) outer.swap (arcs_);
    for (const auto& c : n.comps_) compart (*c);
    for (const auto& one : n.nodes_) node (*one, fog);
    for (const auto& one : n.nodes_) {
        for (const auto& a : one->arcs_) arcs_.push_back ({a.get (), numbering_.add (*a)});
    }
    if (joins) return;
    arcs (n, fog, is_alone);
    arcs_.swap (outer);
}

void Settler::run () {
    root_->set_origin (static_cast<float> (to_int (root_->x ())),
                       static_cast<float> (to_int (root_->y ())));
    network (*root_, false, false);
    root_->multi_name_ = multi_name_;
    root_->find_masters ();
    root_->layout ();
}

namespace {

/// A network in a line is settled with its document only: its numbers depend on what is before it.
bool holds_network (const Line& line) {
    return std::ranges::any_of (line.chars (), [] (const StdChar& entry) {
        if (!entry.parts) return false;
        if (const Char* const item = entry.item ()) {
            if (item->kind () == CharKind::network) return true;
            return item->kind () == CharKind::line &&
                   holds_network (static_cast<const Line&> (*item));
        }
        return (entry.sub () != nullptr && holds_network (*entry.sub ())) ||
               (entry.sup () != nullptr && holds_network (*entry.sup ()));
    });
}

} // namespace

void Settler::texts_of (GraphBase& g) {
    Settler settler;
    for (Char* const text : g.texts ()) {
        if (text == nullptr || text->kind () != CharKind::line) continue;
        auto& one = static_cast<Line&> (*text);
        if (holds_network (one)) return;
        settler.line (one, g.foggy ());
        offset (one);
    }
}

void settle_texts (GraphBase& g) { Settler::texts_of (g); }

void Network::settle () { Settler (*this).run (); }

} // namespace ostrand::document
