// Font keys: what a key packs, sizes, and the metrics of a font.
// Layer: document.
#pragma once
#include <array>
#include <string>

namespace ostrand::document {

/// The font key that means "no font given"; it never stands for size index 6 in a file.
inline constexpr unsigned no_font = 6;
/// The colour that means "no colour given".
inline constexpr unsigned no_color = 255;
/// Running font at the start of a text: Arial, size index 3.
inline constexpr unsigned start_font = 67;
/// Arial 12, of kinetic labels, and Arial bold 12, of stoichiometries.
inline constexpr unsigned kinetic_font = 66;
inline constexpr unsigned stoichiometry_font = 74;
/// Font of a residu that is set by its text: Arial italic bold, size index 3 with the high bits 0.
inline constexpr unsigned residu_font = 107;

/// Families of a font key, bits 5 to 7; 5 and 6 are unused.
enum class FontFamily { verdana = 0, times = 1, arial = 2, courier = 3, comic = 4, symbol = 7 };

/// Bits 5 to 7 as they stand, 0 to 7.
constexpr unsigned font_family (unsigned key) { return (key >> 5) & 7U; }
constexpr bool is_bold (unsigned key) { return (key & 8U) != 0; }
constexpr bool is_italic (unsigned key) { return (key & 16U) != 0; }
constexpr bool is_symbol (unsigned key) { return font_family (key) == 7; }
/// Index into the size tables: bits 0 to 2 are its low, bits 8 to 10 its high half.
constexpr unsigned size_index (unsigned key) { return (key & 7U) | ((key >> 5) & 56U); }
/// The key of a family (0 to 7), style and size index (0 to 63).
constexpr unsigned font_key (unsigned family, bool bold, bool italic, unsigned index) {
    return (index & 7U) | ((index & 56U) << 5) | (bold ? 8U : 0U) | (italic ? 16U : 0U) |
           ((family & 7U) << 5);
}

/// Number of sizes in the tables below.
inline constexpr unsigned size_count = 32;
/// Pixels of a size index: 8 + 2 i. An index above the tables counts on in the same way.
constexpr int font_size (unsigned index) { return 8 + 2 * static_cast<int> (index); }
/// The decimal text of that size, for menus.
std::string font_size_text (unsigned index);
/// The index that a subscript or superscript of this size takes: one less up to size 16, two less
/// for sizes 18 to 30, three less above; 0 stays.
constexpr unsigned reduced_index (unsigned index) {
    if (index == 0) return 0;
    const int size = font_size (index);
    return index - (size <= 16 ? 1U : size <= 30 ? 2U : 3U);
}
/// The key of the same family and style in the size of a sub- or superscript.
constexpr unsigned reduced_font (unsigned key) {
    const unsigned r = reduced_index (size_index (key));
    return ((r << 5) & 0x700U) | (r & 7U) | (key & ~0x707U);
}

/// Bits of a key that tell fonts apart; keys that differ in others look the same.
inline constexpr unsigned font_key_mask = 0x7FF;

/// Measures of one font in pixels.
struct FontMetrics {
    unsigned key = 0;   // masked by font_key_mask
    int pixel_size = 0; // of the size index: fonts are measured at zoom 1, devices scale them
    int ascent = 0;     // height - descent
    int descent = 0;
    int height = 0;
    std::array<float, 256> widths{}; // of the byte codes 32 to 252 without 128; others 0

    /// Width of a letter's code; 0 where there is no entry.
    float width_of (unsigned code) const { return code < widths.size () ? widths[code] : 0.0F; }
};

/// Where the numbers come from: the toolkit on screen, fixed tables without a display.
class MetricsProvider {
  public:
    MetricsProvider () = default;
    MetricsProvider (const MetricsProvider&) = delete;
    MetricsProvider& operator= (const MetricsProvider&) = delete;
    virtual ~MetricsProvider () = default;
    /// Measures a font; codes 64 to 127 of the Symbol family are Greek letters.
    /// key         masked by font_key_mask
    /// pixel_size  at least 1
    virtual FontMetrics measure (unsigned key, int pixel_size) const = 0;
};

/// The provider that needs no display and gives the same numbers on every machine. In use from the
/// start.
const MetricsProvider& headless_metrics ();

/// Takes another provider, which must outlive its use. Fonts that were measured already are
/// measured again in place, and every size that was computed before counts as stale.
void set_metrics_provider (const MetricsProvider& provider);

/// Counts the providers, from 1: a size that was computed in another generation is stale.
unsigned metrics_generation ();

/// The metrics of a font key, measured at its first use and kept for the run; the address stays.
const FontMetrics* font_metrics (unsigned key);

} // namespace ostrand::document
