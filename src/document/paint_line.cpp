// How lines of text, letters and pictures are painted.
#include "document/line.h"
#include "document/paint_device.h"
#include "document/paint_style.h"
#include "document/picture.h"

#include <string>

namespace ostrand::document {
namespace {

constexpr unsigned broken_picture_color = 45; // a middle grey

/// What one text call can paint: the letters of a line that all look alike. Empty when they do not.
std::string uniform_letters (const Line& line, bool shows_selection) {
    std::string letters;
    const StdChar& first = line.chars ().front ();
    letters.reserve (line.chars ().size ());
    for (std::size_t i = 0; i + 1 < line.chars ().size (); ++i) {
        const StdChar& letter = line.chars ()[i];
        if (!letter.is_plain () || (letter.selected && shows_selection) || letter.foggy ||
            letter.font != first.font || letter.color != first.color || letter.code > 255) {
            return {};
        }
        letters += static_cast<char> (letter.code);
    }
    return letters;
}

/// Painter of one line, whose base begins at (left, base).
struct LinePainter {
    const Line& line;
    PaintDevice& device;
    const PaintStyle& style;
    float left;
    float base;

    bool is_readable (unsigned font) const {
        return static_cast<float> (font_size (size_index (font))) >= style.smallest_text;
    }

    /// The block that a cursor is, as wide as the entry that it stands on; a frame where the keys
    /// go elsewhere.
    void cursor () const {
        if (line.cursor < 0 || line.cursor >= line.count ()) return;
        float place = 0;
        for (int i = 0; i < line.cursor; ++i) place += line.width_at (i);
        const float x = left + place;
        const float y = base - static_cast<float> (line.get_ascent ());
        const float w = line.width_at (line.cursor);
        const auto h = static_cast<float> (line.get_height ());
        device.set_color (style.marking ());
        if (style.focus) {
            device.fill_rect (x, y, w, h);
        } else {
            device.set_line (1, LineStyle::solid);
            device.stroke_rect (x, y, w, h);
        }
    }

    void frame () const {
        device.set_color (style.marking ());
        device.set_line (style.frame, LineStyle::solid);
        device.stroke_rect (left, base - static_cast<float> (line.get_ascent ()), line.get_width (),
                            static_cast<float> (line.get_height ()));
    }

    void entry (int index, float x) const {
        const StdChar& entry = line.chars ()[static_cast<std::size_t> (index)];
        if (entry.selected && style.marks) {
            const TextSize size = line.size_at (index);
            device.set_color (style.marking ());
            device.fill_rect (x, base - static_cast<float> (size.ascent), size.width,
                              static_cast<float> (size.ascent + size.descent));
        }
        if (const Char* const item = entry.item ()) {
            item->paint (device, style, left, base); // it has its place in the line
            return;
        }
        if (entry.code != end_mark && entry.code < 256 && is_readable (entry.font)) {
            device.set_color (entry.foggy ? style.fogged (entry.color) : style.color (entry.color));
            const char letter = static_cast<char> (entry.code);
            device.draw_text (*font_metrics (entry.font), std::string_view (&letter, 1), x, base);
        }
        for (const bool superscript : {false, true}) {
            const Line* const script = superscript ? entry.sup () : entry.sub ();
            if (script == nullptr) continue;
            const Point place = line.script_place (index, superscript);
            script->paint (device, style, x + place.x, base + place.y);
        }
    }

    /// True when all went out as one text.
    bool whole () const {
        if (!style.whole_lines) return false;
        const std::string letters = uniform_letters (line, style.marks);
        if (letters.empty ()) return false;
        const StdChar& first = line.chars ().front ();
        if (!is_readable (first.font)) return true;
        device.set_color (style.color (first.color));
        device.draw_text (*font_metrics (first.font), letters, left, base);
        return true;
    }
};

} // namespace

void Line::paint (PaintDevice& device, const PaintStyle& style, float left, float top) const {
    const bool is_edited = style.marks && style.edited == this;
    if (is_empty () && !is_edited) return;
    const LinePainter painter{*this, device, style, left + x (), top + y ()};
    if (is_edited) painter.cursor ();
    if (!painter.whole ()) {
        float place = 0;
        for (int i = 0; i + 1 < count (); ++i) {
            painter.entry (i, painter.left + place);
            place += width_at (i);
        }
    }
    if (style.marks && style.framed == this && style.frame > 0 && !is_empty ()) painter.frame ();
}

void Picture::paint (PaintDevice& device, const PaintStyle& style, float left, float top) const {
    const float corner_x = left + x ();
    const float corner_y = top + y () - static_cast<float> (get_ascent ());
    const float w = get_width ();
    const auto h = static_cast<float> (get_height ());
    if (style.is_selected (*this)) {
        device.set_color (style.marking ());
        device.fill_rect (corner_x, corner_y, w, h);
    }
    if (image ()) {
        device.draw_picture (path (), corner_x, corner_y, w, h);
        return;
    }
    // The placeholder of a picture that cannot be read: a frame with a spot in it.
    device.set_color (broken_picture_color);
    device.set_line (1, LineStyle::solid);
    device.stroke_rect (corner_x, corner_y, w, h);
    device.fill_ellipse (corner_x + w / 4, corner_y + h / 4, w / 2, h / 2, 16);
}

} // namespace ostrand::document
