// The input field of the dialog line and of dialogs.
// Layer: shell.
#pragma once
#include <FL/Fl_Input.H>
#include <functional>

namespace ostrand::shell {

/// What a field lets in.
enum class FieldKind { text = 0, number = 1, whole_number = 2 };

class TextInput : public Fl_Input {
  public:
    TextInput (int x, int y, int w, int h, const char* label = nullptr);

    FieldKind kind = FieldKind::text;
    std::function<void ()> on_enter;
    std::function<void ()> on_escape;
    std::function<void ()> on_tab;         // empty: Tab goes on to the next field
    std::function<void ()> on_change;      // the text is another one now
    std::function<void (int key)> on_step; // Up, Down, Page Up, Page Down

    int handle (int event) override;

  private:
    int key_down ();
    /// "_{}" or "^{}" with the cursor between the braces: how a script is typed into a label.
    void insert_script (const char* marks);
    bool lets_in (const char* letters) const;
};

} // namespace ostrand::shell
