// The integer code of an arc's biological meaning and the questions asked of it.
// Layer: document.
#pragma once

namespace ostrand::document {

// Low nibble 1: reversible (or a product). Bits 4 to 6: head. Bit 7: bar. Bit 8: reaction.
// Bit 9: substrate. Bit 10: product.
namespace arc {
inline constexpr unsigned reaction = 0x110;
inline constexpr unsigned reversible_reaction = 0x111;
inline constexpr unsigned transport = 0x190;
inline constexpr unsigned substrate = 0x200;
inline constexpr unsigned reversible_substrate = 0x211;
inline constexpr unsigned product = 0x401;
inline constexpr unsigned reversible_product = 0x411;
inline constexpr unsigned catalysis = 0x20;
inline constexpr unsigned inhibition = 0x30;
inline constexpr unsigned activation = 0x40;
inline constexpr unsigned influence = 0x50;
inline constexpr unsigned necessary_activation = 0xC0;
} // namespace arc

/// A reaction or a transport.
constexpr bool is_reaction (unsigned type) { return (type & 0x100U) != 0; }
/// One of the two main reactions, tested by value: transport is none.
constexpr bool is_main_reaction (unsigned type) {
    return type == arc::reaction || type == arc::reversible_reaction;
}
constexpr bool is_substrate_link (unsigned type) { return (type & 0x200U) != 0; }
constexpr bool is_product_link (unsigned type) { return (type & 0x401U) >= 1025U; }
/// 0 none, 1 arrow, 2 catalysis, 3 inhibition, 4 activation, 5 influence.
constexpr unsigned head_code (unsigned type) { return (type >> 4) & 7U; }
constexpr bool is_reversible (unsigned type) { return (type & 15U) == 1U; }

/// The word of an arc type in reports, in Latin-1; "autre" for a type without one.
const char* arc_type_name (unsigned type);

} // namespace ostrand::document
