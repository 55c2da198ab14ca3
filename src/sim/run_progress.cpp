// The text of the progress line.
#include "sim/run_progress.h"

#include "base/progress.h"
#include "base/text.h"

namespace ostrand::sim {

std::string progress_text (std::uint64_t done, std::uint64_t total, double seconds) {
    const double fraction =
        total == 0 ? 1.0 : static_cast<double> (done) / static_cast<double> (total);
    const double speed = seconds > 0 ? static_cast<double> (done) / seconds : 0.0;
    std::string text = progress_bar (fraction, 24) + format_text (" %3.0f %%", fraction * 100);
    if (done == 0) return text;
    text += "  " + format_g (speed, 3) + " simulated s/s";
    return text + "  " + format_duration (static_cast<double> (total - done) / speed) + " left";
}

} // namespace ostrand::sim
