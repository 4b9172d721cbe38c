#include "core/text/TwoThreads.h"

#include <array>
#include <atomic>
#include <exception>
#include <system_error>
#include <thread>

namespace kavu {

void forEachOnTwoThreads(std::size_t count,
                         const std::function<void(std::size_t place, std::size_t worker)>& work,
                         const std::function<void()>& meanwhile) {
    std::atomic<std::size_t> next = 0;
    std::array<std::exception_ptr, kMostWorkers> thrown;
    const auto run = [&](std::size_t worker) {
        try {
            if (worker == 0 && meanwhile) {
                meanwhile();
            }
            for (auto place = next++; place < count; place = next++) {
                work(place, worker);
            }
        } catch (...) {
            thrown[worker] = std::current_exception();
            next = count;
        }
    };
    // The system is asked once: it has to look into its files.
    static const bool kHasTwo = std::thread::hardware_concurrency() > 1;
    std::thread second;
    if (count > 1 && kHasTwo) {
        try {
            second = std::thread(run, 1);
        } catch (const std::system_error&) {
            // There is no room for a thread now: this one does it all.
        }
    }
    run(0);
    if (second.joinable()) {
        second.join();
    }
    for (const auto& each : thrown) {
        if (each != nullptr) {
            std::rethrow_exception(each);
        }
    }
}

}  // namespace kavu
