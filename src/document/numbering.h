// Numbering: which number each object has in a text that is being written.
// Layer: document.
#pragma once
#include <cstddef>
#include <vector>

namespace ostrand::document {

class GraphBase;

/// An object that has no number yet.
inline constexpr int no_id = -3;

/// Numbers that a writer gives to objects, counting from 1 in the order of the text. The objects
/// themselves are not touched; Network::adopt_numbering makes the numbers theirs.
class Numbering {
  public:
    /// Gives an object the next number, in place of one that it has.
    int add (const GraphBase& object);
    /// Takes the next number for something that is no object of the network.
    int take () { return next_++; }
    /// The number of an object; no_id for one without, and for null.
    int of (const GraphBase* object) const;
    /// The number that comes next.
    int next () const { return next_; }
    /// Counts from 1 again; numbers that objects have stay until they get another.
    void restart () { next_ = 1; }
    /// Room for so many more objects.
    void make_room (std::size_t objects);

  private:
    struct Entry {
        const GraphBase* object = nullptr;
        int number = 0;
    };
    std::size_t place_of (const GraphBase* object) const;
    void grow (std::size_t slots);

    std::vector<Entry> table_; // open addressing, a power of two, at most half full
    std::size_t used_ = 0;
    int next_ = 1;
};

} // namespace ostrand::document
