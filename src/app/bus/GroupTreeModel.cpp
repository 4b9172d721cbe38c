#include "app/bus/GroupTreeModel.h"

#include <algorithm>

namespace kavu {

bool isAtOrAround(const TreePath& outer, const TreePath& inner) {
    return outer.size() <= inner.size() && std::equal(outer.begin(), outer.end(), inner.begin());
}

TreePath movedPath(const TreePath& path, const TreePath& removed, int by) {
    if (removed.empty() || path.size() < removed.size() ||
        !std::equal(removed.begin(), removed.end() - 1, path.begin())) {
        return path;
    }
    auto moved = path;
    auto& number = moved[removed.size() - 1];
    if (by < 0 && number > removed.back()) {
        --number;
    } else if (by > 0 && number >= removed.back()) {
        ++number;
    }
    return moved;
}

}  // namespace kavu
