// Picture: an image that stands in a line of text.
// Layer: document.
#pragma once
#include "document/char.h"

#include <memory>
#include <string>
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
    /// no image, and the place keeps the given size.
    Picture (std::string_view new_path, int new_width, int new_height);
    ~Picture () override;

    const PictureImage* image () const { return image_.get (); } // null: the placeholder is shown
    int align () const { return align_; }                        // 0 bottom, 1 centre, 2 top
    const std::string& path () const { return path_; }           // as given, written back as it is

    /// 0 puts the whole height above the base, 2 below it, any other value half on each side. True
    /// when that changed something.
    bool set_align (int a);

    std::unique_ptr<Char> clone (Char* new_parent) const override;
    CharKind kind () const override { return CharKind::picture; }
    float get_width () const override { return width_; }
    int get_height () const override { return height_; }
    int get_ascent () const override;
    int get_descent () const override;
    void lay_out () override {}
    void paint (PaintDevice& device, const PaintStyle& style, float left,
                float top) const override; // paint_line.cpp
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    Hit find_at (float px, float py, const HitQuery& query) override;

  private:
    Picture (const Picture& other);

    std::shared_ptr<const PictureImage> image_;
    std::string path_;
    float width_;
    int height_;
    int align_ = 0;
};

} // namespace ostrand::document
