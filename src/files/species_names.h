// Names of species from other tools as names of a model text.
// Layer: files.
#pragma once
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace ostrand::files {

/// A name that a model text can hold between quotes and a label shows again. Ordinary names stay as
/// they are; quotes become apostrophes, line ends and other control characters spaces, a backslash
/// that escapes nothing is doubled, a word that the language keeps for itself gets a backslash in
/// front, and letters that labels do not have are spelled out.
std::string model_name (std::string_view name);

/// Keeps apart names that only differ in what a model text cannot hold.
class ModelNames {
  public:
    /// The name for the text; `id` tells two apart that would be the same.
    std::string take (const std::string& name, std::string_view id);

  private:
    std::map<std::string, std::string, std::less<>> original_; // by the name in the text
};

} // namespace ostrand::files
