// What a simulation ended with, out of its result file.
#pragma once
#include "support/support.h"

#include <map>
#include <string>
#include <vector>

namespace ostrand::testing {

/// Amounts in uM at the last point of each simulation, by the names of the displayed species. Empty
/// where the file is no result.
std::vector<std::map<std::string, double>> final_amounts (const std::filesystem::path& result);

} // namespace ostrand::testing
