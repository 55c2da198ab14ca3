// Compart: a compartment, a named rectangle or ellipse that holds nodes.
// Layer: document.
#pragma once
#include "document/graph_object.h"

#include <array>

namespace ostrand::document {

namespace shape {
inline constexpr int rectangle = 8;
inline constexpr int ellipse = 12;
} // namespace shape

/// A compartment. `x`, `y` are the top left corner. The network owns it; it holds nodes by their
/// places only.
class Compart : public GraphBase {
  public:
    Compart (int new_shape, float new_x, float new_y, float new_width, float new_height);
    ~Compart () override;

    Network* network () const { return network_; }
    int shape () const { return shape_; } // 8 rectangle, any other value an ellipse
    /// The size as it is stored and written. A layout makes the width at least 10 wider than the
    /// label.
    float width () const { return width_; }
    float height () const { return height_; }
    /// The user's own numbers a, b, c, d, e of "{a:b+c+d+e}"; they come and go with the file.
    const std::array<int, 5>& user_values () const { return user_values_; }

    bool set_shape (int new_shape);
    bool set_size (float new_width, float new_height);
    bool set_user_values (const std::array<int, 5>& values);

    /// A rectangle holds its left and top edge, not its right and bottom one; an ellipse what is
    /// inside its outline.
    bool contains (float px, float py) const;
    /// width x height, of an ellipse times 0.7853982.
    double area () const;
    /// Moves the compartment or one edge of it by (dx, dy); false, and nothing moves, when the size
    /// would fall below the smallest one.
    bool drag (Edge edge, float dx, float dy);

    std::unique_ptr<Char> clone (Char* new_parent) const override;
    CharKind kind () const override { return CharKind::compart; }
    float get_width () const override; // at least the label's width + 10
    int get_height () const override;
    void lay_out () override;
    void paint (PaintDevice& device, const PaintStyle& style, float left,
                float top) const override; // paint_compart.cpp
    bool set_position (float new_x, float new_y) override;
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    void text (std::string& out) const override;
    void print_plain (std::string& out) const override;
    Hit find_at (float px, float py, const HitQuery& query) override; // hit_test.cpp
    Anchor anchor (unsigned arc_type) const override;
    /// k  0 rectangle, 1 ellipse
    bool set_kind (int k) override;
    void destroy () override;
    Extent extent () const override;
    Network* owner_network () const override { return network_; }

  private:
    friend class Network;
    friend class Settler;

    Network* network_ = nullptr;
    float width_;
    float height_;
    int shape_;
    std::array<int, 5> user_values_{80, 40, 0, 0, 0};
};

} // namespace ostrand::document
