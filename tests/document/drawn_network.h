// A small network with nodes of known sizes, for tests of geometry and painting.
#pragma once
#include "document/network.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <string_view>

namespace ostrand::testing {

/// Courier 10: every letter is 6 wide, a line 12 high with 9 of it above the base.
inline constexpr unsigned even_font = document::font_key (3, false, false, 1);

inline std::unique_ptr<document::Line> even_line (std::string_view letters, unsigned color = 0) {
    return std::make_unique<document::Line> (letters, even_font, color);
}

/// A network that starts from and leaves behind the document's switches as they are at start.
struct DrawnNetwork {
    DrawnNetwork () { reset (); }
    ~DrawnNetwork () { reset (); }
    DrawnNetwork (const DrawnNetwork&) = delete;
    DrawnNetwork& operator= (const DrawnNetwork&) = delete;

    /// A node around a centre; five letters make it 40 by 20, no letters at all 2 by 2.
    document::Node& node (float x, float y, unsigned type = document::node::protein,
                          std::string_view letters = "AAAAA") {
        auto made = std::make_unique<document::Node> (x, y, type, 7);
        if (!letters.empty ()) made->take_label (even_line (letters));
        return network.add_node (std::move (made));
    }
    document::Arque& arc (document::Node& from, document::GraphBase& to,
                          unsigned type = document::arc::reaction) {
        document::Arque& made = *from.connect (to, type);
        made.set_own_color (0);
        return made;
    }
    static void reset () {
        document::DocumentState& state = document::document_state ();
        state.dark_mode = false;
        state.show_kinetics = true;
        state.show_stoichiometry = false;
    }

    document::Network network;
};

inline void expect_point (document::Point p, double x, double y) {
    EXPECT_NEAR (p.x, x, 0.002);
    EXPECT_NEAR (p.y, y, 0.002);
}

} // namespace ostrand::testing
