// Takes the pictures of the editor that the docs show: real windows on a display without a screen.
//     editor_pictures FOLDER
#include "pictures/picture.h"
#include "shell/running_editor.h"

#include <cstdio>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace ostrand::testing;

constexpr int window_width = 1031;
constexpr int window_height = 680;

void settle () { std::this_thread::sleep_for (std::chrono::milliseconds (900)); }

std::string example (const char* name) {
    return source_path (std::string ("examples/") + name).string ();
}

/// The preferences of an editor that shows no boundary.
void without_boundary (const Editor& editor) {
    editor.home ().write (".lattrix_rc", "<?xml version=\"1.0\"?>\n<lattrixprefs date=\"1\">\n"
                                         "<pref boundary=\"false\">\n</lattrixprefs>\n");
}

bool take_all (const fs::path& folder) {
    bool written = true;
    {
        Editor editor;
        without_boundary (editor);
        editor.start ({example ("mapk-cascade.net"), example ("upper-glycolysis.net")},
                      "upper-glycolysis.net");
        const auto take = [&] (const char* name) {
            settle ();
            const Area window{0, 0, window_width, window_height};
            written =
                write_picture (cut_out (editor.display ().screenshot (), window), folder / name) &&
                written;
        };
        editor.move (286, 170); // over a species: the mouse help tells what can be done with it
        take ("light.png");
        editor.key ("ctrl+shift+d");
        take ("dark.png");
        editor.key ("ctrl+shift+d");
        editor.key ("alt+v");
        editor.key ("g");
        editor.move (1015, 300); // the lift on the right
        take ("grid-and-lift.png");
        editor.drag (30, tab_bar_y, 150, tab_bar_y + 2);
        editor.display ().input ({"mousemove", "30", std::to_string (tab_bar_y), "mousedown", "1"});
        for (int x = 40; x <= 120; x += 20) editor.move (x, tab_bar_y + 3);
        take ("tab-drag.png");
        editor.display ().input ({"mouseup", "1"});
    }
    {
        Editor editor ({.scale = 2, .server = {"-screen", "0", "2200x1500x24"}});
        without_boundary (editor);
        editor.start ({example ("rich-labels.net")}, "rich-labels.net");
        settle ();
        const Area window{0, 0, 2 * window_width, 2 * window_height};
        written = write_picture (cut_out (editor.display ().screenshot (), window),
                                 folder / "scaled.png") &&
                  written;
    }
    return written;
}

} // namespace

int main (int argc, char** argv) {
    if (argc != 2) {
        std::fprintf (stderr, "usage: editor_pictures FOLDER\n");
        return 2;
    }
    try {
        fs::create_directories (argv[1]);
        return take_all (argv[1]) ? 0 : 1;
    } catch (const std::exception& fault) {
        std::fprintf (stderr, "editor_pictures: %s\n", fault.what ());
        return 1;
    }
}
