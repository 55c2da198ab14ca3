// An arc: its ends, its default texts, its removal.
#include "document/arque.h"

#include "document/network.h"
#include "document/parallel_arcs.h"

#include "base/text.h"

#include <algorithm>

namespace ostrand::document {

unsigned arc_type_of_version (unsigned type, double version) {
    if (version > 1.0) return type;
    switch (type) {
    case arc::product_bit:
    case arc::product_bit | 0x10U: return arc::substrate;
    case arc::substrate_bit | 1U: return arc::product;
    case arc::reversible_substrate: return arc::reversible_product;
    case arc::reversible_product: return arc::reversible_substrate;
    default: return type;
    }
}

const char* arc_type_name (unsigned type) {
    switch (type) {
    case arc::reaction:
        return "r\xE9"
               "action";
    case arc::reversible_reaction:
        return "r\xE9"
               "action-r\xE9v";
    case arc::transport: return "transport";
    case arc::substrate: return "substrat";
    case arc::reversible_substrate: return "substrat-r\xE9v";
    case arc::product: return "produit";
    case arc::reversible_product: return "produit-r\xE9v";
    case arc::catalysis: return "catalyse";
    case arc::inhibition: return "inhibition";
    case arc::activation: return "activation";
    case arc::influence: return "influence";
    default: return "autre";
    }
}

Arque::Arque (unsigned new_type) : type_ (new_type) { color_ = document_state ().default_color; }

Arque::~Arque () {
    if (!goes_with_all_) {
        drop_incoming ();
        unlink ();
    }
    drop_texts ();
}

// Ends

void Arque::unlink () {
    if (dest_ == nullptr) return;
    IncomingArcs& chain = dest_->incoming_;
    (before_incoming_ == nullptr ? chain.first_ : before_incoming_->next_incoming_) =
        next_incoming_;
    if (next_incoming_ != nullptr) next_incoming_->before_incoming_ = before_incoming_;
    --chain.count_;
    dest_ = nullptr;
}

void Arque::set_dest (GraphBase* new_dest) {
    if (new_dest == dest_) return;
    note_links ();
    release_parallels ();
    unlink ();
    dest_ = new_dest;
    if (dest_ == nullptr) return;
    IncomingArcs& chain = dest_->incoming_;
    before_incoming_ = nullptr;
    next_incoming_ = chain.first_;
    if (chain.first_ != nullptr) chain.first_->before_incoming_ = this;
    chain.first_ = this;
    ++chain.count_;
    note_side ();
    note_links ();
}

Node* Arque::dest_node () const {
    return dest_ != nullptr && dest_->kind () == CharKind::node ? static_cast<Node*> (dest_)
                                                                : nullptr;
}

Arque* Arque::dest_arc () const {
    return dest_ != nullptr && dest_->kind () == CharKind::arque ? static_cast<Arque*> (dest_)
                                                                 : nullptr;
}

Network* Arque::owner_network () const {
    return source_ == nullptr ? nullptr : source_->network ();
}

void Arque::note_side () {
    side_stale_ = true;
    note ();
}

void Arque::release_parallels () const {
    const Node* const to = dest_node ();
    if (source_ == nullptr || to == nullptr || source_->destroyed () || to->destroyed ()) return;
    const auto release = [this] (Arque& b) {
        if (&b == this) return;
        b.side_ = 0;
        b.note_side ();
    };
    each_arc_between (*source_, *to, release);
    if (to != source_) each_arc_between (*to, *source_, release);
}

void Arque::note_links () const {
    if (type_ != arc::catalysis || dest_arc () == nullptr) return;
    for (Arque* const b : dest_->incoming ()) {
        if (is_substrate_link (b->type_) || is_product_link (b->type_)) b->note ();
    }
}

// Removal

void Arque::destroy_all (const std::vector<Arque*>& arcs) {
    std::vector<Arque*> doomed;
    const auto doom = [&doomed] (const auto& more) {
        for (Arque* const a : more) {
            if (a->destroyed_) continue;
            a->destroyed_ = true;
            doomed.push_back (a);
        }
    };
    doom (arcs);
    for (std::size_t i = 0; i < doomed.size (); ++i) doom (doomed[i]->incoming_);
    if (doomed.empty ()) return;
    // What ends on an arc leaves before it.
    for (auto a = doomed.rbegin (); a != doomed.rend (); ++a) {
        if (Network* const network = (*a)->owner_network ()) network->leave (**a);
    }
    for (const Arque* const a : doomed) {
        a->note_links ();
        a->release_parallels ();
    }
    for (Arque* const a : doomed) a->unlink ();
    std::vector<std::unique_ptr<Arque>> dead;
    dead.reserve (doomed.size ());
    for (const Arque* const a : doomed) {
        Node* const source = a->source_;
        if (source == nullptr) continue; // left with an arc before it
        // One sweep takes all that go from this source.
        auto kept = source->arcs_.begin ();
        for (std::unique_ptr<Arque>& b : source->arcs_) {
            if (b->destroyed_) {
                b->source_ = nullptr;
                dead.push_back (std::move (b));
            } else {
                if (&*kept != &b) *kept = std::move (b);
                ++kept;
            }
        }
        source->arcs_.erase (kept, source->arcs_.end ());
        source->arc_places_good_ = false;
    }
}

void Arque::destroy () {
    if (!destroyed_) destroy_all ({this});
}

std::unique_ptr<Char> Arque::clone (Char* new_parent) const {
    auto copy = std::make_unique<Arque> (type_);
    copy->color_ = color_;
    copy->set_thickness (thickness ());
    copy->set_selectable (selectable ());
    copy->foggy_ = foggy_;
    adopt (*copy, new_parent);
    if (label_) copy->take_label (label_->clone (copy.get ()));
    if (residu_) copy->take_residu (residu_->copy (copy.get ()));
    if (stoech_src_) copy->take_stoech_src (stoech_src_->copy (copy.get ()));
    if (stoech_dest_) copy->take_stoech_dest (stoech_dest_->copy (copy.get ()));
    return copy;
}

// Kind

bool Arque::set_type (unsigned new_type) {
    if (type_ == new_type) return false;
    note_links (); // of a catalysis that was
    type_ = new_type;
    note_links (); // of one that is now
    note ();
    return true;
}

bool Arque::set_kind (int k) {
    if (!set_type (static_cast<unsigned> (k))) return false;
    set_own_color (type_ == arc::inhibition ? 89 : type_ == arc::activation ? 68 : 0);
    return true;
}

// Texts

void Arque::take_label (std::unique_ptr<Char> new_label) {
    GraphBase::take_label (std::move (new_label));
    note_links ();
}

void Arque::take_stoech_src (std::unique_ptr<Line> line) {
    take_line (stoech_src_, std::move (line));
}

void Arque::take_stoech_dest (std::unique_ptr<Line> line) {
    take_line (stoech_dest_, std::move (line));
}

/// Gives a field its default text when it is missing or empty.
bool Arque::fill_line (std::unique_ptr<Line>& field, std::string_view markup, unsigned font,
                       unsigned color) {
    if (field && !field->is_empty ()) return false;
    if (!field) take_line (field, std::make_unique<Line> ("", font, color));
    field->replace (0, -1, markup, font, color);
    return true;
}

bool Arque::fill_label (std::string_view markup) {
    constexpr unsigned blue = 4;
    if (label_ && label_line () == nullptr) return false;
    if (label_ && !label_line ()->is_empty ()) return false;
    if (!label_) take_label (std::make_unique<Line> ("", kinetic_font, blue));
    label_line ()->replace (0, -1, markup, kinetic_font, blue);
    return true;
}

DefaultLabels Arque::kinetic_labels (bool stoichiometry) {
    constexpr unsigned blue = 4;
    constexpr unsigned grey = 72;
    const auto stoich = [this] (std::unique_ptr<Line>& field) {
        return fill_line (field, "1", stoichiometry_font, grey);
    };
    const auto fill_residu = [this] (const char* markup) {
        return fill_line (residu_, markup, kinetic_font, blue);
    };
    if (is_reaction (type_)) {
        if (stoichiometry) {
            const bool src = stoich (stoech_src_);
            const bool dest = stoich (stoech_dest_);
            return {true, src || dest};
        }
        const bool catalysed = first_catalysis () != nullptr;
        const bool near = fill_label (catalysed ? "K_{m}" : "K_{off}");
        const bool far = fill_residu (catalysed ? "K_{cat}" : "K_{on}");
        return {true, near || far};
    }
    if (type_ == arc::inhibition || type_ == arc::activation) {
        if (stoichiometry) return {};
        bool changed = fill_label ("K_{eq}");
        if (type_ == arc::activation) changed = fill_residu ("X_{fact}") || changed;
        return {true, changed};
    }
    if (is_substrate_link (type_) || is_product_link (type_)) {
        if (stoichiometry) return {true, stoich (stoech_src_)};
        return {true, fill_label (is_substrate_link (type_) ? "K_{m}" : "K_{cat}")};
    }
    return {};
}

bool Arque::stoichiometries (int* src, int* dst) const {
    const auto number = [] (const std::unique_ptr<Line>& field) {
        if (!field) return 1;
        const std::string letters = field->chars_only ();
        std::size_t i = 0;
        while (i < letters.size () && is_space (letters[i])) ++i;
        if (i < letters.size () && (letters[i] == '-' || letters[i] == '+')) ++i;
        const bool digits = i < letters.size () && is_digit (letters[i]);
        return digits ? parse_atoi (letters) : 1;
    };
    if (src != nullptr) *src = number (stoech_src_);
    if (dst != nullptr) *dst = number (stoech_dest_);
    return stoech_src_ || stoech_dest_;
}

// Neighbours

Arque* Arque::first_catalysis () const {
    const Network* const network = owner_network ();
    Arque* first = nullptr;
    for (Arque* const a : incoming ()) {
        if (a->type_ != arc::catalysis || network == nullptr || a->owner_network () != network) {
            continue;
        }
        if (first == nullptr || network->walk_place (*a) < network->walk_place (*first)) first = a;
    }
    return first;
}

bool Arque::arc_neighbours (std::vector<Arque*>& substrates, std::vector<Arque*>& products) const {
    substrates.clear ();
    products.clear ();
    const Network* const network = owner_network ();
    if (!is_main_reaction (type_) || network == nullptr) return false;
    for (Arque* const a : network->arcs_to (*this)) {
        if (is_substrate_link (a->type_)) {
            substrates.push_back (a);
        } else if (is_product_link (a->type_)) {
            products.push_back (a);
        }
    }
    return !substrates.empty () || !products.empty ();
}

Anchor Arque::anchor (unsigned arc_type) const {
    switch (arc_type & (arc::substrate_bit | arc::product_bit)) {
    case arc::substrate_bit: return {geometry_.mark_a.x, geometry_.mark_a.y, 0, 0};
    case arc::product_bit: return {geometry_.mark_b.x, geometry_.mark_b.y, 0, 0};
    default: {
        const int half = is_reaction (type_) ? 7 : 0;
        return {x_, y_, half, half};
    }
    }
}

/// catalysis  that of the reaction which this link ends on: its label counts in; null for none
Extent Arque::extent_with (const Arque* catalysis) const {
    const Point start = geometry_.start;
    const Point end = geometry_.end;
    Extent box{std::min (start.x, end.x), std::min (start.y, end.y), std::max (start.x, end.x),
               std::max (start.y, end.y)};
    const auto join_label = [&box] (const Arque& owner) {
        const Char* const label = owner.label ();
        if (label == nullptr) return;
        const float left = owner.geometry_.label_pos.x + label->x ();
        const float top = owner.geometry_.label_pos.y + label->y ();
        box.join ({left, top, left + label->get_width (),
                   top + static_cast<float> (label->get_height ())});
    };
    join_label (*this);
    if (residu_) {
        const float left = geometry_.residu_pos.x + residu_->x ();
        const float top = geometry_.residu_pos.y + residu_->y ();
        box.join ({left, top, left + residu_->get_width (), top});
    }
    if (catalysis != nullptr) join_label (*catalysis);
    constexpr float least_side = 14;
    if (box.right - box.x < least_side) {
        box.x -= least_side;
        box.right += least_side;
    }
    if (box.bottom - box.y < least_side) {
        box.y -= least_side;
        box.bottom += least_side;
    }
    return box;
}

Extent Arque::extent () const {
    const Arque* const reaction = dest_arc ();
    const bool is_link = is_substrate_link (type_) || is_product_link (type_);
    const bool counts_in = is_link && reaction != nullptr && is_reaction (reaction->type_);
    return extent_with (counts_in ? reaction->first_catalysis () : nullptr);
}

void Arque::sprint (PrintState& to, float, float) const { fprint (to, -1); }

} // namespace ostrand::document
