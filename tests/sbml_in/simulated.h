// What the deterministic simulator makes of an SBML model.
#pragma once
#include "support/result_amounts.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace ostrand::testing {

struct Compared {
    std::string error; // of the conversion
    std::string model;
    std::map<std::string, double> simulated; // its last amounts by displayed name, in uM
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
    const auto simulations = final_amounts (folder / "m.gz");
    if (!simulations.empty ()) converted.simulated = simulations.front ();
    return converted;
}

/// Both.
inline Compared simulate (const std::string& xml, const std::vector<std::string>& species,
                          int seconds) {
    return run (convert (xml, seconds), species);
}

} // namespace ostrand::testing
