// What nodes, arcs and compartments have in common: their texts, fog, the arcs that end on them.
#include "document/graph_object.h"

#include "document/arque.h"
#include "document/network.h"
#include "document/network_listener.h"

namespace ostrand::document {

GraphBase::~GraphBase () = default;

void GraphBase::drop_texts () {
    label_.reset ();
    residu_.reset ();
}

void GraphBase::note () {
    if (destroyed_) return; // nothing may hold it any more
    if (Network* const network = owner_network ()) network->note (*this);
}

void GraphBase::content_changed () { note (); }

void GraphBase::lay_out () {
    for (Char* const text : texts ()) {
        if (text != nullptr) text->lay_out ();
    }
}

std::unique_ptr<Char> GraphBase::release_label () {
    std::unique_ptr<Char> label = std::move (label_);
    content_changed ();
    return label;
}

std::unique_ptr<Line> GraphBase::release_residu () {
    std::unique_ptr<Line> residu = std::move (residu_);
    content_changed ();
    return residu;
}

void GraphBase::take_label (std::unique_ptr<Char> new_label) {
    if (label_) announce_leaving (*label_);
    if (new_label) adopt (*new_label, this);
    label_ = std::move (new_label);
    content_changed ();
}

void GraphBase::take_line (std::unique_ptr<Line>& slot, std::unique_ptr<Line> line) {
    if (slot) announce_leaving (*slot);
    if (line) adopt (*line, this);
    slot = std::move (line);
    content_changed ();
}

void GraphBase::take_residu (std::unique_ptr<Line> new_residu) {
    take_line (residu_, std::move (new_residu));
}

bool GraphBase::set_selectable (bool on) {
    const bool changed = selectable_ != on;
    selectable_ = on;
    return changed;
}

bool GraphBase::set_thickness (unsigned char pixels) {
    const bool changed = thickness_ != pixels;
    thickness_ = pixels;
    return changed;
}

void GraphBase::set_id (int new_id) {
    if (Network* const network = owner_network ()) network->forget_ids ();
    id_ = new_id;
}

bool GraphBase::set_own_color (unsigned c) {
    const bool changed = color_ != c;
    color_ = c;
    return changed;
}

Line* GraphBase::label_line () const {
    return label_ && label_->kind () == CharKind::line ? static_cast<Line*> (label_.get ())
                                                       : nullptr;
}

Network* GraphBase::nested () const {
    return label_ && label_->kind () == CharKind::network ? static_cast<Network*> (label_.get ())
                                                          : nullptr;
}

std::array<Char*, 4> GraphBase::texts () const {
    std::array<Char*, 4> all{label_.get (), residu_.get ()};
    if (kind () == CharKind::arque) {
        const auto& arc = static_cast<const Arque&> (*this);
        all[2] = arc.stoech_src ();
        all[3] = arc.stoech_dest ();
    }
    return all;
}

Arque* GraphBase::connect (GraphBase&, unsigned) { return nullptr; }

void GraphBase::set_label (std::string_view letters) {
    take_label (std::make_unique<Line> (letters, document_state ().default_font, 0));
}

void GraphBase::set_residu (std::string_view letters) {
    take_residu (std::make_unique<Line> (letters, residu_font, 4));
}

bool GraphBase::set_own_fog (bool on) {
    bool changed = Char::set_fog (on);
    for (Char* const text : texts ()) {
        if (text != nullptr) changed = text->set_fog (on) || changed;
    }
    return changed;
}

bool GraphBase::set_fog (bool on) { return set_own_fog (on); }

void GraphBase::drop_incoming () {
    destroyed_ = true;
    Arque::destroy_all ({incoming_.begin (), incoming_.end ()});
}

} // namespace ostrand::document
