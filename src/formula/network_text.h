// An implementation as a text that the editor opens.
// Layer: formula.
#pragma once
#include "formula/implementation.h"

#include <filesystem>

namespace ostrand::formula {

/// Thresholds of the output when a network is written for the editor.
inline constexpr double low_threshold = 50;
inline constexpr double high_threshold = 500;

/// Sets the thresholds of all species from which reactions lead to the output, backward from
/// (s1, s2) there. A low threshold is divided among the reactions that make a species; the high one
/// stays. A species that is not reached has none.
void set_thresholds (Implementation& implementation, double s1, double s2);

/// Builds the SBML Level 2 Version 4 text into `implementation.text`: species s1, s2, ... in the
/// order of their names, annotated with their role (INPUT, OUTPUT, EXCESS, FORBIDDEN) and
/// thresholds, reactions in the order of their ids with kinetics and coefficients.
void write_network (Implementation& implementation);

/// Likewise, and writes the text to "reseau_<index>.xml" in `folder`; false, with a message, when
/// that fails.
bool write_network (Implementation& implementation, int index, const std::filesystem::path& folder);

} // namespace ostrand::formula
