// The blocks that a page is made of, in document order.
// Layer: manual.
#pragma once
#include "manual/measure.h"
#include "manual/paint_list.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ostrand::manual {

/// Those below `paragraph` stand within a line; all others begin one.
enum class BlockKind : unsigned char {
    word = 0,
    preformat = 1,
    blank = 2,
    img = 3,
    breaker = 4,
    paragraph = 6,
    list = 7,
    block_quote = 8,
    item = 9,
    center = 10,
    heading = 13
};

/// Where an "a" leads to.
struct Link {
    std::string href; // never empty
};

/// A part of a block that a search found.
struct BlockMark {
    std::size_t sel_from = 0; // bytes of the block's text
    std::size_t sel_to = 0;
    float left = 0; // the same in pixels from the block's x
    float right = 0;
    bool matched = false; // belongs to the match in hand
};

/// One piece of a page. Owned by its Document.
class Block {
  public:
    explicit Block (BlockKind block_kind) : kind (block_kind) {}
    virtual ~Block () = default;
    Block (const Block&) = delete;
    Block& operator= (const Block&) = delete;

    /// Appends what is to be seen of the block.
    /// offset_y  is added to the page's y
    virtual void draw (PaintList& list, int offset_y, const PageColours& colours) const = 0;
    /// Appends the block's plain text.
    virtual void text_out (std::string& buffer) const = 0;
    /// Takes width, ascent and descent; once, since they do not depend on the page's width.
    virtual void take_size (const PageMeasure& measure) = 0;
    /// Pixels from the block's x to the letter at a byte of its text.
    virtual float place_of (std::size_t byte, const PageMeasure& measure) const {
        (void)measure;
        return byte == 0 ? 0 : width;
    }

    bool is_inline () const { return kind < BlockKind::paragraph; }

    BlockKind kind;
    const Link* link = nullptr; // owned by the document; null outside links
    float x = 0;                // left edge in pixels of the page
    int y = 0;                  // base line of its line
    float width = 0;
    int ascent = 0;
    int descent = 0;
    std::size_t offset = 0; // of its text in the document's plain text
    bool joined = false;    // no blank stands between it and the block before
    std::vector<BlockMark> marks;
};

/// Text in one style.
class Word : public Block {
  public:
    Word (std::string word, const TextStyle& word_style, unsigned word_colour,
          BlockKind word_kind = BlockKind::word)
        : Block (word_kind), text (std::move (word)), style (word_style), colour (word_colour) {}

    void draw (PaintList& list, int offset_y, const PageColours& colours) const override;
    void text_out (std::string& buffer) const override { buffer += text; }
    void take_size (const PageMeasure& measure) override;
    float place_of (std::size_t byte, const PageMeasure& measure) const override;

    std::string text;
    TextStyle style;
    unsigned colour;
};

/// A piece of a line of "pre", its blanks as they are.
class Preformat : public Word {
  public:
    Preformat (std::string line, const TextStyle& line_style, unsigned line_colour)
        : Word (std::move (line), line_style, line_colour, BlockKind::preformat) {}
};

/// The space between two words. At the end of a line it is nothing, and the line's end is in its
/// stead.
class Blank : public Block {
  public:
    explicit Blank (const TextStyle& blank_style) : Block (BlockKind::blank), style (blank_style) {}

    void draw (PaintList& list, int offset_y, const PageColours& colours) const override;
    void text_out (std::string& buffer) const override {
        if (!swallowed) buffer += ' ';
    }
    void take_size (const PageMeasure& measure) override;

    TextStyle style;
    bool swallowed = false; // at an end of a line
};

class Img : public Block {
  public:
    explicit Img (std::string image_source)
        : Block (BlockKind::img), source (std::move (image_source)) {}

    void draw (PaintList& list, int offset_y, const PageColours& colours) const override;
    void text_out (std::string&) const override {}
    void take_size (const PageMeasure& measure) override;

    std::string source;
    ImageBox box;
};

/// What is not seen itself.
class Unseen : public Block {
  public:
    using Block::Block;
    void draw (PaintList&, int, const PageColours&) const override {}
    void text_out (std::string&) const override {}
    void take_size (const PageMeasure&) override {}
};

/// The end of a line ("br") or of a paragraph ("p").
class Breaker : public Unseen {
  public:
    Breaker () : Unseen (BlockKind::breaker) {}
    explicit Breaker (int gap) : Unseen (BlockKind::paragraph), height (gap) {}

    int height = 0; // pixels below a paragraph
};

/// Start or end of "ul" and "ol".
class List : public Unseen {
  public:
    explicit List (bool start) : Unseen (BlockKind::list), opens (start) {}
    bool opens;
};

/// Start or end of "blockquote".
class BlockQ : public Unseen {
  public:
    explicit BlockQ (bool start) : Unseen (BlockKind::block_quote), opens (start) {}
    bool opens;
};

/// Start or end of "center"; its width is that of the widest line within.
class Center : public Unseen {
  public:
    explicit Center (bool start) : Unseen (BlockKind::center), opens (start) {}
    bool opens;
};

/// The mark of a list's item.
class Item : public Block {
  public:
    /// item_number  from 1, or 0 in a list without numbers
    /// list_level   1 for the outermost list
    Item (int item_number, int list_level, unsigned mark_colour)
        : Block (BlockKind::item), number (item_number), level (list_level), colour (mark_colour) {}

    void draw (PaintList& list, int offset_y, const PageColours& colours) const override;
    void text_out (std::string&) const override {}
    void take_size (const PageMeasure& measure) override;

    int number;
    int level;
    unsigned colour;
    float digit_width = 0;
};

} // namespace ostrand::manual
