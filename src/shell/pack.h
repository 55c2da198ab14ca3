// My_Pack: a row or a column of widgets that places its children at each drawing.
// Layer: shell.
#pragma once
#include <FL/Fl_Pack.H>

namespace ostrand::shell {

/// A pack whose `resizable` child takes all the room that the other visible children leave, in the
/// pack's direction; across it all are as large as the pack. Hidden children take nothing. The pack
/// itself keeps its size.
class My_Pack : public Fl_Pack {
  public:
    My_Pack (int x, int y, int w, int h, const char* label = nullptr);

    /// Gaps between the children, and what is left behind the last, are painted in the pack's
    /// colour, so that a child that moved leaves no stale pixels.
    bool clear_gaps = true;

    /// Places the children, without drawing.
    void place_children ();
    /// Pixels by which the children are moved to the left or up, out of the pack.
    int children_offset = 0;
    void resize (int x, int y, int w, int h) override;

  protected:
    void draw () override;

  private:
    void fill_gap (int at, int length) const;
};

} // namespace ostrand::shell
