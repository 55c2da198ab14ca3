// The dialog in which a boolean formula is composed.
// Layer: shell.
#pragma once
#include "shell/text_input.h"

#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Input_Choice.H>
#include <functional>
#include <string>
#include <vector>

namespace ostrand::shell {

class FormulaInput : public Fl_Double_Window {
  public:
    FormulaInput ();

    /// Called by Ok and Enter.
    std::function<void (const std::string& formula, const std::string& output)> on_ok;

    /// What the two choosers offer.
    void set_metabolites (const std::vector<std::string>& inputs,
                          const std::vector<std::string>& outputs);
    /// Shows the dialog with an empty formula.
    void ask ();

  private:
    static void button_pressed (Fl_Widget* button, void* dialog);
    void compose (const char* text);
    void ok ();

    Fl_Input_Choice* output_;
    Fl_Input_Choice* input_;
    TextInput* formula_;
};

} // namespace ostrand::shell
