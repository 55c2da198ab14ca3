// An SVG drawing read back without the code that wrote it: where does each label and each shape
// stand on the page? Header only, so that each user links the document library by itself.
#pragma once
#include "base/text.h"
#include "document/font.h"
#include "document/greek.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::testing {

/// Something that is painted and the box around it, in pixels of the page.
struct PaintedBox {
    std::string what; // the letters of a text, else the element
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

struct SvgPage {
    double width = 0;
    double height = 0;
    std::vector<PaintedBox> texts;
    std::vector<PaintedBox> shapes;

    /// What reaches over the page, in words; empty when nothing does. Places are written with six
    /// digits, and so much is let pass.
    std::string outside () const {
        std::string all;
        for (const auto* list : {&texts, &shapes}) {
            for (const PaintedBox& box : *list) {
                const double slack = 0.02 + 1e-5 * std::max (std::fabs (box.right), box.bottom);
                if (box.left >= -slack && box.top >= -slack && box.right <= width + slack &&
                    box.bottom <= height + slack)
                    continue;
                all += "'" + box.what + "' " + format_g (box.left) + " " + format_g (box.top) +
                       " " + format_g (box.right) + " " + format_g (box.bottom) + "\n";
            }
        }
        if (!all.empty ()) all += "page " + format_g (width) + " x " + format_g (height) + "\n";
        return all;
    }
};

class SvgPageReader {
  public:
    explicit SvgPageReader (std::string_view text) : rest_ (text) {}

    SvgPage read () {
        bool defining = false;
        while (next_element ()) {
            if (element_.starts_with ("?")) continue;
            if (element_ == "defs") defining = true;
            if (element_ == "/defs") defining = false;
            if (defining) continue;
            if (element_ == "svg") {
                page_.width = number ("width");
                page_.height = number ("height");
            } else if (element_ == "g") {
                outer_.push_back (now_);
                move ();
            } else if (element_ == "/g") {
                now_ = outer_.back ();
                outer_.pop_back ();
            } else {
                shape ();
            }
        }
        return page_;
    }

  private:
    /// x' = a x - b y + e, y' = b x + a y + f
    struct Matrix {
        double a = 1;
        double b = 0;
        double e = 0;
        double f = 0;
    };

    bool next_element () {
        const std::size_t start = rest_.find ('<');
        if (start == std::string_view::npos) return false;
        const std::size_t end = rest_.find ('>', start);
        tag_ = rest_.substr (start + 1, end - start - 1);
        element_ = tag_.substr (0, tag_.find (' '));
        rest_.remove_prefix (end + 1);
        return true;
    }
    std::string_view attribute (std::string_view name) const {
        const std::string start = " " + std::string (name) + "=\"";
        const std::size_t at = tag_.find (start);
        if (at == std::string_view::npos) return {};
        const std::string_view value = tag_.substr (at + start.size ());
        return value.substr (0, value.find ('"'));
    }
    double number (std::string_view name) const { return parse_atof (attribute (name)); }
    /// The numbers of a list, whatever stands between them.
    static std::vector<double> numbers (std::string_view list) {
        std::vector<double> found;
        for (std::size_t at = 0; at < list.size ();) {
            const std::size_t start = list.find_first_of ("0123456789.-", at);
            if (start == std::string_view::npos) break;
            at = std::min (list.find_first_not_of ("0123456789.e+-", start), list.size ());
            found.push_back (parse_atof (list.substr (start, at - start)));
        }
        return found;
    }
    void move () {
        const std::vector<double> values = numbers (attribute ("transform"));
        if (values.size () < 2) return;
        const double angle = values.size () > 2 ? values[2] * std::acos (-1.0) / 180 : 0;
        const Matrix m = now_;
        const double c = std::cos (angle);
        const double s = std::sin (angle);
        now_ = {m.a * c - m.b * s, m.b * c + m.a * s, m.a * values[0] - m.b * values[1] + m.e,
                m.b * values[0] + m.a * values[1] + m.f};
    }
    using Corners = std::vector<std::array<double, 2>>;

    void take (std::vector<PaintedBox>& list, const std::string& what, const Corners& corners) {
        PaintedBox box{what, HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
        for (const auto& [x, y] : corners) {
            const double px = now_.a * x - now_.b * y + now_.e;
            const double py = now_.b * x + now_.a * y + now_.f;
            box.left = std::min (box.left, px);
            box.right = std::max (box.right, px);
            box.top = std::min (box.top, py);
            box.bottom = std::max (box.bottom, py);
        }
        list.push_back (box);
    }
    static Corners corners (double x, double y, double w, double h) {
        return {{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}};
    }
    void shape () {
        const std::string what (element_);
        const double half = number ("stroke-width") / 2;
        const double x = number ("x");
        const double y = number ("y");
        if (element_ == "rect" || element_ == "image") {
            if (half == 0 && (number ("width") == 0 || number ("height") == 0)) return; // unseen
            take (page_.shapes, what,
                  corners (x - half, y - half, number ("width") + 2 * half,
                           number ("height") + 2 * half));
        } else if (element_ == "ellipse") {
            const double rx = number ("rx") + half;
            const double ry = number ("ry") + half;
            const double turn = std::atan2 (now_.b, now_.a);
            if (turn == 0) {
                take (page_.shapes, what,
                      corners (number ("cx") - rx, number ("cy") - ry, 2 * rx, 2 * ry));
            } else {
                Corners rim;
                for (int i = 0; i < 360; ++i) {
                    const double angle = i * std::acos (-1.0) / 180;
                    rim.push_back ({number ("cx") + rx * std::cos (angle),
                                    number ("cy") + ry * std::sin (angle)});
                }
                take (page_.shapes, what, rim);
            }
        } else if (element_ == "line") {
            take (page_.shapes, what,
                  {{number ("x1"), number ("y1")}, {number ("x2"), number ("y2")}});
        } else if (element_ == "polygon" || element_ == "path") {
            const std::vector<double> values =
                numbers (attribute (element_ == "path" ? "d" : "points"));
            Corners points;
            for (std::size_t i = 0; i + 1 < values.size (); i += 2)
                points.push_back ({values[i], values[i + 1]});
            take (page_.shapes, what, points);
        } else if (element_ == "text") {
            text (x, y);
        }
    }
    /// The letters of the page's text as one font's codes, and whether that is the Greek one.
    static std::string codes (std::string_view utf8, bool& greek) {
        static const std::map<std::string, char> symbols = [] {
            std::map<std::string, char> all;
            for (int code = 126; code >= 64; --code) {
                const char letter = static_cast<char> (code);
                all[document::symbol_to_utf8 (std::string_view (&letter, 1))] = letter;
            }
            return all;
        }();
        std::string out;
        greek = false;
        for (std::size_t i = 0; i < utf8.size ();) {
            const auto first = static_cast<unsigned char> (utf8[i]);
            const std::size_t size = first < 0x80 ? 1 : first < 0xE0 ? 2 : 3;
            const std::string letter (utf8.substr (i, size));
            i += size;
            if (first == 0xC2 || first == 0xC3) {
                out += static_cast<char> ((first & 3U) << 6 | (letter[1] & 0x3F));
            } else if (first >= 0x80) {
                greek = true;
                const auto symbol = symbols.find (letter);
                out += symbol == symbols.end () ? 'x' : symbol->second;
            } else {
                out += letter;
            }
        }
        return out;
    }
    static std::string plain (std::string_view escaped) {
        std::string out;
        for (std::size_t i = 0; i < escaped.size (); ++i) {
            if (escaped.substr (i).starts_with ("&lt;")) {
                out += '<';
                i += 3;
            } else {
                out += escaped[i];
                if (escaped.substr (i).starts_with ("&amp;")) i += 4;
            }
        }
        return out;
    }
    void text (double x, double y) {
        const std::string style (attribute ("style"));
        const auto has = [&style] (const char* part) {
            return style.find (part) != std::string::npos;
        };
        const std::string letters = plain (rest_.substr (1, rest_.find ("\n</text>") - 1));
        bool greek = false;
        const std::string bytes = codes (letters, greek);
        const unsigned family = greek                          ? 7
                                : has ("font-family:Arial")    ? 2
                                : has ("font-family:Times")    ? 1
                                : has ("font-family:Courier")  ? 3
                                : has ("font-family:Verdana;") ? 0
                                                               : 4;
        const int size = parse_atoi (style.substr (style.find ("font-size:") + 10));
        const document::FontMetrics& font = *document::font_metrics (
            document::font_key (family, has ("weight:bold"), has ("style:italic"),
                                static_cast<unsigned> (size - 8) / 2));
        double width = 0;
        for (const char c : bytes) {
            // Beyond code 252 a letter has a shape, but no measure.
            const auto code = static_cast<unsigned char> (c);
            width += static_cast<double> (font.width_of (code > 252 ? 'n' : code));
        }
        take (page_.texts, letters, corners (x, y - font.ascent, width, font.height));
    }

    std::string_view rest_;
    std::string_view tag_;
    std::string_view element_;
    SvgPage page_;
    Matrix now_;
    std::vector<Matrix> outer_;
};

inline SvgPage read_svg_page (std::string_view text) { return SvgPageReader (text).read (); }

} // namespace ostrand::testing
