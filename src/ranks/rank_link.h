// Messages between the processes (ranks) of one MPI program, as bytes.
// Layer: ranks.
#pragma once
#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::ranks {

/// A message that has come.
struct Message {
    int from = 0; // rank
    int tag = 0;
    std::string bytes;
};

/// For `take`: any rank, any tag.
inline constexpr int any = -1;

/// A pause that grows from call to call: who waits for a message leaves the processor to those who
/// compute.
class Pause {
  public:
    void reset () { length_ = shortest; }
    void rest ();

  private:
    static constexpr std::chrono::microseconds shortest{20};
    static constexpr std::chrono::microseconds longest{1000};
    std::chrono::microseconds length_ = shortest;
};

/// This process's place among all of them. There is one in a program, from its first lines to its
/// last; messages may be sent and taken from any thread.
class RankLink {
  public:
    /// Waits until all processes have come as far.
    RankLink (int& argc, char**& argv);
    /// The same; every message that was sent must have been taken.
    ~RankLink ();
    RankLink (const RankLink&) = delete;
    RankLink& operator= (const RankLink&) = delete;

    int rank () const { return rank_; }
    int size () const { return size_; }
    /// Other threads than the one that made this may use it too.
    bool serves_threads () const { return serves_threads_; }

    /// Gives the bytes of rank 0 to all. Every rank calls it.
    void broadcast (std::string& bytes);
    /// Returns when the bytes may change again.
    void send (int to, int tag, std::string_view bytes);
    /// The next message, if one has come.
    std::optional<Message> take (int from, int tag);
    /// Waits for it.
    Message wait_for (int from, int tag);
    /// Ends all processes.
    [[noreturn]] void abort (int status);

  private:
    int rank_ = 0;
    int size_ = 1;
    bool serves_threads_ = false;
    std::mutex lock_; // the library serves one thread at a time
};

} // namespace ostrand::ranks
