// What an object paints, as text.
#pragma once
#include "document/drawn_network.h"
#include "document/paint_style.h"
#include "support/recording_device.h"

#include <string>

namespace ostrand::testing {

/// The primitives of one object, laid out and painted at (0, 0), a line each.
inline std::string painted (document::Char& object, const document::PaintStyle& style = {}) {
    document::GraphBase* const g = object.find_object ();
    if (g != nullptr && g->owner_network () != nullptr) {
        g->owner_network ()->layout ();
    } else {
        object.lay_out ();
    }
    RecordingDevice device;
    object.paint (device, style, 0, 0);
    return device.joined ();
}

inline document::PaintStyle dark () {
    document::PaintStyle style;
    style.dark = true;
    return style;
}

} // namespace ostrand::testing
