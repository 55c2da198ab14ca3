// TextField: which text of which object a line is.
// Layer: document.
#pragma once
#include <cstdint>

namespace ostrand::document {

class GraphBase;
class Line;

enum class FieldKind : std::uint8_t { label, residu, stoech_src, stoech_dest };

/// A text of an object. Without an object: a line that is part of none.
struct TextField {
    GraphBase* object = nullptr;
    FieldKind kind = FieldKind::label;

    explicit operator bool () const { return object != nullptr; }
    bool operator== (const TextField&) const = default;
};

/// The field that a line is, or that the letters around a script or a line inside it belong to.
TextField field_of (const Line& line);

} // namespace ostrand::document
