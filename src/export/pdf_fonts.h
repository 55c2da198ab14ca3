// The fonts of a PDF document: the standard faces and TrueType files.
// Layer: export.
#pragma once
#include <array>
#include <string>
#include <string_view>

#include <hpdf.h>

namespace ostrand::drawing {

/// File of a found font's number (Comic Sans MS, then Verdana, four styles each); empty when the
/// number is none of them or its face has no file.
std::string_view ttf_file_name (int number);

/// Fonts of one document, each made at its first use. Slots 0 to 12 are the standard faces in the
/// order of the toolkit's numbers, the others hold TrueType files by name.
class PdfFonts {
  public:
    explicit PdfFonts (HPDF_Doc document) : document_ (document) {}

    /// Slot of a toolkit's font number, -1 when there is no such font.
    int slot_of (int number);
    /// Slot of a TrueType file, which is embedded; -1 when no slot is free or it cannot be loaded.
    /// name  a path, or the name of one of the known files in the folder of fonts
    int ttf_slot (std::string_view name);
    HPDF_Font font (int slot) const { return fonts_[static_cast<std::size_t> (slot)]; }

    /// Folder in which the known files are looked for; empty at first: nothing is found.
    static std::string& font_folder ();

  private:
    HPDF_Doc document_;
    std::array<HPDF_Font, 32> fonts_{};
    std::array<std::string, 32> names_{}; // used from slot 13 on
};

} // namespace ostrand::drawing
