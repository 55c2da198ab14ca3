// The integer code of an arc's biological meaning and the questions asked of it.
// Layer: document.
#pragma once

namespace ostrand::document {

namespace arc {
// The parts of a type. A low nibble of 1 makes it reversible, or a product; bits 4 to 6 are the head.
inline constexpr unsigned low_nibble = 15;
inline constexpr unsigned head_bits = 0x70;
inline constexpr unsigned bar_bit = 0x80;
inline constexpr unsigned reaction_bit = 0x100;
inline constexpr unsigned substrate_bit = 0x200;
inline constexpr unsigned product_bit = 0x400;

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
constexpr bool is_reaction (unsigned type) { return (type & arc::reaction_bit) != 0; }
/// One of the two main reactions, tested by value: transport is none.
constexpr bool is_main_reaction (unsigned type) {
    return type == arc::reaction || type == arc::reversible_reaction;
}
constexpr bool is_substrate_link (unsigned type) { return (type & arc::substrate_bit) != 0; }
constexpr bool is_product_link (unsigned type) {
    return (type & arc::product) == arc::product; // the bit and an odd low nibble
}
/// Nothing but the head of one, whatever the low nibble.
constexpr bool is_catalysis (unsigned type) { return (type & ~arc::low_nibble) == arc::catalysis; }
constexpr bool is_inhibition (unsigned type) {
    return (type & ~arc::low_nibble) == arc::inhibition;
}
constexpr bool is_reversible (unsigned type) { return (type & arc::low_nibble) == 1U; }

/// What is drawn at an arc's end; codes 6 and 7 are drawn like none.
enum class ArcHead : unsigned {
    none = 0,
    arrow = 1,
    catalysis = 2,
    inhibition = 3,
    activation = 4,
    influence = 5
};
constexpr ArcHead head_of (unsigned type) {
    return static_cast<ArcHead> ((type & arc::head_bits) >> 4);
}

/// The type of an arc in a file of that version: up to 1.0 the two kinds of links were the other way
/// round.
unsigned arc_type_of_version (unsigned type, double version);

/// The word of an arc type in reports, in Latin-1; "autre" for a type without one.
const char* arc_type_name (unsigned type);

} // namespace ostrand::document
