// What blocks show, and how large they are.
#include "manual/block.h"

namespace ostrand::manual {
namespace {

constexpr TextStyle number_style{.font = serif_font, .size = 14};
constexpr TextStyle first_bullet_style{.font = fixed_font, .size = 20};
constexpr TextStyle inner_bullet_style{.font = fixed_font, .size = 16};

void draw_marks (PaintList& list, const Block& block, int offset_y, const PageColours& colours) {
    for (const BlockMark& mark : block.marks) {
        list.emplace_back (MatchFrame{block.x + mark.left, block.y - block.ascent + offset_y,
                                      mark.right - mark.left, block.ascent + block.descent,
                                      mark.matched ? colours.current : colours.found});
    }
}

} // namespace

void Word::draw (PaintList& list, int offset_y, const PageColours& colours) const {
    draw_marks (list, *this, offset_y, colours);
    list.emplace_back (
        TextRun{text, x, y + offset_y, style, link != nullptr ? colours.link : colour});
}

void Word::take_size (const PageMeasure& measure) {
    width = measure.text_width (text, style);
    ascent = measure.ascent (style);
    descent = measure.descent (style);
}

float Word::place_of (std::size_t byte, const PageMeasure& measure) const {
    return measure.text_width (std::string_view (text).substr (0, byte), style);
}

void Blank::draw (PaintList& list, int offset_y, const PageColours& colours) const {
    draw_marks (list, *this, offset_y, colours);
}

void Blank::take_size (const PageMeasure& measure) {
    width = measure.text_width (" ", style);
    ascent = measure.ascent (style);
    descent = measure.descent (style);
}

void Img::draw (PaintList& list, int offset_y, const PageColours&) const {
    if (box.width <= 0 || box.height <= 0) return;
    list.emplace_back (PlacedImage{box.name, x, y - ascent + offset_y, box.width, box.height});
}

void Img::take_size (const PageMeasure& measure) {
    box = measure.image (source);
    width = static_cast<float> (box.width);
    ascent = box.height;
}

void Item::draw (PaintList& list, int offset_y, const PageColours&) const {
    if (number > 0) {
        const std::string digits = std::to_string (number);
        const float left = x - digit_width * static_cast<float> (digits.size () - 1);
        list.emplace_back (TextRun{digits + ")", left, y + offset_y, number_style, colour});
        return;
    }
    const char* const bullets[] = {"\u2022", "\u2023", "."};
    const TextStyle& style = level <= 1 ? first_bullet_style : inner_bullet_style;
    const char* const bullet = bullets[level <= 1 ? 0 : level == 2 ? 1 : 2];
    list.emplace_back (TextRun{bullet, x, y + offset_y, style, colour});
}

void Item::take_size (const PageMeasure& measure) {
    digit_width = measure.text_width ("0", number_style);
}

} // namespace ostrand::manual
