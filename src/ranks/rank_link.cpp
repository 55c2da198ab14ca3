// Messages through the MPI library.
#include "ranks/rank_link.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <mpi.h>
#include <thread>

namespace ostrand::ranks {
namespace {

/// The library counts in int.
constexpr std::size_t most_at_once = std::size_t{1} << 30;

} // namespace

void Pause::rest () {
    std::this_thread::sleep_for (length_);
    length_ = std::min (2 * length_, longest);
}

RankLink::RankLink (int& argc, char**& argv) {
    int provided = MPI_THREAD_SINGLE;
    MPI_Init_thread (&argc, &argv, MPI_THREAD_SERIALIZED, &provided);
    serves_threads_ = provided >= MPI_THREAD_SERIALIZED;
    MPI_Comm_rank (MPI_COMM_WORLD, &rank_);
    MPI_Comm_size (MPI_COMM_WORLD, &size_);
}

RankLink::~RankLink () { MPI_Finalize (); }

void RankLink::broadcast (std::string& bytes) {
    const std::lock_guard guard (lock_);
    std::uint64_t size = bytes.size ();
    MPI_Bcast (&size, 1, MPI_UINT64_T, 0, MPI_COMM_WORLD);
    bytes.resize (size);
    for (std::size_t at = 0; at < size; at += most_at_once) {
        const std::size_t now = std::min (most_at_once, bytes.size () - at);
        MPI_Bcast (bytes.data () + at, static_cast<int> (now), MPI_BYTE, 0, MPI_COMM_WORLD);
    }
}

void RankLink::send (int to, int tag, std::string_view bytes) {
    if (bytes.size () > most_at_once) abort (EXIT_FAILURE); // no record is nearly as large
    MPI_Request request = MPI_REQUEST_NULL;
    {
        const std::lock_guard guard (lock_);
        MPI_Isend (bytes.data (), static_cast<int> (bytes.size ()), MPI_BYTE, to, tag,
                   MPI_COMM_WORLD, &request);
    }
    Pause pause;
    for (;;) {
        int sent = 0;
        {
            const std::lock_guard guard (lock_);
            MPI_Test (&request, &sent, MPI_STATUS_IGNORE);
        }
        if (sent != 0) return;
        pause.rest ();
    }
}

std::optional<Message> RankLink::take (int from, int tag) {
    const std::lock_guard guard (lock_);
    int there = 0;
    MPI_Message handle = MPI_MESSAGE_NULL;
    MPI_Status status{};
    MPI_Improbe (from == any ? MPI_ANY_SOURCE : from, tag == any ? MPI_ANY_TAG : tag,
                 MPI_COMM_WORLD, &there, &handle, &status);
    if (there == 0) return std::nullopt;
    int size = 0;
    MPI_Get_count (&status, MPI_BYTE, &size);
    Message message{status.MPI_SOURCE, status.MPI_TAG,
                    std::string (static_cast<std::size_t> (size), '\0')};
    MPI_Mrecv (message.bytes.data (), size, MPI_BYTE, &handle, MPI_STATUS_IGNORE);
    return message;
}

Message RankLink::wait_for (int from, int tag) {
    for (Pause pause;; pause.rest ()) {
        if (std::optional<Message> message = take (from, tag)) return std::move (*message);
    }
}

void RankLink::abort (int status) {
    MPI_Abort (MPI_COMM_WORLD, status);
    std::abort (); // which does not return
}

} // namespace ostrand::ranks
