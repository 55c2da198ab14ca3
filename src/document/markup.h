// The text that documents are written in: one recursive reader, one writer's state.
// Layer: document.
#pragma once
#include "document/char.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ostrand::document {

class Arque;
class GraphBase;
class Line;
class Network;

/// Lines, scripts and networks inside one another are read to this depth; what is deeper is
/// reported and left out, so that no text can exhaust the stack.
inline constexpr int deepest_nesting = 200;

/// A text that is being read, and the running style, which is state of the whole text: it survives
/// the ends of lines and records. The text ends at its first NUL.
struct MarkupReader {
    explicit MarkupReader (std::string_view new_text);

    std::string_view text;
    std::size_t at = 0; // next byte
    unsigned font = start_font;
    unsigned color = 0;
    int depth = 0;         // of lines, scripts and networks around the place
    int networks = 0;      // of networks around the place
    bool too_deep = false; // reported already
    /// Ids of the network that was read last, until the node whose label it is takes them over.
    std::unordered_map<int, GraphBase*> nested_ids;

    /// The byte at the place, or `ahead` behind it; NUL at the end.
    char peek (std::size_t ahead = 0) const {
        return at + ahead < text.size () ? text[at + ahead] : '\0';
    }
    bool at_end () const { return at >= text.size (); }
    void skip (std::size_t bytes = 1) {
        at = bytes > text.size () - at ? text.size () : at + bytes;
    }
    /// Steps over bytes below 33.
    void skip_blanks ();
    /// Steps over everything up to `stop`, which stays; to the end when there is none.
    void skip_to (char stop);
    /// The rest of the text.
    std::string_view rest () const { return text.substr (at); }
};

/// A numeric field. "#" and up to six hexadecimal digits give a colour; otherwise the decimal
/// number that stands here, while the place moves over "-", then ".", digits and "e" only.
float read_number (MarkupReader& reader);
/// The same as a whole number, truncated, saturating at the limits of int.
int read_int (MarkupReader& reader);
/// The same as a colour or key: by way of 64 bits, so that the top bit survives.
std::uint32_t read_word (MarkupReader& reader);

/// One item: a letter, a line, a picture or a network. Comments and white space before it are
/// skipped. Null at the end of the text.
/// in_line  inside "{...}", where "#" is a letter
std::unique_ptr<Char> read_item (MarkupReader& reader, bool in_line = false);
/// A line whose "{" is the next byte.
std::unique_ptr<Line> read_braced_line (MarkupReader& reader);
/// What must be a line (a script, a residu): any other item becomes the one entry of a line. Null
/// for null.
std::unique_ptr<Line> line_from_item (std::unique_ptr<Char> item);
/// A line of the items of `markup` in a running style of its own.
std::unique_ptr<Line> line_from_markup (std::string_view markup, unsigned font, unsigned color);
/// A whole text as one item, with running style 67 and 0.
std::unique_ptr<Char> read_text (std::string_view text);
/// A whole text as a network; null when it is something else.
std::unique_ptr<Network> read_network (std::string_view text);

/// What is being written, and the running style, shared by everything that is written in one go.
struct PrintState {
    std::string out;
    unsigned font = start_font;
    unsigned color = 0;
    /// Arcs of the outermost network that is being written and of those nested in it, in the order
    /// of their numbers.
    std::vector<const Arque*> arcs;
    /// The next network is the label of a node: its arcs stand in the record around it.
    bool joins = false;
    /// Networks that are labels close behind their nodes, without arcs (copy of a selection).
    bool without_arcs = false;

    /// "<%dF>" and "<%sC>" where the style differs from the running one.
    void write_style (unsigned new_font, unsigned new_color);
    /// A letter's code as bytes: from 128 on in two.
    void write_code (unsigned code);
    /// The start of a record: for depth above 0 a new line and depth - 1 tabs.
    void start_record (int depth);
};

/// A coordinate with six digits as "%g" gives it, but never with an exponent, which the reader of
/// numbers would not get over.
std::string number_text (float value);

/// "#%06x" of the upper bytes above 255, else "%u".
std::string color_text (unsigned color);

/// The number that the next compartment, node or arc takes while writing.
int take_id ();

/// The arcs of a writing, given in the order of their numbers, in the order in which a file lists
/// them: those that must wait for an arc with a higher number come last.
std::vector<const Arque*> arcs_in_file_order (const std::vector<const Arque*>& arcs);

} // namespace ostrand::document
