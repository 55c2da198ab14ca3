// The list of images, and what of them has to be made anew.
#include "image_maker/make_images.h"

#include "base/disk.h"
#include "base/platform.h"
#include "base/process.h"
#include "base/text.h"
#include "image_maker/compose.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <sstream>
#include <thread>
#include <utility>

namespace ostrand::image_maker {
namespace {

namespace fs = std::filesystem;

/// One image on its way.
struct Job {
    ImageName image;
    ComposedImage light;
    ComposedImage dark;                          // as `light` where nothing differs
    std::map<std::string, std::string> pictures; // of one that is taken: its files and their bytes
    std::string key; // all that the rendering depends on; stands beside it once it is done
};

/// The scales at which an image is rendered. An icon has a source or a name for each of its sizes.
std::vector<int> scales_of (const ImageName& image) {
    if (image.folder == "icon") return {1};
    return {1, 2};
}

/// A rendered file of an image, without its folder.
std::string png_name (const ImageName& image, int scale, bool dark) {
    return image.name + (dark ? "-dark" : "") + (scale == 2 ? "@2x" : "") + ".png";
}

/// Writes a file unless it has this content already, so that what depends on it is left alone.
bool write_if_other (const fs::path& file, std::string_view text, std::string& error) {
    if (read_file (file) == text) return true;
    std::string reason;
    if (write_file (file, text, reason)) return true;
    error = file.string () + ": " + reason;
    return false;
}

/// An icon's base name and its size in pixels; size 0 when its name tells none.
std::pair<std::string, int> icon_parts (const std::string& name) {
    const std::size_t dash = name.rfind ('-');
    if (dash == std::string::npos) return {name, 0};
    return {name.substr (0, dash), parse_atoi (std::string_view (name).substr (dash + 1))};
}

bool compose_icon (const fs::path& assets, Job& job, std::string& error) {
    const auto [base, size] = icon_parts (job.image.name);
    const bool own = fs::exists (assets / "icon" / (job.image.name + ".svg"));
    const auto icon =
        compose_image (assets, "icon/" + (own ? job.image.name : base), false, nullptr, error);
    if (!icon) return false;
    if (size <= 0 || (own && (icon->width != size || icon->height != size))) {
        error = "icon/" + job.image.name + ": the name does not tell its size";
        return false;
    }
    job.light = *icon;
    job.light.width = job.light.height = size;
    job.dark = job.light;
    return true;
}

/// Reads the files of an image that is taken from the screen, at all scales on both grounds.
bool read_pictures (const fs::path& folder, Job& job, std::string& error) {
    for (const bool dark : {false, true}) {
        for (const int scale : scales_of (job.image)) {
            const std::string name = png_name (job.image, scale, dark);
            std::optional<std::string> bytes = read_file (folder / name);
            if (!bytes) {
                error = (folder / name).string () + ": cannot be read";
                return false;
            }
            job.key += format_text ("%s %zu\n", name.c_str (), bytes->size ()) + *bytes;
            job.pictures.emplace (name, std::move (*bytes));
        }
    }
    return true;
}

bool compose_both (const fs::path& assets, const Palette& palette, Job& job, std::string& error) {
    if (job.image.folder == "icon") return compose_icon (assets, job, error);
    const std::string name = job.image.folder + "/" + job.image.name;
    for (const bool dark : {false, true}) {
        const auto image = compose_image (assets, name, dark, &palette, error);
        if (!image) return false;
        (dark ? job.dark : job.light) = *image;
    }
    return true;
}

/// Takes in all that an image is made of, and its key.
bool read_sources (const fs::path& assets, const Palette& palette, const std::string& renderer,
                   Job& job, std::string& error) {
    const fs::path folder = assets / job.image.folder;
    if (fs::exists (folder / png_name (job.image, 1, false))) {
        return read_pictures (folder, job, error);
    }
    if (!compose_both (assets, palette, job, error)) return false;
    job.key = format_text ("%s %d %d\n", renderer.c_str (), job.light.width, job.light.height) +
              job.light.svg + job.dark.svg;
    return true;
}

/// Renders one text at one scale to `png`.
bool render (const std::string& renderer, const fs::path& svg, const ComposedImage& image,
             int scale, const fs::path& png, std::string& error) {
    const ChildProcess program ({renderer, "--width", std::to_string (image.width * scale),
                                 "--height", std::to_string (image.height * scale), "--output",
                                 png.string (), svg.string ()});
    const int status = program.wait ();
    if (status == 0) return true;
    error = svg.string () + ": " + renderer + " ended with status " + std::to_string (status);
    return false;
}

/// Renders one of an image's two texts at both scales and appends the arrays to `arrays`.
bool render_text (const std::string& renderer, const fs::path& folder, const Job& job, bool dark,
                  std::string& arrays, std::string& error) {
    const ComposedImage& image = dark ? job.dark : job.light;
    const fs::path svg = folder / (job.image.name + (dark ? "-dark.svg" : ".svg"));
    if (!write_if_other (svg, image.svg, error)) return false;
    for (const int scale : scales_of (job.image)) {
        const fs::path png = folder / png_name (job.image, scale, dark);
        if (!render (renderer, svg, image, scale, png, error)) return false;
        const auto bytes = read_file (png);
        if (!bytes) {
            error = png.string () + ": cannot be read";
            return false;
        }
        arrays += array_text (array_name (job.image, scale, dark), *bytes);
    }
    return true;
}

/// The dark arrays of an image that is the same on a dark ground are the light ones, and it has no
/// dark files.
void use_light_as_dark (const fs::path& folder, const Job& job, std::string& arrays) {
    std::error_code ignored;
    fs::remove (folder / (job.image.name + "-dark.svg"), ignored);
    for (const int scale : scales_of (job.image)) {
        arrays +=
            alias_text (array_name (job.image, scale, true), array_name (job.image, scale, false));
        fs::remove (folder / png_name (job.image, scale, true), ignored);
    }
}

/// The arrays of an image that is taken; where both grounds look alike, the light ones are the dark
/// ones too.
std::string picture_arrays (const Job& job) {
    std::string arrays;
    for (const int scale : scales_of (job.image)) {
        const std::string light_array = array_name (job.image, scale, false);
        const std::string dark_array = array_name (job.image, scale, true);
        const std::string& light = job.pictures.at (png_name (job.image, scale, false));
        const std::string& dark = job.pictures.at (png_name (job.image, scale, true));
        arrays += array_text (light_array, light);
        arrays +=
            light == dark ? alias_text (dark_array, light_array) : array_text (dark_array, dark);
    }
    return arrays;
}

bool render_both (const std::string& renderer, const fs::path& folder, const Job& job,
                  std::string& arrays, std::string& error) {
    if (!render_text (renderer, folder, job, false, arrays, error)) return false;
    if (job.light.svg != job.dark.svg) {
        return render_text (renderer, folder, job, true, arrays, error);
    }
    use_light_as_dark (folder, job, arrays);
    return true;
}

bool render_job (const std::string& renderer, const fs::path& target, const Job& job,
                 std::string& error) {
    const fs::path folder = target / job.image.folder;
    // Without its key an image is rendered again, whatever an interruption leaves of it.
    const fs::path key = folder / (job.image.name + ".key");
    std::error_code ignored;
    fs::remove (key, ignored);
    std::string arrays;
    if (!job.pictures.empty ()) {
        arrays = picture_arrays (job);
    } else if (!render_both (renderer, folder, job, arrays, error)) {
        return false;
    }
    return write_if_other (folder / (job.image.name + ".inc"), arrays, error) &&
           write_if_other (key, job.key, error);
}

/// Renders on all processors. The first failure stops what has not begun.
bool render_jobs (const std::string& renderer, const fs::path& target, const std::vector<Job>& jobs,
                  std::string& error) {
    std::atomic<std::size_t> next{0};
    std::atomic<bool> failed{false};
    std::mutex lock;
    const auto work = [&] {
        for (std::size_t i = next++; i < jobs.size () && !failed; i = next++) {
            std::string reason;
            if (render_job (renderer, target, jobs[i], reason)) continue;
            const std::lock_guard guard (lock);
            if (!failed.exchange (true)) error = reason;
        }
    };
    std::vector<std::thread> others;
    for (int i = 1; i < processor_count (); ++i) others.emplace_back (work);
    work ();
    for (std::thread& other : others) other.join ();
    return !failed;
}

} // namespace

std::optional<std::vector<ImageName>> read_image_list (std::string_view text, std::string& error) {
    std::vector<ImageName> images;
    std::istringstream lines{std::string (text)};
    for (std::string line; std::getline (lines, line);) {
        if (line.empty () || line[0] == '#') continue;
        std::istringstream words (line);
        ImageName image;
        std::string more;
        words >> image.folder >> image.name >> more;
        const bool known_folder =
            image.folder == "manual" || image.folder == "interface" || image.folder == "icon";
        if (!known_folder || image.name.empty () || !more.empty ()) {
            error = "not a folder and a name: " + line;
            return std::nullopt;
        }
        images.push_back (std::move (image));
    }
    return images;
}

bool make_images (const fs::path& assets, const fs::path& target, const std::string& renderer,
                  int& rendered, std::string& error) {
    rendered = 0;
    const auto list = read_file (assets / "images.txt");
    const auto table = read_file (assets / "palette.txt");
    if (!list || !table) {
        error = assets.string () + ": images.txt and palette.txt cannot be read";
        return false;
    }
    const auto images = read_image_list (*list, error);
    const auto palette = Palette::read (*table, error);
    if (!images || !palette) return false;
    std::vector<Job> stale;
    for (const ImageName& image : *images) {
        std::error_code ignored;
        fs::create_directories (target / image.folder, ignored);
        Job job;
        job.image = image;
        if (!read_sources (assets, *palette, renderer, job, error)) return false;
        const fs::path made = target / image.folder / image.name;
        const bool is_made =
            fs::exists (made.string () + ".inc") && read_file (made.string () + ".key") == job.key;
        if (!is_made) stale.push_back (std::move (job));
    }
    if (!render_jobs (renderer, target, stale, error)) return false;
    rendered = static_cast<int> (stale.size ());
    return write_if_other (target / "embedded_images.cpp", tables_text (*images), error);
}

} // namespace ostrand::image_maker
