// Pictures of labels as textures of one OpenGL context.
// Layer: toolkit.
#pragma once
#include <map>
#include <string>
#include <string_view>

namespace ostrand::toolkit {

class PictureCache {
  public:
    /// Draws the picture of a file into a box in the current coordinates; a file that cannot be
    /// shown gives the picture for missing ones.
    void draw (std::string_view path, float x, float y, float w, float h);
    /// The context is new: its textures are gone.
    void forget () { textures_.clear (); }

  private:
    std::map<std::string, unsigned, std::less<>> textures_; // 0: cannot be shown
};

} // namespace ostrand::toolkit
