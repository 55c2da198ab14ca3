// A result file in memory: one series of counts for each simulation and displayed species.
// Layer: viewer.
#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using gzFile = struct gzFile_s*;

namespace ostrand::viewer {

/// One varying concentration, in file order; the last one varies fastest.
struct VarConc {
    std::string name;
    std::uint32_t index = 0;           // of the value now selected
    std::uint32_t nb = 0;              // number of values
    std::vector<std::uint32_t> values; // molecules
    std::vector<std::string> labels;   // for sliders: "  [name] = 5 uM"
};

struct ResultData {
    std::vector<std::uint32_t> colours; // 0xRRGGBB00, one for each displayed species
    std::vector<std::uint32_t> counts;  // all series, see series ()
    std::uint32_t n_displayed = 0;
    std::uint32_t n_points = 0; // one a second
    std::uint32_t n_simul = 1;
    std::uint32_t max = 0; // largest count of the file
    std::vector<VarConc> vars;
    std::uint32_t n_var = 0;
    std::vector<std::string> names; // of the displayed species
    bool error = false;             // loading failed, and was reported

    /// The counts of one species in one simulation: n_points values.
    const std::uint32_t* series (std::uint32_t simulation, std::uint32_t species) const {
        return counts.data () +
               (std::size_t{simulation} * n_displayed + species) * std::size_t{n_points};
    }
    bool empty () const { return counts.empty (); }
};

/// Called now and then while a file is read, with the bytes taken from it so far.
using LoadProgress = std::function<void (std::uint64_t bytes)>;

/// Planes of the last varying concentration: 1 without any, and for two equal values.
std::uint32_t count_planes (const ResultData& data);

/// Reads a result, gzip or plain. The first failed line is told on standard error and sets `error`;
/// data that the head announces and the file does not hold end the same way, and so does, behind
/// the last count, a combination of values without a simulation. Memory is taken only for what was
/// read.
void load_result (ResultData* data, gzFile stream, const LoadProgress& progress = {});

/// "%.3g uM" and its kin of a number of molecules: mM from 999 µM on, two digits below 1 µM.
std::string concentration_text (double molecules);

} // namespace ostrand::viewer
