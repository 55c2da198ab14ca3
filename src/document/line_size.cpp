// How large a line is, and where in it scripts and letters stand.
#include "document/hit_test.h"
#include "document/line.h"
#include "document/network.h"

#include <algorithm>

namespace ostrand::document {
namespace {

// Scripts overlap their letter: a superscript's base stands 7 below the letter's top, the top of a
// subscript 8 above the letter's base.
constexpr int superscript_drop = 7;
constexpr int subscript_rise = 8;
/// Between a letter and its scripts, and behind these.
constexpr float script_gap = 1;

/// The end mark takes no room of its own; as a cursor it is as wide as an n.
float plain_width (const FontMetrics& metrics, unsigned code) {
    return metrics.width_of (code == end_mark ? 'n' : code);
}

/// Nothing inside waits for its layout.
bool is_settled (const Char* item) {
    return item == nullptr || item->kind () != CharKind::network ||
           static_cast<const Network*> (item)->is_laid_out ();
}

} // namespace

TextSize Line::size_of (const StdChar& entry) {
    if (const Char* const item = entry.item ()) {
        return {item->get_width (), item->get_ascent (), item->get_descent ()};
    }
    const FontMetrics& metrics = *font_metrics (entry.font);
    const float w = plain_width (metrics, entry.code);
    TextSize size{w, metrics.ascent, metrics.descent};
    float scripts = 0;
    if (const Line* const sup = entry.sup ()) {
        scripts = sup->get_width () + script_gap;
        size.ascent += sup->get_ascent () - superscript_drop;
    }
    if (const Line* const sub = entry.sub ()) {
        scripts = std::max (scripts, sub->get_width () + script_gap);
        size.descent = std::max (size.descent, sub->get_height () - subscript_rise);
    }
    size.width = w + scripts;
    return size;
}

/// False when the size is good for this moment only, because something inside is not laid out.
bool Line::measure (TextSize& size) const {
    size = {};
    bool settled = true;
    const FontMetrics* metrics = nullptr;
    unsigned font = 0;
    for (std::size_t i = 0; i < chars_.size (); ++i) {
        const StdChar& entry = chars_[i];
        TextSize one;
        if (entry.is_plain ()) {
            if (metrics == nullptr || entry.font != font) metrics = font_metrics (entry.font);
            font = entry.font;
            one = {plain_width (*metrics, entry.code), metrics->ascent, metrics->descent};
        } else {
            one = size_of (entry);
            settled = settled && is_settled (entry.item ());
        }
        if (i + 1 < chars_.size ()) size.width += one.width;
        size.ascent = std::max (size.ascent, one.ascent);
        size.descent = std::max (size.descent, one.descent);
    }
    return settled;
}

const TextSize& Line::size () const {
    const unsigned now = metrics_generation ();
    if (size_generation_ != now) size_generation_ = measure (size_) ? now : 0;
    return size_;
}

int Line::get_height () const {
    const TextSize& whole = size ();
    return whole.ascent + whole.descent;
}

Point Line::script_place (int index, bool superscript) const {
    const StdChar& letter = at (index);
    const FontMetrics& metrics = *font_metrics (letter.font);
    const float beside = plain_width (metrics, letter.code) + script_gap;
    if (superscript) return {beside, static_cast<float> (superscript_drop - metrics.ascent)};
    const Line* const sub = letter.sub ();
    return {beside, sub == nullptr ? 0 : static_cast<float> (sub->get_ascent () - subscript_rise)};
}

void Line::lay_out () {
    if (plain_) return;
    float left = 0;
    for (int i = 0; i < count (); ++i) {
        const StdChar& entry = at (i);
        if (entry.parts) {
            if (entry.parts->sub) entry.parts->sub->lay_out ();
            if (entry.parts->sup) entry.parts->sup->lay_out ();
            if (Char* const item = entry.item ()) {
                item->lay_out ();
                place (*item, left, 0);
            }
        }
        left += width_at (i);
    }
    size_generation_ = 0;
}

Hit Line::find_at (float px, float py, const HitQuery& query) {
    const auto above = static_cast<float> (get_ascent ());
    const auto below = static_cast<float> (get_descent ());
    if (px < x_ || px >= x_ + get_width () || py < y_ - above || py > y_ + below) return {};
    float left = x_;
    for (int i = 0; i + 1 < count (); ++i) {
        const float w = width_at (i);
        if (px >= left + w) {
            left += w;
            continue;
        }
        if (Char* const item = at (i).item ()) {
            Hit hit = item->find_at (px - x_, py - y_, query);
            if (hit && hit.line == nullptr) hit.line = this;
            return hit;
        }
        const float rel_x = px - left;
        const float rel_y = py - y_;
        for (const bool superscript : {false, true}) {
            Line* const script = superscript ? sup (i) : sub (i);
            if (script == nullptr) continue;
            const Point base = script_place (i, superscript);
            if (const Hit hit = script->find_at (rel_x - base.x, rel_y - base.y, query)) return hit;
        }
        return {.object = this, .line = this, .letter = i, .rel_x = rel_x};
    }
    return {};
}

} // namespace ostrand::document
