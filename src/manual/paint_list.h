// What a page shows, as primitives that a window only forwards to its toolkit.
// Layer: manual.
#pragma once
#include "manual/measure.h"

#include <string>
#include <variant>
#include <vector>

namespace ostrand::manual {

/// Letters. Colours are the toolkit's: below 256 an index of its map, else 0xRRGGBB00.
struct TextRun {
    std::string text; // UTF-8
    float x = 0;
    int y = 0; // of the base line
    TextStyle style;
    unsigned colour = 0;

    bool operator== (const TextRun&) const = default;
};

/// A filled rectangle behind letters that a search found.
struct MatchFrame {
    float x = 0;
    int y = 0; // of its top
    float width = 0;
    int height = 0;
    unsigned colour = 0;

    bool operator== (const MatchFrame&) const = default;
};

/// A picture of the table at its natural size.
struct PlacedImage {
    std::string name;
    float x = 0;
    int y = 0; // of its top
    int width = 0;
    int height = 0;

    bool operator== (const PlacedImage&) const = default;
};

/// In painting order.
using PaintList = std::vector<std::variant<MatchFrame, TextRun, PlacedImage>>;

/// The colours that depend on the ground.
struct PageColours {
    unsigned link = 0;    // text that leads somewhere
    unsigned found = 0;   // behind what a search found
    unsigned current = 0; // behind the match in hand
};

} // namespace ostrand::manual
