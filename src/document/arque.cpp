// An arc: its ends, its default texts, its removal.
#include "document/arque.h"

#include "document/network.h"

#include "base/text.h"

#include <algorithm>

namespace ostrand::document {

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

Arque::Arque (unsigned new_type) : type (new_type) { color = document_state ().default_color; }

Arque::~Arque () {
    drop_incoming ();
    unlink ();
}

void Arque::unlink () {
    if (dest_ == nullptr) return;
    std::vector<Arque*>& ends = dest_->incoming_;
    ends[incoming_place_] = ends.back ();
    ends[incoming_place_]->incoming_place_ = incoming_place_;
    ends.pop_back ();
    dest_ = nullptr;
}

void Arque::set_dest (GraphBase* new_dest) {
    unlink ();
    dest_ = new_dest;
    if (dest_ == nullptr) return;
    incoming_place_ = dest_->incoming_.size ();
    dest_->incoming_.push_back (this);
}

Node* Arque::dest_node () const {
    return dest_ != nullptr && dest_->kind () == CharKind::node ? static_cast<Node*> (dest_)
                                                                : nullptr;
}

Arque* Arque::dest_arc () const {
    return dest_ != nullptr && dest_->kind () == CharKind::arque ? static_cast<Arque*> (dest_)
                                                                 : nullptr;
}

Network* Arque::owner_network () const { return source_ == nullptr ? nullptr : source_->network; }

void Arque::take_stoech_src (std::unique_ptr<Line> line) {
    if (line) line->parent = this;
    stoech_src = std::move (line);
    mark_layout_dirty ();
}

void Arque::take_stoech_dest (std::unique_ptr<Line> line) {
    if (line) line->parent = this;
    stoech_dest = std::move (line);
    mark_layout_dirty ();
}

namespace {

/// Arcs that joined the same two objects are centred again when one of them goes.
void centre_parallel_arcs (const Arque& gone) {
    const Node* source = gone.source ();
    const GraphBase* dest = gone.dest ();
    if (gone.side == 0 || source == nullptr || dest == nullptr) return;
    if (source->destroyed || dest->destroyed) return;
    for (const auto& b : source->arcs ()) {
        if (b->dest () == dest) b->side = 0;
    }
    const Node* other = gone.dest_node ();
    if (other == nullptr) return;
    for (const auto& b : other->arcs ()) {
        if (b->dest () == source) b->side = 0;
    }
}

} // namespace

void Arque::destroy_all (const std::vector<Arque*>& arcs) {
    std::vector<Arque*> doomed;
    const auto doom = [&doomed] (const std::vector<Arque*>& more) {
        for (Arque* a : more) {
            if (a->destroyed) continue;
            a->destroyed = true;
            doomed.push_back (a);
        }
    };
    doom (arcs);
    for (std::size_t i = 0; i < doomed.size (); ++i) doom (doomed[i]->incoming_);
    if (doomed.empty ()) return;
    for (const Arque* a : doomed) centre_parallel_arcs (*a);
    for (Arque* a : doomed) a->unlink ();
    std::vector<std::unique_ptr<Arque>> dead;
    dead.reserve (doomed.size ());
    for (const Arque* a : doomed) {
        Node* source = a->source_;
        if (source == nullptr) continue; // left with an arc before it
        // One sweep takes all that go from this source.
        auto kept = source->arcs_.begin ();
        for (std::unique_ptr<Arque>& b : source->arcs_) {
            if (b->destroyed) {
                b->source_ = nullptr;
                dead.push_back (std::move (b));
            } else {
                if (&*kept != &b) *kept = std::move (b);
                ++kept;
            }
        }
        source->arcs_.erase (kept, source->arcs_.end ());
    }
    mark_layout_dirty ();
}

void Arque::destroy () {
    if (!destroyed) destroy_all ({this});
}

std::unique_ptr<Char> Arque::clone (Char* new_parent) const {
    auto copy = std::make_unique<Arque> (type);
    copy->color = color;
    copy->font = font;
    copy->thickness = thickness;
    copy->selectable = selectable;
    copy->foggy = foggy;
    copy->side = side;
    copy->parent = new_parent;
    if (label) copy->take_label (label->clone (copy.get ()));
    if (residu) copy->take_residu (residu->copy (copy.get ()));
    if (stoech_src) copy->take_stoech_src (stoech_src->copy (copy.get ()));
    if (stoech_dest) copy->take_stoech_dest (stoech_dest->copy (copy.get ()));
    return copy;
}

Arque* Arque::first_catalysis () const {
    const Network* network = owner_network ();
    if (network == nullptr) return nullptr;
    for (Arque* a : network->arcs_to (*this)) {
        if (a->type == arc::catalysis) return a;
    }
    return nullptr;
}

namespace {

/// Gives a field its default text when it is missing or empty.
void fill (std::unique_ptr<Line>& field, Arque& owner, const char* markup, unsigned font,
           unsigned color) {
    if (field && !field->is_empty ()) return;
    if (!field) {
        field = std::make_unique<Line> ("", font, color);
        field->parent = &owner;
    }
    field->replace (0, -1, markup, font, color);
}

void fill_label (Arque& owner, const char* markup) {
    if (owner.label && owner.label->kind () != CharKind::line) return;
    std::unique_ptr<Line> line (static_cast<Line*> (owner.label.release ()));
    fill (line, owner, markup, kinetic_font, 4);
    owner.label = std::move (line);
}

} // namespace

bool Arque::kinetic_labels (bool stoichiometry) {
    const auto stoich = [this] (std::unique_ptr<Line>& field) {
        fill (field, *this, "1", stoichiometry_font, 72);
    };
    const auto fill_residu = [this] (const char* markup) {
        fill (residu, *this, markup, kinetic_font, 4);
    };
    if (is_reaction (type)) {
        if (stoichiometry) {
            stoich (stoech_src);
            stoich (stoech_dest);
            return true;
        }
        const bool catalysed = first_catalysis () != nullptr;
        fill_label (*this, catalysed ? "K_{m}" : "K_{off}");
        fill_residu (catalysed ? "K_{cat}" : "K_{on}");
        return true;
    }
    if (type == arc::inhibition || type == arc::activation) {
        if (stoichiometry) return false;
        fill_label (*this, "K_{eq}");
        if (type == arc::activation) fill_residu ("X_{fact}");
        return true;
    }
    if (is_substrate_link (type) || is_product_link (type)) {
        if (stoichiometry) {
            stoich (stoech_src);
        } else {
            fill_label (*this, is_substrate_link (type) ? "K_{m}" : "K_{cat}");
        }
        return true;
    }
    return false;
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
    if (src != nullptr) *src = number (stoech_src);
    if (dst != nullptr) *dst = number (stoech_dest);
    return stoech_src || stoech_dest;
}

bool Arque::arc_neighbours (std::vector<Arque*>& substrates, std::vector<Arque*>& products) const {
    substrates.clear ();
    products.clear ();
    const Network* network = owner_network ();
    if (!is_main_reaction (type) || network == nullptr) return false;
    for (Arque* a : network->arcs_to (*this)) {
        if (is_substrate_link (a->type)) {
            substrates.push_back (a);
        } else if (is_product_link (a->type)) {
            products.push_back (a);
        }
    }
    return !substrates.empty () || !products.empty ();
}

Popup* Arque::menu (int row) const {
    return document_state ().arc_menus[static_cast<std::size_t> (row) & 3U];
}

Anchor Arque::anchor (unsigned arc_type) const {
    switch (arc_type >> 9 & 3U) {
    case 1: return {mark_a.x, mark_a.y, 0, 0};
    case 2: return {mark_b.x, mark_b.y, 0, 0};
    default: {
        const int half = is_reaction (type) ? 7 : 0;
        return {x, y, half, half};
    }
    }
}

bool Arque::set_kind (int k) {
    const unsigned old = type;
    type = static_cast<unsigned> (k);
    if (type == arc::inhibition) {
        if (old != type) set_color (89);
    } else if (type == arc::activation) {
        if (old != type) set_color (68);
    } else {
        set_color (0);
    }
    if (old != type) mark_layout_dirty ();
    return old != type;
}

Extent Arque::extent () const {
    Extent box{std::min (start.x, end.x), std::min (start.y, end.y), std::max (start.x, end.x),
               std::max (start.y, end.y)};
    const auto join_label = [&box] (const Arque& owner) {
        if (!owner.label) return;
        const float left = owner.label_pos.x + owner.label->x;
        const float top = owner.label_pos.y + owner.label->y;
        box.join ({left, top, left + owner.label->get_width (),
                   top + static_cast<float> (owner.label->get_height ())});
    };
    join_label (*this);
    if (residu) {
        const float left = residu_pos.x + residu->x;
        const float top = residu_pos.y + residu->y;
        box.join ({left, top, left + residu->get_width (), top});
    }
    const Arque* reaction = dest_arc ();
    if ((is_substrate_link (type) || is_product_link (type)) && reaction != nullptr &&
        is_reaction (reaction->type)) {
        if (const Arque* catalysis = reaction->first_catalysis ()) join_label (*catalysis);
    }
    if (box.right - box.x < 14) {
        box.x -= 14;
        box.right += 14;
    }
    if (box.bottom - box.y < 14) {
        box.y -= 14;
        box.bottom += 14;
    }
    return box;
}

void Arque::sprint (PrintState& to, float, float) const { fprint (to, -1); }

} // namespace ostrand::document
