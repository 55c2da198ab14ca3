// Where labels go: inside the window, and never over one another.
// Layer: viewer.
#pragma once
#include "viewer/scene.h"

#include <string>
#include <vector>

namespace ostrand::viewer {

/// A text and the place that it wants.
struct Label {
    Point2 point; // what it belongs to, device pixels; it is shown while this is in the window
    Point2 shift; // from there to the text
    /// Which point of the text's box stands there: 0 its left or top, 0.5 the middle, 1 its right
    /// or bottom.
    float along = 0;
    float down = 0;
    std::string text;
    int font = 0;  // 0 upright, 1 bold
    int size = 10; // units
};

/// One way to place the labels of an axis; those that matter most come first.
using LabelRow = std::vector<Label>;

/// Puts texts where there is room. Who comes first has the place.
class LabelPlacer {
  public:
    /// All must outlive the placer.
    LabelPlacer (const ViewSize& size, const toolkit::TextWidth& text_width, Scene& scene)
        : size_ (size), text_width_ (text_width), scene_ (scene) {}

    /// Keeps a rectangle free.
    void reserve (const FlatBox& box) { taken_.push_back (box); }

    /// Puts a text, with a patch of ground behind it. A label near the border is moved inside.
    /// False, and nothing put, where its point is outside the window or there is no room.
    bool put (const Label& label);

    /// How the ways of a row are compared.
    struct Preference {
        std::size_t spared = 0; // so many labels the first way may lack and still be taken
        std::size_t vital = 0;  // so many at the beginning of a row count more than all others
    };

    /// Puts the labels of an axis in the way that has room for most of them, the first of these.
    /// All ways hold the same labels. The indices of the labels that found no room.
    std::vector<std::size_t> put_row (const std::vector<LabelRow>& ways, Preference preference);
    std::vector<std::size_t> put_row (const std::vector<LabelRow>& ways) {
        return put_row (ways, Preference{});
    }

    /// What labels and reserved boxes take.
    const std::vector<FlatBox>& taken () const { return taken_; }

  private:
    std::vector<std::size_t> put_all (const LabelRow& row);
    void take_back (std::size_t labels);

    const ViewSize& size_;
    const toolkit::TextWidth& text_width_;
    Scene& scene_;
    std::vector<FlatBox> taken_;
};

} // namespace ostrand::viewer
