// Reading the lines of a result file.
#include "support/result_amounts.h"

#include <sstream>

namespace ostrand::testing {
namespace {

constexpr double molecules_per_um = 602.252;

std::string next_line (std::istringstream& lines) {
    std::string line;
    std::getline (lines, line);
    return line;
}

} // namespace

std::vector<std::map<std::string, double>> final_amounts (const std::filesystem::path& result) {
    std::istringstream lines (unzipped_file (result));
    std::istringstream head (next_line (lines));
    int simulations = 0;
    int species = 0;
    int points = 0;
    if (!(head >> simulations >> species >> points)) return {};
    std::vector<std::string> names;
    for (int i = 0; i < species; ++i) {
        names.push_back (next_line (lines));
        next_line (lines); // its colour
    }
    for (int varied = std::stoi (next_line (lines)); varied > 0; --varied) {
        next_line (lines); // its name
        for (int values = std::stoi (next_line (lines)); values > 0; --values) next_line (lines);
    }
    std::vector<std::map<std::string, double>> all (static_cast<std::size_t> (simulations));
    for (auto& amounts : all) {
        for (const std::string& name : names) {
            std::string last;
            for (int point = 0; point < points; ++point) last = next_line (lines);
            amounts[name] = std::stod (last) / molecules_per_um;
        }
    }
    return all;
}

} // namespace ostrand::testing
