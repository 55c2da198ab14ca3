// Lines that show where a dragged box stands in line with its neighbours, and where gaps are equal.
// Layer: editor (uses document).
#pragma once
#include "document/graph_object.h"

#include <vector>

namespace ostrand::editor {

/// A line to show, along one axis, in network units.
struct Guide {
    enum class Kind {
        edge, // through edges or centres that are in line
        gap   // across one of several equal gaps
    };
    Kind kind = Kind::edge;
    bool vertical = false;
    float at = 0;   // where it stands: x of a vertical line, y of a horizontal one
    float from = 0; // its ends along it
    float to = 0;

    bool operator== (const Guide&) const = default;
};

/// What a search found.
struct Guides {
    std::vector<Guide> lines;
    /// Whole units by which the box would have to move to be in line where it nearly is; 0 where it
    /// is, or where nothing is near.
    int snap_x = 0;
    int snap_y = 0;
};

/// Looks at both axes of a box among its neighbours.
/// reach  units within which the box is nearly in line; lines are for places to within half a unit
Guides find_guides (const document::Extent& box, const std::vector<document::Extent>& neighbours,
                    float reach);

} // namespace ostrand::editor
