// Making the plan of a search.
#include "gates/gate_plan.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace ostrand::gates {
namespace {

constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max ();

int type_index (std::vector<std::string>& types, const std::string& name) {
    const auto found = std::find (types.begin (), types.end (), name);
    const auto index = static_cast<int> (found - types.begin ());
    if (found == types.end ()) types.push_back (name);
    return index;
}

PlannedGroup& group_of_arity (GatePlan& plan, int arity) {
    for (PlannedGroup& group : plan.groups) {
        if (group.arity == arity) return group;
    }
    PlannedGroup& group = plan.groups.emplace_back ();
    group.arity = arity;
    group.by_pattern = arity <= most_pattern_inputs;
    return group;
}

void add_gate (PlannedGroup& group, PlannedGate gate) {
    const std::uint64_t all = saturated_power_of_two (static_cast<std::uint64_t> (group.arity));
    const std::uint64_t given = std::min<std::uint64_t> (gate.definition->rows.size (), all);
    for (std::size_t r = 0; r < given && group.by_pattern; ++r) {
        PlannedGate::Row row{0, 0};
        for (std::size_t u = 0; u < static_cast<std::size_t> (group.arity); ++u) {
            const int value = gate.definition->value (r, u);
            if (value != 0 && value != 1) group.by_pattern = false;
            if (value == 1) row.pattern |= 1U << u;
        }
        row.wanted = gate.definition->value (r, static_cast<std::size_t> (group.arity));
        gate.rows.push_back (row);
    }
    gate.missing_rows = all - given;
    group.gates.push_back (std::move (gate));
}

} // namespace

GatePlan make_gate_plan (const std::vector<const Catalogue*>& shares) {
    GatePlan plan;
    plan.job_count = static_cast<int> (shares.size ());
    for (int job = 0; job < plan.job_count; ++job) {
        std::vector<std::string>& types = plan.types.emplace_back ();
        for (const GateGroup& share : *shares[static_cast<std::size_t> (job)]) {
            if (share.arity < 1) continue;
            PlannedGroup& group = group_of_arity (plan, share.arity);
            group.jobs.push_back (job);
            for (const GateDefinition& definition : share.gates) {
                PlannedGate gate;
                gate.job = job;
                gate.type = type_index (types, definition.name);
                gate.definition = &definition;
                add_gate (group, std::move (gate));
            }
        }
    }
    return plan;
}

std::uint64_t saturated_sum (std::uint64_t a, std::uint64_t b) {
    return a > largest - b ? largest : a + b;
}

std::uint64_t saturated_product (std::uint64_t a, std::uint64_t b) {
    return b != 0 && a > largest / b ? largest : a * b;
}

std::uint64_t saturated_power_of_two (std::uint64_t exponent) {
    return exponent > 63 ? largest : std::uint64_t{1} << exponent;
}

std::uint64_t subset_count (std::uint64_t n, std::uint64_t k) {
    if (k > n) return 0;
    std::uint64_t count = 1;
    for (std::uint64_t i = 1; i <= std::min (k, n - k); ++i) {
        // count * (n - i + 1) is divisible by i; dividing first keeps it small.
        const std::uint64_t common = std::gcd (count, i);
        const std::uint64_t factor = (n - std::min (k, n - k) + i) / (i / common);
        if (factor != 0 && count / common > largest / factor) return largest;
        count = count / common * factor;
    }
    return count;
}

} // namespace ostrand::gates
