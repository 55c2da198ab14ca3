// File names as texts.
#include "base/path.h"

#include <filesystem>

namespace ostrand {
namespace {

std::string_view last_part (std::string_view path) {
    const std::size_t slash = path.rfind ('/');
    return slash == std::string_view::npos ? path : path.substr (slash + 1);
}

} // namespace

std::string lower_extension (std::string_view path) {
    const std::string_view name = last_part (path);
    const std::size_t dot = name.rfind ('.');
    if (dot == std::string_view::npos) return {};
    std::string extension (name.substr (dot));
    for (char& c : extension) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char> (c - 'A' + 'a');
    }
    return extension;
}

std::string base_name (std::string_view path) {
    const std::string_view name = last_part (path);
    const std::size_t dot = name.rfind ('.');
    return std::string (dot == 0 ? name : name.substr (0, dot));
}

std::string folder_of (std::string_view path) {
    return std::string (path.substr (0, path.size () - last_part (path).size ()));
}

std::string absolute_path (std::string_view path, std::string_view folder) {
    if (path.starts_with ('/')) return std::string (path);
    return (std::filesystem::path (folder) / path).lexically_normal ().string ();
}

} // namespace ostrand
