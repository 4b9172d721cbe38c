// Work on private data, shared with a second thread that does not outlive the call. Whatever talks
// to the user, to the working store or to the message log stays with the calling thread.
#pragma once

#include <cstddef>
#include <functional>

namespace kavu {

/// Calls `work(place, worker)` once for each place below `count`, in any order, and returns when
/// all calls have ended. `worker` is 0 on the calling thread and 1 on the second one, which there
/// is if the machine has another processor and more than one place. Calls must not share what they
/// change. The first exception is thrown again here; places that have not begun by then are left
/// out. The calling thread calls `meanwhile`, if there is one, before it takes its share.
void forEachOnTwoThreads(std::size_t count,
                         const std::function<void(std::size_t place, std::size_t worker)>& work,
                         const std::function<void()>& meanwhile = {});

/// How many workers there may be.
inline constexpr std::size_t kMostWorkers = 2;

}  // namespace kavu
