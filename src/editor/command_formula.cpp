// The commands of the formula menu.
#include "editor/command_functions.h"
#include "editor/document_files.h"
#include "editor/workbench.h"

#include "base/background_work.h"
#include "base/path.h"
#include "base/report.h"
#include "base/text.h"

namespace ostrand::editor::run {
namespace {

constexpr const char* first_name = "implementation.ssa";
constexpr const char* later_name = "implementation.xml";

/// The number that a text is, 0 when it is none.
int whole_number (const std::string& text) {
    return text.find_first_not_of ("0123456789") == std::string::npos ? parse_atoi (text) : 0;
}

/// Runs long work while the window that says so is shown; its outcome, with what it reported told.
Outcome run_work (Workbench& bench, std::shared_ptr<LongWork> work, const std::string& text) {
    BackgroundWork running (std::move (work));
    bench.world ().wait_for (text, running);
    for (const std::string& message : running.take_messages ())
        report_message ("%s", message.c_str ());
    return running.wait ();
}

/// Shows the present implementation in a canvas; it counts as modified, since no file has it.
void show_implementation (Workbench& bench, Canvas& canvas, const char* name) {
    if (!load_text_document (canvas, bench.formulas ().text (), name)) return;
    canvas.set_modified (true);
}

void formula_entered (Workbench& bench, const std::string& formula, const std::string& output) {
    FormulaDesk& desk = bench.formulas ();
    if (formula.find_first_not_of (" \t") == std::string::npos) {
        report_message ("A boolean formula must be entered.");
        return;
    }
    if (!desk.gates_ready ()) return;
    auto search = std::make_shared<formula::FormulaSearch> (formula::SearchRequest{
        .base = desk.front_end ()->base, .formula = formula, .output = output});
    const Outcome outcome = run_work (bench, search, "Searching implementations, please wait...");
    if (outcome.failed ()) {
        report_message ("%s", outcome.reason.c_str ());
        return;
    }
    if (outcome.stopped ()) {
        report_message ("The search was stopped.");
        return;
    }
    const std::size_t count = search->result ().implementations.size ();
    if (count == 0) {
        report_message ("No implementation found for %s = %s", output.c_str (), formula.c_str ());
        return;
    }
    desk.take_result (std::move (search->result ()));
    report_message ("%zu implementation%s found\n", count, count < 2 ? "" : "s");
    if (bench.add_tab (std::nullopt) == AddTab::full)
        report_message ("Too much tabs: cannot create a new one");
    show_implementation (bench, bench.current (), first_name);
    bench.world ().refresh ();
}

void step (Workbench& bench, bool forward) {
    if (!bench.formulas ().step (forward)) return;
    bench.world ().refresh ();
    Canvas& canvas = bench.current ();
    // An unmodified network keeps its tab: the step is taken, nothing else happens.
    if (!canvas.modified () || !bench.yes_no ("Network not saved, still proceed")) return;
    show_implementation (bench, canvas, later_name);
}

} // namespace

void reactions_per_gate (Workbench& bench) {
    bench.world ().ask_value ({.prompt = "#Reactions/Gate (1 -> 7): ",
                               .title = "#Reactions/Gate (1 -> 7)",
                               .initial = format_text ("%d", bench.formulas ().depth),
                               .type = FieldType::whole_number,
                               .fault = {}},
                              [&bench] (const std::string& text) {
                                  const int depth = whole_number (text);
                                  if (depth >= least_depth && depth <= most_depth)
                                      bench.formulas ().depth = depth;
                              });
}

void extract_gates (Workbench& bench) {
    const std::vector<std::string> names =
        bench.world ().ask_files ({.prompt = "Extract Gates: ",
                                   .filter = "*.xml",
                                   .title = "Extract Gates",
                                   .native_filter = "Models\t*.xml\n"});
    if (names.empty ()) return;
    FormulaDesk& desk = bench.formulas ();
    desk.close_model ();
    const std::string path = absolute_path ("", names.front ());
    if (!desk.open_model (path)) {
        bench.world ().alert (format_text ("'%s': format error", path.c_str ()));
        bench.world ().refresh ();
        return;
    }
    if (!desk.front_end ()->up_to_date ()) {
        const Outcome outcome = run_work (
            bench, std::make_shared<gates::FrontEndExtraction> (*desk.front_end (), desk.depth),
            "Extracting gates, please wait...");
        if (outcome.failed ()) report_message ("%s", outcome.reason.c_str ());
        if (outcome.stopped ()) report_message ("The extraction was stopped.");
        if (!desk.gates_ready ()) {
            desk.close_model ();
            bench.world ().refresh ();
            return;
        }
    }
    bench.world ().fill_formula_dialog (
        desk.inputs (), desk.outputs (),
        [&bench] (const std::string& formula, const std::string& output) {
            formula_entered (bench, formula, output);
        });
    report_message ("The gates of '%s' are ready: enter a formula.", path.c_str ());
    bench.world ().refresh ();
}

void enter_formula (Workbench& bench) { bench.world ().show_formula_dialog (); }

void previous_implementation (Workbench& bench) { step (bench, false); }

void next_implementation (Workbench& bench) { step (bench, true); }

} // namespace ostrand::editor::run
