// What the deterministic simulator makes of an SBML model.
#pragma once
#include "support/support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace ostrand::testing {

/// The last recorded counts of a simulation, by displayed name, in uM.
inline std::map<std::string, double> last_counts (const std::string& text) {
    std::istringstream lines (text);
    int simulations = 0;
    int species = 0;
    int points = 0;
    lines >> simulations >> species >> points;
    std::string line;
    std::getline (lines, line);
    std::vector<std::string> names;
    for (int i = 0; i < species; ++i) {
        std::getline (lines, line);
        names.push_back (line);
        std::getline (lines, line); // its colour
    }
    std::vector<double> numbers;
    while (std::getline (lines, line)) numbers.push_back (std::atof (line.c_str ()));
    const std::size_t all = static_cast<std::size_t> (species) * static_cast<std::size_t> (points);
    std::map<std::string, double> last;
    for (int i = 0; i < species && numbers.size () >= all; ++i) {
        const std::size_t end = numbers.size () - all + static_cast<std::size_t> ((i + 1) * points);
        last[names[static_cast<std::size_t> (i)]] = numbers[end - 1] / 602.252;
    }
    return last;
}

struct Compared {
    std::string error; // of the conversion
    std::string model;
    std::map<std::string, double> simulated;
};

/// Converts a model to a model text.
inline Compared convert (const std::string& xml, int seconds) {
    const TemporaryFolder folder;
    folder.write ("m.xml", xml);
    Compared out;
    const auto converted = run_program (
        {"ostrand-tool", "convert", "m.xml", "m.ssa", "--duration", std::to_string (seconds)},
        folder.path ());
    EXPECT_EQ (converted.status, 0) << converted.error;
    out.error = converted.error;
    out.model = file_text (folder / "m.ssa");
    return out;
}

/// Lets the deterministic engine run a converted model and adds what it ends with.
inline Compared run (Compared converted, const std::vector<std::string>& species) {
    const TemporaryFolder folder;
    std::string display = "display (";
    for (std::size_t i = 0; i < species.size (); ++i) {
        display += (i > 0 ? ", \"" : "\"") + species[i] + "\"";
    }
    folder.write ("m.ssa", converted.model + display + ");\n");
    const auto ran = run_program ({"ostrand", "-a", "m.ssa", "-d", "-o", "m.gz"}, folder.path ());
    EXPECT_EQ (ran.status, 0) << ran.error << converted.model;
    converted.simulated = last_counts (unzipped_file (folder / "m.gz"));
    return converted;
}

/// Both.
inline Compared simulate (const std::string& xml, const std::vector<std::string>& species,
                          int seconds) {
    return run (convert (xml, seconds), species);
}

} // namespace ostrand::testing
