// Arrays that vectors are loaded from.
// Layer: sim.
#pragma once
#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <type_traits>

namespace ostrand::sim {

/// A zeroed array of plain values that begins at a multiple of 64 bytes, the widest vector and the
/// cache line.
template <class T>
class AlignedArray {
    static_assert (std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

  public:
    AlignedArray () = default;
    explicit AlignedArray (std::size_t size)
        : values_ (static_cast<T*> (::operator new (size * sizeof (T), alignment))), size_ (size) {
        std::fill_n (values_.get (), size, T{});
    }

    T* data () { return values_.get (); }
    const T* data () const { return values_.get (); }
    std::size_t size () const { return size_; }
    T& operator[] (std::size_t i) { return values_[i]; }
    const T& operator[] (std::size_t i) const { return values_[i]; }
    std::span<T> span () { return {values_.get (), size_}; }

  private:
    static constexpr std::align_val_t alignment{64};
    struct Delete {
        void operator() (T* values) const { ::operator delete (values, alignment); }
    };
    std::unique_ptr<T[], Delete> values_;
    std::size_t size_ = 0;
};

} // namespace ostrand::sim
