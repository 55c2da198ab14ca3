// File names as texts: parts, absolute and normal form, the remembered current directory, patterns.
// The part between two "/" is called a part here.
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

/// The directory that "." means in dialogs: absolute, without a final "/" but for the root's own.
/// Until somebody sets it, it is the working directory of the process.
std::string current_directory ();

/// Remembers the folder of a path: all up to its last "/"; "folder/any name" sets the folder, and a
/// path without a "/" changes nothing. A relative one counts from the remembered directory. The
/// process's own working directory stays.
void set_current_directory (std::string_view path);

/// Removes parts that are ".", parts that are ".." with the part before each, doubled "/" and a
/// final "/", but never the first one. A ".." with nothing before it stays where a path is
/// relative and goes behind the root. An empty text stays empty; a path that comes to nothing is
/// ".". Only the text is looked at: links are not followed.
std::string normalise_path (std::string_view path);

/// The absolute form of a path, normalised.
/// base  what a relative path counts from; empty for the current directory
/// An empty path is the current directory itself. "~" alone or in front of a "/" is the user's
/// home; where there is none, the path comes back as it was.
std::string absolute_path (std::string_view base, std::string_view path);

/// Whether a text fits a pattern, from end to end: "*" is any run of characters, "?" any one,
/// "[a-z_]" one of a set (without its "]" the "[" stands for itself), anything else itself. Case
/// counts.
bool wildcard_match (std::string_view pattern, std::string_view text);

/// Whether a name fits one of several patterns, divided by blanks; no pattern at all fits all.
bool matches_filter (std::string_view filter, std::string_view name);

} // namespace ostrand
