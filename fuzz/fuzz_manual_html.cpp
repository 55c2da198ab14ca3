// Pages of the manual's viewer: any bytes are read, laid out, searched and painted, and the plain
// text is what the blocks give out. Faults of the pages go to standard error: -close_fd_mask=2.
#include "manual/html.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace ostrand::manual;

namespace {

void check (bool holds) {
    if (!holds) std::abort ();
}

class PlainMeasure : public PageMeasure {
  public:
    float text_width (std::string_view text, const TextStyle& style) const override {
        return static_cast<float> (text.size ()) * static_cast<float> (style.size) / 2;
    }
    int ascent (const TextStyle& style) const override { return style.size - 3; }
    int descent (const TextStyle&) const override { return 3; }
    ImageBox image (std::string_view source) const override {
        return {"a.png", static_cast<int> (source.size ()), 50};
    }
};

/// The plain text without its line ends is what the blocks give out, each at its offset.
void check_text (const HTML& html) {
    std::string given;
    for (const auto& block : html.page ().blocks) {
        std::string own;
        block->text_out (own);
        check (html.text_copy ().compare (block->offset, own.size (), own) == 0);
        given += own;
    }
    check (html.text_copy ().size () >= given.size ());
}

/// Lines hold all blocks in order, do not overlap, and painting a page paints no more than there
/// is.
void check_lines (const HTML& html) {
    std::size_t next = 0;
    int bottom = 0;
    for (const PageLine& line : html.page ().lines) {
        check (line.first == next && line.last > next && line.top >= bottom);
        next = line.last;
        bottom = line.bottom;
    }
    check (next == html.page ().blocks.size ());
    html.paint_list (0, html.height_of_text ());
    html.paint_list (html.height_of_text () / 2, 100);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    const std::string_view source (reinterpret_cast<const char*> (data), size);
    const PlainMeasure measure;
    HTML html (measure);
    html.resize (300, 200);
    html.value (source);
    for (const int width : {300, 0, 2000, 120}) {
        html.resize (width, 200);
        check_lines (html);
        check_text (html);
        const std::string_view pattern = source.substr (size / 2, 5);
        const int found = html.find (pattern);
        check (found == static_cast<int> (html.matches ().size ()));
        check (html.next_match (true) == (found > 0));
        html.next_match (false);
    }
    for (int y = 0; y < 200; y += 20) html.follow_link (20, y);
    html.scroll ().key (ScrollKey::end);
    return 0;
}
