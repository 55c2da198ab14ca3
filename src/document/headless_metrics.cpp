// Font measures without a display: the same numbers on every machine.
#include "document/base14_widths.h"
#include "document/font.h"

#include <cmath>

namespace ostrand::document {
namespace {

/// Reach of a family above and below the base line, in thousandths of the size.
struct DesignMetrics {
    int ascent;
    int descent;
};

// The families' published line metrics ("hhea" table: ascender and descender of 2048 units, rounded
// to thousandths). They hold accents and tails, so a label never leaves its box. The narrower
// figures of the Base-14 metric files (718 / 207 and so on) end at the capitals, and scripts, whose
// offsets are measured from a screen font's ascent, would sit almost on the base line with them.
constexpr DesignMetrics arial_design{905, 212};   // Arial: 1854, 434
constexpr DesignMetrics times_design{891, 216};   // Times New Roman: 1825, 443
constexpr DesignMetrics courier_design{833, 300}; // Courier New: 1705, 615
constexpr DesignMetrics symbol_design{1005, 220}; // Symbol: 2059, 450
constexpr std::uint16_t courier_width = 600;

/// Tables of a key; null widths where every letter is courier_width wide. Families that only a
/// screen may have are measured as Times, in which they are also written to PDF.
struct Face {
    const Base14Widths* widths;
    DesignMetrics design;
};

Face face_of (unsigned key) {
    const bool bold = is_bold (key);
    const bool italic = is_italic (key);
    switch (static_cast<FontFamily> (font_family (key))) {
    case FontFamily::arial:
        return {bold ? &helvetica_bold_widths : &helvetica_widths, arial_design};
    case FontFamily::courier: return {nullptr, courier_design};
    case FontFamily::symbol: return {&symbol_widths, symbol_design};
    case FontFamily::verdana:
    case FontFamily::times:
    case FontFamily::comic: break;
    }
    if (bold) return {italic ? &times_bold_italic_widths : &times_bold_widths, times_design};
    return {italic ? &times_italic_widths : &times_roman_widths, times_design};
}

/// Thousandths to whole pixels, outwards, so that nothing is cut.
int pixels (int thousandths, int pixel_size) { return (thousandths * pixel_size + 999) / 1000; }

class HeadlessMetrics : public MetricsProvider {
  public:
    FontMetrics measure (unsigned key, int pixel_size) const override {
        const Face face = face_of (key);
        FontMetrics metrics;
        metrics.key = key;
        metrics.pixel_size = pixel_size;
        metrics.descent = pixels (face.design.descent, pixel_size);
        metrics.height = pixels (face.design.ascent, pixel_size) + metrics.descent;
        metrics.ascent = metrics.height - metrics.descent;
        for (unsigned code = 32; code <= 252; ++code) {
            if (code == 128) continue;
            const unsigned units = face.widths ? (*face.widths)[code - 32] : courier_width;
            metrics.widths[code] =
                static_cast<float> (units * static_cast<unsigned> (pixel_size)) / 1000.0F;
        }
        return metrics;
    }
};

} // namespace

const MetricsProvider& headless_metrics () {
    static const HeadlessMetrics provider;
    return provider;
}

} // namespace ostrand::document
