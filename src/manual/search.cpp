// Plain text, hits, marks.
#include "manual/search.h"

#include <algorithm>
#include <optional>

namespace ostrand::manual {
namespace {

/// The block whose text holds a place of the plain text, or the one behind it.
std::size_t block_at (const Document& page, std::size_t offset) {
    const auto behind = std::ranges::upper_bound (page.blocks, offset, {},
                                                  [] (const auto& b) { return b->offset; });
    // Of the blocks that begin at or before the place, the last one with text.
    return behind == page.blocks.begin ()
               ? 0
               : static_cast<std::size_t> (behind - page.blocks.begin ()) - 1;
}

std::size_t text_length (const Block& block) {
    std::string text;
    block.text_out (text);
    return text.size ();
}

/// The part of a block's text that lies within a match.
struct Part {
    std::size_t from = 0;
    std::size_t to = 0;
};

/// Calls `visit (block, part)` for all blocks with text that a match touches, from its first block.
template <typename Visit>
void for_each_part (const Document& page, const Match& match, std::size_t length, Visit visit) {
    const std::size_t end = match.offset + length;
    for (std::size_t i = match.first_block; i < page.blocks.size (); ++i) {
        Block& block = *page.blocks[i];
        if (block.offset >= end) break;
        const std::size_t from = std::max (match.offset, block.offset) - block.offset;
        const std::size_t to = std::min (end - block.offset, text_length (block));
        if (from < to) visit (block, Part{from, to});
    }
}

} // namespace

std::string trimmed_pattern (std::string_view typed) {
    const std::size_t first = typed.find_first_not_of (" \t");
    if (first == std::string_view::npos) return {};
    std::string pattern (typed.substr (first, typed.find_last_not_of (" \t") - first + 1));
    std::ranges::replace (pattern, '\t', ' ');
    return pattern;
}

std::string plain_text (Document& page) {
    std::string text;
    std::string piece;
    std::optional<int> y;
    for (const auto& block : page.blocks) {
        piece.clear ();
        block->text_out (piece);
        if (!piece.empty ()) {
            if (y && *y != block->y) text += '\n';
            y = block->y;
        }
        block->offset = text.size ();
        text += piece;
    }
    return text;
}

struct TextSearch::Kept {
    explicit Kept (std::string_view wanted)
        : pattern (wanted), searcher (pattern.begin (), pattern.end ()) {}

    std::string pattern;
    std::boyer_moore_horspool_searcher<std::string::const_iterator> searcher;
};

TextSearch::TextSearch () = default;
TextSearch::~TextSearch () = default;

std::vector<std::size_t> TextSearch::find_all (std::string_view text, std::string_view pattern) {
    std::vector<std::size_t> hits;
    if (pattern.empty () || pattern.size () > longest_pattern) return hits;
    if (!kept_ || kept_->pattern != pattern) kept_ = std::make_unique<Kept> (pattern);
    std::string lines (text);
    std::ranges::replace (lines, '\n', ' ');
    auto from = lines.cbegin ();
    for (;;) {
        const auto [begin, end] = kept_->searcher (from, lines.cend ());
        if (begin == end) return hits;
        hits.push_back (static_cast<std::size_t> (begin - lines.cbegin ()));
        from = end;
    }
}

std::vector<Match> mark_hits (Document& page, const PageMeasure& measure,
                              const std::vector<std::size_t>& hits, std::size_t length) {
    for (const auto& block : page.blocks) block->marks.clear ();
    std::vector<Match> matches;
    for (const std::size_t hit : hits) {
        const Match match{hit, block_at (page, hit)};
        for_each_part (page, match, length, [&] (Block& block, Part part) {
            block.marks.push_back ({part.from, part.to, block.place_of (part.from, measure),
                                    block.place_of (part.to, measure), false});
        });
        matches.push_back (match);
    }
    return matches;
}

void mark_current (Document& page, const Match* match, std::size_t length) {
    for (const auto& block : page.blocks) {
        for (BlockMark& mark : block->marks) mark.matched = false;
    }
    if (match == nullptr) return;
    for_each_part (page, *match, length, [] (Block& block, Part part) {
        for (BlockMark& mark : block.marks) {
            if (mark.sel_from == part.from) mark.matched = true;
        }
    });
}

} // namespace ostrand::manual
