// The manual as a file: a valid page for browsers, made from the text that the viewer reads.
// Layer: manual.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::manual {

/// The told text as a page of HTML 5: what it says, in its order and in its colours, with every
/// element closed and nested as browsers want it. Headings are headings, each picture has words in
/// its stead, and the colours of commands are such that they can be read on the page's ground.
/// Whatever the text, the page is well formed.
std::string saved_page (std::string_view told);

} // namespace ostrand::manual
