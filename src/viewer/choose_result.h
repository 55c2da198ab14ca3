// Asking which result is to be shown.
// Layer: viewer.
#pragma once
#include <optional>
#include <string>

namespace ostrand::viewer {

/// Asks for a result in a dialog. Nothing, with a message, when there is no display; nothing when
/// the user wants none.
/// asked  out: false when there was nobody to ask
std::optional<std::string> choose_result (bool& asked);

} // namespace ostrand::viewer
