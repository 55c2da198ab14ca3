// What a document's model leaves out, told when it is simulated.
// Layer: editor (uses document, files).
#pragma once
#include "files/model_gaps.h"

#include <string>
#include <vector>

namespace ostrand::editor {

class Canvas;

/// A canvas's notice. It names each thing that the simulation does without, one at a time; nothing
/// waits for it. The same things are told once: it opens again when a run leaves out others.
class GapNotice {
  public:
    /// A run begins.
    void look (const Canvas& canvas);
    bool is_open () const { return open_; }
    /// "2 of 5, left out: …" of the one that was shown last, at first of the first, in UTF-8.
    std::string text () const;
    /// Selects the next object that a run would do without and brings it into view, whether the
    /// notice is open or not. False when there is none any more, which closes it.
    bool show_next (Canvas& canvas);
    void dismiss () { open_ = false; }

  private:
    void take (const std::vector<files::ModelGap>& gaps);

    std::vector<std::string> told_; // by the last run, or as they were when one was shown
    std::size_t at_ = 0;
    bool was_shown_ = false; // the one at `at_`
    bool open_ = false;
};

} // namespace ostrand::editor
