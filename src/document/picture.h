// Picture: an image that stands in a line of text.
// Layer: document.
#pragma once
#include "document/char.h"

#include <string_view>

namespace ostrand::document {

enum class PictureFormat { png, jpeg, gif };

/// What the front of an image file tells.
struct PictureImage {
    std::string path; // as given
    PictureFormat format = PictureFormat::png;
    int width = 0; // pixels
    int height = 0;
};

/// Format and size of an image by its first bytes; nothing when it is none that we know.
/// bytes  the front of the file; a JPEG's size may stand behind long comments
std::unique_ptr<PictureImage> probe_picture (std::string_view bytes);

class Picture : public Char {
  public:
    /// Looks the file up; its own size wins over the arguments. A file that cannot be read leaves
    /// `image` null, and the place keeps the given size.
    Picture (std::string_view new_path, unsigned new_font, unsigned new_color, int new_width,
             int new_height);
    ~Picture () override;

    std::shared_ptr<const PictureImage> image; // null: the placeholder is shown
    int align = 2;                             // 0 bottom, 1 centre, 2 top
    std::string path;                          // as given, written back as it is

    /// 0 puts the whole height above the base, 2 below it, any other value half on each side.
    void set_align (int a);

    std::unique_ptr<Char> clone (Char* new_parent) const override;
    CharKind kind () const override { return CharKind::picture; }
    float get_width () const override { return width; }
    int get_height () const override { return static_cast<int> (height); }
    int get_ascent () const override { return ascent; }
    int get_descent () const override { return descent; }
    void paint (float left, float top, bool draw) override;
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    Char* find_at (float px, float py, HitPlace& place) override;

  private:
    Picture (const Picture& other);
};

} // namespace ostrand::document
