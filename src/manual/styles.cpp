// Opening and closing styles.
#include "manual/styles.h"

namespace ostrand::manual {
namespace {

Face changed (Face face, const StyleChange& change) {
    if (change.bold) face.style.bold = true;
    if (change.italic) face.style.italic = true;
    if (change.fixed) face.style.font = fixed_font;
    if (change.size) face.style.size = *change.size;
    if (change.colour) face.colour = *change.colour;
    return face;
}

} // namespace

void StyleStack::open (const StyleChange& change) {
    open_.push_back ({change, now_});
    now_ = changed (now_, change);
}

bool StyleStack::close (int tag) {
    std::size_t at = open_.size ();
    while (at > 0 && open_[at - 1].change.tag != tag) --at;
    if (at == 0) return false;
    --at;
    now_ = open_[at].before;
    open_.erase (open_.begin () + static_cast<std::ptrdiff_t> (at));
    for (; at < open_.size (); ++at) {
        open_[at].before = now_;
        now_ = changed (now_, open_[at].change);
    }
    return true;
}

} // namespace ostrand::manual
