// The names to choose from below the dialog line.
// Layer: shell.
#pragma once
#include "base/directory.h"

#include <FL/Fl_Box.H>
#include <functional>
#include <vector>

namespace ostrand::shell {

/// Names in columns on the right half, below the field they complete. More than fit are reached by
/// the wheel.
class FileList : public Fl_Box {
  public:
    FileList (int x, int y, int w, int h);

    std::function<void (const DirectoryEntry&)> on_pick;

    void show_names (std::vector<DirectoryEntry> names);
    /// The name under the pointer takes part, or none is under it.
    void hover (int at_x, int at_y);
    bool pick (int at_x, int at_y);
    int handle (int event) override;

  protected:
    void draw () override;

  private:
    void layout_names ();
    int columns_in_view () const;
    /// Index of the name at a point, -1 for none.
    int name_at (int at_x, int at_y) const;

    std::vector<DirectoryEntry> names_;
    int rows_ = 1;
    int column_count_ = 1;
    int column_width_ = 1;
    int first_column_ = 0; // in view
    int hovered_ = -1;
};

} // namespace ostrand::shell
