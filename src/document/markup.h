// The text that documents are written in: one recursive reader, one writer's state.
// Layer: document.
#pragma once
#include "document/char.h"
#include "document/id_table.h"
#include "document/numbering.h"
#include "document/numbers.h"
#include "document/std_char.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ostrand::document {

class Arque;
class Line;
class Network;

/// Lines, scripts and networks inside one another are read to this depth; what is deeper is
/// reported and left out, so that no text can exhaust the stack.
inline constexpr int deepest_nesting = 200;

/// The first id that is handed to a node whose own is taken already.
inline constexpr int first_dup_id = 10000;

/// A text that is being read, and the running style, which is state of the whole text: it survives
/// the ends of lines and records. The text ends at its first NUL.
struct MarkupReader {
    explicit MarkupReader (std::string_view new_text);

    std::string_view text;
    std::size_t at = 0; // next byte
    unsigned font = start_font;
    unsigned color = 0;
    int depth = 0;             // of lines, scripts and networks around the place
    int networks = 0;          // of networks around the place
    bool too_deep = false;     // reported already
    int dup_id = first_dup_id; // the next id for a node whose own is taken
    std::string multi_name;    // name of the node that was marked last as the one on many planes
    IdTable nested_ids;        // of the network that was read last, until the node whose label it
                               // is takes them over
    std::vector<StdChar> letters; // of the lines that are being read, the innermost last

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

/// The entries of a line up to its "}", which stays, or to the end of the text.
std::vector<StdChar> read_items (MarkupReader& reader);
/// One item that is not inside a line: a line, a picture or a network; a letter comes as a line of
/// it alone. Comments and white space before it are skipped. Null at the end of the text.
std::unique_ptr<Char> read_item (MarkupReader& reader);
/// A line whose "{" is the next byte.
std::unique_ptr<Line> read_braced_line (MarkupReader& reader);
/// What must be a line (a residu, a script): any other item becomes the one entry of a line. Null
/// at the end of the text.
std::unique_ptr<Line> read_line_field (MarkupReader& reader);
/// A text as a line: any but a line becomes the one entry of a line. Null for null.
std::unique_ptr<Line> line_from_item (std::unique_ptr<Char> item);
/// A line of the items of `markup` in a running style of its own.
std::unique_ptr<Line> line_from_markup (std::string_view markup, unsigned font, unsigned color);
/// A whole text as one item, with running style 67 and 0.
std::unique_ptr<Char> read_text (std::string_view text);
/// A whole text as a network; null when it is something else.
std::unique_ptr<Network> read_network (std::string_view text);

/// An arc that is being written, with its number and that of what it ends on.
struct NumberedArc {
    const Arque* arc;
    int id;
    int dest = no_id;
};

/// What is being written, and the running style, shared by everything that is written in one go.
/// What is written does not change: its numbers are the writer's.
struct PrintState {
    std::string out;
    unsigned font = start_font;
    unsigned color = 0;
    Numbering numbering;
    /// Arcs of the outermost network that is being written and of those nested in it, in the order
    /// of their numbers.
    std::vector<NumberedArc> arcs;
    /// The next network is the label of a node: its arcs stand in the record around it.
    bool joins = false;
    /// Networks that are labels close behind their nodes, without arcs (copy of a selection).
    bool without_arcs = false;

    /// "<%dF>" and "<%sC>" where the style differs from the running one.
    void write_style (unsigned new_font, unsigned new_color);
    /// The start of a record: for depth above 0 a new line and depth - 1 tabs.
    void start_record (int depth);
};

/// A letter's code as bytes: from 128 on in two.
void append_code (std::string& out, unsigned code);

/// A letter of this code with scripts is written as a record "[E...]", others with marks behind it.
bool fits_record (unsigned code);

/// What a reader makes of a font mark: keys beyond 24 bits go through a float.
unsigned settled_font (unsigned font);

/// User data in a form that reads back: a bracket would end the record, and a first letter that is
/// a flag is set off by a blank.
std::string settled_user_data (std::string_view data);

/// The order in which a file lists arcs: no record may name what comes behind it or is not there.
/// So an arc must wait when its end has a higher number, or waits itself; those that had to wait
/// come last. Left out are arcs whose end is not written with the network, or whose end's end is
/// not, and arcs that end on one another in a circle.
class ArcOrder {
  public:
    /// root       the outermost network that is written
    /// numbering  of all that is written with it
    /// is_alone   nothing but the network has a number
    ArcOrder (const Network& root, const Numbering& numbering, bool is_alone);
    /// Arcs are given in the order of their numbers, which those behind need not have yet. True
    /// when this one is next in the file; its `dest` is filled in.
    bool goes_now (NumberedArc& a);
    /// After all were given: those that had to wait, in their order.
    std::vector<NumberedArc> held_back ();

  private:
    bool is_lost (const GraphBase* end) const;

    const Network& root_;
    const Numbering& numbering_;
    bool is_alone_;
    std::unordered_set<const GraphBase*> lost_;
    std::vector<NumberedArc> held_;
    /// Of each arc that waits: those that wait for it.
    std::unordered_map<const GraphBase*, std::vector<NumberedArc>> behind_;
};

/// Brings arcs into that order, without those that are left out.
void to_file_order (std::vector<NumberedArc>& arcs, const Network& root, const Numbering& numbering,
                    bool is_alone);

} // namespace ostrand::document
