// Identity: a number that is the same for texts that say the same.
// Layer: document.
#pragma once
#include <cstdint>

namespace ostrand::document {

/// Takes in the parts of a text one after the other. Equal texts leave equal values; different ones
/// nearly always different values, so equal values must be looked at once more.
class Identity {
  public:
    void add (std::uint64_t part) {
        value_ = (value_ ^ part) * 0x9E3779B97F4A7C15U;
        value_ ^= value_ >> 29;
    }
    std::uint64_t value () const { return value_; }

  private:
    std::uint64_t value_ = 0xCBF29CE484222325U;
};

} // namespace ostrand::document
