// Making, showing and saving the manual.
#include "manual/manual.h"

#include "base/disk.h"
#include "base/platform.h"
#include "base/report.h"
#include "manual/manual_images.h"
#include "manual/saved_page.h"

#include <utility>

namespace ostrand::manual {

Manual::Manual (std::span<const ResourceImage> images, std::filesystem::path folder)
    : images_ (images), folder_ (std::move (folder)) {}

std::filesystem::path Manual::default_folder () { return temporary_directory (); }

bool Manual::update (bool dark, editor::ShortcutSet shortcuts) {
    if (!made_for_) extract_manual_images (images_, folder_);
    const ManualOptions wanted{dark, shortcuts, folder_.string ()};
    if (made_for_ == wanted) return false;
    text_ = generate_manual (wanted);
    made_for_ = wanted;
    return true;
}

ShowResult show_manual (Manual& manual, HTML* widget, const std::filesystem::path* file, bool dark,
                        editor::ShortcutSet shortcuts) {
    manual.update (dark, shortcuts);
    if (widget != nullptr && widget->source () != manual.text ()) widget->value (manual.text ());
    if (file == nullptr) return ShowResult::show;
    std::string error;
    if (write_file (*file, saved_page (manual.text ()), error)) return ShowResult::saved;
    report_message ("Cannot save the user manual to '%s'\n", file->c_str ());
    return ShowResult::failed;
}

bool write_manual_folder (std::span<const ResourceImage> images,
                          const std::filesystem::path& folder, std::string& error) {
    std::error_code code;
    std::filesystem::create_directories (folder, code);
    if (code) {
        error = code.message ();
        return false;
    }
    for (const ResourceImage& image : images) {
        const std::string_view bytes (reinterpret_cast<const char*> (image.data), image.size);
        if (!write_file (folder / image.name, bytes, error)) return false;
    }
    return write_file (folder / suggested_manual_name, saved_page (generate_manual ({})), error);
}

} // namespace ostrand::manual
