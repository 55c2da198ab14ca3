// File names as texts: folder, name, extension, completion.
// Layer: base.
#pragma once
#include <string>
#include <string_view>

namespace ostrand {

/// The extension with its dot, in lower case, of the last part of a path: ".net"; empty when none.
std::string lower_extension (std::string_view path);

/// The part behind the last "/", without its extension.
std::string base_name (std::string_view path);

/// The folder of a path with its final "/", empty when the path has none.
std::string folder_of (std::string_view path);

/// `path` itself when it is absolute, else behind `folder`.
std::string absolute_path (std::string_view path, std::string_view folder);

} // namespace ostrand
