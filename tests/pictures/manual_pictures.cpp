// Takes the pictures of the manual: real windows on a display without a screen, moved by mouse and
// keys as a user would.
//     manual_pictures FOLDER parts|windows light|dark
// parts    of windows, in their real size
// windows  whole ones, three quarters as large, so that they fit where text does
// All are taken at the double scale: NAME@2x.png is what stood on the screen, NAME.png half of it;
// on a dark ground NAME-dark@2x.png and NAME-dark.png.
#include "pictures/picture.h"
#include "shell/running_editor.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace ostrand::testing;

constexpr const char* any_document = ".*\\.net";
constexpr int window_width = 1031; // at scale 1, all of the tool bar
constexpr int window_height = 440;
constexpr int height_for_parts = 500; // no menu is cut off
constexpr int formula_menu = 4;       // from the left

constexpr int viewer_height = 620;
constexpr int height_above_sliders = 600; // of the viewer; here there are no sliders

constexpr float scale_of_parts = 2;
constexpr float scale_of_windows = 1.5F;

struct Form {
    fs::path folder;
    bool dark = false;
};

/// An editor of which pictures are taken; places are pixels at scale 1.
class Stage {
  public:
    Stage (Form form, float scale, const std::vector<fs::path>& documents)
        : form_ (std::move (form)), scale_ (scale),
          editor_ ({.scale = scale_, .server = {"-screen", "0", "2064x1000x24"}}) {
        editor_.home ().write (".lattrix_rc",
                               std::string ("<?xml version=\"1.0\"?>\n<lattrixprefs date=\"1\">\n"
                                            "<pref boundary=\"false\">\n"
                                            "<pref smart_dialog=\"true\">\n<pref dark_mode=\"") +
                                   (form_.dark ? "true" : "false") + "\">\n</lattrixprefs>\n");
        for (const char* name : {"gap-logic.net", "gap-logic.ssa", "gene-circuit.net",
                                 "glucose-sweep.ssa", "glycolysis-upper.xml"})
            copy (source_path ("examples") / name);
        // Files are looked for where the drawing lies.
        std::vector<std::string> words;
        for (const fs::path& document : documents) words.push_back (copy (document));
        editor_.start (words, documents.back ().filename ().string ());
        resize (any_document, window_width, window_height);
    }

    void key (const std::string& name) {
        editor_.key (name);
        settle ();
    }
    void type (const std::string& text) {
        editor_.type (text);
        settle ();
    }
    void move (int x, int y) {
        editor_.move (screen (x), screen (y));
        settle ();
    }
    void click (int x, int y, const char* button = "1") {
        editor_.click (screen (x), screen (y), button);
        settle ();
    }
    /// At a place where nothing is.
    void click_beside () { click (900, window_height - 80); }
    void shift_click (int x, int y) {
        editor_.display ().input ({"keydown", "shift"});
        click (x, y);
        editor_.display ().input ({"keyup", "shift"});
    }
    void press (int x, int y, const char* button = "1") {
        move (x, y);
        editor_.display ().input ({"mousedown", button});
        settle ();
    }
    /// From where the button was pressed.
    void drag_to (int from_x, int from_y, int x, int y) {
        for (int step = 1; step <= 4; ++step)
            editor_.move (screen (from_x + (x - from_x) * step / 4),
                          screen (from_y + (y - from_y) * step / 4));
        settle ();
    }
    void release (const char* button = "1") {
        editor_.display ().input ({"mouseup", button});
        settle ();
    }
    void hold (const char* name) { editor_.display ().input ({"keydown", name}); }
    void let_go (const char* name) { editor_.display ().input ({"keyup", name}); }

    /// A command of a menu by the number of the menu and its letter.
    void choose (int menu, const std::string& letter) {
        editor_.key ("alt+f");
        for (int i = 0; i < menu; ++i) editor_.key ("Right");
        key (letter);
    }
    void click_in (const std::string& title, int x, int y) {
        editor_.click_in (title, screen (x), screen (y));
        settle ();
    }
    void resize (const std::string& title, int width, int height) {
        editor_.display ().input ({"search", "--onlyvisible", "--name", "^" + title + "$",
                                   "windowsize", std::to_string (screen (width)),
                                   std::to_string (screen (height))});
        settle ();
    }
    void wait_for (const std::string& title) {
        if (!editor_.shows_window (title)) throw std::runtime_error ("no window '" + title + "'");
        settle ();
    }
    void wait_for_file (const std::string& name) {
        const bool is_there = wait_until ([&] { return fs::exists (editor_.home () / name); }, 20);
        if (!is_there) throw std::runtime_error ("no file '" + name + "'");
    }
    /// Brings a window of another program to the corner of the screen.
    void bring (const std::string& title) {
        wait_for (title);
        editor_.display ().place_window (title);
        settle ();
    }

    Screenshot shot (int x, int y, int width, int height) {
        settle ();
        return cut_out (editor_.display ().screenshot (),
                        {screen (x), screen (y), screen (width), screen (height)});
    }
    /// A part of the canvas, from its corner.
    Screenshot canvas (int width, int height) { return shot (2, canvas_y + 1, width, height); }
    /// A window whole.
    Screenshot window (const std::string& title) {
        settle ();
        const std::string told =
            editor_.display ().input ({"search", "--onlyvisible", "--name", "^" + title + "$",
                                       "getwindowgeometry", "--shell"});
        const auto number = [&] (const char* name) {
            return std::atoi (told.c_str () + told.find (name) + std::strlen (name));
        };
        return cut_out (editor_.display ().screenshot (),
                        {number ("X="), number ("Y="), number ("WIDTH="), number ("HEIGHT=")});
    }
    void write (const std::string& name, const Screenshot& picture) const {
        const std::string front = (form_.folder / name).string () + (form_.dark ? "-dark" : "");
        // An odd last row or column has no half.
        const Screenshot even =
            cut_out (picture, {0, 0, picture.width / 2 * 2, picture.height / 2 * 2});
        if (!write_picture (halved (even), front + ".png") ||
            !write_picture (even, front + "@2x.png"))
            throw std::runtime_error (front + ".png cannot be written");
    }

  private:
    std::string copy (const fs::path& file) const {
        const fs::path place = editor_.home () / file.filename ().string ();
        fs::copy_file (file, place);
        return place.string ();
    }
    int screen (int place) const {
        return static_cast<int> (std::lround (static_cast<float> (place) * scale_));
    }
    /// Waits until the screen has stayed the same for a while.
    void settle () {
        constexpr int quiet_looks = 2;
        constexpr int most_looks = 8; // a cursor that waits for letters is never quiet
        Screenshot last = editor_.display ().screenshot ();
        for (int look = 0, quiet = 0; look < most_looks && quiet < quiet_looks; ++look) {
            std::this_thread::sleep_for (std::chrono::milliseconds (50));
            Screenshot now = editor_.display ().screenshot ();
            quiet = now.pixels == last.pixels ? quiet + 1 : 0;
            last = std::move (now);
        }
    }

    Form form_;
    float scale_;
    Editor editor_;
};

fs::path source (const std::string& name) { return source_path ("assets/manual/sources") / name; }

void previous_tab (Stage& stage) {
    stage.key ("ctrl+Left");
    stage.click_beside ();
}

/// Extracts the gates of glycolysis and fills in a formula that they can compute.
void ask_formula (Stage& stage) {
    stage.choose (formula_menu, "e");
    stage.type ("glycolysis-upper.xml");
    stage.key ("Return");
    stage.wait_for_file ("glycolysis-upper_gates.csv");
    stage.choose (formula_menu, "f");
    const char* const title = "Enter Formula";
    stage.wait_for (title);
    stage.click_in (title, 200, 20);
    stage.key ("ctrl+a");
    stage.type ("GAP");
    stage.click_in (title, 200, 53);
    stage.type ("ATP . G6P");
}

/// Parts of the window; the documents are visited from the last one back.
void take_parts (const Form& form) {
    Stage stage (form, scale_of_parts,
                 {source ("label.net"), source ("swap.net"), source ("selection.net"),
                  source ("fog.net"), source ("duplicate.net"), source ("align.net")});
    stage.click_beside ();
    stage.write ("menubar", stage.shot (0, 0, 632, 57));
    stage.resize (any_document, 760, height_for_parts);
    stage.click (600, 300);
    stage.key ("ctrl+o");
    stage.type ("g");
    stage.key ("Tab");
    stage.write ("file-selection-box", stage.shot (0, 100, 760, 160));
    stage.key ("Escape");
    stage.resize (any_document, window_width, height_for_parts);
    stage.click_beside ();
    stage.write ("align-before", stage.canvas (300, 180));
    stage.key ("ctrl+j");
    stage.write ("align-after", stage.canvas (300, 180));

    previous_tab (stage); // duplicate
    stage.key ("ctrl+a");
    stage.key ("ctrl+shift+c");
    stage.press (70, canvas_y + 76);
    stage.drag_to (70, canvas_y + 76, 285, canvas_y + 66);
    stage.release ();
    stage.write ("duplicate", stage.canvas (450, 150));

    previous_tab (stage); // fog
    stage.write ("fog", stage.canvas (360, 180));

    previous_tab (stage); // selection
    stage.press (30, canvas_y + 25);
    stage.drag_to (30, canvas_y + 25, 215, canvas_y + 165);
    stage.write ("rubber-band-selection", stage.canvas (340, 185));
    stage.release ();
    stage.click_beside ();
    stage.move (180, canvas_y + 58);
    stage.write ("mouse-help", stage.shot (631, 0, 400, 76));
    stage.hold ("ctrl");
    stage.press (180, canvas_y + 58);
    stage.write ("mouse-keyboard", stage.shot (631, 0, 400, 76));
    stage.release ();
    stage.let_go ("ctrl");
    stage.click_beside ();
    stage.click (292, canvas_y + 78, "3");
    stage.write ("menu-type", stage.shot (20, canvas_y + 30, 430, 275));
    stage.key ("Escape");
    stage.click_beside ();
    stage.click (236, canvas_y + 110, "3");
    stage.write ("mouse-commands", stage.shot (30, canvas_y + 40, 340, 325));
    stage.key ("Escape");

    previous_tab (stage); // swap
    const Screenshot before = stage.canvas (240, 125);
    stage.click (130, canvas_y + 40);
    stage.shift_click (62, canvas_y + 92);
    stage.click_beside ();
    stage.write ("swap", beside (before, stage.canvas (240, 125), 20));

    previous_tab (stage); // label
    stage.click (100, canvas_y + 75);
    stage.key ("ctrl+e");
    stage.key ("Left");
    stage.key ("shift+Down");
    stage.type ("2");
    stage.write ("keyboard-commands", stage.shot (2, canvas_y + 20, 300, 110));

    ask_formula (stage);
    stage.write ("formula-box", stage.window ("Enter Formula"));
}

/// Whole windows.
void take_windows (const Form& form) {
    {
        Stage stage (form, scale_of_windows, {source ("hexokinase.net")});
        stage.click_beside ();
        stage.write ("calyx-window", stage.shot (0, 0, window_width, window_height));
    }
    Stage stage (form, scale_of_windows, {source_path ("examples/hexokinase.net")});
    stage.key ("ctrl+d");
    stage.type ("20");
    stage.key ("Return");
    stage.key ("Tab");
    stage.bring ("Stochora");
    const Screenshot viewer = stage.window ("Stochora");
    const int height = viewer.height * height_above_sliders / viewer_height;
    stage.write ("Trivex", cut_out (viewer, {0, 0, viewer.width, height}));
    stage.key ("Escape");
    stage.click_beside ();
    ask_formula (stage);
    stage.key ("Return");
    stage.wait_for ("implementation.ssa\\*");
    stage.move (900, 300);
    stage.write ("merivale", stage.shot (0, 0, window_width, window_height));
}

} // namespace

int main (int argc, char** argv) {
    const std::string_view what = argc == 4 ? argv[2] : "";
    if (what != "parts" && what != "windows") {
        std::fprintf (stderr, "usage: manual_pictures FOLDER parts|windows light|dark\n");
        return 2;
    }
    const Form form{argv[1], argv[3] == std::string_view ("dark")};
    try {
        fs::create_directories (form.folder);
        what == "parts" ? take_parts (form) : take_windows (form);
    } catch (const std::exception& fault) {
        std::fprintf (stderr, "manual_pictures: %s\n", fault.what ());
        return 1;
    }
    return 0;
}
