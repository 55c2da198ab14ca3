// The words of the other program, ostrand, for completion and manual: its first words and the
// switches behind two of them.
// Layer: tool.
#pragma once
#include "base/text.h"
#include "tool/command.h"

#include <array>

namespace ostrand::tool {

struct ModeSwitch {
    const char* mode;
    const char* name;
    const char* help;
};
inline constexpr std::array<ModeSwitch, 7> mode_switches{{
    {"-a", "-verbose", "print the model's tables and the time taken"},
    {"-a", "-out", "the next word is the result file, - for standard output (data.gz)"},
    {"-a", "-deterministic", "mean values instead of chance"},
    {"-a", "-sequential", "one simulation after the other"},
    {"-a", "-npt", "print the number of processors"},
    {"-v", "-d", "delete the file when the window closes"},
    {"-v", "-r", "light curves on a dark ground"},
}};

struct FirstWord {
    const char* name;
    const char* help;
};
inline constexpr std::array<FirstWord, 9> first_words{{
    {"-a", "simulate a model"},
    {"-v", "show a result as curves"},
    {"--restore", "edit; what was left behind is opened"},
    {"--no-restore", "edit; what was left behind waits"},
    {"--choose-result", "ask for a result and show it"},
    {"--show-display", "print what the display offers"},
    {"--version", "print name, version and commit"},
    {"--help", "print the usage"},
    {"-h", "print the usage"},
}};

} // namespace ostrand::tool
