// What has to be tried on every circuit: the catalogue shares of all jobs, by number of inputs, in
// a form in which one token game for a pattern of inputs serves all gates. Layer: gates.
#pragma once
#include "gates/catalogue.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ostrand::gates {

/// A catalogue gate with its table as patterns: bit u of a pattern is input u.
struct PlannedGate {
    int job = 0;  // index, from 0
    int type = 0; // index into the job's GatePlan::types
    const GateDefinition* definition = nullptr;
    struct Row {
        std::uint32_t pattern;
        int wanted; // 0, 1, or anything else, which no output can meet
    };
    std::vector<Row> rows;          // as many as the text gives, at most 2 to the power of inputs
    std::uint64_t missing_rows = 0; // not given by the text: all inputs 0, output 0
};

struct PlannedGroup {
    int arity = 0;
    std::vector<int> jobs; // those that have a group of this arity
    std::vector<PlannedGate> gates;
    /// False where a table holds inputs other than 0 and 1, or has very many inputs: such a group
    /// is tried game by game.
    bool by_pattern = true;
};

struct GatePlan {
    std::vector<PlannedGroup> groups; // only those with 1 input or more
    std::vector<std::vector<std::string>>
        types; // by job: distinct type names, in its share's order
    int job_count = 0;
};

/// More inputs than this are tried game by game.
inline constexpr int most_pattern_inputs = 5;

/// The plan of some shares, which must outlive it.
GatePlan make_gate_plan (const std::vector<const Catalogue*>& shares);

/// a + b and a * 2^n, staying at the largest value where it would be passed.
std::uint64_t saturated_sum (std::uint64_t a, std::uint64_t b);
std::uint64_t saturated_product (std::uint64_t a, std::uint64_t b);
std::uint64_t saturated_power_of_two (std::uint64_t exponent);
/// Number of subsets of `k` out of `n`, saturated.
std::uint64_t subset_count (std::uint64_t n, std::uint64_t k);

} // namespace ostrand::gates
