// Compart: a compartment, a named rectangle or ellipse that holds nodes.
// Layer: document.
#pragma once
#include "document/graph_object.h"

#include <array>

namespace ostrand::document {

/// The edge of a compartment that the pointer is on; none means the whole of it.
enum class Edge { none = -1, left = 0, right = 1, top = 2, bottom = 3 };

namespace shape {
inline constexpr int rectangle = 8;
inline constexpr int ellipse = 12;
} // namespace shape

/// A compartment. `x`, `y` are the top left corner; `width` and `height` of Char are its own size.
/// The network owns it; it holds nodes by their places only.
class Compart : public GraphBase {
  public:
    Compart (int new_shape, float new_x, float new_y, float new_width, float new_height);
    ~Compart () override;

    Edge edge = Edge::none;
    Network* network = nullptr;
    int shape; // 8 rectangle, any other value an ellipse
    /// The user's own numbers a, b, c, d, e of "{a:b+c+d+e}"; they come and go with the file.
    std::array<int, 5> user_values{80, 40, 0, 0, 0};

    /// A rectangle holds its left and top edge, not its right and bottom one; an ellipse what is
    /// inside its outline.
    bool contains (float px, float py) const;
    /// width x height, of an ellipse times 0.7853982.
    double area () const;
    /// Moves the compartment or its `edge` by (dx, dy); false when the size would fall below the
    /// smallest one (hit_test.cpp).
    bool drag (float dx, float dy);

    std::unique_ptr<Char> clone (Char* new_parent) const override;
    CharKind kind () const override { return CharKind::compart; }
    float get_width () const override; // grows to the label's width + 10
    int get_height () const override;
    void paint (float left, float top, bool draw) override; // paint_compart.cpp
    bool set_position (float new_x, float new_y) override;
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    void text (std::string& out) const override;
    void print_plain (std::string& out) const override;
    Char* find_at (float px, float py, HitPlace& place) override; // hit_test.cpp
    Popup* menu (int row) const override;
    Anchor anchor (unsigned arc_type) const override;
    bool set_kind (int k) override;
    void destroy () override;
    Extent extent () const override;
    Network* owner_network () const override { return network; }
};

} // namespace ostrand::document
