// A text line by line, and an attribute in a line: the scan that the readers of this folder share.
// They read lines and no XML, so an element counts where a line shows its tag.
// Layer: gates.
#pragma once
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

namespace ostrand::gates {

/// Walks the lines of a text. A last line without an end is a line; behind a final line end there
/// is none. A stop reads as the end.
class TextLines {
  public:
    explicit TextLines (std::string_view text, std::stop_token stop = {})
        : rest_ (text), stop_ (std::move (stop)) {}

    bool next () {
        if (rest_.empty () || stop_.stop_requested ()) return false;
        const std::size_t end = rest_.find ('\n');
        const std::size_t length = end == std::string_view::npos ? rest_.size () : end + 1;
        with_end_ = rest_.substr (0, length);
        rest_.remove_prefix (length);
        ++count_;
        return true;
    }
    std::string_view line () const {
        return with_end_.ends_with ('\n') ? with_end_.substr (0, with_end_.size () - 1) : with_end_;
    }
    std::string_view line_with_end () const { return with_end_; }
    /// Lines given so far.
    int count () const { return count_; }

  private:
    std::string_view rest_;
    std::string_view with_end_;
    std::stop_token stop_;
    int count_ = 0;
};

/// The text behind " key=\"" up to the next quote (to the end of the line when there is none);
/// empty when the key is absent.
inline std::string_view attribute (std::string_view line, std::string_view key) {
    std::size_t at = 0;
    while ((at = line.find (key, at)) != std::string_view::npos) {
        const std::string_view behind = line.substr (at + key.size ());
        if (at > 0 && line[at - 1] == ' ' && behind.starts_with ("=\"")) {
            return behind.substr (2, behind.find ('"', 2) - 2);
        }
        ++at;
    }
    return {};
}

inline bool has (std::string_view line, std::string_view text) {
    return line.find (text) != std::string_view::npos;
}

/// An attribute `reversible`: absent or empty means true, "true" is true, any other text is false.
inline bool reversible_attribute (std::string_view line) {
    const std::string_view value = attribute (line, "reversible");
    return value.empty () || value == "true";
}

} // namespace ostrand::gates
