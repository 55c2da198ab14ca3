// The stochastic engine against analytic means and variances, over many simulations. The pass rule
// is the one of the stochastic test cases for SBML simulators: for each point, the sample mean m
// and variance s2 of n simulations must give |sqrt (n) (m - mu) / sigma| < 3 and |sqrt (n / 2) (s2
// / sigma2 - 1)| < 5, with at most a few points outside.
#include "sim/sim_support.h"

#include <gtest/gtest.h>

namespace ostrand::sim {
namespace {

constexpr std::size_t simulations = 4096; // four species of eight values each: 8^4

/// A model whose grid repeats the same start often: species that take part in nothing.
std::string repeated (const std::string& text) {
    std::string all = text;
    for (const char* name : {"z1", "z2", "z3", "z4"}) {
        all += "[" + std::string (name) + "] = 1 uM";
        for (int i = 1; i < 8; ++i) all += ", 1 uM";
        all += ";";
    }
    return all;
}

struct Moments {
    double mean;
    double variance;
};

/// Counts the points outside the bands.
template <class Expected>
int points_outside (const FinishedRun& run, std::string_view name, Expected expected) {
    int outside = 0;
    const auto n = static_cast<double> (run.grid.n_simul);
    for (std::uint32_t t = 1; t < run.grid.n_points; ++t) {
        double sum = 0;
        double squares = 0;
        for (std::size_t s = 0; s < run.grid.n_simul; ++s) {
            const double value = run.count (s, name, t);
            sum += value;
            squares += value * value;
        }
        const double mean = sum / n;
        const double variance = (squares - n * mean * mean) / (n - 1);
        const Moments wanted = expected (static_cast<double> (t));
        const double z_mean = std::sqrt (n) * (mean - wanted.mean) / std::sqrt (wanted.variance);
        const double z_variance = std::sqrt (n / 2) * (variance / wanted.variance - 1);
        if (std::abs (z_mean) >= 3 || std::abs (z_variance) >= 5) ++outside;
    }
    return outside;
}

TEST (statistics, isomerisation_is_binomial) {
    // 602 molecules, each with k = 5e-5 a time step: 39, 63 and 78 % are gone at the points.
    constexpr double start = 602;
    constexpr double k = 0.00005;
    const FinishedRun run (repeated ("[a] = 1 uM; a -> b | 0.00005 ; duration = 4;"));
    ASSERT_EQ (run.grid.n_simul, simulations);
    const auto expected = [] (double t) {
        const double p = 1 - std::pow (1 - k, t * 10000);
        return Moments{start * p, start * p * (1 - p)};
    };
    EXPECT_EQ (points_outside (run, "b", expected), 0);
}

TEST (statistics, birth_and_death_is_poisson) {
    // One molecule that makes others at 0.02 a step, each of which dies at 1e-4 a step.
    constexpr double death = 0.0001;
    const FinishedRun run (repeated ("[s] = 0.0017 uM; s -> t + a | 0.02 ; t -> s | 1 ;"
                                     "a -> d | 0.0001 ; duration = 4;"));
    ASSERT_EQ (run.count (0, "s", 0), 1U);
    const auto expected = [] (double t) {
        // The source rests in t for part of a step after each birth: forward sweeps bring it back
        // at once, backward ones a step later.
        const double rate = 0.02 / (1 + 0.02 * 0.5);
        const double mean = rate / death * (1 - std::exp (-death * t * 10000));
        return Moments{mean, mean};
    };
    // The source is nearly, not exactly, memoryless: one point may lie outside.
    EXPECT_LE (points_outside (run, "a", expected), 1);
}

/// Mean and variance of a + b -> c by the master equation, integrated in small steps.
std::vector<Moments> pairing_moments (int pairs, double rate, int seconds) {
    std::vector<double> p (static_cast<std::size_t> (pairs) + 1, 0.0);
    p[static_cast<std::size_t> (pairs)] = 1; // index: pairs that are left
    std::vector<Moments> all;
    for (int t = 0; t < seconds; ++t) {
        double mean = 0;
        double squares = 0;
        for (std::size_t i = 0; i < p.size (); ++i) {
            mean += p[i] * static_cast<double> (i);
            squares += p[i] * static_cast<double> (i) * static_cast<double> (i);
        }
        all.push_back ({mean, squares - mean * mean});
        for (int step = 0; step < 10000; ++step) {
            for (std::size_t i = 0; i < p.size (); ++i) {
                const double left = static_cast<double> (i);
                const double out = rate * left * left;
                const double next = static_cast<double> (i + 1);
                p[i] += (i + 1 < p.size () ? p[i + 1] * rate * next * next : 0) - p[i] * out;
            }
        }
    }
    return all;
}

TEST (statistics, dimerisation_follows_the_master_equation) {
    constexpr double alpha_k = 7.4e-7 * 4.0;
    const FinishedRun run (repeated ("[a] = 0.1 uM; [b] = 0.1 uM; a + b -> c | 4 ; duration = 4;"));
    ASSERT_EQ (run.count (0, "a", 0), 60U);
    const std::vector<Moments> expected = pairing_moments (60, alpha_k, 4);
    EXPECT_EQ (
        points_outside (run, "a",
                        [&expected] (double t) { return expected[static_cast<std::size_t> (t)]; }),
        0);
}

} // namespace
} // namespace ostrand::sim
