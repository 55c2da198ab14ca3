// State of the formula menu.
#include "editor/formula_desk.h"

namespace ostrand::editor {

bool FormulaDesk::open_model (const std::string& path) {
    front_end_ = std::make_unique<gates::GateFrontEnd> (path);
    if (front_end_->parsed) return true;
    front_end_.reset ();
    return false;
}

void FormulaDesk::close_model () { front_end_.reset (); }

std::vector<std::string> FormulaDesk::outputs () const {
    std::vector<std::string> names;
    if (front_end_)
        for (const gates::Metabolite& metabolite : front_end_->metabolites)
            if (metabolite.can_be_output) names.push_back (metabolite.name);
    return names;
}

std::vector<std::string> FormulaDesk::inputs () const {
    std::vector<std::string> names;
    if (front_end_)
        for (const gates::Metabolite& metabolite : front_end_->metabolites)
            if (metabolite.can_be_input) names.push_back (metabolite.name);
    return names;
}

void FormulaDesk::take_result (formula::SearchResult result) {
    result_ = std::move (result);
    index_ = 0;
}

bool FormulaDesk::step (bool forward) {
    if (forward ? !has_next () : !has_previous ()) return false;
    index_ = forward ? index_ + 1 : index_ - 1;
    return true;
}

const std::string& FormulaDesk::text () { return formula::implementation_text (*result_, index_); }

} // namespace ostrand::editor
