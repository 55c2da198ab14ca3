// A device that keeps the list of what was painted, for tests of painting that need neither a
// window nor a parser.
#pragma once
#include "base/text.h"
#include "document/paint_device.h"

#include <string>
#include <vector>

namespace ostrand::testing {

/// Each primitive becomes a line such as "fill_rect 1 2 3 4"; numbers as %g.
class RecordingDevice : public document::PaintDevice {
  public:
    std::vector<std::string> calls;

    /// The lines that begin with `name`.
    std::vector<std::string> named (std::string_view name) const {
        std::vector<std::string> found;
        for (const std::string& call : calls)
            if (call.starts_with (name)) found.push_back (call);
        return found;
    }
    bool has (std::string_view call) const {
        for (const std::string& one : calls)
            if (one == call) return true;
        return false;
    }
    /// All lines, each with a newline.
    std::string joined () const {
        std::string all;
        for (const std::string& call : calls) all += call + "\n";
        return all;
    }

    void set_color (unsigned color) override {
        calls.push_back (color < 256 ? format_text ("color %u", color)
                                     : format_text ("color %08x", color));
    }
    void set_color_rgb (int red, int green, int blue) override {
        calls.push_back (format_text ("color_rgb %d %d %d", red, green, blue));
    }
    void set_color_alpha (int red, int green, int blue, int alpha) override {
        calls.push_back (format_text ("color_alpha %d %d %d %d", red, green, blue, alpha));
    }
    void set_line (float width, document::LineStyle style) override {
        add (style == document::LineStyle::dashed ? "line_dashed" : "line", {width});
    }
    void push_transform (float x, float y, float angle) override { add ("push", {x, y, angle}); }
    void pop_transform () override { add ("pop", {}); }
    void fill_rect (float x, float y, float w, float h) override {
        add ("fill_rect", {x, y, w, h});
    }
    void stroke_rect (float x, float y, float w, float h) override {
        add ("stroke_rect", {x, y, w, h});
    }
    void fill_round_rect (float x, float y, float w, float h, float r) override {
        add ("fill_round_rect", {x, y, w, h, r});
    }
    void stroke_round_rect (float x, float y, float w, float h, float r) override {
        add ("stroke_round_rect", {x, y, w, h, r});
    }
    void fill_ellipse (float x, float y, float w, float h, int steps) override {
        add ("fill_ellipse", {x, y, w, h, static_cast<float> (steps)});
    }
    void stroke_ellipse (float x, float y, float w, float h, int steps) override {
        add ("stroke_ellipse", {x, y, w, h, static_cast<float> (steps)});
    }
    void fill_triangle_head (float length, float width, float tip_x) override {
        add ("fill_triangle_head", {length, width, tip_x});
    }
    void arrow_head (float length, float width, float line_width) override {
        add ("arrow_head", {length, width, line_width});
    }
    void fill_chevron (float x, float y, float w, float h, float depth) override {
        add ("fill_chevron", {x, y, w, h, depth});
    }
    void draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                    float y) override {
        add (format_text ("text %u '%s'", font.key, std::string (letters).c_str ()), {x, y});
    }
    void draw_picture (std::string_view path, float x, float y, float w, float h) override {
        add ("picture " + std::string (path), {x, y, w, h});
    }
    void set_clip (float x, float y, float w, float h) override { add ("clip", {x, y, w, h}); }
    void end_clip () override { add ("end_clip", {}); }
    void shared_bar (float x, float y, float w, float h, float t) override {
        add ("shared_bar", {x, y, w, h, t});
    }
    void begin_group () override { add ("group", {}); }
    void end_group () override { add ("end_group", {}); }

  private:
    void add (std::string call, std::initializer_list<float> numbers) {
        for (const float number : numbers) call += " " + format_g (number);
        calls.push_back (call);
    }
};

} // namespace ostrand::testing
