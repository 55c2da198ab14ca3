// The dialog line above the canvas: texts and file names from the keyboard alone.
// Layer: shell.
#pragma once
#include "editor/name_completion.h"
#include "editor/world.h"
#include "shell/file_list.h"
#include "shell/pack.h"
#include "shell/text_input.h"

#include <FL/Fl_Box.H>
#include <functional>
#include <optional>
#include <string>

namespace ostrand::shell {

class Query : public My_Pack {
  public:
    Query (int x, int y, int w, int h);

    /// The list of names, which stands below.
    void set_file_list (FileList* list);
    /// What has the keys when the line closes.
    std::function<void ()> give_focus_back;
    /// The line opened or closed: what is around it makes room.
    std::function<void ()> on_layout;

    bool running () const { return running_; }

    /// Asks for a text; waits. Nothing when the user gives up or the answer is empty.
    /// selected  the initial text is selected, to be typed over
    std::optional<std::string> ask (const std::string& prompt, const std::string& initial,
                                    bool selected);
    /// Asks for a file name; waits. What is typed is completed; see name_completion.h.
    std::optional<std::string> ask_name (const std::string& prompt, const std::string& filter,
                                         const std::string& initial);
    /// A search: every change of the text and every step is told, until the line closes.
    void search (const editor::SearchQuestion& question);
    /// The process ends: whoever waits gets nothing.
    void give_up ();

  private:
    enum class Mode { text, search, file };
    void open (const std::string& prompt, Mode mode, const std::string& initial, bool selected);
    void wait ();
    void close ();
    void take (const editor::Completion& completion);
    static int dispatch (int event, Fl_Window* window);

    Fl_Box* prompt_;
    TextInput* input_;
    FileList* list_ = nullptr;
    Mode mode_ = Mode::text;
    std::string filter_;
    bool running_ = false;
    std::optional<std::string> answer_;
};

} // namespace ostrand::shell
