// Names of species from other tools as names of a model text.
// Layer: names.
#pragma once
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::names {

/// A name that a model text can hold between quotes and a label shows again. Ordinary names stay as
/// they are; line ends and other control characters become spaces, a backslash that escapes nothing
/// is doubled, a word that the language keeps for itself gets a backslash in front, and letters
/// that labels do not have are spelled out.
/// by_number  for each byte whether the file gave it as a character's number; empty: none. A
///            backslash or brace that came so is a letter, never a mark.
std::string model_name (std::string_view name, const std::vector<bool>& by_number = {});

/// Keeps apart names that only differ in what a model text cannot hold.
class ModelNames {
  public:
    /// The name for the text, which is `wanted` unless another name had it first: then `id` tells
    /// the two apart.
    /// name  as the file has it
    std::string take (std::string wanted, const std::string& name, std::string_view id);

  private:
    std::map<std::string, std::string, std::less<>> original_; // by the name in the text
};

} // namespace ostrand::names
