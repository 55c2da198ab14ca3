// The matcher of fixed templates by which the drawing inside an SBML file is read.
// Layer: files.
#pragma once
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace ostrand::files {

/// A text and the next byte; the byte behind the end reads as NUL.
struct XmlCursor {
    std::string_view text;
    std::size_t at = 0;

    char peek (std::size_t ahead = 0) const {
        return at + ahead < text.size () ? text[at + ahead] : '\0';
    }
    std::string_view rest () const { return text.substr (at); }
};

/// Where a conversion's value goes.
using XmlValue = std::variant<int*, float*, char*, std::string*>;

/// Walks the template and the text together and gives the number of conversions done. It stops at
/// the first mismatch and leaves the cursor there.
/// pattern  a blank skips any white space, none too; "%d" and "%i" skip white space and take one
///          byte, whatever it is, and digits; "%f" and "%g" skip white space and take a sign,
///          digits and points and an exponent; "%c" takes one byte; "%s" skips white space and
///          takes what is before the next white space, or before the quote that follows it in the
///          template;
///          "%[^x]s" skips white space and takes what is before the byte x; any other byte must
///          equal the text's
int scan_template (XmlCursor& cursor, std::string_view pattern,
                   std::initializer_list<XmlValue> values);

} // namespace ostrand::files
