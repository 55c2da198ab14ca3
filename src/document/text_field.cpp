// The way from a line up to the object whose text it is.
#include "document/text_field.h"

#include "document/arque.h"

namespace ostrand::document {

TextField field_of (const Line& line) {
    const Char* outer = &line;
    while (outer->parent () != nullptr && outer->parent ()->kind () == CharKind::line) {
        outer = outer->parent ();
    }
    if (outer->parent () == nullptr) return {};
    GraphBase* const object = outer->parent ()->find_object ();
    if (object == nullptr) return {};
    static constexpr FieldKind kinds[] = {FieldKind::label, FieldKind::residu,
                                          FieldKind::stoech_src, FieldKind::stoech_dest};
    const auto texts = object->texts ();
    for (std::size_t i = 0; i < texts.size (); ++i) {
        if (texts[i] == outer) return {object, kinds[i]};
    }
    return {};
}

} // namespace ostrand::document
