// Finding a text in a page.
// Layer: manual.
#pragma once
#include "manual/document.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::manual {

/// A longer pattern ends the search.
inline constexpr std::size_t longest_pattern = 256;

/// What is looked for when this was typed: blanks and tabs at the ends are dropped, tabs within
/// become blanks.
std::string trimmed_pattern (std::string_view typed);

/// The page as plain text: the text of all blocks, a line end where y changes. Gives every block
/// its offset.
std::string plain_text (Document& page);

/// A place where the pattern stands.
struct Match {
    std::size_t offset = 0; // in the plain text
    std::size_t first_block = 0;
};

/// A pattern that is looked for again and again: the table of skips is kept until another pattern
/// comes. Capital and small letters differ. The end of a line counts as a blank, so that what is
/// found does not depend on the width of the window.
class TextSearch {
  public:
    TextSearch ();
    ~TextSearch ();

    /// All places in order, without overlap; none for an empty or too long pattern.
    std::vector<std::size_t> find_all (std::string_view text, std::string_view pattern);

  private:
    struct Kept;
    std::unique_ptr<Kept> kept_;
};

/// Marks the blocks that each hit touches and gives the matches. The marks of before are gone.
/// hits     places in the page's plain text
/// length   of the pattern
std::vector<Match> mark_hits (Document& page, const PageMeasure& measure,
                              const std::vector<std::size_t>& hits, std::size_t length);

/// Makes the marks of one match those of the match in hand, and no others.
/// match  null for none
void mark_current (Document& page, const Match* match, std::size_t length);

} // namespace ostrand::manual
