// The window of the manual.
// Layer: shell.
#pragma once
#include "manual/html.h"
#include "manual/manual.h"
#include "manual/viewer_keys.h"

#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <functional>

namespace ostrand::shell {

/// Letters as the toolkit measures them, pictures out of the program.
class ManualMeasure : public manual::PageMeasure {
  public:
    float text_width (std::string_view text, const manual::TextStyle& style) const override;
    int ascent (const manual::TextStyle& style) const override;
    int descent (const manual::TextStyle& style) const override;
    manual::ImageBox image (std::string_view source) const override;
};

/// The page: paints what the viewer lists, forwards events to it.
class ManualPage : public Fl_Widget {
  public:
    ManualPage (int x, int y, int w, int h);
    ~ManualPage () override;

    manual::HTML& html () { return html_; }
    /// A key that is no scrolling.
    std::function<void (manual::ManualAction)> on_action;

    int handle (int event) override;
    void resize (int x, int y, int w, int h) override;

  protected:
    void draw () override;

  private:
    static void fade_due (void* page);
    void scrolled ();
    void draw_lift ();
    int key ();
    void show_pointer ();

    ManualMeasure measure_;
    manual::HTML html_;
};

class ManualWindow : public Fl_Double_Window {
  public:
    ManualWindow ();

    manual::HTML& html () { return page_->html (); }

  private:
    void act (manual::ManualAction action);
    void show_count ();

    ManualPage* page_;
    Fl_Input* search_;
};

} // namespace ostrand::shell
