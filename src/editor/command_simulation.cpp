// The commands of the simulation menu.
#include "editor/command_functions.h"
#include "editor/workbench.h"
#include "files/model_write.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>

namespace ostrand::editor::run {

void stochastic (Workbench& bench) {
    bench.deterministic = false;
    bench.world ().refresh ();
}

void deterministic (Workbench& bench) {
    bench.deterministic = true;
    bench.world ().refresh ();
}

void start_simulation (Workbench& bench) { bench.start_simulation (); }

void show_left_out (Workbench& bench) {
    Canvas& canvas = bench.current ();
    if (canvas.gaps.show_next (canvas))
        report_message ("%s", canvas.gaps.text ().c_str ());
    else
        report_message ("A simulation leaves nothing out");
    bench.world ().refresh ();
}

void set_duration (Workbench& bench) {
    bench.world ().ask_value ({.prompt = "Duration: ",
                               .title = "Duration",
                               .initial = "",
                               .type = FieldType::whole_number,
                               .fault = {}},
                              [&bench] (const std::string& text) {
                                  if (bench.has_tab ())
                                      bench.current ().set_duration (
                                          std::max (parse_atoi (text), 0));
                              });
}

} // namespace ostrand::editor::run
