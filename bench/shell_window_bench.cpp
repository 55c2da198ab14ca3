// The editor in a real window, on a display without a screen: what a frame of a large network costs in
// processor time (the software renderer's share included), beside a frame of an empty one in the same
// run; how long the start takes and how much memory there is in use.
#include "files/native.h"
#include "shell/running_editor.h"
#include "support/random_document.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

using namespace ostrand;
using Clock = std::chrono::steady_clock;

constexpr int nodes = 20000;
constexpr int frames = 60;
constexpr int steps_to_smallest = 18; // of 5 %, from 100 % to 10 %

/// Processor time of a process so far, in milliseconds.
double cpu_ms (pid_t process) {
    std::ifstream file ("/proc/" + std::to_string (process) + "/stat");
    std::string word;
    double user = 0;
    double system = 0;
    for (int field = 1; field <= 15 && file >> word; ++field) {
        if (field == 14) user = std::stod (word);
        if (field == 15) system = std::stod (word);
    }
    return (user + system) * 1000 / static_cast<double> (sysconf (_SC_CLK_TCK));
}

double resident_mib (pid_t process) {
    std::ifstream file ("/proc/" + std::to_string (process) + "/status");
    for (std::string line; std::getline (file, line);) {
        if (line.starts_with ("VmRSS:")) return std::stod (line.substr (6)) / 1024;
    }
    return 0;
}

void pause (int milliseconds) {
    std::this_thread::sleep_for (std::chrono::milliseconds (milliseconds));
}

/// Processor time of a frame, in milliseconds: one wheel step after another, each shown.
double frame_ms (testing::Editor& editor) {
    const double before = cpu_ms (editor.program ().id ());
    for (int i = 0; i < frames; ++i) {
        editor.display ().input ({"click", i % 2 == 0 ? "5" : "4"});
        pause (40);
    }
    pause (500);
    return (cpu_ms (editor.program ().id ()) - before) / frames;
}

void LargeNetworkInItsWindow (benchmark::State& state) {
    for (auto _ : state) {
        testing::Editor empty;
        empty.start ({}, "Ostrand");
        pause (1000);
        const double plain = frame_ms (empty);

        testing::Editor editor;
        const auto network = testing::metabolic_network (nodes);
        network->layout ();
        const std::string file = editor.home ().write ("large.net", files::write_native (*network));
        const auto begin = Clock::now ();
        editor.start ({file}, "large.net");
        const double start = std::chrono::duration<double> (Clock::now () - begin).count ();
        pause (3000);
        const double full_size = frame_ms (editor);
        for (int i = 0; i < steps_to_smallest; ++i) {
            editor.key ("ctrl+minus");
            pause (100);
        }
        pause (1000);
        const double smallest = frame_ms (editor);
        state.counters["start_s"] = start;
        state.counters["frame_ms"] = full_size;
        state.counters["frame_of_empty"] = full_size / plain;
        state.counters["frame_at_10_percent_ms"] = smallest;
        state.counters["at_10_percent_of_empty"] = smallest / plain;
        state.counters["MiB"] = resident_mib (editor.program ().id ());
    }
}
BENCHMARK (LargeNetworkInItsWindow)->Iterations (1)->Unit (benchmark::kSecond);

} // namespace
