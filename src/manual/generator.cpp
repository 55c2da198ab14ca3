// The form of the manual.
#include "manual/generator.h"

#include "base/text.h"
#include "editor/bindings.h"
#include "manual/chapters.h"
#include "manual/paragraphs.h"

#include <optional>

namespace ostrand::manual {
namespace {

constexpr unsigned white = 0xffffff;
constexpr unsigned black = 0;

constexpr const char* head =
    "<html>\n<head>\n<title>Ostrand online documentation</title>\n</head>\n"
    "<body text=#%x bgcolor=#%x link=#00d0d0 vlink=#d0d000>\n"
    "<br><center><font size=4><b>OSTRAND USER MANUAL\n<br>Menubar commands</b></font></center><p>";
constexpr const char* mouse_heading =
    "<center><font size=4><b>Mouse contextual commands</b></font></center><p>";
// The second "=" has always stood there.
constexpr const char* keyboard_heading =
    "<center><font size=4=><b>Keyboard commands</b></font></center><p>";
constexpr const char* tail = "</font>\n</body>\n</html>\n";

/// The chapter that ends with the tools of the tool bar.
constexpr std::string_view tool_bar_chapter = "tool_bar";

std::string chapters_html (const ManualOptions& options) {
    std::string html;
    for (const Chapter& chapter : chapters ()) {
        html += expand_references (chapter.text, options.shortcuts, options.image_directory);
        if (chapter.name != tool_bar_chapter) continue;
        for (const editor::CommandRow& row : editor::command_rows ()) {
            if (row.menu != editor::Menu::tool_bar) continue;
            html += command_paragraph (row, options.shortcuts, options.image_directory);
        }
    }
    return html;
}

std::string menus_html (const ManualOptions& options) {
    std::string html;
    std::optional<editor::Menu> menu;
    for (const editor::CommandRow& row : editor::command_rows ()) {
        if (row.menu == editor::Menu::tool_bar) continue;
        if (menu != row.menu) html += menu_heading (row.menu);
        menu = row.menu;
        html += command_paragraph (row, options.shortcuts, options.image_directory);
    }
    return html;
}

std::string bindings_html (const ManualOptions& options) {
    std::string html = mouse_heading;
    bool keys_begun = false;
    for (const editor::Binding& binding : editor::bindings ()) {
        if (binding.event () == editor::BindingEvent::key && !keys_begun) {
            html += keyboard_heading;
            keys_begun = true;
        }
        html += binding_paragraph (binding, options.image_directory);
    }
    return html;
}

} // namespace

std::string generate_manual (const ManualOptions& options) {
    const unsigned letters = options.dark ? white : black;
    const unsigned ground = options.dark ? black : white;
    return format_text (head, letters, ground) + chapters_html (options) + menus_html (options) +
           bindings_html (options) + tail;
}

} // namespace ostrand::manual
