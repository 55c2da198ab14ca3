// From a row to its paragraph.
#include "manual/paragraphs.h"

#include "base/text.h"

#include <algorithm>

namespace ostrand::manual {
namespace {

using editor::Binding;
using editor::BindingContext;
using editor::BindingEvent;
using editor::BindingKey;
using editor::CommandRow;
using editor::Menu;
using editor::Shortcut;

/// Keys above this code are named, not shown as characters.
constexpr int last_character = 128;

std::string_view tool_bar_title () { return "Tool bar"; }

std::string title_html (Menu menu) {
    return menu == Menu::tool_bar ? std::string (tool_bar_title ())
                                  : manual_label (editor::menu_title (menu));
}

/// The name of a command or binding, as every paragraph shows it.
std::string name_html (std::string_view name) {
    return format_text ("<font color=#902020>&nbsp;&nbsp;&nbsp; [%.*s]</font><br>\n",
                        static_cast<int> (name.size ()), name.data ());
}

std::string context_text (const Binding& binding) {
    const std::string selected = binding.selected () ? "selected " : "";
    switch (binding.context ()) {
    case BindingContext::background: return "in the background";
    case BindingContext::reaction: return "on a " + selected + "reaction";
    case BindingContext::catalyse_arc: return "on a " + selected + "catalyse arc";
    case BindingContext::molecule: return "in a " + selected + "molecule";
    case BindingContext::text_field: return "in a text field";
    case BindingContext::kinetics_field: return "in a kinetics/stoichiometry reaction field";
    }
    return {};
}

std::string key_text (unsigned key) {
    switch (static_cast<BindingKey> (key)) {
    case BindingKey::any_arrow: return "Arrow Key";
    case BindingKey::up: return "Up Arrow Key";
    case BindingKey::down: return "Down Arrow Key";
    case BindingKey::left: return "Left Arrow Key";
    case BindingKey::right: return "Right Arrow Key";
    case BindingKey::backspace: return "Backspace";
    case BindingKey::delete_key: return "Delete";
    case BindingKey::escape: return "Escape";
    }
    return std::string (1, static_cast<char> (key));
}

std::string mouse_text (const Binding& binding) {
    std::string text = "Mouse";
    if (binding.button () != 0) text += "-" + std::to_string (binding.button ());
    switch (binding.event ()) {
    case BindingEvent::click: return text + " Click";
    case BindingEvent::drag: return text + " Drag";
    case BindingEvent::motion: return text + " Motion";
    case BindingEvent::key: break;
    }
    return text;
}

/// A binding's name in the form of a command's: each blank becomes "-", and the character behind it
/// stays what it is.
std::string dashed_name (std::string_view name) {
    std::string text (name);
    for (std::size_t i = 0; i < text.size (); ++i) {
        if (text[i] == ' ') text[i++] = '-';
    }
    return text;
}

/// A command in running text, with its keys.
std::string command_html (const CommandRow& row, editor::ShortcutSet set) {
    const std::string title = row.menu == Menu::tool_bar
                                  ? std::string (tool_bar_title ())
                                  : plain_label (editor::menu_title (row.menu));
    return "<b>" + title + " -> " + plain_label (row.label) + "</b>" + keys_text (row, set);
}

} // namespace

std::string manual_label (std::string_view menu_label) {
    std::string html;
    std::size_t at = std::min (menu_label.find_first_not_of (' '), menu_label.size ());
    for (; at < menu_label.size (); ++at) {
        const char c = menu_label[at];
        if (c == '.') continue;
        if (c != '&') {
            html += c;
        } else if (at + 1 < menu_label.size ()) {
            html += "<u>";
            html += menu_label[++at];
            html += "</u>";
        }
    }
    return html;
}

std::string plain_label (std::string_view menu_label) {
    std::string text;
    for (const char c : menu_label) {
        if (c != '.' && c != '&') text += c;
    }
    text.erase (0, std::min (text.find_first_not_of (' '), text.size ()));
    text.erase (text.find_last_not_of (' ') + 1);
    return text;
}

std::string shortcut_text (const Shortcut& shortcut) {
    std::string text = " (";
    if (shortcut.ctrl) text += "Ctrl+";
    if (shortcut.shift) text += "Shift+";
    if (shortcut.key == editor::tab_key) return text + "TAB)";
    if (shortcut.key > last_character) return text + std::to_string (shortcut.key) + ")";
    const auto character = static_cast<char> (shortcut.key);
    text += character >= 'a' && character <= 'z' ? static_cast<char> (character - 'a' + 'A')
                                                 : character;
    return text + ")";
}

std::string keys_text (const CommandRow& row, editor::ShortcutSet set) {
    const Shortcut& shortcut = editor::shortcut_of (row, set);
    if (shortcut.is_set ()) return shortcut_text (shortcut);
    return row.key_text.empty () ? "" : " (" + std::string (row.key_text) + ")";
}

std::string menu_heading (Menu menu) { return "<h3>" + title_html (menu) + "</h3>\n"; }

std::string command_paragraph (const CommandRow& row, editor::ShortcutSet set,
                               std::string_view image_directory) {
    std::string html = "<font color=#2020ff>" + title_html (row.menu) + " -> " +
                       manual_label (row.label) + keys_text (row, set) + "</font>";
    // A row without a name is one that the manual only lists.
    if (row.name.empty ()) return html + "<p>\n";
    return html + name_html (row.name) + expand_references (row.help, set, image_directory) +
           "<p>\n";
}

std::string gesture_text (const Binding& binding) {
    std::string text;
    if (binding.ctrl ()) text += "Ctrl+";
    if (binding.shift ()) text += "Shift+";
    return text + (binding.event () == BindingEvent::key ? key_text (binding.key ())
                                                         : mouse_text (binding));
}

std::string binding_paragraph (const Binding& binding, std::string_view image_directory) {
    return "<b>Pointer " + context_text (binding) + "</b>&nbsp;&nbsp;&nbsp;<font color=#2020ff>" +
           gesture_text (binding) + "</font>" + name_html (dashed_name (binding.name)) +
           expand_references (binding.help, editor::ShortcutSet::standard, image_directory) +
           "<p>\n";
}

std::string image_html (std::string_view directory, std::string_view name) {
    std::string path (directory);
    if (!path.empty () && !path.ends_with ('/')) path += '/';
    path += name;
    // A path that would end the attribute stands in quotes, and its own quotes are coded.
    if (path.find_first_of (" \t\n\"'<>=`") != std::string::npos) {
        std::string quoted = "\"";
        for (const char c : path) c == '"' ? quoted += "%22" : quoted += c;
        path = quoted + "\"";
    }
    return "<center><img src=" + path + "></center>";
}

std::string expand_references (std::string_view text, editor::ShortcutSet set,
                               std::string_view image_directory) {
    std::string html;
    while (!text.empty ()) {
        const std::size_t begin = text.find ('@');
        html += text.substr (0, begin);
        if (begin == std::string_view::npos) break;
        text.remove_prefix (begin);
        const std::size_t end = text.find ('@', 1);
        const std::string_view name =
            end == std::string_view::npos ? std::string_view () : text.substr (1, end - 1);
        const auto rows = editor::command_rows ();
        const auto row = std::ranges::find (rows, name, &CommandRow::name);
        if (name.ends_with (".png")) {
            html += image_html (image_directory, name);
        } else if (!name.empty () && row != rows.end ()) {
            html += command_html (*row, set);
        } else {
            html += '@';
            text.remove_prefix (1);
            continue;
        }
        text.remove_prefix (end + 1);
    }
    return html;
}

} // namespace ostrand::manual
