// Standard faces by slot, TrueType files by name.
#include "export/pdf_fonts.h"

#include "document/font_numbers.h"

#include <algorithm>
#include <filesystem>

namespace ostrand::drawing {
namespace {

constexpr const char* encoding = "WinAnsiEncoding";
constexpr int first_ttf_slot = 13;

constexpr std::array<const char*, 12> standard_faces{
    "Helvetica",   "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique",
    "Courier",     "Courier-Bold",   "Courier-Oblique",   "Courier-BoldOblique",
    "Times-Roman", "Times-Bold",     "Times-Italic",      "Times-BoldItalic"};

constexpr std::array<std::string_view, 8> ttf_files{
    "comic.ttf",    "comicbd.ttf", "", "", "verdana.ttf", "verdanab.ttf",
    "verdanai.ttf", "verdanaz.ttf"};

} // namespace

std::string_view ttf_file_name (int number) {
    const auto& found = document::found_fonts ();
    const auto at = std::ranges::find (found, number);
    if (at == found.end ()) return {};
    return ttf_files[static_cast<std::size_t> (at - found.begin ())];
}

std::string& PdfFonts::font_folder () {
    static std::string folder;
    return folder;
}

int PdfFonts::slot_of (int number) {
    if (number < 0) return -1;
    if (number > document::symbol_font_number) {
        const std::string_view name = ttf_file_name (number);
        return name.empty () ? -1 : ttf_slot (name);
    }
    HPDF_Font& font = fonts_[static_cast<std::size_t> (number)];
    if (!font)
        font = number == document::symbol_font_number
                   ? HPDF_GetFont (document_, "Symbol", nullptr)
                   : HPDF_GetFont (document_, standard_faces[static_cast<std::size_t> (number)],
                                   encoding);
    return font ? number : -1;
}

int PdfFonts::ttf_slot (std::string_view name) {
    int slot = first_ttf_slot;
    while (slot < 32 && fonts_[static_cast<std::size_t> (slot)]) {
        if (names_[static_cast<std::size_t> (slot)] == name) return slot;
        ++slot;
    }
    if (slot == 32) return -1;
    std::filesystem::path path (name);
    if (std::ranges::find (ttf_files, name) != ttf_files.end ()) {
        if (font_folder ().empty ()) return -1;
        path = std::filesystem::path (font_folder ()) / path;
    }
    std::error_code error;
    if (!std::filesystem::is_regular_file (path, error)) return -1;
    const char* const face = HPDF_LoadTTFontFromFile (document_, path.c_str (), HPDF_TRUE);
    const HPDF_Font font = face ? HPDF_GetFont (document_, face, encoding) : nullptr;
    if (!font) return -1;
    fonts_[static_cast<std::size_t> (slot)] = font;
    names_[static_cast<std::size_t> (slot)] = name;
    return slot;
}

} // namespace ostrand::drawing
