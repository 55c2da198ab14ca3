// The styles that are open at a place of a page.
// Layer: manual (for reading only).
#pragma once
#include "manual/measure.h"

#include <optional>
#include <vector>

namespace ostrand::manual {

/// A style with its colour.
struct Face {
    TextStyle style;
    unsigned colour = 0;

    bool operator== (const Face&) const = default;
};

/// What one open tag changes; what it does not name stays.
struct StyleChange {
    int tag = 0; // token of the tag
    bool bold = false;
    bool italic = false;
    bool fixed = false;
    std::optional<int> size = {};
    std::optional<unsigned> colour = {};
};

/// Open tags, innermost last. A tag that is closed out of turn takes its own change away and leaves
/// the others.
class StyleStack {
  public:
    explicit StyleStack (const Face& base) : base_ (base), now_ (base) {}

    const Face& now () const { return now_; }
    void open (const StyleChange& change);
    /// False when no such tag is open.
    bool close (int tag);

  private:
    struct Entry {
        StyleChange change;
        Face before;
    };

    Face base_;
    Face now_;
    std::vector<Entry> open_;
};

} // namespace ostrand::manual
