// The ordinary popup dialog: up to five fields, Ok and Cancel.
// Layer: shell.
#pragma once
#include "editor/world.h"
#include "shell/text_input.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>
#include <array>
#include <functional>
#include <string>
#include <vector>

namespace ostrand::shell {

/// A window that stays open beside the others until Ok, Enter, Cancel or Escape.
class Dialog : public Fl_Double_Window {
  public:
    static constexpr int most_fields = 5;

    explicit Dialog (int width);

    /// Called with the texts of the fields; false keeps the dialog open.
    std::function<bool (const std::vector<std::string>& answers)> on_ok;
    std::function<void ()> on_cancel;
    std::function<void (const std::string& text)> on_change; // of the first field
    std::function<void (bool forward)> on_step;              // Up and Down

    void set_types (const std::vector<editor::FieldType>& types);
    /// Shows so many fields with their labels and first values.
    void show_fields (const std::string& title, const std::vector<std::string>& labels,
                      const std::vector<std::string>& values);
    /// The text of the first field as it stands.
    std::string first_text () const { return fields_.front ()->value (); }
    /// A line between the buttons: what is wrong with an answer.
    void say (const std::string& text);

  private:
    void ok ();
    void cancel ();

    std::array<TextInput*, most_fields> fields_{};
    Fl_Button* ok_button_;
    Fl_Button* cancel_button_;
    Fl_Box* status_;
    int active_fields_ = 0;
};

} // namespace ostrand::shell
