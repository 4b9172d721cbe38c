#include "app/bus/GroupTreeUndo.h"

#include <numeric>
#include <utility>

namespace kavu {

void GroupTreeUndo::add(Step step) {
    redo_.clear();
    undo_.push_back(std::move(step));
    dropOldest();
}

std::optional<GroupTreeUndo::Step> GroupTreeUndo::go(std::deque<Step>& from, std::deque<Step>& to) {
    if (from.empty()) {
        return std::nullopt;
    }
    auto step = std::move(from.back());
    from.pop_back();
    const auto state = std::exchange(step.state, model_.state());
    model_.restore(state);
    to.push_back(step);
    step.state = {};
    return step;
}

void GroupTreeUndo::dropOldest() {
    auto bytes =
        std::accumulate(undo_.begin(), undo_.end(), std::size_t{0},
                        [](std::size_t sum, const Step& step) { return sum + step.state.bytes; });
    while (undo_.size() > 1 && (undo_.size() > kMostSteps || bytes > mostBytes_)) {
        bytes -= undo_.front().state.bytes;
        undo_.pop_front();
    }
}

}  // namespace kavu
