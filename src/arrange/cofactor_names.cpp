// Is this the name of a cofactor?
#include "arrange/copies.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>

namespace ostrand::arrange {
namespace {

// Sorted; letters and digits only, upper case.
constexpr std::array<std::string_view, 48> cofactor_names = {
    "ACP",    "ADP",  "AMP",   "ATP",  "CDP",  "CMP",  "CO2",  "COA",       "COASH", "CTP",
    "DADP",   "DATP", "DCTP",  "DGTP", "DTTP", "FAD",  "FADH", "FADH2",     "FMN",   "FMNH2",
    "GDP",    "GMP",  "GTP",   "H",    "H2O",  "H2O2", "HCO3", "HPLUS",     "HSCOA", "NAD",
    "NADH",   "NADP", "NADPH", "NH3",  "NH4",  "O2",   "P",    "PHOSPHATE", "PI",    "PPI",
    "PROTON", "Q",    "QH2",   "THF",  "UDP",  "UMP",  "UTP",  "WATER"};

static_assert (std::is_sorted (cofactor_names.begin (), cofactor_names.end ()));

/// Letters and digits of a text, upper case.
std::string plain (std::string_view text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char> (c);
        if (std::isalnum (byte)) result += static_cast<char> (std::toupper (byte));
    }
    return result;
}

bool is_listed (std::string_view word) {
    const std::string key = plain (word);
    return std::binary_search (cofactor_names.begin (), cofactor_names.end (),
                               std::string_view (key));
}

} // namespace

bool is_cofactor_name (std::string_view name) {
    if (is_listed (name)) return true;
    // A mark of the compartment behind: "_c", "[c]", "(c)", " c"; "M_" or "x_" before.
    if (const std::size_t end = name.find_last_of ("_[( ");
        end != std::string_view::npos && end > 0 && is_listed (name.substr (0, end)))
        return true;
    const std::size_t begin = name.find ('_');
    if (begin == std::string_view::npos || begin > 1) return false;
    name.remove_prefix (begin + 1);
    if (is_listed (name)) return true;
    const std::size_t end = name.find_last_of ("_[( ");
    return end != std::string_view::npos && end > 0 && is_listed (name.substr (0, end));
}

} // namespace ostrand::arrange
