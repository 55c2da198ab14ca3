// Keeping a selection and its marks.
#include "editor/selection.h"

#include <algorithm>

namespace ostrand::editor {

using document::CharKind;
using document::GraphBase;
using document::Line;
using document::Node;

int Selection::count () const {
    return edit_line_ != nullptr ? 1 : static_cast<int> (objects_.size ());
}

bool Selection::contains (const GraphBase& object) const {
    // The mark answers at once for what is not selected; what another canvas selected has it too.
    return object.selected && std::ranges::find (objects_, &object) != objects_.end ();
}

GraphBase* Selection::only () const { return objects_.size () == 1 ? objects_.front () : nullptr; }

Node* Selection::only_node () const {
    GraphBase* const object = only ();
    return object != nullptr && object->kind () == CharKind::node ? static_cast<Node*> (object)
                                                                  : nullptr;
}

document::Arque* Selection::only_arc () const {
    GraphBase* const object = only ();
    return object != nullptr && object->kind () == CharKind::arque
               ? static_cast<document::Arque*> (object)
               : nullptr;
}

std::vector<Node*> Selection::nodes () const {
    std::vector<Node*> found;
    for (GraphBase* const object : objects_)
        if (object->kind () == CharKind::node) found.push_back (static_cast<Node*> (object));
    return found;
}

GraphBase* Selection::text_owner () const {
    return edit_line_ == nullptr ? nullptr : edit_line_->find_object ();
}

void Selection::leave_text () {
    if (edit_line_ == nullptr) return;
    edit_line_->clear_selection ();
    edit_line_->cursor = -1;
    edit_line_ = nullptr;
}

/// A style that was chosen behind the last letter was for letters that did not come. No record tells
/// of it, so it goes with the edit.
void Selection::end_text () {
    if (edit_line_ == nullptr) return;
    Line& line = *edit_line_;
    leave_text ();
    if (line.is_empty ()) return;
    const auto end = static_cast<std::size_t> (line.count ()) - 1;
    const document::StdChar& last = line.chars ()[end - 1];
    const document::StdChar& mark = line.chars ()[end];
    if (!last.is_plain () || (last.font == mark.font && last.color == mark.color)) return;
    line.cursor = static_cast<int> (end);
    line.set_style (last.font, last.color);
    line.cursor = -1;
}

void Selection::clear () {
    end_text ();
    for (GraphBase* const object : objects_) object->selected = false;
    objects_.clear ();
}

void Selection::set (const std::vector<GraphBase*>& objects) {
    clear ();
    objects_ = objects;
    for (GraphBase* const object : objects_) object->selected = true;
}

void Selection::add (GraphBase& object) {
    end_text ();
    if (contains (object)) return;
    object.selected = true;
    objects_.push_back (&object);
}

void Selection::remove (GraphBase& object) {
    object.selected = false;
    std::erase (objects_, &object);
}

void Selection::edit (Line& line, int index) {
    clear ();
    edit_line_ = &line;
    line.cursor = index;
}

void Selection::move_cursor (document::TextPlace place) {
    if (place.line == nullptr) return;
    if (place.line != edit_line_) {
        leave_text ();
        edit_line_ = place.line;
    }
    place.line->cursor = place.index;
}

std::vector<std::int32_t> Selection::ids () const {
    std::vector<std::int32_t> found;
    if (const GraphBase* const owner = text_owner ()) found.push_back (owner->id ());
    for (const GraphBase* const object : objects_) found.push_back (object->id ());
    return found;
}

void Selection::forget (GraphBase& object) {
    if (std::erase (objects_, &object) > 0) object.selected = false; // it may come back elsewhere
}

void Selection::forget (const document::Char& text) {
    if (edit_line_ == &text) edit_line_ = nullptr;
}

} // namespace ostrand::editor
