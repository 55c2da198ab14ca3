// A page: its blocks, its lines, its links.
// Layer: manual.
#pragma once
#include "manual/block.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ostrand::manual {

/// One line of a laid-out page. Lines follow each other without overlap, from top to bottom.
struct PageLine {
    std::size_t first = 0; // blocks first to last, last not included
    std::size_t last = 0;
    int top = 0; // pixels of the page
    int bottom = 0;
};

/// A page that was read. Blocks do not change once read, except for what layout and search set.
struct Document {
    std::vector<std::unique_ptr<Block>> blocks;
    std::vector<std::unique_ptr<Link>> links;
    /// Name -> the block behind its "a"; the number of blocks when nothing follows.
    std::map<std::string, std::size_t, std::less<>> anchors;
    unsigned background = 0xffffff00; // the toolkit's colours
    unsigned text = 0;
    std::vector<std::string> faults; // what reading has to say, in order, each with its line end

    // By layout:
    std::vector<PageLine> lines;
    int height_of_text = 0; // pixels

    /// True for a ground so dark that marks need dark colours.
    bool is_dark () const;
    PageColours colours () const;
    /// The block that an address within the document leads to; nothing for any other address.
    std::optional<std::size_t> target_of (const Link& link) const;
};

} // namespace ostrand::manual
