// XML as files of other tools have it, tag by tag. No tree, no checks beyond what reading needs.
// Layer: files.
#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand::files {

/// One start or end tag.
struct XmlTag {
    enum class Kind { start, end, none }; // none: the text is at its end
    Kind kind = Kind::none;
    std::string_view name; // with its prefix
    bool is_empty = false; // "<name/>": no end tag follows
    int line = 0;          // where it begins, from 1
    std::vector<std::pair<std::string_view, std::string_view>> attributes; // values undecoded

    bool starts (std::string_view wanted) const { return kind == Kind::start && name == wanted; }
    bool ends (std::string_view wanted) const { return kind == Kind::end && name == wanted; }
    /// The raw value of an attribute; null when it is not there.
    const std::string_view* attribute (std::string_view wanted) const;
};

/// Walks over the tags of a text; comments, CDATA sections, processing instructions, declarations,
/// the elements of our own drawing and text between tags are passed over.
class XmlScanner {
  public:
    explicit XmlScanner (std::string_view text) : text_ (text) {}

    XmlTag next ();
    /// The next tag that `wanted` says yes to, by its name and whether it is an end tag. What
    /// stands in between is only searched for "<", so it may be no proper XML.
    template <typename Wanted>
    XmlTag find (Wanted wanted);
    /// Behind a start tag: goes behind the end tag that belongs to it. False when there is none.
    bool skip_content (const XmlTag& opened);
    int line () const { return line_; }

  private:
    void move_to (std::size_t place);
    bool to_next_tag ();
    void skip_drawn_element ();
    std::string_view peek_name (bool& is_end) const;
    XmlTag read_tag ();
    void skip_space ();

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
};

template <typename Wanted>
XmlTag XmlScanner::find (Wanted wanted) {
    while (to_next_tag ()) {
        bool is_end = false;
        const std::string_view name = peek_name (is_end);
        if (wanted (name, is_end)) {
            return read_tag ();
        }
        move_to (at_ + 1);
    }
    XmlTag none;
    none.line = line_;
    return none;
}

/// The name without its prefix.
std::string_view local_name (std::string_view name);
/// The prefix with its colon; empty when there is none.
std::string_view prefix_of (std::string_view name);

/// An attribute's value with the five entities and character references decoded into UTF-8; what
/// is no such reference stays. White space becomes a space, as attribute values are normalised.
/// by_number  when given: for each byte of the result whether it came as a character's number
std::string decode_attribute (std::string_view raw, std::vector<bool>* by_number = nullptr);

/// Appends a character in UTF-8; nothing for a number that is no character.
void append_utf8 (std::string& out, unsigned long code);

} // namespace ostrand::files
