// The paragraphs of the manual that are made from the rows of commands and bindings.
// Layer: manual.
#pragma once
#include "editor/bindings.h"
#include "editor/commands.h"

#include <string>
#include <string_view>

namespace ostrand::manual {

/// A menu's label as HTML: leading blanks and "." dropped, the letter behind "&" underlined.
/// "&Open..." gives "<u>O</u>pen".
std::string manual_label (std::string_view menu_label);

/// A menu's label as running text: as manual_label, without the underlining and without blanks at
/// its end.
std::string plain_label (std::string_view menu_label);

/// A shortcut in brackets, with the blank before: " (Ctrl+Shift+S)".
std::string shortcut_text (const editor::Shortcut& shortcut);

/// What the manual shows behind a label: the shortcut of the set in force, else the row's key text,
/// else nothing.
std::string keys_text (const editor::CommandRow& row, editor::ShortcutSet set);

/// The line above a menu's paragraphs.
std::string menu_heading (editor::Menu menu);

/// Everything about one command, of a menu or of the tool bar.
/// image_directory  where the pictures of the help texts lie; empty: beside the manual
std::string command_paragraph (const editor::CommandRow& row, editor::ShortcutSet set,
                               std::string_view image_directory);

/// Everything about one binding.
std::string binding_paragraph (const editor::Binding& binding, std::string_view image_directory);

/// What a binding asks of the user: "Ctrl+Mouse-1 Click", "Shift+Up Arrow Key".
std::string gesture_text (const editor::Binding& binding);

/// A centred picture: "<center><img src=DIRECTORY/NAME></center>".
std::string image_html (std::string_view directory, std::string_view name);

/// A text with its references ("@NAME@") put in: a name that ends in ".png" is a picture, any other
/// the name of a command. What is neither stays as it is.
std::string expand_references (std::string_view text, editor::ShortcutSet set,
                               std::string_view image_directory);

} // namespace ostrand::manual
