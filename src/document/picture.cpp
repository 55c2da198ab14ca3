// A picture in a line: its size from the file's first bytes.
#include "document/picture.h"

#include "document/markup.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

namespace ostrand::document {
namespace {

/// More is no picture for a label.
constexpr int largest_side = 100000;
/// How far into a JPEG its size is looked for.
constexpr std::size_t probed_bytes = std::size_t{1} << 20;

int big_endian (std::string_view bytes, std::size_t at, int count) {
    unsigned value = 0;
    for (int i = 0; i < count; ++i) {
        value = value << 8 | static_cast<unsigned char> (bytes[at + static_cast<std::size_t> (i)]);
    }
    return static_cast<int> (std::min (value, 0x7FFFFFFFU));
}

int little_endian (std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char> (bytes[at]) | static_cast<unsigned char> (bytes[at + 1]) << 8;
}

std::unique_ptr<PictureImage> image_of (PictureFormat format, int width, int height) {
    if (width < 1 || height < 1 || width > largest_side || height > largest_side) return nullptr;
    auto image = std::make_unique<PictureImage> ();
    image->format = format;
    image->width = width;
    image->height = height;
    return image;
}

/// Walks the segments of a JPEG to the start of a frame, which holds the size.
std::unique_ptr<PictureImage> probe_jpeg (std::string_view bytes) {
    std::size_t at = 2;
    while (at + 9 <= bytes.size ()) {
        if (bytes[at] != '\xFF') return nullptr;
        const int marker = static_cast<unsigned char> (bytes[at + 1]);
        if (marker == 0xFF) { // a fill byte
            ++at;
            continue;
        }
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) {
            return image_of (PictureFormat::jpeg, big_endian (bytes, at + 7, 2),
                             big_endian (bytes, at + 5, 2));
        }
        const bool alone = marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
        at += alone ? 2 : 2 + static_cast<std::size_t> (big_endian (bytes, at + 2, 2));
    }
    return nullptr;
}

/// One look at the disk for a path as long as a picture shows it.
std::shared_ptr<const PictureImage> load (const std::string& path) {
    static std::map<std::string, std::weak_ptr<const PictureImage>> cache;
    std::weak_ptr<const PictureImage>& slot = cache[path];
    if (std::shared_ptr<const PictureImage> image = slot.lock ()) return image;
    std::error_code error;
    if (!std::filesystem::is_regular_file (path, error)) return nullptr;
    std::ifstream file (path, std::ios::binary);
    std::string bytes (probed_bytes, '\0');
    file.read (bytes.data (), static_cast<std::streamsize> (bytes.size ()));
    bytes.resize (static_cast<std::size_t> (file.gcount ()));
    std::shared_ptr<PictureImage> image = probe_picture (bytes);
    if (image) image->path = path;
    slot = image;
    return image;
}

} // namespace

std::unique_ptr<PictureImage> probe_picture (std::string_view bytes) {
    if (bytes.starts_with ("\x89PNG\r\n\x1A\n") && bytes.size () >= 24 &&
        bytes.substr (12, 4) == "IHDR") {
        return image_of (PictureFormat::png, big_endian (bytes, 16, 4), big_endian (bytes, 20, 4));
    }
    if ((bytes.starts_with ("GIF87a") || bytes.starts_with ("GIF89a")) && bytes.size () >= 10) {
        return image_of (PictureFormat::gif, little_endian (bytes, 6), little_endian (bytes, 8));
    }
    if (bytes.starts_with ("\xFF\xD8")) return probe_jpeg (bytes);
    return nullptr;
}

Picture::Picture (std::string_view new_path, int new_width, int new_height)
    : image_ (load (std::string (new_path))), path_ (new_path),
      width_ (
          static_cast<float> (std::clamp (image_ ? image_->width : new_width, 0, largest_side))),
      height_ (std::clamp (image_ ? image_->height : new_height, 0, largest_side)) {}

Picture::Picture (const Picture& other)
    : image_ (other.image_), path_ (other.path_), width_ (other.width_), height_ (other.height_),
      align_ (other.align_) {
    foggy_ = other.foggy_;
}

Picture::~Picture () = default;

bool Picture::set_align (int a) {
    if (a == align_) return false;
    align_ = a;
    content_changed ();
    return true;
}

int Picture::get_ascent () const { return align_ == 0 ? height_ : align_ == 2 ? 0 : height_ / 2; }

int Picture::get_descent () const { return align_ == 0 ? 0 : align_ == 2 ? height_ : height_ / 2; }

std::unique_ptr<Char> Picture::clone (Char* new_parent) const {
    std::unique_ptr<Picture> copy (new Picture (*this));
    adopt (*copy, new_parent);
    return copy;
}

void Picture::sprint (PrintState& to, float, float) const { fprint (to, -1); }

void Picture::fprint (PrintState& to, int) const {
    to.out += "[P";
    append_int (to.out, align_);
    to.out += ' ';
    append_number (to.out, width_);
    to.out += ' ';
    append_int (to.out, height_);
    to.out += ' ';
    to.out += path_;
    to.out += ']';
}

Hit Picture::find_at (float px, float py, const HitQuery&) {
    const float right = px - x ();
    const auto whole = static_cast<float> (height_);
    const float down = py - y () + (align_ == 0 ? whole : align_ == 2 ? 0.0F : whole / 2);
    const bool inside = right >= 0 && right <= width_ && down >= 0 && down <= whole;
    return {.object = inside ? this : nullptr};
}

} // namespace ostrand::document
