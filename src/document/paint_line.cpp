// How lines of text, letters and pictures are laid out and painted.
#include "document/colors.h"
#include "document/document_state.h"
#include "document/line.h"
#include "document/paint_device.h"
#include "document/picture.h"

#include <string>

namespace ostrand::document {
namespace {

constexpr unsigned broken_picture_color = 45; // a middle grey

/// Behind selected letters and around framed lines.
unsigned marking_color () { return document_state ().dark_mode ? 3U : 72U; }

/// What one text call can paint: the letters of a line that all look alike. Empty when they do not.
std::string uniform_letters (const Line& line) {
    std::string letters;
    const auto& entries = line.chars ();
    const Char& first = *entries.front ();
    letters.reserve (entries.size ());
    for (std::size_t i = 0; i + 1 < entries.size (); ++i) {
        const Char& entry = *entries[i];
        if (entry.kind () != CharKind::std_char || entry.selected || entry.foggy ||
            entry.font != first.font || entry.color != first.color)
            return {};
        const auto& letter = static_cast<const StdChar&> (entry);
        if (letter.sub || letter.sup || letter.code > 255) return {};
        letters += static_cast<char> (letter.code);
    }
    return letters;
}

/// On the canvas a scaled text is as wide as the toolkit makes it, which need not be the sum of its
/// letters; during a scroll by the mouse speed counts more.
bool may_paint_at_once (const PaintDevice& device) {
    const DocumentState& state = document_state ();
    return device.is_file () || state.paint_zoom == 1.0F || state.scrolling;
}

} // namespace

void Line::paint (float left, float top, bool draw) {
    if (is_empty ()) return;
    const float base_x = left + x;
    const float base_y = top + y;
    float place = 0;
    for (const auto& entry : chars_) {
        entry->x = place;
        entry->y = 0;
        place += entry->get_width ();
    }
    PaintDevice* const device = draw ? current_device () : nullptr;
    const std::string letters =
        device && may_paint_at_once (*device) ? uniform_letters (*this) : std::string ();
    if (!letters.empty ()) {
        const auto& first = static_cast<const StdChar&> (*chars_.front ());
        device->set_color (painted_color (first.color));
        device->draw_text (*first.metrics, letters, base_x, base_y);
    } else {
        for (std::size_t i = 0; i + 1 < chars_.size (); ++i)
            chars_[i]->paint (base_x, base_y, draw);
    }
    if (device && frame > 0) {
        device->set_color (marking_color ());
        device->set_line (static_cast<float> (frame), LineStyle::solid);
        device->stroke_rect (base_x, base_y - static_cast<float> (get_ascent ()), get_width (),
                             static_cast<float> (get_height ()));
    }
}

void StdChar::paint (float left, float top, bool draw) {
    const float base_x = left + x;
    const float base_y = top + y;
    get_width (); // places the scripts
    if (PaintDevice* const device = draw ? current_device () : nullptr; device) {
        if (selected) {
            device->set_color (marking_color ());
            device->fill_rect (base_x, base_y - static_cast<float> (get_ascent ()), get_width (),
                               static_cast<float> (get_height ()));
        }
        if (code != end_mark && code < 256) {
            device->set_color (foggy ? fogged_color (color) : painted_color (color));
            const char letter = static_cast<char> (code);
            device->draw_text (*metrics, std::string_view (&letter, 1), base_x, base_y);
        }
    }
    for (Line* const script : {sub.get (), sup.get ()}) {
        if (!script) continue;
        script->parent = this;
        script->paint (base_x, base_y, draw);
    }
}

void Picture::paint (float left, float top, bool draw) {
    PaintDevice* const device = draw ? current_device () : nullptr;
    if (!device) return;
    const float corner_x = left + x;
    const float corner_y = top + y - static_cast<float> (ascent);
    if (selected) {
        device->set_color (marking_color ());
        device->fill_rect (corner_x, corner_y, width, height);
    }
    if (image) {
        device->draw_picture (path, corner_x, corner_y, width, height);
        return;
    }
    // The placeholder of a picture that cannot be read: a frame with a spot in it.
    device->set_color (broken_picture_color);
    device->set_line (1, LineStyle::solid);
    device->stroke_rect (corner_x, corner_y, width, height);
    device->fill_ellipse (corner_x + width / 4, corner_y + height / 4, width / 2, height / 2, 16);
}

} // namespace ostrand::document
