// What nodes, arcs and compartments have in common: their texts, fog, the arcs that end on them.
#include "document/graph_object.h"

#include "document/arque.h"
#include "document/network.h"

#include <algorithm>

namespace ostrand::document {

void Extent::join (const Extent& other) {
    x = std::min (x, other.x);
    y = std::min (y, other.y);
    right = std::max (right, other.right);
    bottom = std::max (bottom, other.bottom);
}

GraphBase::~GraphBase () = default;

void GraphBase::take_label (std::unique_ptr<Char> new_label) {
    if (new_label) new_label->parent = this;
    label = std::move (new_label);
    mark_layout_dirty ();
}

void GraphBase::take_residu (std::unique_ptr<Line> new_residu) {
    if (new_residu) new_residu->parent = this;
    residu = std::move (new_residu);
    mark_layout_dirty ();
}

Line* GraphBase::label_line () const {
    return label && label->kind () == CharKind::line ? static_cast<Line*> (label.get ()) : nullptr;
}

Network* GraphBase::nested () const {
    return label && label->kind () == CharKind::network ? static_cast<Network*> (label.get ())
                                                        : nullptr;
}

Arque* GraphBase::connect (GraphBase&, unsigned) { return nullptr; }

void GraphBase::set_label (std::string_view letters) {
    take_label (std::make_unique<Line> (letters, document_state ().default_font, 0));
}

void GraphBase::set_residu (std::string_view letters) {
    take_residu (std::make_unique<Line> (letters, residu_font, 4));
}

bool GraphBase::set_color (unsigned c) {
    const bool changed = color != c;
    color = c;
    return changed;
}

void GraphBase::set_own_fog (bool on) {
    foggy = on;
    if (label) label->set_fog (on);
    if (residu) residu->set_fog (on);
}

void GraphBase::drop_incoming () {
    destroyed = true;
    Arque::destroy_all (incoming_);
}

} // namespace ostrand::document
